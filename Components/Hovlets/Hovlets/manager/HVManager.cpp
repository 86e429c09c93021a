// SPDX-License-Identifier: Apache-2.0
#include "HVManager.h"

#include "HVAlwaysToolTips.h"
#include "HVContentLoader.h"
#include "HVContentLocale.h"
#include "HVHoverEvents.h"
#include "HVHoverPopup.h"
#include "HVHoverShow.h"
#include "HVInterpolation.h"
#include "HVLookUp.h"
#include "HVManagerServices.h"
#include "HVPinnedPopups.h"
#include "HVPinnedRestore.h"
#include "HVQmlTypes.h"
#include "HVQtCompat.h"
#include "HVStandIn.h"
#include "HVTextServices.h"
#include "HVView.h"
#include "HVWarmUp.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>

namespace Hovlets {

class HVManager::Private
{
public:
    Private(HVManager *manager, HVInterface *interface, const HVContext &context,
            const QStringList &dataPaths, HVIndex *index)
        : interface(interface)
        , dataPaths(dataPaths)
        , context(context)
        , loader(*manager)
        , ownIndex(index ? nullptr : std::make_unique<HVIndex>(&this->context, dataPaths))
        , index(index ? index : ownIndex.get())
        , texts(*manager)
        , hoverShow(*manager, popup)
        , hoverEvents(*manager, popup, hoverShow)
        , services(*manager)
    {
    }

    HVInterface *interface; // not owned
    QStringList dataPaths;
    HVContext context;
    HVContentLoader loader;
    std::unique_ptr<HVIndex> ownIndex; // null if the host supplies one
    HVIndex *index;
    bool eventFilterInstalled = false;
    std::unique_ptr<HVAlwaysToolTips> alwaysToolTips; // if the settings ask for it
    HVTextServices texts;
    HVPinnedPopups pinned;
    HVHoverPopup popup;
    HVHoverShow hoverShow;
    HVHoverEvents hoverEvents;
    HVManagerServices services; // destroyed first, so no answer uses members that are gone
};

namespace {

QString seconds(const QElapsedTimer &timer)
{
    return QString::number(static_cast<double>(timer.elapsed()) / 1000.0);
}

} // namespace

HVManager::HVManager(HVInterface *interface, HVContext &context, const QStringList &dataPaths,
                     HVIndex *index)
    : QObject(nullptr)
    , d(std::make_unique<Private>(this, interface, context, dataPaths, index))
{
    connect(d->index, &HVIndex::fileSkipped, this,
            [this](const QString &message) { handleMessage(HVMessageWarning, message); });
    d->index->open();

    if (context.get(HVKeyAlwaysShowTooltips).toBool())
        d->alwaysToolTips = std::make_unique<HVAlwaysToolTips>();

    QElapsedTimer timer;
    timer.start();
    loadDataPath(dataPaths);
    inform(QStringLiteral("Indexed packages in %1 seconds").arg(seconds(timer)));

    registerQmlTypes();
    if (d->context.get(HVKeyTrackHover).toBool()) {
        QCoreApplication::instance()->installEventFilter(this);
        d->eventFilterInstalled = true;
    }
    const QString warmUpKey = d->context.get(HVKeyWarmUp).toString();
    if (!warmUpKey.isEmpty())
        new HVWarmUp(*this, d->popup, warmUpKey);
}

HVManager::~HVManager()
{
    if (d->eventFilterInstalled && QCoreApplication::instance())
        QCoreApplication::instance()->removeEventFilter(this);
    d->alwaysToolTips.reset();
    HVAlwaysToolTips::reset();
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
    d->loader.loadDataPaths(paths);
}

void HVManager::loadPackage(const QFileInfo &package)
{
    d->loader.loadPackage(package);
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
    return d->hoverEvents.filter(object, event) || QObject::eventFilter(object, event);
}

bool HVManager::mouseMoveEventFilter(QObject *object, QMouseEvent *event)
{
    Q_UNUSED(object)
    d->hoverEvents.pointerMoved(globalPosition(*event));
    return false;
}

bool HVManager::mouseButtonEventFilter(QObject *object, QMouseEvent *event)
{
    d->hoverEvents.buttonUsed(object, event ? globalPosition(*event) : QPoint());
    return false;
}

bool HVManager::show(const QString &key, const QPoint &position, QObject *object)
{
    const QPointer<QObject> control(object); // the host may delete it while it handles a message
    inform(QStringLiteral("looking for Hovlet for key:%1").arg(key));
    if (!d->hoverShow.isAllowed())
        return false;
    initializeTooltipWindow(nullptr);
    return d->hoverShow.show(key, position, control);
}

HVXmlElement *HVManager::retrieve(const QString &key, QString &path, int &depth,
                                  HVXmlElement *&element)
{
    QElapsedTimer timer;
    timer.start();
    HVXmlElement *result = retrieveByLocale(*d->index, d->context, key, path, depth, element);
    if (result)
        inform(QStringLiteral("Retrieved %1 in %2 seconds").arg(key, seconds(timer)));
    return result;
}

QPoint HVManager::tooltipPosition(const QPoint &position, QWidget *widget)
{
    Q_UNUSED(widget)
    const QSize offset = d->context.get(HVKeyCursorOffset).toSize();
    return position + QPoint(offset.width(), offset.height());
}

bool HVManager::reserve(HVWidget *widget, QWidget *&container)
{
    if (!widget || widget != d->popup.widget())
        return false;
    QWidget *window = d->interface ? d->interface->createWindow(HVReservedWindow) : nullptr;
    if (widget != d->popup.widget())
        return false; // the popup was deleted while the host answered
    container = window;
    d->pinned.add(widget, d->context.get(HVKeyLocale).toString());
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
    if (d->interface && type <= d->context.get(HVKeyMessageLevel).toInt())
        d->interface->handleMessage(type, message);
}

void HVManager::inform(const QString &message)
{
    handleMessage(HVMessageInformation, message);
}

void HVManager::setGlobalProperty(const QString &name, const QVariant &value)
{
    d->texts.setGlobalProperty(name, value);
}

QString HVManager::interpolate(const QString &text)
{
    return interpolate(text, d->texts.globalProperties());
}

QString HVManager::interpolate(const QString &text, const QMap<QString, QVariant> &values)
{
    return interpolated(text, values);
}

QString HVManager::hovletAttribute(const QString &key, const QString &attribute,
                                   const QString &defaultValue)
{
    const HVXmlElement *onScreen = d->popup.content();
    if (!onScreen || onScreen->attribute(QStringLiteral("key")) != key)
        onScreen = d->pinned.contentFor(key);
    return d->texts.hovletAttribute(onScreen, key, attribute, defaultValue);
}

QString HVManager::keyForObject(QObject *object)
{
    const auto *standIn = qobject_cast<const HVStandIn *>(object);
    const QString known = standIn ? standIn->key() : QString();
    if (!d->interface || !known.isEmpty() || (standIn && !standIn->control()))
        return known;
    return d->interface->keyForObject(standIn ? standIn->control() : object);
}

QString HVManager::translateString(const QString &text, const QString &context)
{
    HVView *view = d->services.translatingView();
    if (!view)
        view = d->popup.view();
    return view ? view->translatedByPackage(text, context) : text;
}

bool HVManager::openExternalResource(const QString &resource)
{
    return d->texts.openExternalResource(resource);
}

QByteArray HVManager::saveState() const
{
    return encodePinnedStates(d->pinned.states());
}

bool HVManager::restoreState(const QByteArray &state)
{
    return restorePinned(*this, d->popup, state);
}

HVPopupServices *popupServicesOf(HVManager *manager)
{
    return manager ? &manager->d->services : nullptr;
}

} // namespace Hovlets
