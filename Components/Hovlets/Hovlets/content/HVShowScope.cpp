// SPDX-License-Identifier: Apache-2.0
#include "HVShowScope.h"

#include <vector>

namespace Hovlets {

namespace {

int running = 0;
std::vector<HVContentTree> retired;

} // namespace

HVShowScope::HVShowScope()
{
    ++running;
}

HVShowScope::~HVShowScope()
{
    if (--running > 0)
        return;
    // Deletion may run code that shows something else and calls this function again.
    const std::vector<HVContentTree> trees = std::exchange(retired, {});
}

void HVShowScope::retire(HVContentTree tree)
{
    if (running > 0)
        retired.push_back(std::move(tree));
}

} // namespace Hovlets
