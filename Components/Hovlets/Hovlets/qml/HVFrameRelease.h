// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

class QQuickWindow;

namespace Hovlets {

class HVVideoComponent;
class HVVideoController;
class HVView;

/*!
 * \brief Frees the frames of a clip when its popup has been hidden for HVKeyClipReleaseDelay.
 *
 * Does nothing while the popup is visible, after the frames are freed, or if the setting is 0. A
 * clip that is playing or being decoded keeps its frames for another delay. GUI thread only.
 */
class HVFrameRelease : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVFrameRelease)

public:
    /// \a item owns this object and \a controller.
    HVFrameRelease(HVVideoComponent *item, HVVideoController *controller);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watch(QQuickWindow *window);
    void release();

    QPointer<HVVideoController> m_controller;
    QPointer<HVView> m_view;
    QTimer m_delay;
};

} // namespace Hovlets
