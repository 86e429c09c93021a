// SPDX-License-Identifier: Apache-2.0
#include "HVClip.h"

#include "HVClipStreams.h"
#include "HVMatroskaTracks.h"
#include "HVMovieTables.h"
#include "HVResidentMemory.h"

#include <QtCore/QtMath>

#include <algorithm>

namespace Hovlets {

namespace {

constexpr double FastestRate = 240.0; // frames/s; higher rates are those of a clock
constexpr double UsualRate = 25.0;

double number(AVRational rational)
{
    return rational.den == 0 ? 0.0 : av_q2d(rational);
}

bool isRate(AVRational rational)
{
    const double rate = number(rational);
    return rate > 0.0 && rate <= FastestRate;
}

/// Refuses to open a file or an address that the clip names.
int refuse(AVFormatContext *, AVIOContext **, const char *, int, AVDictionary **)
{
    return AVERROR(EPERM);
}

} // namespace

HVClip::HVClip(Interrupted interrupted, ClaimMemory claimMemory)
    : m_interrupted(std::move(interrupted))
    , m_claimMemory(std::move(claimMemory))
    , m_file([this] { return isInterrupted(); })
{
}

HVClip::~HVClip() = default;

const char *HVClip::open(const QString &filePath)
{
    m_limits = HVLimits::current();
    m_decoderMemory = std::make_unique<HVDecoderMemory>(m_limits.clipDecoderMemory);
    m_openingMemory = residentMemory();
    m_openingEnds = QDeadlineTimer(m_limits.clipProbeTime);
    const char *message = openContainer(filePath);
    if (!message)
        message = openDecoder();
    m_openingEnds.reset();
    return message;
}

int HVClip::interrupted(void *clip)
{
    return static_cast<const HVClip *>(clip)->isInterrupted() ? 1 : 0;
}

bool HVClip::isInterrupted() const
{
    if (m_interrupted())
        return true;
    return m_openingEnds
            && (m_openingEnds->hasExpired()
                || residentMemory() - m_openingMemory > m_limits.clipProbeMemory);
}

const char *HVClip::openContainer(const QString &filePath)
{
    constexpr auto Failure = "Could not open media at: %1";
    const AVInputFormat *container = m_file.open(filePath) ? m_file.format() : nullptr;
    if (!container)
        return Failure;
    if (av_match_name("mov", container->name)
        && !movieTablesFit(m_file.device(), m_limits.clipSamples,
                           [this] { return isInterrupted(); })) {
        return Failure;
    }
    if (av_match_name("matroska", container->name)
        && !matroskaTracksFit(m_file.device(), [this] { return isInterrupted(); })) {
        return Failure;
    }
    AVFormatContext *format = m_file.restart() ? avformat_alloc_context() : nullptr;
    if (!format)
        return Failure;
    format->pb = m_file.context();
    format->io_open = &refuse;
    format->interrupt_callback = { &HVClip::interrupted, this };
    format->max_streams = m_limits.clipStreams;
    format->probesize = std::max<qint64>(m_limits.clipProbeSize, 32);
    format->protocol_whitelist = av_strdup("none");
    // On failure, this frees the context.
    if (avformat_open_input(&format, m_file.hint(), container, nullptr) < 0)
        return Failure;
    m_format.reset(format);
    // This opens decoders of its own, whose memory cannot be counted.
    if (findStreams(format, std::min(mostPixels(), m_decoderMemory->mostUncountedPixels())) < 0)
        return "Could not find any stream information in media at: %1";
    return nullptr;
}

qint64 HVClip::mostPixels() const
{
    return std::max<qint64>(m_limits.picturePixels, 0);
}

const char *HVClip::openDecoder()
{
    const AVCodec *codec = nullptr;
    const int index = findClip(m_format.get(), &codec);
    if (index < 0)
        return "Could not find a video stream in %1";
    m_stream = m_format->streams[index];

    m_codec.reset(avcodec_alloc_context3(codec));
    if (!m_codec || avcodec_parameters_to_context(m_codec.get(), m_stream->codecpar) < 0)
        return "Could not open codec for stream in: %1";
    m_codec->pkt_timebase = m_stream->time_base;
    m_codec->max_pixels = mostPixels();
    m_decoderMemory->attach(m_codec.get(), *codec);
    if (avcodec_open2(m_codec.get(), codec, nullptr) < 0)
        return "Could not open codec for stream in: %1";

    m_decoded.reset(av_frame_alloc());
    m_packet.reset(av_packet_alloc());
    if (!m_decoded || !m_packet)
        return "Could not allocate original frame in %1";
    if (m_codec->width <= 0 || m_codec->height <= 0)
        return "Could not allocate rgb frame in %1";
    m_size = QSize(m_codec->width, m_codec->height);
    m_converter = HVFrameConverter(m_size);
    // Large frames have not been decoded, so their format may be unknown.
    const bool isLarge =
            qint64 { m_size.width() } * m_size.height() > m_decoderMemory->mostUncountedPixels();
    if (!(isLarge && m_codec->pix_fmt == AV_PIX_FMT_NONE)
        && !m_converter.prepare(m_codec->width, m_codec->height, m_codec->pix_fmt)) {
        return "Could not get a swscale context for %1";
    }
    return nullptr;
}

QImage HVClip::nextFrame()
{
    if (!m_converting.valid()) {
        if (!receive() || !claim())
            return {};
        if (m_isFirst) { // shown immediately, without waiting for the second
            m_isFirst = false;
            m_claim = std::move(m_nextClaim);
            return m_converter.convert(*m_decoded);
        }
        startConverting();
    }
    m_claim = std::move(m_nextClaim);
    const bool isMore = receive() && claim();
    QImage image = m_converting.get();
    if (isMore && !image.isNull())
        startConverting();
    return image;
}

/// Claims memory for the decoded frame, converted; false if there is none.
bool HVClip::claim()
{
    if (!m_claimMemory)
        return true;
    m_nextClaim = m_claimMemory(m_converter.imageSize());
    m_isClaimRefused = !m_nextClaim;
    return !m_isClaimRefused;
}

bool HVClip::isOutOfMemory() const
{
    return m_isClaimRefused || m_decoderMemory->isExhausted();
}

/// Starts converting the decoded frame. Without a thread for it, fetching the frame converts it.
void HVClip::startConverting()
{
    HVFfmpegPtr<AVFrame> frame(av_frame_alloc());
    if (frame)
        av_frame_move_ref(frame.get(), m_decoded.get());
    m_converting = std::async([this, frame = std::move(frame)] {
        return frame ? m_converter.convert(*frame) : QImage();
    });
}

/// Decodes until there is a frame; returns false at the end.
bool HVClip::receive()
{
    if (m_decoderMemory->isLarge(*m_codec))
        m_turn.take(m_interrupted);
    while (!isInterrupted() && !isOutOfMemory()) {
        const int result = avcodec_receive_frame(m_codec.get(), m_decoded.get());
        if (result >= 0)
            return true;
        if (result == AVERROR_EOF || result == AVERROR(ENOMEM))
            return false;
        if (m_draining && result == AVERROR(EAGAIN))
            return false;
        if (!m_draining && !feed())
            return false;
    }
    return false;
}

/// Gives the decoder one packet of the stream, or tells it that there are no more.
bool HVClip::feed()
{
    do {
        av_packet_unref(m_packet.get());
        if (av_read_frame(m_format.get(), m_packet.get()) < 0) {
            m_draining = true;
            return avcodec_send_packet(m_codec.get(), nullptr) >= 0;
        }
    } while (m_packet->stream_index != m_stream->index);
    // A packet that the decoder rejects is damaged; the next one may not be.
    const int result = avcodec_send_packet(m_codec.get(), m_packet.get());
    av_packet_unref(m_packet.get());
    return result != AVERROR(ENOMEM);
}

void HVClip::seek(double seconds, bool backward)
{
    m_converting = {}; // a frame from before the jump
    const double base = number(m_stream->time_base);
    seekTo(base > 0.0 ? static_cast<qint64>(seconds / base) : 0,
           backward ? AVSEEK_FLAG_BACKWARD : 0);
    avcodec_flush_buffers(m_codec.get());
    m_draining = false;
}

void HVClip::seekTo(qint64 target, int flags)
{
    av_seek_frame(m_format.get(), m_stream->index, target, flags);
    if (!m_draining)
        return;
    avcodec_flush_buffers(m_codec.get()); // the decoder may have reached the end
    m_draining = false;
}

double HVClip::duration() const
{
    if (m_stream->duration != AV_NOPTS_VALUE)
        return number(m_stream->time_base) * static_cast<double>(m_stream->duration);
    if (m_format->duration != AV_NOPTS_VALUE)
        return static_cast<double>(m_format->duration) / AV_TIME_BASE;
    return 0.0;
}

double HVClip::timeBase() const
{
    // Current decoders seldom set a time base: it is the duration of one frame.
    const double base = number(m_codec->time_base);
    return base > 0.0 ? base : 1.0 / frameRate();
}

double HVClip::frameRate() const
{
    // FFmpeg 7 and later set r_frame_rate of raw H.264 to fields per second. The guess is in frames
    // in all versions.
    const AVRational guess = av_guess_frame_rate(m_format.get(), m_stream, nullptr);
    for (const AVRational rate : { guess, m_stream->avg_frame_rate }) {
        if (isRate(rate))
            return number(rate);
    }
    return UsualRate;
}

} // namespace Hovlets
