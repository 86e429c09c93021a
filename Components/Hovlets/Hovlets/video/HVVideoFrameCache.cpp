// SPDX-License-Identifier: Apache-2.0
#include "HVVideoFrameCache.h"

namespace Hovlets {

HVVideoFrameCache::HVVideoFrameCache(const QString &name)
    : m_name(name)
{
}

HVVideoFrameCache::~HVVideoFrameCache() = default;

void HVVideoFrameCache::addFrame(const HVVideoFrame &frame)
{
    m_frames.append(frame);
}

HVVideoFrame HVVideoFrameCache::frame(quint64 index)
{
    Q_ASSERT_X(!m_frames.isEmpty(), "HVVideoFrameCache::frame", "asked for a frame while empty");
    return index < length() ? m_frames.at(static_cast<int>(index)) : HVVideoFrame();
}

quint64 HVVideoFrameCache::length()
{
    return static_cast<quint64>(m_frames.size());
}

} // namespace Hovlets
