// SPDX-License-Identifier: Apache-2.0
#include "HVClipFile.h"

#include "HVRegularFile.h"

#include <QtCore/QFileInfo>

namespace Hovlets {

namespace {

constexpr int BufferSize = 32 * 1024; // bytes; FFmpeg's own size for files

/// Demuxers of files that name other files or addresses, or that are programs.
constexpr auto Refused = "hls,concat,dash,webm_dash_manifest,imf,sdp,rtsp,rtp,sap,"
                         "image2,svg_pipe,avisynth,vapoursynth";

bool isAccepted(const AVInputFormat &format)
{
    // A demuxer without AVIO would open whatever the name says.
    return (format.flags & AVFMT_NOFILE) == 0 && av_match_list(format.name, Refused, ',') == 0;
}

} // namespace

HVClipFile::HVClipFile(Interrupted interrupted)
    : m_interrupted(std::move(interrupted))
{
}

HVClipFile::~HVClipFile() = default;

bool HVClipFile::open(const QString &path)
{
    // Only the suffix of the name, because demuxers interpret names as patterns and protocols.
    m_hint = "clip." + QFileInfo(path).suffix().toUtf8();
    if (m_hint.contains('%') || m_hint.contains('*') || m_hint.contains('?'))
        m_hint = "clip";
    return openRegularFile(m_file, path);
}

const AVInputFormat *HVClipFile::format()
{
    const AVInputFormat *format = nullptr;
    if (!restart()
        || av_probe_input_buffer2(m_context.get(), &format, m_hint.constData(), nullptr, 0, 0) < 0
        || !isAccepted(*format)) {
        return nullptr;
    }
    return format;
}

bool HVClipFile::restart()
{
    m_context.reset();
    auto *buffer = static_cast<unsigned char *>(av_malloc(BufferSize));
    if (!buffer)
        return false;
    m_context.reset(avio_alloc_context(buffer, BufferSize, 0, this, &HVClipFile::read, nullptr,
                                       &HVClipFile::seek));
    if (!m_context)
        av_free(buffer);
    return m_context && m_file.seek(0);
}

int HVClipFile::read(void *opaque, uint8_t *buffer, int size)
{
    auto *self = static_cast<HVClipFile *>(opaque);
    if (self->m_interrupted())
        return AVERROR_EXIT;
    const qint64 got = self->m_file.read(reinterpret_cast<char *>(buffer), size);
    if (got == 0)
        return AVERROR_EOF;
    return got > 0 ? static_cast<int>(got) : AVERROR(EIO);
}

int64_t HVClipFile::seek(void *opaque, int64_t offset, int whence)
{
    auto *self = static_cast<HVClipFile *>(opaque);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return self->m_file.size();
    case SEEK_CUR:
        offset += self->m_file.pos();
        break;
    case SEEK_END:
        offset += self->m_file.size();
        break;
    default:
        break;
    }
    return self->m_file.seek(offset) ? offset : AVERROR(EINVAL);
}

} // namespace Hovlets
