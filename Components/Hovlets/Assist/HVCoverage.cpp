// SPDX-License-Identifier: Apache-2.0
#include <HovletsAssist/HVCoverage.h>

#include "HVControlWalk.h"
#include "HVCoverageOverlay.h"
#include "HVCoverageRecord.h"
#include "HVEntryLookup.h"

#include <Hovlets/HVContext.h>
#include <Hovlets/HVInterface.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QEvent>
#include <QtCore/QHash>
#include <QtCore/QJsonDocument>
#include <QtCore/QPointer>
#include <QtCore/QSaveFile>
#include <QtCore/QTimer>
#include <QtWidgets/QMenu>

namespace Hovlets {

namespace {

constexpr int Rest = 50; // ms from an event to the walk, which covers all events until then
constexpr int FormatVersion = 1;

QString windowName(const QWidget *widget)
{
    const QWidget *window = widget->window();
    if (!window->windowTitle().isEmpty())
        return window->windowTitle();
    return window->objectName().isEmpty() ? QLatin1String(window->metaObject()->className())
                                          : window->objectName();
}

/// Whether such an event may leave an outline in the wrong place.
bool movesControls(QEvent::Type type)
{
    return type == QEvent::Hide || type == QEvent::Move || type == QEvent::Resize
            || type == QEvent::LayoutRequest || type == QEvent::EnabledChange;
}

} // namespace

class Q_DECL_HIDDEN HVCoverage::Private
{
public:
    bool isCovered(const QString &key);
    QString coveredKeyOfParent(QWidget *widget);
    void note(const HVVisibleObject &visible);
    void showOutlines();

    QPointer<HVInterface> host;
    HVCoverageSettings settings;
    HVCoverageRecord record;
    QHash<QString, bool> entries; // by key, whether it has one; cleared when a setting changes
    QHash<QWidget *, QVector<HVOutline>> outlines; // by window, from the last walk
    QHash<QWidget *, QPointer<HVCoverageOverlay>> overlays;
    QString fallback; // the fallback key if it has an entry
    QTimer timer;
    bool isWalking = false;
    bool isWritten = false;
};

bool HVCoverage::Private::isCovered(const QString &key)
{
    const auto known = entries.constFind(key);
    return known != entries.constEnd() ? *known : *entries.insert(key, hasEntry(*host, key));
}

QString HVCoverage::Private::coveredKeyOfParent(QWidget *widget)
{
    for (; widget; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
        const QString key = host->keyForObject(widget);
        if (isCovered(key))
            return key;
    }
    return {};
}

void HVCoverage::Private::note(const HVVisibleObject &visible)
{
    HVControlState control;
    control.key = host->keyForObject(visible.object);
    control.covered = isCovered(control.key);
    if (!visible.interactive && !control.covered)
        return;
    control.className = QLatin1String(visible.object->metaObject()->className());
    control.objectName = visible.object->objectName();
    control.label = labelOf(visible.object);
    control.window = windowName(visible.widget);
    control.name = visible.name;
    control.parents = visible.parents;
    if (!control.covered) {
        control.answeredByFallback = !fallback.isEmpty();
        const bool inMenu = visible.object != visible.widget;
        if (inMenu || !visible.widget->isWindow())
            control.parentKey =
                    coveredKeyOfParent(inMenu ? visible.widget : visible.widget->parentWidget());
    }
    record.add(control);
    outlines[visible.widget->window()].append({ visible.area, control.covered });
}

void HVCoverage::Private::showOutlines()
{
    for (auto it = outlines.constBegin(); it != outlines.constEnd(); ++it) {
        QPointer<HVCoverageOverlay> &overlay = overlays[it.key()];
        if (!overlay && takesOverlay(it.key()))
            overlay = new HVCoverageOverlay(it.key());
        if (overlay)
            overlay->setOutlines(it.value());
    }
    for (auto it = overlays.constBegin(); it != overlays.constEnd(); ++it) {
        if (*it && !outlines.contains(it.key()))
            (*it)->setOutlines({});
    }
}

HVCoverage::HVCoverage(HVInterface &host, const HVCoverageSettings &settings, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->host = &host;
    d->settings = settings;
    d->timer.setSingleShot(true);
    d->timer.setInterval(Rest);
    connect(&d->timer, &QTimer::timeout, this, &HVCoverage::walk);
    connect(&host.context(), &HVContext::settingDidChange, this, [this] {
        d->entries.clear(); // the locale may have changed
        walkSoon();
    });
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] {
        if (!d->settings.reportFile.isEmpty())
            d->isWritten = writeReport(d->settings.reportFile);
    });
    qApp->installEventFilter(this);
    walkSoon();
}

HVCoverage::~HVCoverage()
{
    if (!d->settings.reportFile.isEmpty() && !d->isWritten)
        writeReport(d->settings.reportFile);
    setOverlayVisible(false);
}

void HVCoverage::walk()
{
    if (!d->host || d->isWalking)
        return;
    d->isWalking = true; // the overlays of this walk must not start another
    d->timer.stop();
    d->outlines.clear();
    d->fallback = fallbackKey(*d->host);
    walkVisibleObjects(d->settings.ignoredClasses,
                       [this](const HVVisibleObject &visible) { d->note(visible); });
    if (d->settings.overlay)
        d->showOutlines();
    d->isWalking = false;
}

/// Does not restart the timer: a window that changes constantly must be walked as well.
void HVCoverage::walkSoon()
{
    if (!d->timer.isActive())
        d->timer.start();
}

QJsonObject HVCoverage::report()
{
    if (!d->host)
        return {};
    walk();
    QJsonObject report = d->record.toJson(d->host->keys(), d->fallback);
    report[QStringLiteral("format")] = QStringLiteral("hovlets-coverage");
    report[QStringLiteral("version")] = FormatVersion;
    report[QStringLiteral("application")] = QCoreApplication::applicationName();
    report[QStringLiteral("created")] = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    report[QStringLiteral("locale")] =
            d->host->context().get(HVKeyLocale, QStringLiteral("en_US")).toString();
    report[QStringLiteral("fallbackKey")] =
            d->host->context().get(HVKeyFallbackKey, QString()).toString();
    return report;
}

bool HVCoverage::writeReport(const QString &file)
{
    const QJsonObject written = report();
    QSaveFile target(file);
    if (written.isEmpty() || !target.open(QIODevice::WriteOnly))
        return false;
    target.write(QJsonDocument(written).toJson());
    return target.commit();
}

bool HVCoverage::isOverlayVisible() const
{
    return d->settings.overlay;
}

void HVCoverage::setOverlayVisible(bool visible)
{
    d->settings.overlay = visible;
    if (visible) {
        walk();
        return;
    }
    for (const QPointer<HVCoverageOverlay> &overlay : std::as_const(d->overlays))
        delete overlay.data();
    d->overlays.clear();
}

bool HVCoverage::eventFilter(QObject *object, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (!d->host || d->isWalking || !object->isWidgetType() || isOverlay(object))
        return false;
    if (type == QEvent::ToolTip)
        d->record.addAskedKey(d->host->keyForObject(object));
    else if (type == QEvent::Show || (d->settings.overlay && movesControls(type)))
        walkSoon();
    return false;
}

} // namespace Hovlets
