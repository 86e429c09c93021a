// SPDX-License-Identifier: Apache-2.0
// Checks that no file that claims to be a clip can harm the host that plays it.
#include "FuzzTarget.h"
#include "HVClip.h"
#include "PackageFolder.h"

extern "C" {
#include <libavutil/log.h>
}

using namespace Hovlets;

namespace {

/// A clip may declare more frames than a fuzzer has time for.
constexpr int Pictures = 8;

void readSome(HVClip &clip)
{
    for (int i = 0; i < Pictures && !clip.nextFrame().isNull(); ++i) { }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const PackageFolder folder;
    av_log_set_level(AV_LOG_QUIET); // nearly every input is damaged
    const QString path =
            folder.add(QStringLiteral("clip"),
                       QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    HVClip clip([] { return false; });
    if (clip.open(path))
        return 0;
    if (!(clip.frameRate() > 0) || !(clip.duration() >= 0))
        __builtin_trap();
    readSome(clip);
    clip.seek(clip.duration() / 2, true);
    readSome(clip);
    clip.seek(0, true);
    readSome(clip);
    return 0;
}
