// SPDX-License-Identifier: Apache-2.0
#include "HVViewPrivate.h"

#include "HVEntryReader.h"
#include "HVShowScope.h"
#include "HVViewEnd.h"

#include <QtCore/QFileInfo>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>

#include <utility>

namespace Hovlets {

namespace {

Qt::CursorShape cursorShape(const QString &name)
{
    if (name == QLatin1String("PointingHandCursor"))
        return Qt::PointingHandCursor;
    if (name == QLatin1String("IBeamCursor"))
        return Qt::IBeamCursor;
    if (name == QLatin1String("BlankCursor"))
        return Qt::BlankCursor;
    return Qt::ArrowCursor;
}

} // namespace

HVView::HVView(HVManager *manager, QWidget *parent)
    : HVSceneWidget(parent)
    , d(std::make_unique<Private>(*this, viewServicesOf(manager)))
{
    connect(engine(), &QQmlEngine::warnings, this, &HVView::handleWarnings);
    deleteViewsAtEnd();
}

HVView::~HVView()
{
    // The QML is deleted before the content that it shows, so no binding reports missing content.
    setSource(QUrl());
}

HVViewWindow &HVView::viewWindow() const
{
    return d->context.window();
}

HVXmlElement *HVView::content()
{
    return d->content.entry();
}

const HVXmlElement *HVView::content() const
{
    return d->content.entry();
}

void HVView::setContent(HVXmlElement *element)
{
    HVXmlElement *root = element == d->content.entry() ? d->content.root() : nullptr;
    d->content.release();
    d->content = HVContentTree(element, root);
}

void HVView::setContentTree(HVContentTree tree)
{
    HVShowScope::retire(std::exchange(d->content, std::move(tree)));
}

QDir HVView::packageRoot() const
{
    return QDir(d->packageRoot);
}

void HVView::setPackageRoot(const QDir &dir)
{
    d->packageRoot = dir.absolutePath();
}

bool HVView::stayOpen() const
{
    return d->stayOpen;
}

void HVView::setStayOpen(bool value)
{
    d->stayOpen = value;
    Q_EMIT stayOpenChanged();
}

bool HVView::reserved() const
{
    return d->reserved;
}

void HVView::setReserved(bool value)
{
    if (d->reserved == value)
        return;
    d->reserved = value;
    Q_EMIT reservedChanged();
}

bool HVView::isReservedByQml() const
{
    return d->reservedByQml;
}

void HVView::writeReserved(bool value)
{
    const HVViewActivity::Scope running(d->activity);
    const QScopedValueRollback<bool> writing(d->reservedByQml, true);
    setReserved(value);
}

void HVView::setDisabledReason(const QString &reason)
{
    d->context.reader().setDisabledReason(reason);
}

int HVView::clipReleaseDelay() const
{
    return d->services ? d->services->settings().get(HVKeyClipReleaseDelay).toInt() : 0;
}

bool HVView::documentationAvailable() const
{
    return d->services
            && d->services->settings().get(HVKeyDocumentationEnabled, QVariant()).toBool();
}

QString HVView::uiRootFilePath() const
{
    return d->finder().userInterface(d->isExpanded);
}

QString HVView::categoryPath(const QString &attribute, const QString &fallback,
                             contextKey key) const
{
    return d->finder().category(attribute, key, fallback);
}

QString HVView::findComponent(const QString &attribute, contextKey key, const QString &fallback,
                              const QString &relativePath) const
{
    return d->finder().find(attribute, key, fallback, relativePath);
}

QString HVView::resourceDirectoryPath() const
{
    return d->finder().resourceFolder(d->packageRoot);
}

void HVView::setItemCursor(QQuickItem *object, const QString &shape, const QString &tag)
{
    Q_UNUSED(tag)
    if (!object)
        return;
    if (shape.isEmpty())
        object->unsetCursor();
    else
        object->setCursor(cursorShape(shape));
}

void HVView::debugLog(const QString &msg)
{
    const HVViewActivity::Scope running(d->activity);
    d->messages.debug(msg);
}

bool HVView::openExternalResource(const QString &resourceLocator)
{
    const HVViewActivity::Scope running(d->activity);
    return d->services && d->services->openResource(resourceLocator);
}

QString HVView::interpolate(const QString &string)
{
    return d->services ? d->services->interpolated(string) : string;
}

void HVView::setOverrideCursor(const QString &shape)
{
    QGuiApplication::setOverrideCursor(cursorShape(shape));
}

void HVView::restoreOverrideCursor()
{
    QGuiApplication::restoreOverrideCursor();
}

QString HVView::translate(const QString &string, const QString &context)
{
    const HVViewActivity::Scope running(d->activity);
    return d->services ? d->services->translated(*this, string, context) : string;
}

QString HVView::translatedByPackage(const QString &text, const QString &context)
{
    const HVViewActivity::Scope running(d->activity); // the host, if warned, may delete the view
    const QStringList files = d->finder().translations();
    return d->services ? d->translator.translate(files, text, context) : text;
}

QString HVView::findResource(const QString &relativePath)
{
    const HVViewActivity::Scope running(d->activity);
    return d->finder().resource(relativePath);
}

const HVLookUpMemory &HVView::lookUps() const
{
    return d->lookUps;
}

QList<HVView *> HVView::viewsOf(const QQuickWindow *window)
{
    QList<HVView *> views;
    const QWidgetList widgets = window ? QApplication::allWidgets() : QWidgetList();
    for (QWidget *widget : widgets) {
        auto *view = qobject_cast<HVView *>(widget);
        if (view && view->quickWindow() == window)
            views.append(view);
    }
    return views;
}

bool HVView::isBusy() const
{
    return d->activity.isBusy();
}

void HVView::whenIdle(const std::function<void()> &action)
{
    d->activity.whenIdle(action);
}

void HVView::deleteWhenIdle()
{
    if (!isBusy()) {
        delete this;
        return;
    }
    // Moving the widget to another window would rebuild its scene and delete the running QML.
    // Removing only the QObject parent suffices for it to outlive the popup.
    QObject::setParent(nullptr);
    whenIdle([this] { deleteLater(); });
}

void HVView::statusHasChanged(DECLARATIVEVIEW_STATUS s)
{
    if (s != QQuickWidget::Error)
        return;
    d->messages.debug(QStringLiteral("Error"), errors());
}

void HVView::loadQML(const QString &path)
{
    const QFileInfo file(path);
    // Qt would wait for a writer when it opens a pipe.
    if (!file.exists() || !(file.isFile() || file.isDir())) {
        d->messages.debug(QStringLiteral("Can't find :%1").arg(path));
        return;
    }
    runFile(path);
}

void HVView::handleWarnings(const QList<QQmlError> &warnings)
{
    const HVViewActivity::Scope running(d->activity);
    d->messages.debug(QStringLiteral("QML Warning"), warnings);
}

void HVView::resetState()
{
    if (QQuickItem *root = rootObject())
        root->setProperty("state", QString());
}

void HVView::managerContextSettingDidChange(HVContextKey key)
{
    if (key == HVKeyDocumentationEnabled)
        Q_EMIT documentationAvailableChanged();
}

void HVView::resizeEvent(QResizeEvent *event)
{
    HVSceneWidget::resizeEvent(event);
    if (rootObject())
        Q_EMIT contentSizeChanged();
}

} // namespace Hovlets
