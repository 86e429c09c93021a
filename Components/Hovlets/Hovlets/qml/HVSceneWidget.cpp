// SPDX-License-Identifier: Apache-2.0
#include "HVSceneWidget.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtGui/QResizeEvent>
#include <QtGui/QShowEvent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>

namespace Hovlets {

namespace {

QUrl urlOfFile(const QString &path)
{
    if (!path.startsWith(QLatin1Char(':')))
        return QUrl::fromLocalFile(path);
    QUrl url; // in Qt's resources
    url.setScheme(QStringLiteral("qrc"));
    url.setPath(path.mid(1));
    return url;
}

bool isRenderedBySoftware(const QQuickWindow &scene)
{
    return scene.rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
}

} // namespace

HVSceneWidget::HVSceneWidget(QWidget *parent)
    : QQuickWidget(parent)
{
    setResizeMode(QQuickWidget::SizeViewToRootObject);
}

void HVSceneWidget::runFile(const QString &path)
{
    const QUrl url = urlOfFile(path);
    if (url == source())
        return;
    noticeNewFiles(QFileInfo(path).path());
    setSource(url);
}

/// The engine remembers which files a folder has, and would not find those that were added since.
void HVSceneWidget::noticeNewFiles(const QString &folder)
{
    const QDateTime time = QFileInfo(folder).lastModified();
    if (m_folders.value(folder, time) != time)
        engine()->clearComponentCache();
    m_folders.insert(folder, time);
}

void HVSceneWidget::settle()
{
    if (size() == sizeHint())
        render();
    else
        resize(sizeHint()); // which renders as well
}

void HVSceneWidget::renderUnseen()
{
    if (isVisible())
        return;
    resize(sizeHint());
    if (isRenderedBySoftware(*quickWindow())) {
        QResizeEvent event(size(), size());
        QQuickWidget::resizeEvent(&event);
        return;
    }
    QShowEvent shown;
    QQuickWidget::showEvent(&shown);
    QHideEvent hidden;
    QQuickWidget::hideEvent(&hidden);
}

/// Renders immediately. The base class's handlers of these two events do so, each with one of the
/// two kinds of scene graph.
void HVSceneWidget::render()
{
    if (!isVisible())
        return;
    if (isRenderedBySoftware(*quickWindow())) {
        QResizeEvent event(size(), size());
        QQuickWidget::resizeEvent(&event);
    } else {
        QShowEvent event;
        QQuickWidget::showEvent(&event);
    }
    if (size() != sizeHint())
        resize(sizeHint()); // positioners and layouts settle when the scene is rendered
}

void HVSceneWidget::showEvent(QShowEvent *event)
{
    QQuickWidget::showEvent(event);
    if (isRenderedBySoftware(*quickWindow()))
        render();
}

} // namespace Hovlets
