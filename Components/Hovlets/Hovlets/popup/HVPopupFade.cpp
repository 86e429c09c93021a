// SPDX-License-Identifier: Apache-2.0
#include "HVPopupFade.h"

#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

constexpr qreal Faint = 0.1;
constexpr qreal Opaque = 1.0;
constexpr qreal Transparent = 0.0;

} // namespace

HVPopupFade::HVPopupFade(QWidget &popup)
    : QObject(&popup)
    , m_popup(popup)
    , m_animation(new QPropertyAnimation(&popup, "windowOpacity", &popup))
{
    connect(m_animation, &QPropertyAnimation::finished, this, [this] {
        if (qFuzzyIsNull(m_animation->endValue().toReal()))
            Q_EMIT fadedOut();
    });
    connect(m_animation, &QPropertyAnimation::valueChanged, this, &HVPopupFade::opacityChanged);
}

bool HVPopupFade::isRunning() const
{
    return m_animation->state() != QAbstractAnimation::Stopped;
}

bool HVPopupFade::isFadingOut() const
{
    return isRunning() && qFuzzyIsNull(m_animation->endValue().toReal());
}

void HVPopupFade::prepareToFadeIn()
{
    m_popup.setWindowOpacity(Faint);
}

void HVPopupFade::fadeIn(int duration)
{
    run(Faint, Opaque, duration);
}

void HVPopupFade::fadeOut(int duration)
{
    run(m_popup.windowOpacity(), Transparent, duration);
}

void HVPopupFade::stop()
{
    m_animation->stop();
}

void HVPopupFade::makeOpaque()
{
    stop();
    m_popup.setWindowOpacity(Opaque);
    Q_EMIT opacityChanged();
}

void HVPopupFade::run(qreal from, qreal to, int duration)
{
    m_animation->setDuration(duration);
    m_animation->setStartValue(from);
    m_animation->setEndValue(to);
    m_animation->start(QAbstractAnimation::KeepWhenStopped);
}

} // namespace Hovlets
