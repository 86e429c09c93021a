// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tool.h"

#include <QtCore/QHash>
#include <QtCore/QObject>

class QAction;
class QMainWindow;
class QUndoStack;

/*!
 * \brief The program's actions by name, and the menus and the toolbar that offer them.
 *
 * An action's object name is the key of its hovlet.
 */
class Actions : public QObject
{
    Q_OBJECT

public:
    Actions(QUndoStack *history, QMainWindow *window);

    QAction *get(const QString &name) const { return m_actions.value(name); }

    /// Redraws the icons in the colours of the application's palette.
    void refreshIcons();

Q_SIGNALS:
    /// The history calls a stroke with \a tool \a name.
    void toolChosen(Tool tool, const QString &name);

private:
    void addTools();
    void addHistory(QUndoStack *history);
    void addOthers();
    void add(QAction *action, const QString &name);
    void fillMenus(QMainWindow *window);
    void fillToolBar(QMainWindow *window);
    QList<QAction *> named(const QStringList &names);

    QHash<QString, QAction *> m_actions;
    QStringList m_tools;
};
