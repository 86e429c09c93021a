// SPDX-License-Identifier: Apache-2.0
#include "HVManager.h"

#include "HVContentLocale.h"
#include "HVContentTree.h"
#include "HVContentTranslator.h"
#include "HVContext.h"
#include "HVExternalResource.h"
#include "HVHoverPopup.h"
#include "HVIndex.h"
#include "HVInterpolation.h"
#include "HVPackageFiles.h"
#include "HVPinnedPopups.h"
#include "HVQmlTypes.h"
#include "HVQtCompat.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtGui/QHelpEvent>
#include <QtWidgets/QApplication>

namespace Hovlets {

class HVManager::Private
{
public:
    Private(HVManager *manager, HVInterface *interface, const HVContext &context,
            const QStringList &dataPaths)
        : interface(interface)
        , dataPaths(dataPaths)
        , context(context)
        , translator(manager)
    {
    }

    HVInterface *interface; // not owned
    QStringList dataPaths;
    QStringList loadedDirectories; // canonical, most recent first
    HVContext context;
    QMap<QString, QVariant> globalProperties;
    std::unique_ptr<HVIndex> ownIndex;
    HVIndex *index = nullptr; // the host's, or ownIndex
    bool eventFilterInstalled = false;
    HVContentTranslator translator;
    HVPinnedPopups pinned;
    HVHoverPopup popup;
};

namespace {

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

} // namespace

HVManager::HVManager(HVInterface *interface, HVContext &context, const QStringList &dataPaths,
                     HVIndex *index)
    : QObject(nullptr)
    , d(std::make_unique<Private>(this, interface, context, dataPaths))
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
    inform(QStringLiteral("Indexed packages in %1 seconds").arg(seconds(timer)));

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
    return d->popup.widget();
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
        inform(QStringLiteral("indexing packages (%2) in %1 ")
                       .arg(directory.absolutePath(), filter));
        const QList<QFileInfo> packages = packagesIn(directory, filter);
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
    inform(QStringLiteral("indexing control files in %1").arg(directory.absolutePath()));
    const QFileInfo control(directory.absoluteFilePath(
            d->context.get(HVKeyControlFolderName, QStringLiteral("Control")).toString()));
    inform(QStringLiteral("looking for control files in :%1").arg(control.absoluteFilePath()));
    const QStringList files = controlFilesIn(control);
    for (const QString &file : files) {
        inform(QStringLiteral("found control file :%1").arg(file));
        indexControFile(file, package.canonicalFilePath());
    }
}

void HVManager::indexControFile(const QString &file, const QString &package)
{
    d->index->indexControlFile(file, package);
}

QLocale HVManager::currentLocale()
{
    return translationLocale(d->context);
}

void HVManager::initializeTooltipWindow(QWidget *parent)
{
    d->popup.prepare(this, parent);
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
        if (widget())
            widget()->hide();
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

bool HVManager::mouseMoveEventFilter(QObject *object, QMouseEvent *event)
{
    Q_UNUSED(object)
    if (d->popup.isVisible())
        widget()->checkMousePosition(globalPosition(*event));
    return false;
}

bool HVManager::mouseButtonEventFilter(QObject *object, QMouseEvent *event)
{
    Q_UNUSED(event)
    if (object && object->isWidgetType())
        d->popup.widgetWasClicked(static_cast<QWidget *>(object));
    return false;
}

bool HVManager::mayShow() const
{
    if (d->context.get(HVKeySuspended, false).toBool())
        return false;
    const int modifiers = d->context.get(HVKeyRequiredModifiers, 0).toInt();
    return modifiers == 0 || static_cast<int>(QApplication::keyboardModifiers()) == modifiers;
}

bool HVManager::show(const QString &key, const QPoint &position, QObject *object)
{
    // Messages and questions run code of the host, which may delete the control or show another.
    const QPointer<QObject> control(object);
    const QPointer<QWidget> hovered(qobject_cast<QWidget *>(object));
    inform(QStringLiteral("looking for Hovlet for key:%1").arg(key));
    if (!mayShow())
        return false;
    initializeTooltipWindow(nullptr);
    HVHoverPopup &popup = d->popup;
    if (popup.isShowing(key))
        return popup.keep();

    QString path;
    int depth = 1;
    HVXmlElement *root = nullptr;
    HVXmlElement *element = retrieve(key, path, depth, root);
    if (!element) {
        const QString fallbackKey = d->context.get(HVKeyFallbackKey, QString()).toString();
        if (popup.isShowing(fallbackKey))
            return popup.keep();
        root = nullptr;
        if (!fallbackKey.isNull())
            element = d->index->retrieve(fallbackKey, fallbackContentLocale(d->context), path,
                                         depth, root);
    }
    if (!element)
        return popup.keepOrHide(position, hovered);

    HVContentTree found(element, root);
    if (popup.content() == element)
        found.release(); // an index of the host's own may hand the same tree out again
    if (!root)
        return popup.keepOrHide(position, hovered);
    if (popup.content() == element && popup.isVisible())
        return popup.keep();

    initializeTooltipWindow(nullptr); // which a message, or an index of the host's, may have closed
    // Deleted on return, when the QML has the new content to look at.
    HVContentTree replaced;
    if (popup.content() != element) {
        replaced = popup.view()->takeContentTree();
        popup.view()->setContentTree(std::move(found));
    }
    const QPointer<HVXmlElement> shown(element);
    const QPoint corner = tooltipPosition(position, hovered);
    const QString written = element->attribute(QStringLiteral("shortcut"));
    const QString shortcut =
            d->interface ? d->interface->shortCutForObject(key, control, written) : written;
    if (!shown || popup.content() != shown)
        return popup.isShowing(key);
    if (!shortcut.isEmpty())
        element->setAttribute(QStringLiteral("shortcut"), shortcut);
    widget()->showWithContent(control, corner, element, folderAbove(path, depth - 1));
    widget()->raise();
    return true;
}

HVXmlElement *HVManager::retrieve(const QString &key, QString &path, int &depth,
                                  HVXmlElement *&element)
{
    QElapsedTimer timer;
    timer.start();
    const QLocale preferred = preferredContentLocale(d->context);
    const QLocale fallback = fallbackContentLocale(d->context);
    HVXmlElement *result = d->index->retrieve(key, preferred, path, depth, element);
    if (!result)
        result = d->index->retrieve(key, fallback, path, depth, element);
    if (result)
        inform(QStringLiteral("Retrieved %1 in %2 seconds").arg(key, seconds(timer)));
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
    if (!widget || widget != d->popup.widget())
        return false;
    QWidget *window = d->interface ? d->interface->createWindow(HVReservedWindow) : nullptr;
    if (widget != d->popup.widget())
        return false; // the popup did not live to see the host's answer
    container = window;
    d->pinned.add(widget);
    d->popup.release();
    initializeTooltipWindow(nullptr);
    return true;
}

void HVManager::raise()
{
    d->pinned.raise();
}

void HVManager::setStayOnTop(bool on)
{
    d->pinned.setStayOnTop(on);
}

void HVManager::handleMessage(HVMessageType type, const QString &message)
{
    if (d->interface && type <= d->context.get(HVKeyMessageLevel, HVMessageWarning).toInt())
        d->interface->handleMessage(type, message);
}

void HVManager::inform(const QString &message)
{
    handleMessage(HVMessageInformation, message);
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
    const HVXmlElement *current = d->popup.content();
    if (!current || current->attribute(QStringLiteral("key")) != key)
        current = d->pinned.contentFor(key);
    if (current)
        return answer(*current);

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
    return d->interface ? d->interface->keyForObject(object) : QString();
}

QString HVManager::translateString(const QString &text, const QString &context)
{
    const HVView *view = d->popup.view();
    return view ? d->translator.translate(translationFile(*view, d->context), text, context) : text;
}

bool HVManager::openExternalResource(const QString &resource)
{
    const HVExternalResourceType type = externalResourceType(resource);
    return d->context.get(externalResourceGate(type), true).toBool()
            && d->interface && d->interface->openExternalResource(type, resource);
}

} // namespace Hovlets
