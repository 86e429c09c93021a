// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ClipFolder.h"
#include "HVVideoSourceFFMPEG.h"
#include "Patience.h"
#include "SignalOrder.h"

#include <QtTest/QTest>

#include <mutex>

/// Clips for tests of sources.
class DecodedClips : public ClipFolder
{
public:
    static constexpr int Count = 10; ///< frames of the usual clip

    /// Ten frames of 64 x 48 at 25 per second.
    QString usual() const
    {
        return clip(QStringLiteral("usual.mp4"), QStringLiteral("64x48"),
                    QStringLiteral("-c:v libx264 -bf 3 -pix_fmt yuv420p"));
    }

    /// Twenty frames of 32 x 18 at 50 per second.
    QString other() const
    {
        return clip(QStringLiteral("other.avi"), QStringLiteral("32x18"),
                    QStringLiteral("-vf fps=50 -c:v mjpeg -pix_fmt yuvj420p"));
    }

    /// Far more frames than any test waits for, in a small file.
    QString endless() const
    {
        return make(QStringLiteral("endless.avi"),
                    QStringLiteral("-f lavfi -i color=size=16x16:rate=25:duration=8000 "
                                   "-c:v mpeg4 -g 100"));
    }
};

/// A source that tests can control step by step, with its signals recorded.
class DecodingSource : public Hovlets::HVVideoSourceFFMPEG
{
public:
    DecodingSource()
    {
        seen.note(this, &Hovlets::HVVideoSource::frameReady, QStringLiteral("frameReady"));
        seen.note(this, &Hovlets::HVVideoSource::sourceChanged, QStringLiteral("sourceChanged"));
        seen.note(this, &Hovlets::HVVideoSource::sourceLoaded, QStringLiteral("sourceLoaded"));
        seen.note(this, &Hovlets::HVVideoSource::streamEnded, QStringLiteral("streamEnded"));
        seen.note(this, &Hovlets::HVVideoSource::positionChanged,
                  QStringLiteral("positionChanged"));
        seen.note(this, &Hovlets::HVVideoSource::loadProgressChanged,
                  QStringLiteral("loadProgressChanged"));
        connect(
                this, &Hovlets::HVVideoSource::actionChanged, this,
                [this] { actions.add(QString::number(action())); }, Qt::DirectConnection);
    }
    ~DecodingSource() override
    {
        // Thread checkers cannot see into the lock that QThread::wait() uses in QtCore.
        quit();
        const std::lock_guard<std::mutex> locker(m_running);
    }

    using Hovlets::HVVideoSourceFFMPEG::loadSource;

    /// Requests a clip and waits for its last frame.
    bool decode(const QString &path)
    {
        const int ended = seen.count(QStringLiteral("streamEnded"));
        if (!setSource(QUrl::fromLocalFile(path)))
            return false;
        start();
        return QTest::qWaitFor(
                [this, ended] {
                    return seen.count(QStringLiteral("streamEnded")) == ended + 1
                            && action() == IdleAction;
                },
                Patience);
    }

    /// Every frame in the cache, without padding.
    QByteArray pictures() const
    {
        QByteArray bytes;
        for (unsigned int i = 0; i < loadedFrameCount(); ++i) {
            const Hovlets::HVVideoFrame frame = getFrame(i);
            for (int y = 0; y < frame.height(); ++y)
                bytes.append(reinterpret_cast<const char *>(frame.constScanLine(y)),
                             frame.width() * 4LL);
        }
        return bytes;
    }

    SignalOrder seen;
    SignalOrder actions;

protected:
    void run() override
    {
        const std::lock_guard<std::mutex> locker(m_running);
        Hovlets::HVVideoSourceFFMPEG::run();
    }

private:
    std::mutex m_running;
};
