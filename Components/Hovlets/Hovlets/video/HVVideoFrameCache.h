// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVVideoFrame.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief Every picture of one clip, in decode order, in memory for as long as the cache lives.
 *
 * A clip costs width x height x 4 bytes per picture; no picture is dropped or decoded twice. There
 * is no lock: the source serialises every call.
 */
class HVVideoFrameCache : public QObject
{
    Q_DISABLE_COPY_MOVE(HVVideoFrameCache)

public:
    /// \a name is the clip's address, for people who debug.
    explicit HVVideoFrameCache(const QString &name);
    ~HVVideoFrameCache() override;

    virtual void addFrame(const HVVideoFrame &frame);

    /// The picture at \a index, or a null one behind the last. An empty cache must not be asked.
    virtual HVVideoFrame frame(quint64 index);
    virtual quint64 length();

private:
    QString m_name;
    QList<HVVideoFrame> m_frames;
};

} // namespace Hovlets
