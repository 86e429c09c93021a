// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QVector>

class QWidget;
class QWindow;

namespace Hovlets {

/*!
 * \brief Watches the control of a popup, and reports when it is no longer in its place.
 *
 * Watches the control, its parent widgets and its window. Emits signals while it handles their
 * events. GUI thread only.
 */
class HVControlWatch : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVControlWatch)

public:
    /// \a popup owns the watch.
    explicit HVControlWatch(QWidget &popup);

    /// Watches \a control instead of the previous one; null stops watching.
    void watch(QWidget *control);

Q_SIGNALS:
    /// The control was hidden or destroyed, or its window moved, minimised, hidden or blocked by a
    /// modal dialog.
    void controlGone();

    /// The pointer left the control's window or the popup, and perhaps no mouse move will follow.
    void pointerLeft();

    /// The popup covers a window of the application that became active, such as the one that a
    /// clicked link opened.
    void activeWindowCovered();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void release();
    void windowActivated(QWindow *window);
    [[nodiscard]] bool takesControlAlong(const QObject *object, const QEvent &event) const;

    QWidget &m_popup;
    QPointer<QWidget> m_control;
    QVector<QPointer<QWidget>> m_watched; // the control and its parents, with the window last
    QPointer<QWindow> m_handle; // of that window; modal dialogs block it rather than the widget
};

} // namespace Hovlets
