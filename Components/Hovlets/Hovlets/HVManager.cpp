// SPDX-License-Identifier: Apache-2.0
#include "HVManager.h"

#include "HVContentTree.h"
#include "HVContext.h"
#include "HVIndex.h"
#include "HVInterpolation.h"
#include "HVQtCompat.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QTranslator>
#include <QtCore/QUrl>
#include <QtGui/QHelpEvent>
#include <QtQml/qqml.h>
#include <QtWidgets/QApplication>

#include <algorithm>

namespace Hovlets {

class HVManager::Private
{
public:
    Private(HVInterface *interface, const HVContext &context, const QStringList &dataPaths)
        : interface(interface)
        , dataPaths(dataPaths)
        , context(context)
    {
    }

    HVXmlElement *content() const
    {
        return widget && widget->view() ? widget->view()->content() : nullptr;
    }

    /// Drops popups that the user has closed.
    void forgetClosedPopups() { reservedWidgets.removeAll(QPointer<HVWidget>()); }

    HVInterface *interface; // not owned
    QStringList dataPaths;
    QStringList loadedDirectories; // canonical, most recent first
    HVContext context;
    QMap<QString, QVariant> globalProperties;
    QPointer<HVWidget> widget; // the current popup
    std::unique_ptr<HVIndex> ownIndex;
    HVIndex *index = nullptr; // the host's, or ownIndex
    QList<QPointer<HVWidget>> reservedWidgets;
    bool eventFilterInstalled = false;
    QTranslator *translator = nullptr; // child of the manager, never installed
    QString translationFile;
};

namespace {

constexpr auto ControlFileFilter = "*.xml";
constexpr QDir::Filters Listed = QDir::NoSymLinks | QDir::Readable | QDir::NoDotAndDotDot;

QString seconds(const QElapsedTimer &timer)
{
    return QString::number(static_cast<double>(timer.elapsed()) / 1000.0);
}

void setAlwaysShowToolTips(bool on)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        window->setAttribute(Qt::WA_AlwaysShowToolTips, on);
}

void registerQmlTypes()
{
    static const int element =
            qmlRegisterType<HVXmlElement>("com.zandor.hovlets.qml", 1, 0, "HVXmlElement");
    Q_UNUSED(element)
}

QList<QPointer<HVWidget>> &dismissedPopups()
{
    static QList<QPointer<HVWidget>> popups;
    return popups;
}

/*!
 * Deletes \a popup later, at the latest with the application: a host that deletes its interface
 * after exec() has no event loop left to do it.
 */
void dismiss(HVWidget *popup)
{
    popup->deleteLater();
    dismissedPopups().append(popup);
    qAddPostRoutine([] {
        for (const QPointer<HVWidget> &left : std::as_const(dismissedPopups()))
            delete left.data();
        dismissedPopups().clear();
    });
}

} // namespace

HVManager::HVManager(HVInterface *interface, HVContext &context, const QStringList &dataPaths,
                     HVIndex *index)
    : QObject(nullptr)
    , d(std::make_unique<Private>(interface, context, dataPaths))
{
    if (!index) {
        d->ownIndex = std::make_unique<HVIndex>(&d->context, dataPaths);
        index = d->ownIndex.get();
    }
    d->index = index;
    d->index->open();

    if (context.get(HVKeyAlwaysShowTooltips, false).toBool())
        setAlwaysShowToolTips(true);

    QElapsedTimer timer;
    timer.start();
    loadDataPath(dataPaths);
    handleMessage(HVMessageInformation,
                  QStringLiteral("Indexed packages in %1 seconds").arg(seconds(timer)));

    registerQmlTypes();
    if (d->context.get(HVKeyTrackHover, false).toBool()) {
        QCoreApplication::instance()->installEventFilter(this);
        d->eventFilterInstalled = true;
    }
}

HVManager::~HVManager()
{
    if (d->eventFilterInstalled && QCoreApplication::instance())
        QCoreApplication::instance()->removeEventFilter(this);
    setAlwaysShowToolTips(false);
    if (d->widget)
        dismiss(d->widget);
}

HVContext &HVManager::context()
{
    return d->context;
}

const HVContext &HVManager::context() const
{
    return d->context;
}

HVIndex *HVManager::index()
{
    return d->index;
}

HVInterface *HVManager::interface()
{
    return d->interface;
}

HVWidget *HVManager::widget()
{
    return d->widget;
}

QStringList HVManager::searchPaths()
{
    return d->dataPaths;
}

QStringList HVManager::keys()
{
    return d->index->keys();
}

void HVManager::loadDataPath(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (!QFileInfo(path).isDir())
            continue;
        const QDir directory(QFileInfo(path).absoluteFilePath());
        const QString filter = QStringLiteral("*.%1").arg(
                d->context.get(HVKeyPackageSuffix, QStringLiteral("hovlets")).toString());
        handleMessage(HVMessageInformation,
                      QStringLiteral("indexing packages (%2) in %1 ")
                              .arg(directory.absolutePath(), filter));
        const QFileInfoList packages =
                directory.entryInfoList({ filter }, QDir::Dirs | Listed, QDir::NoSort);
        for (const QFileInfo &package : packages)
            loadPackage(package);

        const QString canonical = directory.canonicalPath();
        if (!d->loadedDirectories.contains(canonical))
            d->loadedDirectories.prepend(canonical);
    }
}

void HVManager::loadPackage(const QFileInfo &package)
{
    const QDir directory(package.absoluteFilePath());
    handleMessage(HVMessageInformation,
                  QStringLiteral("indexing control files in %1").arg(directory.absolutePath()));
    const QFileInfo control(directory.absoluteFilePath(
            d->context.get(HVKeyControlFolderName, QStringLiteral("Control")).toString()));
    handleMessage(
            HVMessageInformation,
            QStringLiteral("looking for control files in :%1").arg(control.absoluteFilePath()));

    // No entry is a symbolic link, so the folder's canonical path serves all its files.
    const QDir canonicalFolder(control.canonicalFilePath());
    const QString canonicalPackage = package.canonicalFilePath();
    const QStringList files = QDir(control.absoluteFilePath())
                                      .entryList({ QLatin1String(ControlFileFilter) },
                                                 QDir::Files | Listed, QDir::NoSort);
    for (const QString &name : files) {
        const QString file = canonicalFolder.filePath(name);
        handleMessage(HVMessageInformation, QStringLiteral("found control file :%1").arg(file));
        indexControFile(file, canonicalPackage);
    }
}

void HVManager::indexControFile(const QString &file, const QString &package)
{
    d->index->indexControlFile(file, package);
}

QLocale HVManager::currentLocale()
{
    for (const contextKey key : { HVKeyLocale, HVKeyFallbackLocale }) {
        const QString name = d->context.get(key, QString()).toString();
        if (!name.isEmpty())
            return QLocale(name);
    }
    return QLocale::system();
}

void HVManager::initializeTooltipWindow(QWidget *parent)
{
    if (d->widget) {
        d->widget->setParent(parent);
        return;
    }
    d->widget = new HVWidget(this, parent, nullptr);
    d->widget->setView(new HVView(this, d->widget));
}

bool HVManager::eventFilter(QObject *object, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        if (mouseButtonEventFilter(object, static_cast<QMouseEvent *>(event)))
            return true;
        break;
    case QEvent::MouseMove:
        mouseMoveEventFilter(object, static_cast<QMouseEvent *>(event));
        break;
    case QEvent::ToolTip:
        return show(keyForObject(object), static_cast<QHelpEvent *>(event)->globalPos(), object);
    case QEvent::ApplicationDeactivate:
        if (d->widget)
            d->widget->hide();
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

bool HVManager::mouseMoveEventFilter(QObject *object, QMouseEvent *event)
{
    Q_UNUSED(object)
    if (d->widget && d->widget->isVisible())
        d->widget->checkMousePosition(globalPosition(*event));
    return false;
}

bool HVManager::mouseButtonEventFilter(QObject *object, QMouseEvent *event)
{
    Q_UNUSED(event)
    if (!object || !object->isWidgetType() || !d->widget || !d->widget->isVisible())
        return false;
    const auto *clicked = static_cast<QWidget *>(object);
    if (clicked == d->widget || d->widget->isAncestorOf(clicked))
        return false;
    if (d->widget->view() && d->widget->view()->stayOpen())
        d->widget->activateWindow();
    else
        d->widget->hide();
    return false;
}

/// Whether the popup is on screen with the content for \a key.
bool HVManager::isShowing(const QString &key) const
{
    const HVXmlElement *content = d->content();
    return content && d->widget->isVisible() && content->attribute(QStringLiteral("key")) == key;
}

/// What becomes of the popup when there is nothing to show for the control under the mouse.
bool HVManager::keepOrHide(const QPoint &position, const QWidget *hovered)
{
    if (!d->widget->isVisible())
        return false;
    if (d->widget->isSafe(position) && (!hovered || hovered->toolTip().isEmpty())) {
        d->widget->showAnimated();
        return true;
    }
    d->widget->hideAnimated();
    return false;
}

bool HVManager::show(const QString &key, const QPoint &position, QObject *object)
{
    handleMessage(HVMessageInformation, QStringLiteral("looking for Hovlet for key:%1").arg(key));
    if (d->context.get(HVKeySuspended, false).toBool())
        return false;
    const int modifiers = d->context.get(HVKeyRequiredModifiers, 0).toInt();
    if (modifiers != 0 && static_cast<int>(QApplication::keyboardModifiers()) != modifiers)
        return false;

    auto *hovered = object && object->isWidgetType() ? static_cast<QWidget *>(object) : nullptr;
    initializeTooltipWindow(nullptr);
    if (isShowing(key)) {
        d->widget->showAnimated(); // it may be fading out
        return true;
    }

    QString path;
    int depth = 1;
    HVXmlElement *root = nullptr;
    HVXmlElement *element = retrieve(key, path, depth, root);
    if (!element) {
        const QString locale =
                d->context.get(HVKeyFallbackLocale, QStringLiteral("en_US")).toString();
        const QString fallbackKey = d->context.get(HVKeyFallbackKey, QString()).toString();
        if (isShowing(fallbackKey)) {
            d->widget->showAnimated();
            return true;
        }
        root = nullptr;
        if (!fallbackKey.isNull())
            element = d->index->retrieve(fallbackKey, QLocale(locale), path, depth, root);
    }
    if (!element)
        return keepOrHide(position, hovered);

    HVView *view = d->widget->view();
    HVContentTree found(element, root);
    if (view->content() == element)
        found.release(); // an index of the host's own may hand the same tree out again
    if (!root)
        return keepOrHide(position, hovered);
    if (view->content() == element && d->widget->isVisible()) {
        d->widget->showAnimated();
        return true;
    }

    // Deleted on return, when the QML has the new content to look at.
    HVContentTree replaced;
    if (view->content() != element) {
        replaced = view->takeContentTree();
        view->setContentTree(std::move(found));
    }
    const QString shortcut = d->interface->shortCutForObject(
            key, object, element->attribute(QStringLiteral("shortcut")));
    if (!shortcut.isEmpty())
        element->setAttribute(QStringLiteral("shortcut"), shortcut);

    QDir base(path);
    for (int level = 1; level < depth; ++level)
        base.cdUp();
    d->widget->showWithContent(object, tooltipPosition(position, hovered), element,
                               base.canonicalPath());
    d->widget->raise();
    return true;
}

HVXmlElement *HVManager::retrieve(const QString &key, QString &path, int &depth,
                                  HVXmlElement *&element)
{
    const QString fallback = QStringLiteral("en_US");
    const QString preferred = d->context.get(HVKeyLocale, fallback).toString();
    const QString other = d->context.get(HVKeyFallbackLocale, fallback).toString();
    QElapsedTimer timer;
    timer.start();
    HVXmlElement *result = d->index->retrieve(key, QLocale(preferred), path, depth, element);
    if (!result)
        result = d->index->retrieve(key, QLocale(other), path, depth, element);
    if (!result)
        return nullptr;
    handleMessage(HVMessageInformation,
                  QStringLiteral("Retrieved %1 in %2 seconds").arg(key, seconds(timer)));
    return result;
}

QPoint HVManager::tooltipPosition(const QPoint &position, QWidget *widget)
{
    Q_UNUSED(widget)
    const QSize offset = d->context.get(HVKeyCursorOffset, QSize(35, 30)).toSize();
    return position + QPoint(offset.width(), offset.height());
}

bool HVManager::reserve(HVWidget *widget, QWidget *&container)
{
    if (!widget || widget != d->widget)
        return false;
    container = d->interface->createWindow(HVReservedWindow);
    d->reservedWidgets.append(widget);
    d->widget = nullptr;
    initializeTooltipWindow(nullptr);
    return true;
}

void HVManager::raise()
{
    d->forgetClosedPopups();
    for (auto it = d->reservedWidgets.crbegin(); it != d->reservedWidgets.crend(); ++it)
        (*it)->raise();
}

void HVManager::setStayOnTop(bool on)
{
    d->forgetClosedPopups();
    for (auto it = d->reservedWidgets.crbegin(); it != d->reservedWidgets.crend(); ++it) {
        HVWidget *popup = *it;
        popup->setWindowFlags(popup->windowFlags().setFlag(Qt::WindowStaysOnTopHint, on));
        popup->show(); // a change of flags hides a window
    }
}

void HVManager::handleMessage(HVMessageType type, const QString &message)
{
    if (d->interface && type <= d->context.get(HVKeyMessageLevel, HVMessageWarning).toInt())
        d->interface->handleMessage(type, message);
}

void HVManager::setGlobalProperty(const QString &name, const QVariant &value)
{
    d->globalProperties.insert(name, value);
}

QString HVManager::interpolate(const QString &text)
{
    return interpolate(text, d->globalProperties);
}

QString HVManager::interpolate(const QString &text, const QMap<QString, QVariant> &values)
{
    return interpolated(text, values);
}

QString HVManager::hovletAttribute(const QString &key, const QString &attribute,
                                   const QString &defaultValue)
{
    const auto answer = [&](const HVXmlElement &element) {
        return element.hasAttribute(attribute) ? element.attribute(attribute) : defaultValue;
    };
    QList<QPointer<HVWidget>> popups = d->reservedWidgets;
    popups.prepend(d->widget);
    for (const QPointer<HVWidget> &popup : std::as_const(popups)) {
        const HVXmlElement *content = popup && popup->view() ? popup->view()->content() : nullptr;
        if (content && content->attribute(QStringLiteral("key")) == key)
            return answer(*content);
    }

    QString path;
    int depth = 1;
    HVXmlElement *root = nullptr;
    HVXmlElement *element = retrieve(key, path, depth, root);
    if (!element)
        return defaultValue;
    const HVContentTree tree(element, root);
    return answer(*element);
}

QString HVManager::keyForObject(QObject *object)
{
    return d->interface->keyForObject(object);
}

QString HVManager::translateString(const QString &text, const QString &context)
{
    if (!d->widget || !d->widget->view())
        return text;
    const QString name = d->context.get(HVKeyTranslationName, QStringLiteral("Hovlets")).toString();
    const QString path = d->widget->view()->findComponent(
            QStringLiteral("l10n_name"), HVKeyTranslationFolder, QStringLiteral("l10n"),
            QStringLiteral("%1_%2.qm").arg(name, currentLocale().name()));
    if (!d->translator)
        d->translator = new QTranslator(this);
    if (path != d->translationFile) {
        d->translationFile.clear();
        if (!d->translator->load(path))
            return text;
        d->translationFile = path;
    }
    return d->translator->translate(context.toUtf8().constData(), text.toUtf8().constData());
}

bool HVManager::openExternalResource(const QString &resource)
{
    const QUrl url(resource, QUrl::StrictMode);
    HVExternalResourceType type = HVDocumentationResource;
    if (url.isValid() && !url.scheme().isEmpty())
        type = HVUrlResource;
    else if (resource.contains(QLatin1Char('/')))
        type = HVFileResource;
    const contextKey gate =
            type == HVDocumentationResource ? HVKeyDocumentationEnabled : HVKeyLinksEnabled;
    return d->context.get(gate, true).toBool()
            && d->interface->openExternalResource(type, resource);
}

} // namespace Hovlets
