// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVControlPart.h"
#include "HVSafePath.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

class QHelpEvent;
class QWidget;

namespace Hovlets {

/*!
 * \brief Keeps a popup on screen while the pointer is on its way to it.
 *
 * Watches the application's events while the popup is visible, and consumes the tooltip events of
 * other controls until HVSafePath lets one take over. Then it makes that control show its popup or
 * tooltip, without waiting for the desktop's delay. A control that shows neither counts as empty
 * space until another one is asked.
 *
 * GUI thread only.
 */
class HVPathWatch : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVPathWatch)

public:
    /// \a popup owns the watch.
    explicit HVPathWatch(QWidget &popup);

    /// Call when the popup shows for the part of \a control at \a position. \a dwell is in ms.
    void start(QWidget &control, const QPoint &position, int dwell);

    /// Call when the popup is gone and no control takes over.
    void stop();

    /// Call when the popup hides. A control on which the pointer rests still takes over in time.
    void finish();

    /// Whether \a position is on the way from the control to the popup. False when stopped.
    [[nodiscard]] bool isBetween(const QPoint &position) const;

Q_SIGNALS:
    /// Emitted while the pointer is outside all windows, where no event reports its moves.
    void pointerIsAt(const QPoint &position);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    /// A widget, or a part of it, that may show something.
    struct Target
    {
        QPointer<QWidget> widget;
        HVControlPart::Id part {};

        [[nodiscard]] bool operator==(const Target &other) const;
    };

    static Target targetAt(QWidget *widget, const QPoint &position);
    [[nodiscard]] HVSafePath::Over over(const Target &target) const;
    HVSafePath::Verdict pointerMoved(QWidget *widget, const QPoint &position);
    bool consumes(QWidget *widget, const QPoint &position);
    void begin();
    void letTakeOver();
    void lookForPointer();

    QWidget &m_popup;
    QElapsedTimer m_clock;
    QTimer m_dwell; // until the target takes over
    QTimer m_outside; // runs while the pointer is outside of all windows
    HVSafePath m_path;
    QRect m_origin;
    int m_dwellTime = 0; // ms
    Target m_control;
    Target m_target; // under the pointer
    Target m_nothing; // the last target that was asked and changed nothing
    QPoint m_position;
    bool m_runs = false;
    bool m_letsTakeOver = false;
};

} // namespace Hovlets
