// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

class QAction;
class QMenu;
class QObject;
class QWidget;

namespace Hovlets {

// Names from which keys are made.

/// Whether Qt has named the object, as it does with the parts that it builds controls from.
bool isNamedByQt(const QObject *object);

/// The object name; empty if Qt gave it.
QString nameOf(const QObject *object);

/// A text as it is read: without mnemonics, shortcut and dots at the end. Empty if it is too long
/// to be a name.
QString plainText(const QString &text);

/// The name of a container, else that of its nearest parent with a name, else the class of its
/// window.
QString qualifierOf(const QWidget *widget);

/*!
 * The names of the forms that contain the object, the nearest first: its window, and widgets with a
 * name and a class of the host.
 */
QStringList formsOf(const QObject *object);

/// The menus that lead to the action and its text, such as "File/Recent/Clear"; empty without a
/// text.
QString menuPathOf(const QAction *action, const QWidget *window);

/// The names of the parents and of the object itself, from the window on, separated by "/". An
/// object without a name has its class and its position among the unnamed siblings of that class.
QString pathOf(const QObject *object);

} // namespace Hovlets
