// SPDX-License-Identifier: Apache-2.0
#include "Actions.h"

#include "Icon.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolBar>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>
#include <QActionGroup>
#include <QUndoStack>

#include <utility>

Actions::Actions(QUndoStack *history, QMainWindow *window)
    : QObject(window)
{
    addTools();
    addHistory(history);
    addOthers();
    fillMenus(window);
    fillToolBar(window);
    refreshIcons();
}

void Actions::refreshIcons()
{
    const QColor color = QApplication::palette().color(QPalette::ButtonText);
    for (QAction *action : std::as_const(m_actions))
        action->setIcon(drawIcon(action->objectName(), color));
}

void Actions::addTools()
{
    struct Entry
    {
        Tool tool;
        QString name;
        QString text;
        QKeySequence shortcut;
    };
    const QVector<Entry> entries {
        { Tool::Pen, QStringLiteral("pen"), tr("Pen"), Qt::Key_P },
        { Tool::Line, QStringLiteral("line"), tr("Line"), Qt::Key_L },
        { Tool::Rectangle, QStringLiteral("rectangle"), tr("Rectangle"), Qt::Key_R },
        { Tool::Ellipse, QStringLiteral("ellipse"), tr("Ellipse"), Qt::Key_E },
        { Tool::Fill, QStringLiteral("fill"), tr("Fill"), Qt::Key_F },
        { Tool::Eraser, QStringLiteral("eraser"), tr("Eraser"), Qt::Key_X },
    };
    auto *group = new QActionGroup(this);
    for (const Entry &entry : entries) {
        auto *action = new QAction(entry.text, group);
        action->setCheckable(true);
        action->setShortcut(entry.shortcut);
        connect(action, &QAction::triggered, this,
                [this, entry] { Q_EMIT toolChosen(entry.tool, entry.text); });
        add(action, entry.name);
        m_tools.append(entry.name);
    }
}

void Actions::addHistory(QUndoStack *history)
{
    QAction *undo = history->createUndoAction(this, tr("Undo"));
    undo->setShortcut(QKeySequence::Undo);
    add(undo, QStringLiteral("undo"));
    QAction *redo = history->createRedoAction(this, tr("Redo"));
    redo->setShortcut(QKeySequence::Redo);
    add(redo, QStringLiteral("redo"));
}

void Actions::addOthers()
{
    struct Entry
    {
        QString name;
        QString text;
        QKeySequence shortcut;
    };
    const QVector<Entry> entries {
        { QStringLiteral("open"), tr("Open…"), QKeySequence::Open },
        { QStringLiteral("save"), tr("Save"), QKeySequence::Save },
        { QStringLiteral("export"), tr("Export PNG…"), QKeySequence(tr("Ctrl+Shift+E")) },
        { QStringLiteral("quit"), tr("Quit"), QKeySequence(tr("Ctrl+Q")) },
        { QStringLiteral("clear"), tr("Clear"), QKeySequence(tr("Ctrl+Del")) },
        { QStringLiteral("zoomIn"), tr("Zoom in"), QKeySequence::ZoomIn },
        { QStringLiteral("zoomOut"), tr("Zoom out"), QKeySequence::ZoomOut },
        { QStringLiteral("zoomReset"), tr("Actual size"), QKeySequence(tr("Ctrl+0")) },
        { QStringLiteral("dark"), tr("Dark colours"), {} },
        { QStringLiteral("settings"), tr("Popup settings"), QKeySequence(tr("Ctrl+,")) },
        { QStringLiteral("guide"), tr("Guide"), QKeySequence::HelpContents },
        { QStringLiteral("news"), tr("New in this version"), {} },
    };
    for (const Entry &entry : entries) {
        auto *action = new QAction(entry.text, this);
        action->setShortcut(entry.shortcut);
        add(action, entry.name);
    }
    get(QStringLiteral("dark"))->setCheckable(true);
    get(QStringLiteral("settings"))->setCheckable(true);
}

void Actions::add(QAction *action, const QString &name)
{
    action->setObjectName(name);
    m_actions.insert(name, action);
}

void Actions::fillMenus(QMainWindow *window)
{
    QMenu *file = window->menuBar()->addMenu(tr("File"));
    file->addActions(named({ QStringLiteral("open"), QStringLiteral("save"),
                             QStringLiteral("export"), QString(), QStringLiteral("quit") }));
    QMenu *edit = window->menuBar()->addMenu(tr("Edit"));
    edit->addActions(named({ QStringLiteral("undo"), QStringLiteral("redo"), QString(),
                             QStringLiteral("clear") }));
    window->menuBar()->addMenu(tr("Tools"))->addActions(named(m_tools));
    QMenu *view = window->menuBar()->addMenu(tr("View"));
    view->addActions(named({ QStringLiteral("zoomIn"), QStringLiteral("zoomOut"),
                             QStringLiteral("zoomReset"), QString(), QStringLiteral("dark"),
                             QStringLiteral("settings") }));
    QMenu *help = window->menuBar()->addMenu(tr("Help"));
    help->addActions(named({ QStringLiteral("guide"), QStringLiteral("news") }));
}

void Actions::fillToolBar(QMainWindow *window)
{
    QToolBar *bar = window->addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("toolBar"));
    bar->setMovable(false);
    bar->setIconSize(QSize(24, 24));
    bar->addActions(named({ QStringLiteral("open"), QStringLiteral("save"), QString() }));
    bar->addActions(named(m_tools));
    bar->addActions(named({ QString(), QStringLiteral("undo"), QStringLiteral("redo"), QString(),
                            QStringLiteral("zoomIn"), QStringLiteral("zoomOut"), QString(),
                            QStringLiteral("clear"), QStringLiteral("settings") }));
}

/// The actions with these names; an empty name gives a separator.
QList<QAction *> Actions::named(const QStringList &names)
{
    QList<QAction *> actions;
    for (const QString &name : names) {
        QAction *action = get(name);
        if (!action) {
            action = new QAction(this);
            action->setSeparator(true);
        }
        actions.append(action);
    }
    return actions;
}
