// SPDX-License-Identifier: Apache-2.0
#include "HVLimits.h"

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

#include <type_traits>

namespace Hovlets {

static_assert(std::is_trivially_copyable_v<HVLimits>, "read by several threads at a time");

namespace {

struct Shared
{
    QMutex mutex; // guards limits
    HVLimits limits;
};

Shared &shared()
{
    static Shared instance;
    return instance;
}

} // namespace

HVLimits HVLimits::current()
{
    Shared &shared = Hovlets::shared();
    const QMutexLocker lock(&shared.mutex);
    return shared.limits;
}

void HVLimits::setCurrent(const HVLimits &limits)
{
    Shared &shared = Hovlets::shared();
    const QMutexLocker lock(&shared.mutex);
    shared.limits = limits;
}

} // namespace Hovlets
