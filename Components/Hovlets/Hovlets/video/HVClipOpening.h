// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QUrl>

#include <condition_variable>
#include <mutex>

namespace Hovlets {

/*!
 * \brief Reports whether the clip that was requested last has been opened.
 *
 * The decoding thread opens clips, and users notice a popup that grows afterwards. The GUI thread
 * can therefore wait a moment here, and no longer for a damaged file. Thread-safe.
 */
class HVClipOpening : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVClipOpening)

public:
    enum class State { Pending, Opened, Failed };

    HVClipOpening() = default;

    /// Waits until the clip at \a url is open or has failed to open, but for \a milliseconds at
    /// most.
    [[nodiscard]] State wait(const QUrl &url, int milliseconds) const;

    /// Call on the decoding thread when it has tried to open the clip at \a url.
    void end(const QUrl &url, bool isOpened);

Q_SIGNALS:
    /// Emitted on the decoding thread.
    void failed();

private:
    mutable std::mutex m_mutex; // guards the members below
    mutable std::condition_variable m_ended;
    QUrl m_last;
    bool m_isOpened = false;
};

} // namespace Hovlets
