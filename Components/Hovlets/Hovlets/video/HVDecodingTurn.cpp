// SPDX-License-Identifier: Apache-2.0
#include "HVDecodingTurn.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Hovlets {

namespace {

constexpr std::chrono::milliseconds LongestWait(3000);
constexpr std::chrono::milliseconds Step(20); // between questions whether to go on

struct Turns
{
    std::mutex mutex; // guards count
    std::condition_variable ended;
    int count = 0; // more than one only after a wait that was too long
};

/// Never destroyed, because a thread that outlives the application may still decode.
Turns &turns()
{
    static auto *turns = new Turns;
    return *turns;
}

} // namespace

HVDecodingTurn::~HVDecodingTurn()
{
    if (!m_isTaken)
        return;
    {
        const std::lock_guard<std::mutex> lock(turns().mutex);
        --turns().count;
    }
    turns().ended.notify_all();
}

void HVDecodingTurn::take(const std::function<bool()> &interrupted)
{
    if (m_isTaken)
        return;
    Turns &turns = Hovlets::turns();
    std::unique_lock<std::mutex> lock(turns.mutex);
    for (auto waited = Step; turns.count > 0 && waited <= LongestWait && !interrupted();
         waited += Step)
        turns.ended.wait_until(lock, std::chrono::system_clock::now() + Step);
    ++turns.count;
    m_isTaken = true;
}

} // namespace Hovlets
