// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QThread>

#include <functional>

/*!
 * \brief Runs a function on a thread with a stack of 512 KB, as small as in some hosts.
 *
 * Unbounded recursion crashes the test program here long before it would on the main thread.
 */
inline void onSmallStack(const std::function<void()> &function)
{
    struct Thread : QThread
    {
        void run() override { function(); }
        std::function<void()> function;
    } thread;
    thread.function = function;
    thread.setStackSize(512 * 1024);
    thread.start();
    thread.wait();
}
