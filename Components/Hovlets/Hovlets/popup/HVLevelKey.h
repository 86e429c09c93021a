// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtGui/QKeySequence>

class QKeyEvent;

namespace Hovlets {

/// The key that shows the next level of a popup: a value of the setting HVKeyExpandKey.
class HVLevelKey
{
public:
    /// No key.
    HVLevelKey() = default;

    /// The key that \a text names, which may have modifiers. Empty if it does not name one key.
    explicit HVLevelKey(const QString &text);

    [[nodiscard]] bool isEmpty() const { return m_key.isEmpty(); }

    /// The name of the key as the desktop writes it; empty if there is none.
    [[nodiscard]] QString name() const { return m_key.toString(QKeySequence::NativeText); }

    /// Whether \a event, which may also be a release, is for the key with exactly its modifiers.
    /// Shift may be necessary to type a character.
    [[nodiscard]] bool matches(const QKeyEvent &event) const;

private:
    QKeySequence m_key;
};

} // namespace Hovlets
