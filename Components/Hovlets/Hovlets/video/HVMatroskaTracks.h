// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

class QIODevice;

namespace Hovlets {

/*!
 * Whether the parts of a Matroska or WebM file that FFmpeg loads take little memory.
 *
 * Matroska can compress the frames of a track and the private data of its codec. FFmpeg's demuxer
 * inflates them without reading the file, and therefore cannot be interrupted: 320 KB took 1.5 GB.
 * This function returns false for compressed tracks. It permits the removal of a few bytes with
 * which all frames start, which muxers do for sound. It also returns false for more than 16 MB of
 * tracks and attachments, such as fonts, which the demuxer keeps in memory twice, and if
 * \a interrupted, called before each read, returns true.
 *
 * The demuxer finds these parts at any place: through a list of the file's parts, and after damage
 * anywhere. So this function searches the whole file for them.
 */
[[nodiscard]] bool matroskaTracksFit(QIODevice &file, const std::function<bool()> &interrupted);

} // namespace Hovlets
