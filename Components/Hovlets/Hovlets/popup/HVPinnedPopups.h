// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVPinnedState.h"

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>

#include <functional>

namespace Hovlets {

class HVWidget;
class HVXmlElement;

/*!
 * \brief The popups that the user has pinned, in the order of pinning.
 *
 * They are independent windows that the user may close at any time. This class does not own them,
 * and skips closed ones.
 */
class HVPinnedPopups
{
public:
    /// \a locale is the name of the preferred locale.
    void add(HVWidget *popup, const QString &locale);

    /// Raises each popup, the last one first.
    void raise();

    /// Turns stay-on-top on or off for all popups.
    void setStayOnTop(bool on);

    /// The states of the popups that are open and on screen, from which they can be restored.
    [[nodiscard]] QVector<HVPinnedState> states() const;

    /// The content of the first popup that shows \a key, or null.
    [[nodiscard]] HVXmlElement *contentFor(const QString &key) const;

private:
    void forEachFromLast(const std::function<void(HVWidget &)> &change);
    void forgetClosed();

    struct Pinned
    {
        QPointer<HVWidget> popup; // null once closed
        QString locale;
    };

    QList<Pinned> m_popups;
};

} // namespace Hovlets
