// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "EntryCheck.h"

namespace HovletsTool {

class ContentIndex;
class Progress;

struct MediaLimits
{
    double seconds = 60;
    double megabytes = 20;
};

/// Checks the clips, pictures and user interfaces that entries name. The library resolves their
/// paths. Steps \a progress once for each entry.
void checkMedia(const ControlFiles &files, ContentIndex &content, const MediaLimits &limits,
                Progress &progress, FindingList &findings);

} // namespace HovletsTool
