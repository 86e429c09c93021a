// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVVideoFrame.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Stores all frames of one clip in decoding order, as long as the cache exists.
 *
 * A frame takes width x height x 4 bytes. No frame is dropped or decoded twice. There is no lock:
 * the source serialises all calls.
 */
class HVVideoFrameCache : public QObject
{
    Q_DISABLE_COPY_MOVE(HVVideoFrameCache)

public:
    /// \a name is the clip's address, for debugging.
    explicit HVVideoFrameCache(const QString &name);
    ~HVVideoFrameCache() override;

    virtual void addFrame(const HVVideoFrame &frame);

    /// The frame at \a index, or a null frame past the end. Must not be called on an empty cache.
    virtual HVVideoFrame frame(quint64 index);
    virtual quint64 length();

private:
    QString m_name;
    QList<HVVideoFrame> m_frames;
};

} // namespace Hovlets
