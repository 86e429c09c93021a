// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWidget;

namespace Hovlets {

/*!
 * \brief Watches the keyboard and the wheel while a popup is visible, and reports input that
 * dismisses it.
 *
 * Filters the application's events and consumes none. Emits its signal while it handles an event.
 * GUI thread only.
 */
class HVDismissalWatch : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVDismissalWatch)

public:
    /// \a popup owns the watch.
    explicit HVDismissalWatch(QWidget &popup);

    /// Watches for \a dismissals, a combination of HVDismissal, over \a control, which may be null.
    void start(int dismissals, QWidget *control);
    void stop();

Q_SIGNALS:
    void dismissed();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    [[nodiscard]] bool dismisses(QObject *object, const QEvent &event) const;
    [[nodiscard]] bool hasKeyboard() const;

    QWidget &m_popup;
    QPointer<QWidget> m_control;
    int m_dismissals = 0;
};

} // namespace Hovlets
