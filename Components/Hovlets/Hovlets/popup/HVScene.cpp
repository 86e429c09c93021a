// SPDX-License-Identifier: Apache-2.0
#include "HVScene.h"

#include "HVQtCompat.h"
#include "HVScenePrivate.h"
#include "HVStandIn.h"
#include "HVToolTipRequest.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

#include <utility>

namespace Hovlets {

namespace {

constexpr int ShortDelay = 20; // ms, as in QApplication

int styleDelay(QStyle::StyleHint hint, const QWidget *widget)
{
    return widget->style()->styleHint(hint, nullptr, widget);
}

} // namespace

HVScene::Private::Private(HVScene &scene, QWindow &window)
    : window(window)
    , m_scene(scene)
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return; // widgets need one
    m_root = new HVStandIn(scene, nullptr, nullptr);
    m_root->ensurePolished(); // as if it were shown: HVKeyAlwaysShowTooltips applies to it
    takeWindowPlace();
    m_wakeUp.setSingleShot(true);
    m_fallAsleep.setSingleShot(true);
    QObject::connect(&m_wakeUp, &QTimer::timeout, &m_wakeUp, [this] { requestToolTip(); });
}

HVScene::Private::~Private()
{
    HVStandIn *root = std::exchange(m_root, nullptr); // a popup that hides must not find it
    if (QCoreApplication::instance()) // widgets cannot be deleted without one
        delete root;
}

template <typename Event> void HVScene::Private::send(Event &&event)
{
    if (m_root)
        QCoreApplication::sendEvent(m_root, &event);
}

/// Passes on to the stand-in what happens to the window, as far as a popup responds to it.
void HVScene::Private::handle(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseMove: {
        const auto &mouse = static_cast<const QMouseEvent &>(event);
        if (mouse.buttons() == Qt::NoButton)
            pointerMoved(globalPosition(mouse));
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::FocusOut:
        stopTimers();
        break;
    case QEvent::Leave:
        m_wakeUp.stop();
        send(QEvent(QEvent::Leave));
        break;
    case QEvent::Move:
        takeWindowPlace();
        if (m_root)
            send(QMoveEvent(m_root->pos(), m_root->pos()));
        break;
    case QEvent::Hide:
        stopTimers();
        send(QHideEvent());
        break;
    case QEvent::WindowStateChange:
        if (window.windowStates() & Qt::WindowMinimized)
            send(QHideEvent());
        break;
    default:
        break;
    }
}

void HVScene::Private::pointerMoved(const QPoint &position)
{
    if (!m_root || position == m_position)
        return;
    m_position = position;
    m_wakeUp.start(m_fallAsleep.isActive() ? ShortDelay
                                           : styleDelay(QStyle::SH_ToolTip_WakeUpDelay, m_root));
}

void HVScene::Private::stopTimers()
{
    m_wakeUp.stop();
    m_fallAsleep.stop();
}

void HVScene::Private::requestToolTip()
{
    HVStandIn *target = standInAt(m_position);
    const QPointer<HVScene> scene(&m_scene); // the host may delete the window
    if (target && Hovlets::requestToolTip(*target, m_position) && scene && m_root)
        m_fallAsleep.start(styleDelay(QStyle::SH_ToolTip_FallAsleepDelay, m_root));
}

void HVScene::Private::takeWindowPlace()
{
    if (m_root)
        m_root->setGeometry(QRect(window.mapToGlobal(QPoint()), window.size()));
}

HVStandIn *HVScene::Private::standInAt(const QPoint &position)
{
    takeWindowPlace();
    if (!m_root || !m_root->geometry().contains(position))
        return nullptr;
    return innermost(m_scene.controlsAt(position));
}

HVStandIn *HVScene::Private::innermost(const QList<QObject *> &controls)
{
    takeWindowPlace();
    HVStandIn *standIn = m_root;
    if (!standIn)
        return nullptr;
    for (auto control = controls.crbegin(); control != controls.crend(); ++control)
        standIn = standInFor(*control, standIn);
    return standIn;
}

HVStandIn *HVScene::Private::standInOf(const QObject *control) const
{
    return m_standIns.value(control);
}

HVStandIn *HVScene::Private::standInFor(QObject *control, QWidget *around)
{
    QPointer<HVStandIn> standIn = m_standIns.value(control);
    if (!standIn) {
        standIn = new HVStandIn(m_scene, around, control);
        m_standIns.insert(control, standIn);
        connect(control, &QObject::destroyed, &m_scene, [this, control] {
            delete m_standIns.take(control).data(); // hides the popup
        });
    }
    if (standIn->parentWidget() != around)
        standIn->setParent(around);
    const QRect place = m_scene.geometryOf(control);
    standIn->setGeometry(place.translated(-around->mapToGlobal(QPoint())));
    standIn->setObjectName(standIn->key()); // for hosts that look for keys themselves
    return standIn;
}

HVScene::HVScene(QWindow *window)
    : QObject(window)
    , d(std::make_unique<Private>(*this, *window))
{
    window->installEventFilter(this);
}

HVScene::~HVScene() = default;

HVScene *HVScene::of(const QWindow *window)
{
    return window ? window->findChild<HVScene *>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

QWindow *HVScene::window() const
{
    return &d->window;
}

QObject *HVScene::controlOf(const QWidget *widget)
{
    const auto *standIn = qobject_cast<const HVStandIn *>(widget);
    return standIn ? standIn->control() : nullptr;
}

QWidget *HVScene::focusWidget()
{
    return d->innermost(focusedControls());
}

void HVScene::controlHidden(const QObject *control)
{
    QHideEvent event;
    if (HVStandIn *standIn = d->standInOf(control))
        QCoreApplication::sendEvent(standIn, &event);
}

QString HVScene::keyOf(const QObject *control) const
{
    Q_UNUSED(control)
    return {};
}

QString HVScene::shortcutOf(const QObject *control) const
{
    Q_UNUSED(control)
    return {};
}

QList<QObject *> HVScene::focusedControls() const
{
    return {};
}

bool HVScene::eventFilter(QObject *object, QEvent *event)
{
    if (object == &d->window)
        d->handle(*event);
    return QObject::eventFilter(object, event);
}

} // namespace Hovlets
