// SPDX-License-Identifier: Apache-2.0
#include "HVView.h"

#include "HVComponentFinder.h"
#include "HVContentTranslator.h"
#include "HVContentTree.h"
#include "HVEntryReader.h"
#include "HVShowScope.h"
#include "HVToolTipTheme.h"
#include "HVViewActivity.h"
#include "HVViewEnd.h"
#include "HVViewServices.h"

#include <QtCore/QEvent>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtCore/QUrl>
#include <QtCore/QVector>
#include <QtGui/QGuiApplication>
#include <QtGui/QResizeEvent>
#include <QtGui/QShowEvent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>
#include <QtWidgets/QApplication>

#include <utility>

namespace Hovlets {

class HVView::Private
{
public:
    explicit Private(HVViewServices *services)
        : services(services)
        , translator(services ? services->owner() : nullptr,
                     [this](const QString &message) { warn(message); })
    {
    }

    void warn(const QString &message) const
    {
        if (services)
            services->sendMessage(HVMessageWarning, message);
    }

    void debug(const QString &message) const
    {
        if (services)
            services->sendMessage(HVMessageDebug, message);
    }

    HVComponentFinder finder() const { return { services, content.entry() }; }

    QPointer<HVViewServices> services; // null after the manager is destroyed
    HVContentTree content;
    HVContentTranslator translator;
    HVToolTipTheme *theme = nullptr; // child of the view
    QString packageRoot;
    bool stayOpen = false;
    bool reserved = false;
    bool isExpanded = false;
    bool reservedByQml = false;
    HVViewActivity activity;
};

/// Marks the view as busy during a scope, in which the view may be deleted.
class HVView::Activity
{
    Q_DISABLE_COPY_MOVE(Activity)

public:
    explicit Activity(HVView &view)
        : m_view(&view)
    {
        view.d->activity.begin();
    }

    ~Activity()
    {
        if (m_view)
            m_view->d->activity.end();
    }

private:
    QPointer<HVView> m_view;
};

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

QUrl urlOfFile(const QString &path)
{
    if (!path.startsWith(QLatin1Char(':')))
        return QUrl::fromLocalFile(path);
    QUrl url; // in Qt's resources
    url.setScheme(QStringLiteral("qrc"));
    url.setPath(path.mid(1));
    return url;
}

/// "title 12:3:text". Does not replace placeholders in the text.
QString errorMessage(const QString &title, const QQmlError &error)
{
    return QStringLiteral("%1 %2:%3:%4")
            .arg(title, QString::number(error.line()), QString::number(error.column()),
                 error.description());
}

} // namespace

HVView::HVView(HVManager *manager, QWidget *parent)
    : QQuickWidget(parent)
    , d(std::make_unique<Private>(viewServicesOf(manager)))
{
    d->theme = new HVToolTipTheme(this);
    connect(engine(), &QQmlEngine::warnings, this, &HVView::handleWarnings);
    engine()->rootContext()->setContextProperty(QStringLiteral("hovletTheme"), d->theme);
    auto *reader = new HVEntryReader(this);
    connect(reader, &HVEntryReader::warned, this, [this](const QString &message) {
        if (d->services)
            d->services->sendMessage(HVMessageWarning, message);
    });
    engine()->rootContext()->setContextProperty(QStringLiteral("hovletReader"), reader);
    setResizeMode(QQuickWidget::SizeViewToRootObject);
    deleteViewsAtEnd();
}

HVView::~HVView()
{
    // The QML is deleted before the content that it shows, so no binding reports missing content.
    setSource(QUrl());
}

QColor HVView::rimColor() const
{
    return rootObject() ? rootObject()->property("rimColor").value<QColor>() : QColor();
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

void HVView::showContent(HVXmlElement *content, const QString &rootPath)
{
    const HVShowScope showing;
    const Activity activity(*this);
    const QPointer<HVView> self(this);
    setPackageRoot(QDir(rootPath));
    d->isExpanded = false;
    if (d->content.entry() != content)
        setContentTree(HVContentTree(content));
    d->translator.contentShown();
    const QFileInfo ui(uiRootFilePath());
    if (!self || d->content.entry() != content)
        return; // the host's code has shown something else, or has closed the popup
    refreshTheme();
    exposeContent(rootPath);
    if (!self || d->content.entry() != content)
        return;
    loadQML(ui.absoluteFilePath());
    if (!self)
        return;
    // QML that is already running would resize its view in the next turn of the event loop: after a
    // frame at the old size, and after the popup was placed for that.
    if (size() == sizeHint())
        renderScene();
    else
        resize(sizeHint()); // which renders as well
}

/// Renders immediately. The base class renders some milliseconds after a change, and the popup
/// would show its old content until then. Its handlers of these two events render immediately, each
/// with one of the two kinds of scene graph.
void HVView::renderScene()
{
    if (!isVisible())
        return;
    if (quickWindow()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software) {
        QResizeEvent event(size(), size());
        QQuickWidget::resizeEvent(&event);
    } else {
        QShowEvent event;
        QQuickWidget::showEvent(&event);
    }
    if (size() != sizeHint())
        resize(sizeHint()); // positioners and layouts settle when the scene is rendered
}

void HVView::expand()
{
    whenIdle([this, content = QPointer<HVXmlElement>(d->content.entry())] {
        if (!content || content != d->content.entry())
            return;
        d->isExpanded = true;
        const HVShowScope showing;
        const Activity activity(*this);
        const QPointer<HVView> self(this);
        const QFileInfo ui(uiRootFilePath());
        if (!self || content != d->content.entry())
            return;
        loadQML(ui.absoluteFilePath());
        if (self)
            resize(sizeHint());
    });
}

/// Passes the content to QML. Setting each property runs its bindings, but all three are set before
/// the first binding runs. None combines the new content with the old folder.
void HVView::exposeContent(const QString &rootPath)
{
    QQmlContext *context = engine()->rootContext();
    const QVector<QQmlContext::PropertyPair> properties {
        { QStringLiteral("hovlet"), QVariant::fromValue<QObject *>(d->content.entry()) },
        { QStringLiteral("dataLocation"), rootPath },
        { QStringLiteral("hovletView"), QVariant::fromValue<QObject *>(this) },
    };
    {
        const QSignalBlocker silent(context);
        context->setContextProperties(properties);
    }
    context->setContextProperties(properties);
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
    const Activity activity(*this);
    const QScopedValueRollback<bool> writing(d->reservedByQml, true);
    setReserved(value);
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
    const Activity activity(*this);
    d->debug(msg);
}

bool HVView::openExternalResource(const QString &resourceLocator)
{
    const Activity activity(*this);
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
    const Activity activity(*this);
    return d->services ? d->services->translated(*this, string, context) : string;
}

QString HVView::translatedByPackage(const QString &text, const QString &context)
{
    const QPointer<HVView> self(this);
    const QString file = d->finder().translations(); // may warn the host, which may delete the view
    return self && d->services ? d->translator.translate(file, text, context) : text;
}

QString HVView::findResource(const QString &relativePath)
{
    const Activity activity(*this);
    return d->finder().resource(relativePath);
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

void HVView::refreshTheme()
{
    d->theme->refresh();
}

void HVView::statusHasChanged(DECLARATIVEVIEW_STATUS s)
{
    if (s != QQuickWidget::Error)
        return;
    const QList<QQmlError> found = errors();
    for (const QQmlError &error : found)
        d->debug(errorMessage(QStringLiteral("Error"), error));
}

void HVView::loadQML(const QString &path)
{
    const QFileInfo file(path);
    // Qt would wait for a writer when it opens a pipe.
    if (!file.exists() || !(file.isFile() || file.isDir())) {
        d->debug(QStringLiteral("Can't find :%1").arg(path));
        return;
    }
    const QUrl url = urlOfFile(path);
    if (url != source())
        setSource(url);
}

void HVView::handleWarnings(const QList<QQmlError> &warnings)
{
    const Activity activity(*this);
    for (const QQmlError &warning : warnings)
        d->debug(errorMessage(QStringLiteral("QML Warning"), warning));
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
    QQuickWidget::resizeEvent(event);
    if (rootObject())
        Q_EMIT contentSizeChanged();
}

void HVView::showEvent(QShowEvent *event)
{
    QQuickWidget::showEvent(event);
    if (quickWindow()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software)
        renderScene();
}

void HVView::changeEvent(QEvent *event)
{
    QQuickWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        refreshTheme();
}

} // namespace Hovlets
