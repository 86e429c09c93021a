// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

class QObject;
class QWidget;

namespace Hovlets {

/// A visible widget, or an entry of a visible menu, that may turn out to be a control.
struct HVVisibleObject
{
    QObject *object; // a widget or an action
    QWidget *widget; // the object, or the menu that it is in
    QRect area; // in the coordinates of the widget's window
    bool interactive; // a control, also without an entry
    QString name; // the last of its path, see parents
    QStringList parents; // object names, or class and place among the nameless of that class
};

/*!
 * Calls \a visit for each visible object of the application's windows, from the windows down.
 *
 * Left out are the parts that Qt builds its controls from, tooltips, the popups of Hovlets and,
 * with all that is in them, widgets that inherit one of \a ignoredClasses.
 */
void walkVisibleObjects(const QStringList &ignoredClasses,
                        const std::function<void(const HVVisibleObject &)> &visit);

/// What a person reads on a widget or an action.
QString labelOf(const QObject *object);

} // namespace Hovlets
