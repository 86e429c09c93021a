// SPDX-License-Identifier: Apache-2.0
#include "DrawingHost.h"

#include "Canvas.h"
#include "HelpWindow.h"

#include <Hovlets/HVContext.h>

#include <QtGui/QCursor>
#include <QtGui/QRegion>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolButton>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

using namespace Hovlets;

namespace {

/// The action of a tool button, or of the menu item under the mouse. Keyboard access asks about the
/// action itself.
QAction *actionOf(QObject *object)
{
    if (auto *action = qobject_cast<QAction *>(object))
        return action;
    if (const auto *button = qobject_cast<QToolButton *>(object))
        return button->defaultAction();
    if (const auto *menu = qobject_cast<QMenu *>(object))
        return menu->actionAt(menu->mapFromGlobal(QCursor::pos()));
    return nullptr;
}

/// Whether \a viewport belongs to an item view, and the item under the mouse has a tooltip.
bool isOverItemWithToolTip(const QWidget *viewport)
{
    const auto *view = qobject_cast<QAbstractItemView *>(viewport->parentWidget());
    if (!view || view->viewport() != viewport)
        return false;
    const QModelIndex index = view->indexAt(viewport->mapFromGlobal(QCursor::pos()));
    return !index.data(Qt::ToolTipRole).toString().isEmpty();
}

/// Whether Qt has named the widget, such as a viewport or the line edit of a spin box.
bool isPartOfControl(const QWidget *widget)
{
    return widget->objectName().startsWith(QLatin1String("qt_")) && widget->parentWidget();
}

} // namespace

DrawingHost::DrawingHost(HVContext &context, const QStringList &dataPaths, HelpWindow &help)
    : HVInterface(context, dataPaths)
    , m_help(help)
{
}

void DrawingHost::setCanvas(const Canvas *canvas)
{
    m_canvas = canvas;
}

/// Each time before a popup is placed, because the canvas may have been scrolled.
void DrawingHost::keepDrawingClear()
{
    const QRegion drawn(m_canvas ? m_canvas->lastDrawn() : QRect());
    if (context().get(HVKeyKeepClear).value<QRegion>() != drawn)
        context().set(HVKeyKeepClear, drawn);
}

QWidget *DrawingHost::createWindow(HVWindowType type)
{
    if (type != HVReservedWindow || !m_pinnedParent)
        return nullptr;
    auto *window = new QWidget(m_pinnedParent, Qt::Tool);
    window->setAttribute(Qt::WA_DeleteOnClose);
    return window;
}

QString DrawingHost::keyForObject(QObject *object)
{
    keepDrawingClear();
    if (const QAction *action = actionOf(object))
        return action->objectName();
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget || !isPartOfControl(widget))
        return HVInterface::keyForObject(object);
    // No key, no popup: the item's own tooltip shows.
    if (isOverItemWithToolTip(widget))
        return {};
    return keyForObject(widget->parentWidget());
}

bool DrawingHost::openExternalResource(HVExternalResourceType type, const QString &resource)
{
    bool done = false;
    if (type == HVDocumentationResource)
        done = m_help.showTopic(resource);
    else if (type == HVFileResource)
        done = m_help.showFile(resource);
    else
        done = HVInterface::openExternalResource(type, resource);
    Q_EMIT opened(done ? tr("Opened “%1”").arg(resource) : tr("Could not open “%1”").arg(resource));
    return done;
}

QString DrawingHost::shortCutForObject(const QString &key, QObject *object, const QString &shortcut)
{
    const QAction *action = actionOf(object);
    if (!action || action->shortcut().isEmpty())
        return HVInterface::shortCutForObject(key, object, shortcut);
    return action->shortcut().toString(QKeySequence::NativeText);
}
