// SPDX-License-Identifier: Apache-2.0
#include "ScreenReport.h"

#include "AttachedHost.h"

#include <Hovlets/HVPopup.h>
#include <Hovlets/HVXmlElement.h>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSaveFile>
#include <QtCore/QVector>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QWidget>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

namespace Hovlets {

namespace {

constexpr int ReportInterval = 200; // ms
constexpr int MostItems = 5; // of a view; the others are like them

template <typename Menu> void addActions(const Menu &menu, QVector<QPoint> &points)
{
    const QList<QAction *> actions = menu.actions();
    for (QAction *action : actions) {
        if (action->isVisible() && !action->isSeparator())
            points += menu.actionGeometry(action).center();
    }
}

void addSections(const QHeaderView &header, QVector<QPoint> &points)
{
    for (int section = 0; section < header.count(); ++section) {
        if (header.isSectionHidden(section))
            continue;
        const int middle =
                header.sectionViewportPosition(section) + header.sectionSize(section) / 2;
        points += header.orientation() == Qt::Horizontal
                ? QPoint(middle, header.viewport()->height() / 2)
                : QPoint(header.viewport()->width() / 2, middle);
    }
}

void addItems(const QAbstractItemView &view, QVector<QPoint> &points)
{
    const QModelIndex root = view.rootIndex();
    for (int row = 0; row < qMin(MostItems, view.model()->rowCount(root)); ++row) {
        const QRect area = view.visualRect(view.model()->index(row, 0, root));
        if (!area.isEmpty()) // that of a hidden item is
            points += area.center();
    }
}

/// The centre of each part of a widget; that of the widget if it has no parts.
QVector<QPoint> centersOf(const QWidget &widget)
{
    QVector<QPoint> points;
    const auto *view = qobject_cast<const QAbstractItemView *>(widget.parentWidget());
    if (const auto *menu = qobject_cast<const QMenu *>(&widget)) {
        addActions(*menu, points);
    } else if (const auto *bar = qobject_cast<const QMenuBar *>(&widget)) {
        addActions(*bar, points);
    } else if (const auto *bar = qobject_cast<const QTabBar *>(&widget)) {
        for (int tab = 0; tab < bar->count(); ++tab)
            points += bar->tabRect(tab).center();
    } else if (view && view->viewport() == &widget && view->model()) {
        if (const auto *header = qobject_cast<const QHeaderView *>(view))
            addSections(*header, points);
        else
            addItems(*view, points);
    } else {
        points += widget.rect().center();
    }
    return points;
}

QString kindOf(const QWidget &widget)
{
    const auto *view = qobject_cast<const QAbstractItemView *>(widget.parentWidget());
    const auto *button = qobject_cast<const QToolButton *>(&widget);
    if (qobject_cast<const QMenu *>(&widget))
        return QStringLiteral("menu entry");
    if (qobject_cast<const QMenuBar *>(&widget))
        return QStringLiteral("menu title");
    if (qobject_cast<const QTabBar *>(&widget))
        return QStringLiteral("tab");
    if (view && view->viewport() == &widget)
        return qobject_cast<const QHeaderView *>(view) ? QStringLiteral("header section")
                                                       : QStringLiteral("item");
    return button && button->defaultAction() ? QStringLiteral("action") : QStringLiteral("widget");
}

/// Controls under points that no other widget covers.
QJsonArray controlsIn(AttachedHost &host, QWidget *widget)
{
    QJsonArray controls;
    const QVector<QPoint> points = centersOf(*widget);
    for (const QPoint &point : points) {
        const QPoint position = widget->mapToGlobal(point);
        if (QApplication::widgetAt(position) != widget)
            continue;
        const HVKeyedControl found = host.standardKeys().find(widget, position);
        if (found.key.isEmpty())
            continue;
        controls.append(QJsonObject {
                { QStringLiteral("key"), found.key },
                { QStringLiteral("kind"), kindOf(*widget) },
                { QStringLiteral("path"), found.path },
                { QStringLiteral("class"), QLatin1String(widget->metaObject()->className()) },
                { QStringLiteral("x"), position.x() },
                { QStringLiteral("y"), position.y() } });
    }
    return controls;
}

QJsonArray controlsOnScreen(AttachedHost &host)
{
    QJsonArray controls;
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (!widget->isVisible() || !HVPopup(widget->window()).isNull())
            continue;
        const QJsonArray found = controlsIn(host, widget);
        for (const auto &control : found)
            controls.append(control);
    }
    return controls;
}

/// The title as the popup shows it; empty without a popup.
QString titleOf(const HVPopup &popup)
{
    const HVXmlElement *entry = popup.content();
    if (!entry)
        return {};
    QString title = entry->attribute(QStringLiteral("title"));
    const HVXmlElement *child = entry->childElement(QStringLiteral("title"));
    if (title.isEmpty() && child)
        title = child->content().simplified();
    const QString shown = popup.shownText(title, entry->attribute(QStringLiteral("key")));
    return shown.isEmpty() ? title : shown;
}

} // namespace

ScreenReport::ScreenReport(AttachedHost &host, const QString &file)
    : m_host(host)
    , m_file(file)
{
    connect(&m_timer, &QTimer::timeout, this, &ScreenReport::writeIfChanged);
    m_timer.start(ReportInterval);
}

void ScreenReport::writeIfChanged()
{
    const HVPopup popup = HVPopup::current();
    const QString shown =
            popup.content() ? popup.content()->attribute(QStringLiteral("key")) : QString();
    const QJsonObject report { { QStringLiteral("format"), QStringLiteral("hovlets-screen") },
                               { QStringLiteral("version"), 1 },
                               { QStringLiteral("shown"), shown },
                               { QStringLiteral("title"), titleOf(popup) },
                               { QStringLiteral("controls"), controlsOnScreen(m_host) } };
    const QByteArray bytes = QJsonDocument(report).toJson();
    if (bytes == m_written)
        return;
    QSaveFile file(m_file);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        m_written = bytes;
}

} // namespace Hovlets
