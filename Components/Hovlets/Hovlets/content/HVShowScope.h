// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContentTree.h"

namespace Hovlets {

/*!
 * \brief Keeps replaced content alive while a show is running.
 *
 * A show runs QML and the host's code, and either may show something else. The outer show still
 * uses what the inner one replaces, so that is deleted when the outermost scope ends. GUI thread
 * only; scopes nest.
 */
class HVShowScope
{
    Q_DISABLE_COPY_MOVE(HVShowScope)

public:
    HVShowScope();
    ~HVShowScope();

    /// Deletes \a tree once no show is running, or immediately if there is none.
    static void retire(HVContentTree tree);
};

} // namespace Hovlets
