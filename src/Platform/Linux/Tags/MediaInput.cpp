// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/MediaInput.h"

#include <algorithm>
#include <mutex>
#include <span>

extern "C" {
#include <libavformat/avformat.h>
#include <libavformat/avio.h>
#include <libavutil/dict.h>
#include <libavutil/error.h>
#include <libavutil/mem.h>
}

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr int bufferBytes = 32 * 1024;
/// Some containers fail for good, some only in a damaged stretch.
constexpr int mostErrors = 1000;
constexpr qint64 probeBytes = qint64(1024) * 1024;
constexpr qint64 probeMicroseconds = 5'000'000;
/// Containers of sound. None of those that refer to other files, no images and no texts; and not bare MPEG
/// audio, which is recognised in nearly anything.
constexpr const char *containers =
    "matroska,webm,rm,mov,mp4,m4a,3gp,3g2,mj2,aac,flac,ogg,wav,w64,aiff,asf,ape,"
    "wv,tta,tak,dsf,iff,caf,ac3,eac3,dts,amr,au";

std::unexpected<MediaInput::Failure> unrecognised(int error)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof(text));
    return std::unexpected(MediaInput::Failure{MediaInput::Failure::unrecognised, QString::fromUtf8(text)});
}

} // namespace

MediaInput::MediaInput(Request request)
    : m_request(std::move(request))
    , m_left(m_request.readLimit)
{
}

MediaInput::~MediaInput()
{
    avformat_close_input(&m_context);
    if (m_io)
        av_freep(static_cast<void *>(&m_io->buffer));
    avio_context_free(&m_io);
}

std::expected<std::unique_ptr<MediaInput>, MediaInput::Failure> MediaInput::open(Request request)
{
    // Every damaged file would write its complaints to the standard error stream.
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });

    std::unique_ptr<MediaInput> input(new MediaInput(std::move(request)));
    if (auto started = input->start(); !started)
        return std::unexpected(std::move(started).error());
    return input;
}

std::expected<void, MediaInput::Failure> MediaInput::start()
{
    auto *buffer = static_cast<unsigned char *>(av_malloc(bufferBytes));
    m_io = avio_alloc_context(buffer, bufferBytes, 0, this, &MediaInput::read, nullptr, &MediaInput::seek);
    m_context = avformat_alloc_context();
    m_context->pb = m_io;
    m_context->flags |= AVFMT_FLAG_CUSTOM_IO;
    m_context->io_open = &MediaInput::refuse;
    m_context->format_whitelist = av_strdup(containers);
    m_context->probesize = probeBytes;
    m_context->max_analyze_duration = probeMicroseconds;
    AVDictionary *options = nullptr;
    if (m_request.unedited)
        av_dict_set(&options, "ignore_editlist", "1", 0);
    // On a failure libavformat frees the context itself.
    const int error = avformat_open_input(&m_context, nullptr, nullptr, &options);
    av_dict_free(&options);
    if (error < 0)
        return unrecognised(error);
    if (m_context->probe_score <= AVPROBE_SCORE_RETRY)
        return std::unexpected(Failure{Failure::unrecognised, u"not an audio file"_s});
    const auto findAudio = [this] {
        m_audio = av_find_best_stream(m_context, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
        return m_audio >= 0;
    };
    // Some streams say what they are only in their packets.
    if (!findAudio() && avformat_find_stream_info(m_context, nullptr) >= 0)
        findAudio();
    if (m_audio < 0)
        return std::unexpected(Failure{Failure::silent, u"no sound in the file"_s});
    if (m_request.soundOnly) {
        for (AVStream *stream : std::span(m_context->streams, m_context->nb_streams))
            stream->discard = stream->index == m_audio ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
    return {};
}

AVStream *MediaInput::audio() const
{
    return m_context->streams[m_audio];
}

bool MediaInput::readSound(AVPacket &packet)
{
    for (int errors = 0; errors < mostErrors;) {
        const int result = av_read_frame(m_context, &packet);
        if (result == AVERROR_EOF)
            return false;
        if (result < 0) {
            ++errors;
            continue;
        }
        if (packet.stream_index == m_audio && packet.size > 0)
            return true;
        av_packet_unref(&packet);
    }
    return false;
}

int MediaInput::read(void *self, unsigned char *to, int length)
{
    auto *input = static_cast<MediaInput *>(self);
    const qint64 wanted = std::min<qint64>(length, input->m_left);
    const qint64 got = input->m_request.file->read(input->m_position, reinterpret_cast<char *>(to), wanted);
    if (got <= 0)
        return AVERROR_EOF;
    input->m_position += got;
    input->m_left -= got;
    return int(got);
}

int64_t MediaInput::seek(void *self, int64_t offset, int whence)
{
    auto *input = static_cast<MediaInput *>(self);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return input->m_request.file->size();
    case SEEK_SET:
        break;
    case SEEK_CUR:
        offset += input->m_position;
        break;
    case SEEK_END:
        offset += input->m_request.file->size();
        break;
    default:
        return AVERROR(EINVAL);
    }
    if (offset < 0)
        return AVERROR(EINVAL);
    input->m_position = offset;
    return offset;
}

int MediaInput::refuse(AVFormatContext *, AVIOContext **, const char *, int, AVDictionary **)
{
    return AVERROR(EPERM);
}

} // namespace cadorel
