// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSemaphore>

#include <memory>
#include <thread>
#include <vector>

/// Runs \a work in another thread; returns false if that thread is blocked.
template <typename Work> inline bool doesElsewhere(std::vector<std::thread> *threads, Work work)
{
    auto done = std::make_shared<QSemaphore>();
    threads->emplace_back([done, work] {
        work();
        done->release();
    });
    return done->tryAcquire(1, 30000);
}
