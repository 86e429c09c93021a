// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContentTree.h"

namespace Hovlets {

/*!
 * \brief Keeps replaced content alive while a show is running.
 *
 * A show runs QML and code of the host, either of which may show something else. What the inner
 * show replaces is still in use by the outer one, so it is deleted when the outermost scope ends.
 * GUI thread only; scopes nest.
 */
class HVShowScope
{
    Q_DISABLE_COPY_MOVE(HVShowScope)

public:
    HVShowScope();
    ~HVShowScope();

    /// Deletes \a tree once no show is running: at once when there is none.
    static void retire(HVContentTree tree);
};

} // namespace Hovlets
