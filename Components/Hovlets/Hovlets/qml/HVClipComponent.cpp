// SPDX-License-Identifier: Apache-2.0
#include "HVClipComponent.h"

#include "HVVideoSourceFFMPEG.h"

#include <utility>

namespace Hovlets {

HVClipComponent::HVClipComponent(QQuickItem *parent)
    : HVVideoComponent(parent)
{
    connect(this, &HVVideoComponent::positionChanged, this, &HVClipComponent::timeChanged);
    connect(this, &HVVideoComponent::progressChanged, this, &HVClipComponent::checkEnd);
    connect(videoSource(), &HVVideoSource::sourceLoaded, this, &HVClipComponent::durationChanged);
    connect(videoSource(), &HVVideoSource::streamEnded, this, &HVClipComponent::durationChanged);
}

double HVClipComponent::time() const
{
    const double rate = videoSource()->frameRate();
    return rate > 0.0 ? static_cast<double>(position()) / rate : 0.0;
}

double HVClipComponent::duration() const
{
    const double rate = videoSource()->frameRate();
    if (!isDecoded() || rate <= 0.0)
        return videoSource()->duration();
    return static_cast<double>(videoSource()->totalFrameCount()) / rate;
}

void HVClipComponent::checkEnd()
{
    const bool hadEnded = std::exchange(m_ended, progress() >= 1);
    if (m_ended != hadEnded)
        Q_EMIT endedChanged();
}

bool HVClipComponent::hasFrame() const
{
    return !frame().isNull();
}

void HVClipComponent::frameChanged()
{
    const bool hadFrame = std::exchange(m_hadFrame, hasFrame());
    if (hasFrame() != hadFrame)
        Q_EMIT hasFrameChanged();
}

} // namespace Hovlets
