// SPDX-License-Identifier: Apache-2.0
#include "HVVideoSource.h"

#include "HVFrameMemory.h"
#include "HVIdleWait.h"
#include "HVLogging.h"
#include "HVVideoFrameCache.h"

#include <QtCore/QMap>

#include <algorithm>
#include <deque>
#include <mutex>
#include <vector>

namespace Hovlets {

namespace {

using Mutex = std::recursive_mutex; // thread checkers understand this one
using Locker = std::lock_guard<Mutex>;

constexpr unsigned long QuitTime = 10000; // ms

} // namespace

class HVVideoSource::Private
{
public:
    /// Releases the frames for other clips. The next request for one decodes the clip again.
    std::shared_ptr<void> giveUpFrames();

    /// The number of frames in the cache.
    quint64 length() const { return cache ? cache->length() : 0; }

    /// Includes frames that were released.
    quint64 knownLength() const { return std::max(length(), lengthBefore); }

    // Guarded by stateMutex.
    mutable Mutex stateMutex;
    QUrl source;
    bool shouldQuit = false;
    Action action = IdleAction;
    std::deque<std::unique_ptr<HVVideoSourceChange>> changes;

    // Guarded by frameMutex.
    mutable Mutex frameMutex;
    std::shared_ptr<HVVideoFrameCache> cache;
    QMap<QString, std::shared_ptr<HVVideoFrameCache>> caches; // kept clips; unused so far
    std::vector<std::weak_ptr<HVIdleWait>> frameWaiters;
    quint64 lengthBefore = 0; // length of the cache whose frames were released
    bool isGivenUp = false;
    bool isRestoring = false; // the clip is being decoded again

    // Lock its mutex before frameMutex, never after.
    HVFrameMemory memory { [this] { return giveUpFrames(); } };

    HVIdleWait idle;
};

std::shared_ptr<void> HVVideoSource::Private::giveUpFrames()
{
    const Locker locker(frameMutex);
    if (!cache)
        return nullptr;
    lengthBefore = cache->length();
    isGivenUp = true;
    return std::exchange(cache, std::make_shared<HVVideoFrameCache>(QString()));
}

namespace {

/// A request to decode the current clip again.
struct RestoreChange : HVVideoSourceChange
{
    RestoreChange()
        : HVVideoSourceChange(HVVideoSource::NoAction)
    {
    }
    void apply(HVVideoSource *source) override { source->restoreFrames(); }
};

} // namespace

HVVideoSource::HVVideoSource(QObject *parent)
    : QThread(parent)
    , d(std::make_shared<Private>())
{
    // Orders the thread's actions before those of its owner after wait(). QThread does so too, but
    // thread checkers cannot see how.
    connect(
            this, &QThread::finished, this,
            [shared = d] { const Locker locker(shared->stateMutex); }, Qt::DirectConnection);
}

HVVideoSource::~HVVideoSource()
{
    quit();
}

void HVVideoSource::close()
{
    // An empty address is invalid, so this requests nothing. Closing is up to subclasses.
    setSource(QUrl());
}

void HVVideoSource::changeSetAction(Action action)
{
    if (action == NoAction)
        return;
    {
        const Locker locker(d->stateMutex);
        d->action = action;
    }
    d->idle.wake(); // from another thread, this ends idling like a request
    Q_EMIT actionChanged();
}

void HVVideoSource::changeSetSource(const QUrl &url)
{
    const Locker locker(d->stateMutex);
    d->source = url;
}

bool HVVideoSource::setSource(const QUrl &url)
{
    {
        const Locker locker(d->stateMutex);
        if (!url.isValid() || url == d->source)
            return false;
        d->changes.push_back(std::make_unique<HVVideoSourceSourceChange>(url));
    }
    d->idle.wake();
    return true;
}

void HVVideoSource::setAction(Action action)
{
    {
        const Locker locker(d->stateMutex);
        d->changes.push_back(std::make_unique<HVVideoSourceChange>(action));
    }
    d->idle.wake();
}

void HVVideoSource::setShouldQuit()
{
    {
        const Locker locker(d->stateMutex);
        d->shouldQuit = true;
    }
    d->idle.wake();
}

bool HVVideoSource::shouldQuit() const
{
    const Locker locker(d->stateMutex);
    return d->shouldQuit;
}

void HVVideoSource::quit()
{
    setShouldQuit();
    if (wait(QuitTime)) {
        const Locker locker(d->stateMutex);
        return;
    }
    qCDebug(videoLog) << "HVVideoSource did not quit in a timely fashion";
    terminate();
    if (!wait(QuitTime))
        qCDebug(videoLog) << "HVVideoSource did not quit at all";
}

QUrl HVVideoSource::source() const
{
    const Locker locker(d->stateMutex);
    return d->source;
}

HVVideoSource::Action HVVideoSource::action() const
{
    const Locker locker(d->stateMutex);
    return d->action;
}

HVVideoFrame HVVideoSource::getFrame(unsigned int index) const
{
    const Locker locker(d->frameMutex);
    d->memory.shown();
    return index < d->length() ? d->cache->frame(index) : HVVideoFrame();
}

bool HVVideoSource::isFrameAvailable(quint64 index) const
{
    const Locker locker(d->frameMutex);
    return d->length() > index;
}

quint64 HVVideoSource::loadedFrameCount() const
{
    const Locker locker(d->frameMutex);
    return d->knownLength();
}

quint64 HVVideoSource::totalFrameCount() const
{
    return loadedFrameCount();
}

void HVVideoSource::setupSource()
{
    const QUrl url = source();
    const QString name = url.toString();
    bool isNew = false;
    std::shared_ptr<HVVideoFrameCache> before; // freed after unlocking
    {
        const Locker locker(d->frameMutex);
        before = std::exchange(d->cache, d->caches.value(name));
        isNew = !d->cache;
        if (isNew)
            d->cache = std::make_shared<HVVideoFrameCache>(name);
        d->lengthBefore = 0;
        d->isGivenUp = false;
        d->isRestoring = false;
    }
    before.reset();
    d->memory.clear();
    if (isNew)
        setAction(url.isEmpty() ? IdleAction : DecodeAction);
    Q_EMIT sourceChanged();
}

void HVVideoSource::clearChanges()
{
    const Locker locker(d->stateMutex);
    d->changes.clear();
}

HVFrameMemory::Claim HVVideoSource::claimFrame(qint64 bytes)
{
    // Called without frameMutex, because it may release another clip's frames to make room.
    return d->memory.claim(bytes);
}

void HVVideoSource::pushFrame(const HVVideoFrame &frame)
{
    HVFrameMemory::Claim claim = claimFrame(frame.sizeInBytes());
    if (claim || frame.isNull())
        pushFrame(frame, std::move(claim));
}

void HVVideoSource::pushFrame(const HVVideoFrame &frame, HVFrameMemory::Claim claim)
{
    d->memory.keep(std::move(claim));
    bool isKept = false;
    {
        const Locker locker(d->frameMutex);
        isKept = d->cache != nullptr;
        if (isKept)
            d->cache->addFrame(frame);
    }
    if (isKept)
        wakeFrameWaiters();
    else
        d->memory.clear(); // before the first clip, there is no cache for it
}

void HVVideoSource::wakeFrameWaiters()
{
    std::vector<std::weak_ptr<HVIdleWait>> waiters;
    {
        const Locker locker(d->frameMutex);
        waiters = d->frameWaiters;
    }
    for (const auto &each : waiters) {
        if (const auto waiter = each.lock())
            waiter->wake();
    }
}

bool HVVideoSource::releaseFrames()
{
    return d->memory.release();
}

bool HVVideoSource::awaitsFrame(quint64 index)
{
    {
        const Locker locker(d->frameMutex);
        if (index >= d->lengthBefore || (!d->isGivenUp && !d->isRestoring))
            return false;
        if (!std::exchange(d->isGivenUp, false))
            return true; // already requested
        d->isRestoring = true;
    }
    {
        const Locker locker(d->stateMutex);
        d->changes.push_back(std::make_unique<RestoreChange>());
    }
    d->idle.wake();
    return true;
}

void HVVideoSource::restoreFrames()
{
    restoringEnded();
}

bool HVVideoSource::isRestoring() const
{
    const Locker locker(d->frameMutex);
    return d->isRestoring;
}

void HVVideoSource::restoringEnded()
{
    {
        const Locker locker(d->frameMutex);
        d->isRestoring = false;
        if (!d->isGivenUp) // not released again meanwhile
            d->lengthBefore = 0; // the frames decoded this time are all
    }
    wakeFrameWaiters();
}

void HVVideoSource::setPlaying(bool isPlaying)
{
    d->memory.setInUse(HVFrameMemory::Use::Playing, isPlaying);
}

void HVVideoSource::setDecoding(bool isDecoding)
{
    d->memory.setInUse(HVFrameMemory::Use::Decoding, isDecoding);
}

void HVVideoSource::notifyStreamEnded()
{
    Q_EMIT streamEnded();
}

void HVVideoSource::addFrameWaiter(const std::shared_ptr<HVIdleWait> &waiter)
{
    const Locker locker(d->frameMutex);
    d->frameWaiters.push_back(waiter);
}

bool HVVideoSource::loadSource()
{
    Q_EMIT sourceLoaded();
    return true;
}

void HVVideoSource::processActionQueue()
{
    std::unique_ptr<HVVideoSourceChange> change;
    {
        const Locker locker(d->stateMutex);
        if (d->changes.empty())
            return;
        change = std::move(d->changes.front());
        d->changes.pop_front();
    }
    change->apply(this);
}

void HVVideoSource::idle()
{
    {
        const Locker locker(d->stateMutex);
        if (!d->changes.empty())
            return; // one wake may stand for several requests
    }
    d->idle.sleep();
}

} // namespace Hovlets
