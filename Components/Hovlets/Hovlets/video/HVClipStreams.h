// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFfmpeg.h"

#include <QtCore/QtGlobal>

namespace Hovlets {

/*!
 * \brief Finds the streams of a clip. Returns FFmpeg's error code.
 *
 * Like avformat_find_stream_info(), but with a limit: that function decodes frames as well, with
 * decoders of its own. Frames of more than \a mostPixels are not decoded. Their streams keep the
 * size that the container stores, and may lack a format.
 */
int findStreams(AVFormatContext *format, qint64 mostPixels);

/// The index of the stream to play, with its decoder, or FFmpeg's error code. The cover picture of
/// a music file does not count.
int findClip(AVFormatContext *format, const AVCodec **codec);

} // namespace Hovlets
