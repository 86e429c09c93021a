// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

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

    /*!
     * \brief Memory for one frame that does not exist yet.
     *
     * Counts from before the frame is made, until the claim ends or a clip keeps the frame.
     * Converts to false if there was no room. Any thread may end the claim.
     */
    class Claim
    {
    public:
        Claim() = default;
        Claim(Claim &&other) noexcept
            : m_bytes(std::exchange(other.m_bytes, 0))
        {
        }
        Claim &operator=(Claim &&other) noexcept
        {
            std::swap(m_bytes, other.m_bytes);
            other.end();
            return *this;
        }
        ~Claim() { end(); }

        explicit operator bool() const { return m_bytes > 0; }

    private:
        friend class HVFrameMemory;
        explicit Claim(qint64 bytes)
            : m_bytes(bytes)
        {
        }
        void end();

        qint64 m_bytes = 0;
    };

    /// Bytes that each frame takes besides its pixels: objects, alignment and the allocator's
    /// records. Without them, a clip of tiny frames would take many times its share.
    static constexpr qint64 Overhead = 512;

    explicit HVFrameMemory(Release release);
    ~HVFrameMemory();

    /// Claims \a bytes of pixels, and Overhead, for a frame; false if other clips that are in use
    /// hold too much.
    [[nodiscard]] Claim claim(qint64 bytes);

    /// The clip has the frame for which \a claim was made.
    void keep(Claim claim);

    /// Call when the clip's frames are gone.
    void clear();

    /// Releases the frames unless the clip is in use; then returns false.
    bool release();

    /// While a clip is in use, other clips do not take its frames.
    void setInUse(Use use, bool isInUse);

    /// Call when a frame of the clip was shown.
    void shown();

    /// Size of the frames of all clips in bytes, each with Overhead, and with those that are being
    /// made.
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
