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
 * \brief The playback clock: walks a position through the pictures that a source has decoded, at
 * the clip's frame rate, and tells the display to fetch a picture.
 *
 * A clip plays once and pauses where the decoded pictures end, whether or not the decoder is still
 * at work. All operations may be called from any thread. Signals come from the thread that changes
 * something: the caller's, or while a clip plays and when a picture is due the controller's.
 * The owner starts the thread. When the thread finishes, the object deletes itself later.
 *
 * The controller's mutex is taken before those of the source, never after.
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

    void close();

    /// Asks for another clip, paused at its start; false when the source refuses.
    bool setSource(const QUrl &url);
    QUrl source() const;

    /// The index of the picture to show next.
    void setPosition(quint64 position);
    quint64 position() const;

    /// The position as a part of the clip, 0 to 1.
    void setProgress(double progress);
    double progress() const;

    /// 1 once there is a picture; not a number before.
    double loadProgress() const;
    quint64 frameCount() const;
    double frameWidth() const;
    double frameHeight() const;

    /// The picture at the position, which counts as displayed from now on.
    HVVideoFrame currentFrame();
    HVVideoFrame getFrame(quint64 index);

    /// While scrubbing, the end of the stream does not pause.
    void setScrubbing(bool scrubbing);
    bool isScrubbing() const;

    /// Asks for a picture to be delivered even while paused.
    void setNeedFrame(bool need);

    QDateTime lastFrameDisplayTime() const;
    void setLastFrameDisplayTime(const QDateTime &time);

    /// Frees the frames until one is asked for; false while the clip is decoded or played.
    bool releaseFrames();

    void setShouldQuit();

    /// False, too, when the mutex is not to be had within 100 ms: the next pass will see it.
    bool shouldQuit() const;

    /// Ends the thread: asks it, waits 10 s, terminates it, waits 10 s.
    void quit();

    void presentFrame();

public Q_SLOTS:
    void streamEnded();
    void sourceLoaded();

Q_SIGNALS:
    void displayFrame();
    void stateChanged();
    void positionChanged();
    void widthChanged();
    void heightChanged();
    void loadProgressChanged();

protected:
    void run() override;

private:
    class Private;
    std::shared_ptr<Private> d; // the ending thread holds it as well
};

} // namespace Hovlets
