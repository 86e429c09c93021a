// SPDX-License-Identifier: Apache-2.0
#include "HVVideoController.h"

#include "HVIdleWait.h"
#include "HVLogging.h"
#include "HVVideoSource.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <mutex>

namespace Hovlets {

namespace {

using TimedMutex = std::recursive_timed_mutex; // thread checkers understand this one
using TimedLocker = std::lock_guard<TimedMutex>;

constexpr std::chrono::milliseconds LockTime(100);
constexpr unsigned long ThreadQuitTime = 10000; // ms
constexpr double FallbackRate = 25.0; // frames/s, for sources without a rate
constexpr double LongestRest = 3600.0; // s, for sources with a rate close to 0

} // namespace

class HVVideoController::Private
{
public:
    double frameDuration() const
    {
        const double rate = source->frameRate();
        return 1.0 / (std::isfinite(rate) && rate > 0.0 ? rate : FallbackRate);
    }

    bool tryLock() const
    {
        // Uses the system clock, because thread checkers do not know the call that uses the steady
        // one.
        return controllerMutex.try_lock_until(std::chrono::system_clock::now() + LockTime);
    }

    void setState(State newState)
    {
        state = newState;
        if (source)
            source->setPlaying(state == Playing);
    }

    /// The time to rest after the frame at the position, in seconds.
    double restTime() const
    {
        const double duration = frameDuration();
        const double due = static_cast<double>(position - displayedPosition) * duration;
        const QDateTime now = QDateTime::currentDateTime();
        const QDateTime &last = lastFrameDisplayTime;
        // The mix of microseconds and seconds is deliberate: a frame that is a millisecond late is
        // followed at the clip's pace, and only a burst within a millisecond is slowed down. If the
        // clock was set back, no time counts as elapsed.
        const double elapsed = (static_cast<double>(last.daysTo(now)) * 86400000.0
                                + static_cast<double>(last.time().msecsTo(now.time())))
                * 1000.0;
        const double remaining = due - std::min(due, std::max(elapsed, 0.0));
        return std::min(std::max(remaining, duration), LongestRest);
    }

    /// Called by the thread at its end, and by the caller that has waited for it. QThread orders
    /// the two as well, but thread checkers cannot see how.
    void threadEnded() const { const TimedLocker locker(controllerMutex); }

    /// Keeps the clip's pace. Only pausing and quitting interrupt it.
    void rest(double seconds)
    {
        std::unique_lock<TimedMutex> lock(controllerMutex);
        restEnds.wait_for(lock, std::chrono::milliseconds(static_cast<qint64>(seconds * 1000.0)),
                          [this] { return shouldQuit || state != Playing; });
    }

    HVVideoSource *source = nullptr;

    // Guarded by controllerMutex.
    mutable TimedMutex controllerMutex;
    std::condition_variable_any restEnds; // notified when shouldQuit or state changes
    quint64 displayedPosition = 0;
    quint64 position = 0;
    bool shouldQuit = false;
    bool needFrame = true;
    bool scrubbing = false;
    QDateTime lastFrameDisplayTime;
    State state = Paused;

    // Shared with the source: new frames end the wait for the first one.
    std::shared_ptr<HVIdleWait> idle = std::make_shared<HVIdleWait>();
};

HVVideoController::HVVideoController(HVVideoSource *source, QObject *parent)
    : QThread(parent)
    , d(std::make_shared<Private>())
{
    d->source = source;
    setObjectName(QStringLiteral("Controller"));
    connect(this, &QThread::finished, this, &QObject::deleteLater);
    // Connected last, so quit() sees everything that the thread did, including its posted deletion.
    // The controller may be half destroyed by then, so the lambda holds what it still needs.
    connect(
            this, &QThread::finished, this, [shared = d] { shared->threadEnded(); },
            Qt::DirectConnection);
    if (!source)
        return;
    source->addFrameWaiter(d->idle);
    connect(source, &HVVideoSource::streamEnded, this, &HVVideoController::streamEnded);
    connect(source, &HVVideoSource::sourceLoaded, this, &HVVideoController::sourceLoaded);
    connect(source, &HVVideoSource::loadProgressChanged, this,
            &HVVideoController::loadProgressChanged);
}

HVVideoController::~HVVideoController()
{
    setShouldQuit();
}

void HVVideoController::play()
{
    {
        const TimedLocker locker(d->controllerMutex);
        d->setState(Playing);
        if (d->source && d->position >= d->source->totalFrameCount())
            setProgress(0.0);
    }
    d->idle->wake();
    Q_EMIT stateChanged();
}

void HVVideoController::pause()
{
    setState(Paused);
}

void HVVideoController::setState(State state)
{
    {
        const TimedLocker locker(d->controllerMutex);
        d->setState(state);
    }
    d->restEnds.notify_all();
    d->idle->wake();
    Q_EMIT stateChanged();
}

HVVideoController::State HVVideoController::state() const
{
    const TimedLocker locker(d->controllerMutex);
    return d->state;
}

void HVVideoController::close()
{
    if (d->source)
        d->source->close();
}

bool HVVideoController::setSource(const QUrl &url)
{
    setNeedFrame(true);
    streamEnded();
    setPosition(0);
    setState(Paused);
    if (!d->source || !d->source->setSource(url))
        return false;
    {
        const TimedLocker locker(d->controllerMutex);
        d->position = 0;
        d->needFrame = true;
    }
    d->idle->wake();
    return true;
}

QUrl HVVideoController::source() const
{
    return d->source ? d->source->source() : QUrl();
}

void HVVideoController::setPosition(quint64 position)
{
    {
        const TimedLocker locker(d->controllerMutex);
        d->position = position;
        d->displayedPosition = position - 1; // wraps at 0, where one frame is due as well
    }
    setNeedFrame(true);
    Q_EMIT positionChanged();
}

quint64 HVVideoController::position() const
{
    const TimedLocker locker(d->controllerMutex);
    return d->position;
}

void HVVideoController::setProgress(double progress)
{
    const auto frames = static_cast<double>(frameCount());
    // QML may assign any number, but only an index can be converted.
    const double position = std::clamp(frames * progress, 0.0, 4294967295.0);
    setPosition(position > 0.0 ? static_cast<quint64>(position) : 0);
}

double HVVideoController::progress() const
{
    const quint64 total = frameCount();
    return total == 0 ? 0.0 : static_cast<double>(position()) / static_cast<double>(total);
}

double HVVideoController::loadProgress() const
{
    if (!d->source)
        return 0.0;
    const auto total = static_cast<double>(d->source->totalFrameCount());
    const auto loaded = static_cast<double>(d->source->loadedFrameCount());
    // Both are the same number, but a frame may arrive between the two calls.
    return total > 0.0 ? std::min(loaded / total, 1.0) : qQNaN();
}

quint64 HVVideoController::frameCount() const
{
    return d->source ? d->source->totalFrameCount() : 0;
}

double HVVideoController::frameWidth() const
{
    return d->source ? d->source->frameWidth() : 0.0;
}

double HVVideoController::frameHeight() const
{
    return d->source ? d->source->frameHeight() : 0.0;
}

HVVideoFrame HVVideoController::currentFrame()
{
    const TimedLocker locker(d->controllerMutex);
    d->displayedPosition = d->position;
    return getFrame(d->position);
}

HVVideoFrame HVVideoController::getFrame(quint64 index)
{
    const TimedLocker locker(d->controllerMutex);
    return d->source ? d->source->getFrame(static_cast<unsigned int>(index)) : HVVideoFrame();
}

void HVVideoController::setScrubbing(bool scrubbing)
{
    const TimedLocker locker(d->controllerMutex);
    d->scrubbing = scrubbing;
}

bool HVVideoController::isScrubbing() const
{
    const TimedLocker locker(d->controllerMutex);
    return d->scrubbing;
}

void HVVideoController::setNeedFrame(bool need)
{
    {
        const TimedLocker locker(d->controllerMutex);
        d->needFrame = need;
    }
    d->idle->wake();
}

QDateTime HVVideoController::lastFrameDisplayTime() const
{
    const TimedLocker locker(d->controllerMutex);
    return d->lastFrameDisplayTime;
}

void HVVideoController::setLastFrameDisplayTime(const QDateTime &time)
{
    const TimedLocker locker(d->controllerMutex);
    d->lastFrameDisplayTime = time;
}

bool HVVideoController::releaseFrames()
{
    return !d->source || d->source->releaseFrames();
}

void HVVideoController::setShouldQuit()
{
    {
        const TimedLocker locker(d->controllerMutex);
        d->shouldQuit = true;
    }
    d->restEnds.notify_all();
    d->idle->wake();
}

bool HVVideoController::shouldQuit() const
{
    if (!d->tryLock())
        return false;
    const TimedLocker locker(d->controllerMutex, std::adopt_lock);
    return d->shouldQuit;
}

void HVVideoController::quit()
{
    setShouldQuit();
    if (wait(ThreadQuitTime)) {
        d->threadEnded();
        return;
    }
    qCDebug(videoLog) << "HVVideoController did not quit in a timely fashion";
    terminate();
    if (!wait(ThreadQuitTime))
        qCDebug(videoLog) << "HVVideoController did not quit at all";
}

void HVVideoController::streamEnded()
{
    if (!isScrubbing())
        setState(Paused);
    Q_EMIT loadProgressChanged();
    setNeedFrame(true);
}

void HVVideoController::sourceLoaded()
{
    setNeedFrame(true);
    Q_EMIT widthChanged();
    Q_EMIT heightChanged();
    Q_EMIT loadProgressChanged();
}

void HVVideoController::run()
{
    while (!shouldQuit()) {
        if (!d->tryLock())
            continue;
        std::unique_lock<TimedMutex> locker(d->controllerMutex, std::adopt_lock);
        const bool isAvailable = d->source && d->source->isFrameAvailable(d->position);
        if (d->state == Playing && isAvailable) {
            d->needFrame = false;
            locker.unlock();
            presentFrame(); // rests
            continue;
        }
        if (d->state == Playing) {
            // Playback never waits for the decoder, except for frames that were decoded before.
            // The last of those may arrive between the questions; its wake ends the sleep below.
            const bool awaits = d->source
                    && (d->source->awaitsFrame(d->position)
                        || d->source->isFrameAvailable(d->position));
            if (!awaits && frameCount() >= d->position)
                pause();
        } else if (d->needFrame && !isAvailable) {
            if (d->source)
                d->source->awaitsFrame(d->position);
        } else if (d->needFrame && isAvailable && !d->source->getFrame(0).isNull()) {
            d->needFrame = false;
            presentFrame();
        }
        locker.unlock();
        d->idle->sleep(); // any change to the values read above wakes it
    }
}

void HVVideoController::presentFrame()
{
    std::unique_lock<TimedMutex> locker(d->controllerMutex);
    if (d->state != Playing) {
        locker.unlock();
        Q_EMIT displayFrame();
        return;
    }
    const quint64 loaded = frameCount();
    if (d->displayedPosition == d->position && d->position >= loaded)
        return;

    const double rest = d->restTime();
    const bool advances = d->position < loaded;
    if (advances)
        ++d->position;
    locker.unlock();
    if (advances) {
        Q_EMIT displayFrame();
        Q_EMIT positionChanged();
        setLastFrameDisplayTime(QDateTime::currentDateTime());
    }
    d->rest(rest);
}

} // namespace Hovlets
