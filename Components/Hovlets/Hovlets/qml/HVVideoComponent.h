// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVVideoFrame.h"

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtQuick/QQuickItem>

#include <chrono>
#include <memory>

namespace Hovlets {

class HVClipOpening;
class HVIdleWait;
class HVVideoController;
class HVVideoSourceFFMPEG;

/*!
 * \brief The QML item that shows a clip of the popup's content.
 *
 * Each item has a source and a controller, each with a thread. When the item is destroyed, it asks
 * both to quit and leaves them to HVThreadKeeper, without waiting. The frame is drawn from (0, 0)
 * at its natural size, even if the item is smaller, and is smoothed only where the scene scales it;
 * unless rendered by software, frames above 4096 x 4096 have fewer pixels. QML sizes the item with
 * contentWidth and contentHeight. GUI thread only.
 */
class HVVideoComponent : public QQuickItem
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVVideoComponent)
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(VideoState state READ state WRITE setState NOTIFY stateChanged)
    Q_PROPERTY(qlonglong position READ position WRITE setPosition NOTIFY positionChanged)
    Q_PROPERTY(double progress READ progress WRITE setProgress NOTIFY progressChanged)
    Q_PROPERTY(QString searchPath READ searchPath WRITE setSearchPath NOTIFY searchPathChanged)
    Q_PROPERTY(bool scrubbing READ scrubbing WRITE setScrubbing NOTIFY scrubbingChanged)
    Q_PROPERTY(double contentHeight READ contentHeight NOTIFY contentHeightChanged)
    Q_PROPERTY(double contentWidth READ contentWidth NOTIFY contentWidthChanged)
    Q_PROPERTY(double loadProgress READ loadProgress NOTIFY loadProgressChanged)

public:
    enum VideoState : int { resetState = 0, pausedState = 1, playingState = 2 };
    Q_ENUM(VideoState)

    /// Whether the size of the clip is known. None means no clip, or one that cannot be opened.
    enum class SizeState { Pending, Known, None };

    explicit HVVideoComponent(QQuickItem *parent = nullptr);
    ~HVVideoComponent() override;

    QString source() const;

    /*!
     * Loads the clip that the popup's view finds in the content's resources, and clears the frame.
     *
     * An item outside a view finds nothing, so QML must set the source once the item has a window.
     * If the name is not found, the current clip remains. Emits nothing.
     */
    void setSource(const QString &name);

    VideoState state() const;
    void setState(VideoState state);

    /// The index of the frame.
    qlonglong position() const;
    void setPosition(qlonglong position);

    /// The position as a fraction of the clip, 0 to 1.
    double progress() const;
    void setProgress(double progress);

    /// Unused. Kept for content that sets it; the view finds clips.
    QString searchPath() const;
    void setSearchPath(const QString &path);

    /// Whether the user is dragging the position. If so, the end of the stream does not pause the
    /// clip.
    bool scrubbing() const;
    void setScrubbing(bool scrubbing);

    /// Size of the clip in pixels; 200 x 150 before the first.
    double contentHeight() const;
    double contentWidth() const;
    double loadProgress() const;

    /*!
     * Returns the SizeState of the clip, for popups that need their final size before their first
     * frame.
     *
     * Waits up to 60 ms until the decoding thread has opened the file and decoded its first frame,
     * and shows that frame. Emits contentWidthChanged() and contentHeightChanged() if the size is
     * known.
     */
    SizeState awaitSize();

    /// Whether all frames of the clip are decoded.
    [[nodiscard]] bool isDecoded() const;

    /// Reports whether the clip could be opened.
    HVClipOpening &opening();

public Q_SLOTS:
    /// Shows the frame that is due. Connected to the controller.
    void frameReady();

    /// Plays; a clip at its end starts again from the beginning.
    void play();
    void pause();

    /// Emits stateChanged(). Connected to the controller.
    void sourceChangedState();

    /// Pauses at the first frame.
    void rewindToStart();

    /// Emits positionChanged() and progressChanged(). Connected to the controller.
    void controllerPositionChanged();

Q_SIGNALS:
    void sourceChanged();
    void stateChanged();
    void positionChanged();
    void progressChanged();
    void heightChanged();
    void searchPathChanged();
    void scrubbingChanged();
    void contentHeightChanged();
    void contentWidthChanged();
    void loadProgressChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

    /// Called when another frame is shown, or none.
    virtual void frameChanged() { }

    [[nodiscard]] const HVVideoFrame &frame() const { return m_frame; }
    [[nodiscard]] HVVideoSourceFFMPEG *videoSource() const { return m_source; }

private:
    void setFrame(const HVVideoFrame &frame);
    void awaitFirstFrame(std::chrono::system_clock::time_point end);

    HVVideoSourceFFMPEG *m_source; // child
    QPointer<HVVideoController> m_controller; // child
    HVVideoFrame m_frame;
    bool m_frameIsNew = false; // not uploaded yet
    double m_knownHeight = 0.0;
    double m_knownProgress = 0.0;
    QString m_searchPath;
    QString m_sourceName;
    QUrl m_requested; // the file of the clip; empty without one
    QUrl m_whole; // the clip whose frames are all decoded
    std::shared_ptr<HVIdleWait> m_frameWait; // woken by each new frame
};

} // namespace Hovlets
