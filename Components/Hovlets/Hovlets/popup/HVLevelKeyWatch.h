// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVLevelKey.h"

#include <QtCore/QObject>

#include <functional>

namespace Hovlets {

/*!
 * \brief Takes the key that shows the next level of a popup from the host, whoever has the focus.
 *
 * Filters the application's events. It consumes the press, the repetitions while the key is held,
 * the release, and the events by which Qt asks for shortcuts. Emits its signal while it handles an
 * event. GUI thread only.
 */
class HVLevelKeyWatch : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVLevelKeyWatch)

public:
    /// Asks \a isWanted at each press whether there is a next level; otherwise the host gets it.
    HVLevelKeyWatch(std::function<bool()> isWanted, QObject *parent);

    /// Watches \a key, which may be empty, ahead of all event filters installed so far.
    void start(const HVLevelKey &key);

    /// Leaves the key to the host, once it is released.
    void stop();

Q_SIGNALS:
    void pressed();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    [[nodiscard]] bool takes(const QKeyEvent &event);
    [[nodiscard]] bool takesRelease(const QKeyEvent &event);

    std::function<bool()> m_isWanted;
    HVLevelKey m_key; // empty while the watch is stopped
    int m_held = 0; // a Qt::Key that was pressed, or 0

    // A press that the host gets visits several objects, and one of them may show the popup.
    bool m_isNew = false; // until the events that are being handled have ended
    quint64 m_leftAt = 0; // when the last press that the host got occurred
};

} // namespace Hovlets
