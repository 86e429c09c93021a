// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

class QObject;
class QWidget;

namespace Hovlets {

/// A visible widget, or an action in a visible menu: a candidate for a control.
struct HVVisibleObject
{
    QObject *object; // a widget or an action
    QWidget *widget; // the object itself, or the menu that contains the action
    QRect area; // in the coordinates of the widget's window
    bool interactive; // counts as a control even without an entry
    QString name; // last part of its path; see parents
    QStringList parents; // object names, or class and position among its unnamed siblings
};

/*!
 * Calls \a visit for each visible object in the application's windows, parents first.
 *
 * Skips the parts that Qt builds controls from, tooltips, the popups of Hovlets, and widgets that
 * inherit one of \a ignoredClasses with everything inside them.
 */
void walkVisibleObjects(const QStringList &ignoredClasses,
                        const std::function<void(const HVVisibleObject &)> &visit);

/// The text by which a user recognises a widget or an action.
QString labelOf(const QObject *object);

} // namespace Hovlets
