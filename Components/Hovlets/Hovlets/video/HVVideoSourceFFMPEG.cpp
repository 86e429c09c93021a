// SPDX-License-Identifier: Apache-2.0
#include "HVVideoSourceFFMPEG.h"

#include "HVClip.h"
#include "HVClipOpening.h"
#include "HVLogging.h"

#include <mutex>

namespace Hovlets {

namespace {

using Mutex = std::recursive_mutex; // thread checkers understand this one
using Locker = std::lock_guard<Mutex>;

} // namespace

class HVVideoSourceFFMPEG::Private
{
public:
    explicit Private(HVVideoSourceFFMPEG *owner)
        : owner(owner)
    {
    }

    bool openMedia();
    void endMedia(bool fits);
    void releaseMedia();
    bool decodeNextFrame();
    HVVideoFrame nextFrame();
    double advanceClock();

    HVVideoSourceFFMPEG *owner;

    // Guarded by decoderMutex. Lock it before the mutexes of HVVideoSource, never after.
    mutable Mutex decoderMutex;
    QString filePath;
    std::unique_ptr<HVClip> clip; // null while closed
    double videoClock = 0.0; // time of the next frame in s
    double clipStart = 0.0; // s, in the same time
    qint64 seekTarget = 0;
    int seekFlags = 0;

    // Guarded by factsMutex, which is locked last. The decoder holds its own mutex almost all the
    // time, and callers of these getters, such as the user interface, must not wait for it.
    mutable std::mutex factsMutex;
    QSizeF size = QSizeF(200, 150); // of the last clip, because the item shows its frame to the end
    double progress = 0.0;
    double duration = 0.0; // s
    double timeBase = 0.0; // s
    double frameRate = 0.0; // frames per second
    HVClipOpening opening;
};

HVVideoSourceFFMPEG::HVVideoSourceFFMPEG(QObject *parent)
    : HVVideoSource(parent)
    , d(std::make_unique<Private>(this))
{
    setObjectName(QStringLiteral("FFMPEG"));
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
}

HVVideoSourceFFMPEG::~HVVideoSourceFFMPEG()
{
    quit();
}

void HVVideoSourceFFMPEG::run()
{
    while (!shouldQuit()) {
        processActionQueue();
        switch (action()) {
        case NoAction:
            break;
        case StopAction:
            return;
        case LoadAction:
            loadSource();
            break;
        case CloseAction:
            close();
            setAction(IdleAction);
            break;
        case SeekAction: {
            const Locker locker(d->decoderMutex);
            if (d->clip)
                d->clip->seekTo(d->seekTarget, d->seekFlags);
            else
                setAction(IdleAction);
            break;
        }
        case DecodeAction:
            if (!d->decodeNextFrame())
                setAction(IdleAction);
            break;
        case IdleAction:
            idle();
            break;
        }
    }
}

bool HVVideoSourceFFMPEG::loadSource()
{
    if (source().isEmpty()) {
        {
            const Locker locker(d->decoderMutex);
            d->filePath.clear();
        }
        setAction(IdleAction);
        close();
        return false;
    }
    setupSource();
    {
        const Locker locker(d->decoderMutex);
        d->filePath = source().toLocalFile();
        d->clipStart = d->videoClock;
    }
    const bool loaded = d->openMedia() && HVVideoSource::loadSource();
    setAction(loaded ? DecodeAction : IdleAction);
    d->opening.end(source(), loaded);
    return loaded;
}

HVClipOpening &HVVideoSourceFFMPEG::opening()
{
    return d->opening;
}

bool HVVideoSourceFFMPEG::Private::openMedia()
{
    const Locker locker(decoderMutex);
    releaseMedia();
    if (filePath.startsWith(QLatin1Char(':'))) {
        qCDebug(videoLog).noquote()
                << QStringLiteral("Could not open media at: %1 (FFmpeg cannot read "
                                  "Qt resources)")
                           .arg(filePath);
        return false;
    }
    auto opened =
            std::make_unique<HVClip>([this] { return owner->shouldQuit(); },
                                     [this](qint64 bytes) { return owner->claimFrame(bytes); });
    if (const char *message = opened->open(filePath)) {
        if (!owner->shouldQuit()) // quitting also interrupts opening
            qCDebug(videoLog).noquote() << QString::fromLatin1(message).arg(filePath);
        return false;
    }
    clip = std::move(opened);
    owner->setDecoding(true);
    const std::lock_guard<std::mutex> factsLocker(factsMutex);
    size = clip->size();
    duration = clip->duration();
    timeBase = clip->timeBase();
    frameRate = clip->frameRate();
    return true;
}

void HVVideoSourceFFMPEG::Private::releaseMedia()
{
    const Locker locker(decoderMutex);
    clip.reset();
    owner->setDecoding(false);
}

/// Adds the next frame to the cache; false at the end of the clip, and without a clip.
bool HVVideoSourceFFMPEG::Private::decodeNextFrame()
{
    while (true) {
        HVVideoFrame frame;
        HVFrameMemory::Claim claim;
        bool fits = true;
        {
            const Locker locker(decoderMutex);
            if (!clip) {
                if (owner->isRestoring())
                    owner->restoringEnded();
                if (owner->action() != IdleAction)
                    owner->setAction(IdleAction);
                return false;
            }
            frame = nextFrame();
            claim = clip->takeClaim();
            fits = !clip->isOutOfMemory();
            if (frame.isNull())
                releaseMedia();
        }
        if (frame.isNull()) {
            endMedia(fits);
            continue;
        }
        owner->pushFrame(frame, std::move(claim));
        return true;
    }
}

/// The clip has no more frames, or without \a fits, no more that fit into memory.
void HVVideoSourceFFMPEG::Private::endMedia(bool fits)
{
    const bool isRestoring = owner->isRestoring();
    if (!fits && !isRestoring) {
        qCDebug(videoLog).noquote()
                << QStringLiteral("The clip ends after %2 frames, more do not fit into the "
                                  "memory for clips: %1")
                           .arg(filePath, QString::number(owner->loadedFrameCount()));
    }
    if (!isRestoring && !owner->shouldQuit())
        owner->notifyStreamEnded();
}

/// The next frame with its time, or a null one at the end.
HVVideoFrame HVVideoSourceFFMPEG::Private::nextFrame()
{
    const QImage image = clip->nextFrame();
    if (image.isNull())
        return {};
    HVVideoFrame frame(image, 0);
    frame.setPts(advanceClock());
    const std::lock_guard<std::mutex> factsLocker(factsMutex);
    progress = duration > 0.0 ? frame.pts() / duration : 0.0;
    return frame;
}

/// The time of a frame. Time stamps in files are often wrong; the frame rate is not.
double HVVideoSourceFFMPEG::Private::advanceClock()
{
    const double pts = videoClock;
    videoClock += 1.0 / owner->frameRate();
    return pts;
}

void HVVideoSourceFFMPEG::restoreFrames()
{
    {
        const Locker locker(d->decoderMutex);
        d->videoClock = d->clipStart;
    }
    if (d->openMedia())
        changeSetAction(DecodeAction);
    else
        restoringEnded();
}

void HVVideoSourceFFMPEG::close()
{
    d->releaseMedia();
    HVVideoSource::close();
}

bool HVVideoSourceFFMPEG::isOpen()
{
    const Locker locker(d->decoderMutex);
    return d->clip != nullptr;
}

double HVVideoSourceFFMPEG::getTime()
{
    return static_cast<double>(av_gettime()) / 1e6;
}

void HVVideoSourceFFMPEG::changeSetPosition(quint64 frame)
{
    {
        const Locker locker(d->decoderMutex);
        if (d->clip) {
            const double before = d->videoClock;
            d->videoClock = static_cast<double>(frame) / frameRate();
            d->clip->seek(d->videoClock, before > d->videoClock);
        } else {
            d->videoClock = 0.0;
            const std::lock_guard<std::mutex> factsLocker(d->factsMutex);
            d->progress = 0.0;
        }
    }
    Q_EMIT positionChanged();
}

double HVVideoSourceFFMPEG::duration()
{
    const std::lock_guard<std::mutex> locker(d->factsMutex);
    return d->duration;
}

double HVVideoSourceFFMPEG::timeBase()
{
    const std::lock_guard<std::mutex> locker(d->factsMutex);
    return d->timeBase;
}

double HVVideoSourceFFMPEG::frameRate()
{
    const std::lock_guard<std::mutex> locker(d->factsMutex);
    return d->frameRate;
}

double HVVideoSourceFFMPEG::frameWidth() const
{
    const std::lock_guard<std::mutex> locker(d->factsMutex);
    return d->size.width();
}

double HVVideoSourceFFMPEG::frameHeight() const
{
    const std::lock_guard<std::mutex> locker(d->factsMutex);
    return d->size.height();
}

quint64 HVVideoSourceFFMPEG::position()
{
    return 0;
}

double HVVideoSourceFFMPEG::progress()
{
    const std::lock_guard<std::mutex> locker(d->factsMutex);
    return d->progress;
}

} // namespace Hovlets
