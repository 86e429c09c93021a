// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVVideoComponent.h"

namespace Hovlets {

/*!
 * \brief A clip that also reports its time; the default user interface uses it.
 *
 * QML knows it as "HVClip". GUI thread only.
 */
class HVClipComponent : public HVVideoComponent
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVClipComponent)
    Q_PROPERTY(double time READ time NOTIFY timeChanged)
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged)
    Q_PROPERTY(bool ended READ ended NOTIFY endedChanged)
    Q_PROPERTY(bool hasFrame READ hasFrame NOTIFY hasFrameChanged)

public:
    explicit HVClipComponent(QQuickItem *parent = nullptr);

    /// The time of the current position in seconds.
    [[nodiscard]] double time() const;

    /// The length of the clip in seconds: that in its file until the whole clip is decoded. 0 if it
    /// is unknown.
    [[nodiscard]] double duration() const;

    /// Whether the position is past the last frame that is decoded. A user interface that reads it
    /// does no work while frames pass, unlike one that reads the progress.
    [[nodiscard]] bool ended() const { return m_ended; }

    /// Whether a frame is shown.
    [[nodiscard]] bool hasFrame() const;

Q_SIGNALS:
    void timeChanged();
    void durationChanged();
    void endedChanged();
    void hasFrameChanged();

protected:
    void frameChanged() override;

private:
    void checkEnd();

    bool m_ended = false;
    bool m_hadFrame = false;
};

} // namespace Hovlets
