// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <atomic>
#include <functional>
#include <memory>

namespace Hovlets {

/*!
 * \brief One clip's share of the memory for decoded frames, which all clips of the process share.
 *
 * HVLimits::clipMemory limits the sum. A clip that needs more takes it from the clip that was shown
 * least recently and is neither being decoded nor playing. Any thread may call.
 */
class HVFrameMemory
{
    Q_DISABLE_COPY_MOVE(HVFrameMemory)

public:
    /*!
     * Releases all frames of the clip, and returns the object that still owns them. Any thread may
     * call it, with the shares locked, so it must not call this class.
     */
    using Release = std::function<std::shared_ptr<void>()>;

    enum class Use {
        Decoding = 1,
        Playing = 2,
    };

    explicit HVFrameMemory(Release release);
    ~HVFrameMemory();

    /// Reserves \a bytes for a frame; false if other clips that are in use hold too much.
    [[nodiscard]] bool reserve(qint64 bytes);

    /// Call when the clip's frames are gone.
    void clear();

    /// Releases the frames unless the clip is in use; then returns false.
    bool release();

    /// While a clip is in use, other clips do not take its frames.
    void setInUse(Use use, bool isInUse);

    /// Call when a frame of the clip was shown.
    void shown();

    /// Size of the frames of all clips in bytes.
    [[nodiscard]] static qint64 used();

private:
    struct Shares;
    static Shares &shares();
    std::shared_ptr<void> giveUp();

    const Release m_release;
    std::atomic<quint64> m_lastShown { 0 };
    qint64 m_bytes = 0; // like the next ones, guarded by the shares' mutex
    int m_use = 0;
};

} // namespace Hovlets
