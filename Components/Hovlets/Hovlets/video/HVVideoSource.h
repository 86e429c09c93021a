// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFrameMemory.h"
#include "HVVideoFrame.h"

#include <QtCore/QThread>
#include <QtCore/QUrl>

#include <memory>

namespace Hovlets {

class HVIdleWait;
class HVVideoSource;
struct HVVideoSourceChange;

/*!
 * \brief A source of frames: a thread that processes requested changes, then performs the current
 * action, and owns the cache for the frames.
 *
 * Any thread may request changes and query the state. The source's own thread, which the owner
 * starts, applies the changes and emits the signals. Subclasses implement the decoding and run().
 * Their destructors must call quit() first: when this class's destructor calls it, the subclass's
 * run() is gone.
 *
 * Two recursive mutexes guard the state and the cache. Neither is held while a change is applied or
 * a signal is emitted.
 */
class HVVideoSource : public QThread
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVVideoSource)

public:
    enum Action {
        NoAction = -1, ///< leaves the action unchanged
        StopAction = 0,
        LoadAction = 1,
        CloseAction = 2,
        SeekAction = 3,
        DecodeAction = 4,
        IdleAction = 5
    };

    explicit HVVideoSource(QObject *parent = nullptr);
    ~HVVideoSource() override;

    /// Closes the clip, in subclasses. Has no effect here.
    virtual void close();

    /// Whether a clip is open.
    virtual bool isOpen() = 0;

    /// The time of a wall clock in seconds.
    virtual double getTime() = 0;

    /// Performs \a action from now on. Like the next two functions, it applies a change
    /// immediately; the source thread calls it for queued changes.
    virtual void changeSetAction(Action action);

    /// Continues decoding at \a frame, an index.
    virtual void changeSetPosition(quint64 frame) = 0;

    /// Makes the clip at \a url the current one, without opening it.
    virtual void changeSetSource(const QUrl &url);

    /// In seconds.
    virtual double duration() = 0;

    /// In seconds.
    virtual double timeBase() = 0;

    /// In frames per second.
    virtual double frameRate() = 0;

    /// In pixels.
    virtual double frameWidth() const = 0;
    virtual double frameHeight() const = 0;

    /// Queues the clip at \a url; false if it is invalid or already the current one.
    bool setSource(const QUrl &url);

    /// Queues a change of the action.
    void setAction(Action action);

    /// Asks the thread to end, without waiting for it.
    void setShouldQuit();
    bool shouldQuit() const;

    /// Ends the thread: requests its end, waits 10 s, terminates it, and waits 10 s.
    void quit();

    /// The current clip, which is the previous one until a queued change is applied.
    QUrl source() const;
    Action action() const;

    /// The frame at \a index, or a null frame past the end or if it was freed.
    HVVideoFrame getFrame(unsigned int index) const;

    /// Whether the frame at \a index is in memory.
    bool isFrameAvailable(quint64 index) const;

    /// The number of frames decoded so far. The total is deliberately the same number.
    quint64 loadedFrameCount() const;
    quint64 totalFrameCount() const;

    /// Creates the cache for the current source. On the source thread.
    void setupSource();

    /// Drops all requests that were not applied yet.
    void clearChanges();

    /// Adds a frame to the end of the cache.
    void pushFrame(const HVVideoFrame &frame);

    /// Claims memory for a frame of \a bytes, before it is made; false if the memory for clips has
    /// no room for it.
    [[nodiscard]] HVFrameMemory::Claim claimFrame(qint64 bytes);

    /// Like pushFrame(), for a frame whose memory was claimed.
    void pushFrame(const HVVideoFrame &frame, HVFrameMemory::Claim claim);

    /// Emits streamEnded().
    void notifyStreamEnded();

    /// While the clip plays, other clips do not take its frames.
    void setPlaying(bool isPlaying);

    /// Frees the frames until one is requested; false while the clip is being decoded or playing.
    bool releaseFrames();

    /*!
     * Whether the frame at \a index was freed and will come back. If so, the clip is decoded again
     * from its start. That emits no signals, and the counts do not change.
     */
    bool awaitsFrame(quint64 index);

    /// Decodes the current clip again. On the source thread.
    virtual void restoreFrames();

    /// Each new frame wakes \a waiter, as long as someone else holds it.
    void addFrameWaiter(const std::shared_ptr<HVIdleWait> &waiter);

Q_SIGNALS:
    /// For subclasses; not emitted here.
    void frameReady();

    /// Emitted when another clip is the current one, and its cache exists.
    void sourceChanged();

    /// Emitted when the last frame of the clip is in the cache.
    void streamEnded();

    /// Emitted when the clip is open; its size and rate are known.
    void sourceLoaded();

    /// Emitted when a change of the action was applied, even if it is the same action.
    void actionChanged();

    /// Emitted when decoding continues at another position.
    void positionChanged();

    /// For subclasses; not emitted here.
    void loadProgressChanged();

protected:
    /// Opens the current clip, in subclasses. Here it only emits sourceLoaded() and returns true.
    virtual bool loadSource();

    /// While the clip is being decoded, other clips do not take its frames.
    void setDecoding(bool isDecoding);

    /// Whether the clip is being decoded again.
    bool isRestoring() const;

    /// The clip has been decoded again, as far as possible.
    void restoringEnded();

    /// Applies at most one change.
    void processActionQueue();

    /// Sleeps until a request arrives.
    void idle();

private:
    void wakeFrameWaiters();

    class Private;
    std::shared_ptr<Private> d; // shared with the ending thread
};

/// A request to change the action, applied on the source thread.
struct HVVideoSourceChange
{
    explicit HVVideoSourceChange(HVVideoSource::Action action)
        : action(action)
    {
    }
    HVVideoSourceChange(const HVVideoSourceChange &) = delete;
    HVVideoSourceChange &operator=(const HVVideoSourceChange &) = delete;
    virtual ~HVVideoSourceChange() = default;

    /// 1, or 3 to change the source.
    virtual int changeType() { return 1; }
    virtual void apply(HVVideoSource *source) { source->changeSetAction(action); }

    HVVideoSource::Action action;
};

} // namespace Hovlets

/// A request to load another clip.
struct HVVideoSourceSourceChange : Hovlets::HVVideoSourceChange
{
    explicit HVVideoSourceSourceChange(const QUrl &url)
        : HVVideoSourceChange(Hovlets::HVVideoSource::LoadAction)
        , url(url)
    {
    }

    int changeType() override { return 3; }
    void apply(Hovlets::HVVideoSource *source) override
    {
        source->changeSetSource(url);
        source->changeSetAction(action);
    }

    QUrl url;
};
