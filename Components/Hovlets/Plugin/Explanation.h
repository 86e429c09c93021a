// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "RecordedFile.h"

#include <HovletsAssist/HVStandardKeys.h>

class QWidget;

namespace Hovlets {

class AttachedHost;

/// What shows for a control, and why.
struct Explanation
{
    HVKeyedControl control;
    std::optional<FoundEntry> entry; // of the control itself
    QString file; // of that entry
    QString reason; // one or two sentences for the author
};

/// Explains what shows at the global \a position on \a widget. Entries of \a own, the author's
/// file, count as soon as they are written.
Explanation explain(AttachedHost &host, const RecordedFile &own, QWidget *widget,
                    const QPoint &position);

} // namespace Hovlets
