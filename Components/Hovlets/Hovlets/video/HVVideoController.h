// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVVideoFrame.h"

#include <QtCore/QDateTime>
#include <QtCore/QThread>
#include <QtCore/QUrl>

#include <memory>

namespace Hovlets {

class HVVideoSource;

/*!
 * \brief The playback clock: advances a position through the frames that a source has decoded, at
 * the clip's frame rate, and tells the display to fetch a frame.
 *
 * A clip plays once and pauses at the last decoded frame, even if the decoder is still working. Any
 * thread may call. A change emits its signals on the thread that causes it: the caller's, or the
 * controller's while a clip plays or a frame is due. The owner starts the thread. When the thread
 * finishes, the object deletes itself with deleteLater().
 *
 * Lock the controller's mutex before those of the source, never after.
 */
class HVVideoController : public QThread
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVVideoController)

public:
    enum State : int { Paused = 0, Playing = 1 };

    /// \a source is not owned and must outlive the thread.
    HVVideoController(HVVideoSource *source, QObject *parent);
    ~HVVideoController() override;

    /// Plays; a clip at its end starts again from the beginning.
    void play();
    void pause();
    void setState(State state);
    State state() const;

    /// Closes the clip of the source.
    void close();

    /// Requests another clip, paused at its start; false if the source refuses it.
    bool setSource(const QUrl &url);
    QUrl source() const;

    /// The index of the next frame to show.
    void setPosition(quint64 position);
    quint64 position() const;

    /// The position as a fraction of the clip, 0 to 1.
    void setProgress(double progress);
    double progress() const;

    /// 1 once there is a frame, NaN before.
    double loadProgress() const;

    /// The number of frames decoded so far.
    quint64 frameCount() const;

    /// Size of the clip in pixels.
    double frameWidth() const;
    double frameHeight() const;

    /// The frame at the position, which counts as displayed from then on.
    HVVideoFrame currentFrame();

    /// The frame at \a index, or a null frame past the end.
    HVVideoFrame getFrame(quint64 index);

    /// While scrubbing, the end of the stream does not pause the clip.
    void setScrubbing(bool scrubbing);
    bool isScrubbing() const;

    /// Requests a frame even while the clip is paused.
    void setNeedFrame(bool need);

    /// When playback advanced last; it paces playback. Invalid before the first time.
    QDateTime lastFrameDisplayTime() const;
    void setLastFrameDisplayTime(const QDateTime &time);

    /// Frees the frames until one is requested; false while the clip is being decoded or playing.
    bool releaseFrames();

    /// Asks the thread to end, without waiting for it.
    void setShouldQuit();

    /// Also false if the mutex is not available within 100 ms; the next pass asks again.
    bool shouldQuit() const;

    /// Ends the thread: requests its end, waits 10 s, terminates it, and waits 10 s.
    void quit();

    /// While the clip plays, advances by one frame, announces it, and rests until the next one is
    /// due. While it is paused, only announces a frame. Called on the controller's thread.
    void presentFrame();

public Q_SLOTS:
    /// Call when the clip is decoded completely. Pauses it, except while scrubbing.
    void streamEnded();

    /// Call when the clip is open, and its size therefore known.
    void sourceLoaded();

Q_SIGNALS:
    /// A frame is due: fetch it with currentFrame().
    void displayFrame();

    void stateChanged();
    void positionChanged();
    void widthChanged();
    void heightChanged();

    /// Emitted when another clip is requested, when it is open, and when it is decoded completely.
    void loadProgressChanged();

protected:
    void run() override;

private:
    class Private;
    std::shared_ptr<Private> d; // shared with the ending thread
};

} // namespace Hovlets
