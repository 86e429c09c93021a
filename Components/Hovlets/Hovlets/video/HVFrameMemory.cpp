// SPDX-License-Identifier: Apache-2.0
#include "HVFrameMemory.h"

#include "HVLimits.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace Hovlets {

struct HVFrameMemory::Shares
{
    std::mutex mutex; // guards the next two members
    std::vector<HVFrameMemory *> all;
    qint64 used = 0;

    std::atomic<quint64> time { 0 }; // counts shown frames

    /// The unused share whose frames were shown longest ago; null if there is none.
    HVFrameMemory *oldest(const HVFrameMemory *except) const
    {
        HVFrameMemory *found = nullptr;
        for (HVFrameMemory *each : all) {
            if (each == except || each->m_bytes == 0 || each->m_use != 0)
                continue;
            if (!found || each->m_lastShown < found->m_lastShown)
                found = each;
        }
        return found;
    }
};

/// Never destroyed, because a thread that outlives the application may still decode.
HVFrameMemory::Shares &HVFrameMemory::shares()
{
    static auto *shares = new Shares;
    return *shares;
}

HVFrameMemory::HVFrameMemory(Release release)
    : m_release(std::move(release))
{
    const std::lock_guard<std::mutex> lock(shares().mutex);
    shares().all.push_back(this);
}

HVFrameMemory::~HVFrameMemory()
{
    Shares &shares = HVFrameMemory::shares();
    const std::lock_guard<std::mutex> lock(shares.mutex);
    shares.used -= m_bytes;
    shares.all.erase(std::find(shares.all.begin(), shares.all.end(), this));
}

HVFrameMemory::Claim HVFrameMemory::claim(qint64 bytes)
{
    bytes += Overhead;
    const qint64 most = HVLimits::current().clipMemory;
    std::vector<std::shared_ptr<void>> released; // freed after unlocking
    Shares &shares = HVFrameMemory::shares();
    const std::lock_guard<std::mutex> lock(shares.mutex);
    while (shares.used + bytes > most) {
        HVFrameMemory *oldest = bytes <= most ? shares.oldest(this) : nullptr;
        if (!oldest)
            return {};
        released.push_back(oldest->giveUp());
    }
    shares.used += bytes;
    return Claim(bytes);
}

void HVFrameMemory::keep(Claim claim)
{
    const std::lock_guard<std::mutex> lock(shares().mutex);
    m_bytes += std::exchange(claim.m_bytes, 0);
}

void HVFrameMemory::Claim::end()
{
    if (m_bytes == 0)
        return;
    const std::lock_guard<std::mutex> lock(shares().mutex);
    shares().used -= std::exchange(m_bytes, 0);
}

void HVFrameMemory::clear()
{
    Shares &shares = HVFrameMemory::shares();
    const std::lock_guard<std::mutex> lock(shares.mutex);
    shares.used -= std::exchange(m_bytes, 0);
}

bool HVFrameMemory::release()
{
    std::shared_ptr<void> released; // freed after unlocking
    const std::lock_guard<std::mutex> lock(shares().mutex);
    if (m_use != 0)
        return false;
    if (m_bytes > 0)
        released = giveUp();
    return true;
}

/// Requires the lock on the shares.
std::shared_ptr<void> HVFrameMemory::giveUp()
{
    shares().used -= std::exchange(m_bytes, 0);
    return m_release();
}

void HVFrameMemory::setInUse(Use use, bool isInUse)
{
    const std::lock_guard<std::mutex> lock(shares().mutex);
    m_use = isInUse ? m_use | static_cast<int>(use) : m_use & ~static_cast<int>(use);
}

void HVFrameMemory::shown()
{
    m_lastShown = ++shares().time;
}

qint64 HVFrameMemory::used()
{
    const std::lock_guard<std::mutex> lock(shares().mutex);
    return shares().used;
}

} // namespace Hovlets
