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
 * Watches the application's events while the popup is up, and consumes the tooltip events of other
 * controls until HVSafePath lets one take over. Then it has that control show what it has, without
 * waiting for the desktop's own moment. Which controls have anything is learnt by asking: one that
 * changes nothing is nothing from then on.
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

    /// The popup is for what \a control has at \a position. \a dwell is in ms.
    void start(QWidget &control, const QPoint &position, int dwell);

    /// The popup is gone, and no control takes over.
    void stop();

    /// The popup hides. A control on which the pointer rests still takes over at its time.
    void finish();

    /// Whether \a position is on the way between the control and the popup. False when stopped.
    bool isBetween(const QPoint &position) const;

Q_SIGNALS:
    /// The pointer is outside of all windows, where no event tells where it goes.
    void pointerIsAt(const QPoint &position);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    /// What may show something of its own: a widget, or a part of it.
    struct Target
    {
        QPointer<QWidget> widget;
        HVControlPart::Id part {};

        bool operator==(const Target &other) const;
    };

    static Target targetAt(QWidget *widget, const QPoint &position);
    HVSafePath::Over over(const Target &target) const;
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
    Target m_nothing; // what was asked last and changed nothing
    QPoint m_position;
    bool m_runs = false;
    bool m_letsTakeOver = false;
};

} // namespace Hovlets
