// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVVideoFrame.h"

#include <QtCore/QThread>
#include <QtCore/QUrl>

#include <memory>

namespace Hovlets {

class HVIdleWait;
class HVVideoSource;
struct HVVideoSourceChange;

/*!
 * \brief A source of pictures: a thread that works through requested changes, then performs the
 * current action, and owns the cache that the pictures go to.
 *
 * Requests and queries may come from any thread; what is "applied" runs on the source's own. The
 * decoding, and run(), are a subclass's, whose destructor must call quit() first: when this one
 * does it, the subclass's run() is gone.
 *
 * Two recursive mutexes guard the state and the cache; neither is held while a change is applied
 * or a signal is emitted.
 */
class HVVideoSource : public QThread
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVVideoSource)

public:
    enum Action {
        NoAction = -1, ///< no change
        StopAction = 0,
        LoadAction = 1,
        CloseAction = 2,
        SeekAction = 3,
        DecodeAction = 4,
        IdleAction = 5
    };

    explicit HVVideoSource(QObject *parent = nullptr);
    ~HVVideoSource() override;

    virtual void close();
    virtual bool isOpen() = 0;

    /// A wall clock, in seconds.
    virtual double getTime() = 0;

    virtual void changeSetAction(Action action);
    virtual void changeSetPosition(quint64 frame) = 0;
    virtual void changeSetSource(const QUrl &url);

    /// In seconds.
    virtual double duration() = 0;

    /// In seconds.
    virtual double timeBase() = 0;

    /// In pictures per second.
    virtual double frameRate() = 0;

    /// In pixels.
    virtual double frameWidth() const = 0;
    virtual double frameHeight() const = 0;

    /// Queues the clip at \a url; false when it is invalid or the current one already.
    bool setSource(const QUrl &url);
    void setAction(Action action);
    void setShouldQuit();
    bool shouldQuit() const;

    /// Ends the thread: asks it, waits 10 s, terminates it, waits 10 s.
    void quit();

    QUrl source() const;
    Action action() const;

    /// The picture at \a index, null behind the last. Only once isFrameAvailable() said so.
    HVVideoFrame getFrame(unsigned int index) const;
    bool isFrameAvailable(quint64 index) const;

    /// The number of pictures decoded so far; the total is the same on purpose.
    quint64 loadedFrameCount() const;
    quint64 totalFrameCount() const;

    /// Makes the cache for the current source. On the source thread.
    void setupSource();
    void clearChanges();
    void pushFrame(const HVVideoFrame &frame);

    /// As pushFrame(); false when the memory for clips has no room for the frame, which is dropped.
    [[nodiscard]] bool tryPushFrame(const HVVideoFrame &frame);
    void notifyStreamEnded();

    /// The clip is played, or no longer: other clips leave its frames alone meanwhile.
    void setPlaying(bool isPlaying);

    /// Frees the frames until one is asked for; false while the clip is decoded or played.
    bool releaseFrames();

    /*!
     * Whether the frame at \a index was freed and will come back. The clip is decoded again from
     * its start, which emits nothing; the counts stay as they were.
     */
    bool awaitsFrame(quint64 index);

    /// Decodes the current clip again. On the source thread.
    virtual void restoreFrames();

    /// Each new frame wakes \a waiter, for as long as anybody else holds it.
    void addFrameWaiter(const std::shared_ptr<HVIdleWait> &waiter);

Q_SIGNALS:
    void frameReady();
    void sourceChanged();
    void streamEnded();
    void sourceLoaded();
    void actionChanged();
    void positionChanged();
    void loadProgressChanged();

protected:
    virtual bool loadSource();

    /// The clip is decoded, or no longer: other clips leave its frames alone meanwhile.
    void setDecoding(bool isDecoding);

    bool isRestoring() const;

    /// The clip has been decoded again, as far as it went.
    void restoringEnded();

    /// Applies at most one change.
    void processActionQueue();

    /// Sleeps until a request arrives.
    void idle();

private:
    void wakeFrameWaiters();

    class Private;
    std::shared_ptr<Private> d; // the ending thread holds it as well
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

    /// 1, or 3 for a change of the source.
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
