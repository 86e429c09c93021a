// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <functional>

class QIODevice;

namespace Hovlets {

/*!
 * Whether the tables of a QuickTime or MP4 file declare at most \a most samples.
 *
 * FFmpeg's demuxer for these files builds an index with an entry for each declared sample, in loops
 * that cannot be interrupted. The tables are run-length encoded, so 600 bytes may declare billions
 * of samples. This function counts them before the demuxer reads the file. It also returns false
 * for tables in places where no program writes them, and if \a interrupted, called once for each
 * box, returns true.
 */
[[nodiscard]] bool movieTablesFit(QIODevice &file, qint64 most,
                                  const std::function<bool()> &interrupted);

} // namespace Hovlets
