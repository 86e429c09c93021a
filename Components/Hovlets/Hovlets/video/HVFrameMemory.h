// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <atomic>
#include <functional>
#include <memory>

namespace Hovlets {

/*!
 * \brief One clip's share of the memory for decoded frames, which all clips of
 * the process divide among themselves.
 *
 * HVLimits::clipMemory bounds the sum. A clip that needs more takes it from the
 * clip that was shown least recently and is neither decoded nor played. Any
 * thread may call.
 */
class HVFrameMemory
{
    Q_DISABLE_COPY_MOVE(HVFrameMemory)

public:
    /*!
     * Gives up all frames of the clip, and returns what still holds them. Called
     * by any thread with the shares locked: it calls nothing here.
     */
    using Release = std::function<std::shared_ptr<void>()>;

    enum class Use {
        Decoding = 1,
        Playing = 2,
    };

    explicit HVFrameMemory(Release release);
    ~HVFrameMemory();

    /// Takes \a bytes for a frame; false when other clips in use hold too much.
    [[nodiscard]] bool reserve(qint64 bytes);

    /// The clip's frames are gone.
    void clear();

    /// Gives up the frames, unless the clip is in use; false then.
    bool release();

    /// While a clip is in use, nobody takes its frames.
    void setInUse(Use use, bool isInUse);

    /// A frame of the clip was shown just now.
    void shown();

    /// Bytes of the frames of all clips.
    [[nodiscard]] static qint64 used();

private:
    struct Shares;
    static Shares &shares();
    std::shared_ptr<void> giveUp();

    const Release m_release;
    std::atomic<quint64> m_lastShown { 0 };
    qint64 m_bytes = 0; // guarded by the mutex of the shares, as the next
    int m_use = 0;
};

} // namespace Hovlets
