// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HovletsAssist/HVAssistExport.h>

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

class QObject;
class QPoint;

namespace Hovlets {

class HVInterface;

/// Options for the construction of an HVStandardKeys.
struct HVStandardKeysSettings
{
    /// Role of the models that holds the key of an item or a header section, as a string; -1 for
    /// none.
    int keyRole = -1;

    /// Whether windows have keys. If so, the entry of a window serves every control in it that has
    /// neither an entry nor a tooltip.
    bool windowsHaveKeys = false;

    /// Path of a file with rules for authors to edit; docs/keys.md describes it. Changes take
    /// effect at the next question. Empty by default: no rules.
    QString rulesFile;
};

/// A control, or a part of one, and the keys by which it is known.
struct HVKeyedControl
{
    /// The first of \c candidates with an entry. If none has one, the key under which to write it;
    /// empty if the control has no hovlet.
    QString key;

    /// Whether \c key has an entry, in the current locale or in the fallback locale.
    bool hasEntry = false;

    /// All keys of the control, the most specific first.
    QStringList candidates;

    /// The area that \c key is for, such as a tab or the whole of a spin box: global, in pixels.
    /// Empty for an action that was found without a widget.
    QRect area;

    /// Names of the control's parents and of itself, from the window on, separated by "/". Rules
    /// can match it.
    QString path;
};

/*!
 * \brief Finds content keys for controls of every kind, in hosts that were not written for hovlets.
 *
 * Actions, tool buttons, menu entries, titles of a menu bar, tabs, header sections, items of views,
 * group boxes, docks and the inner parts that Qt builds controls from all get keys from their
 * object names or, without one, from their texts. docs/keys.md lists them. A host returns them with
 * one line:
 *
 * \code
 * QString keyForObject(QObject *object) override { return m_keys.keyFor(object); }
 * \endcode
 *
 * The dynamic property "hovletKey" of an object is its only key; an empty one means that the object
 * has no hovlet. Rules of authors come next.
 *
 * A part with a tooltip of its own, such as an item of a view, keeps it unless the part itself has
 * an entry.
 *
 * The class looks up a few keys for each question, each of which takes as long as the look-up of a
 * hover. It changes nothing in the host and reads the host's content only through the interface.
 * Create it with, or as a member of, the host's interface; do not use it once the interface is
 * gone. GUI thread only.
 */
class HOVLETS_ASSIST_EXPORT HVStandardKeys
{
    Q_DISABLE_COPY_MOVE(HVStandardKeys)

public:
    /// Looks for entries in the content of \a host, which is not owned. A member of the host can be
    /// created with \c *this. The settings are copied.
    explicit HVStandardKeys(HVInterface &host, const HVStandardKeysSettings &settings = {});
    ~HVStandardKeys();

    /// The key of \a object, or of its part under the mouse; empty if there is none. For
    /// HVInterface::keyForObject().
    [[nodiscard]] QString keyFor(QObject *object);

    /// What is known about \a object, or about its part at the global \a position. Accepts null.
    [[nodiscard]] HVKeyedControl find(QObject *object, const QPoint &position);

    /// The mistakes in the file with rules, as "file:line: message". Rules with a mistake are left
    /// out. Reads the file if it has changed.
    [[nodiscard]] QStringList ruleErrors();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Hovlets
