// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/AvformatAssetReader.h"

#include "Platform/Linux/Tags/FieldAsset.h"
#include "Platform/Linux/Tags/LegacyText.h"

#include <algorithm>
#include <limits>
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
/// No header and no tag is near that size; a search through garbage ends there.
constexpr qint64 readLimit = qint64(64) * 1024 * 1024;
constexpr qint64 noLimit = std::numeric_limits<qint64>::max();
constexpr qint64 probeBytes = qint64(1024) * 1024;
constexpr qint64 probeMicroseconds = 5'000'000;
/// Containers of sound. None of those that refer to other files, no images and no texts; and not bare MPEG
/// audio, which is recognised in nearly anything.
constexpr const char *containers =
    "matroska,webm,rm,mov,mp4,m4a,3gp,3g2,mj2,aac,flac,ogg,wav,w64,aiff,asf,ape,"
    "wv,tta,tak,dsf,iff,caf,ac3,eac3,dts,amr,au";

QString describe(int error)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof(text));
    return QString::fromUtf8(text);
}

/// A file open in libavformat.
class MediaInput
{
public:
    static std::expected<std::unique_ptr<MediaInput>, QString> open(std::shared_ptr<FileBytes> file,
                                                                    qint64 limit);

    MediaInput(const MediaInput &) = delete;
    MediaInput &operator=(const MediaInput &) = delete;
    ~MediaInput();

    AVFormatContext *context() const { return m_context; }
    const AVStream *audio() const { return m_context->streams[m_audio]; }
    /// How many bytes were read; at the limit the file seems to end.
    qint64 bytesRead() const { return m_limit - m_left; }
    bool atLimit() const { return m_left == 0; }

private:
    MediaInput(std::shared_ptr<FileBytes> file, qint64 limit);
    static int read(void *self, uint8_t *to, int length);
    static int64_t seek(void *self, int64_t offset, int whence);
    static int refuse(AVFormatContext *, AVIOContext **, const char *, int, AVDictionary **);

    std::shared_ptr<FileBytes> m_file;
    qint64 m_position = 0;
    qint64 m_limit;
    qint64 m_left;
    AVIOContext *m_io = nullptr;
    AVFormatContext *m_context = nullptr;
    int m_audio = -1;
};

MediaInput::MediaInput(std::shared_ptr<FileBytes> file, qint64 limit)
    : m_file(std::move(file))
    , m_limit(limit)
    , m_left(limit)
{
}

MediaInput::~MediaInput()
{
    avformat_close_input(&m_context);
    if (m_io)
        av_freep(static_cast<void *>(&m_io->buffer));
    avio_context_free(&m_io);
}

std::expected<std::unique_ptr<MediaInput>, QString> MediaInput::open(std::shared_ptr<FileBytes> file,
                                                                     qint64 limit)
{
    // Every damaged file would write its complaints to the standard error stream.
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });

    std::unique_ptr<MediaInput> input(new MediaInput(std::move(file), limit));
    auto *buffer = static_cast<unsigned char *>(av_malloc(bufferBytes));
    input->m_io = avio_alloc_context(buffer, bufferBytes, 0, input.get(), &MediaInput::read, nullptr,
                                     &MediaInput::seek);
    input->m_context = avformat_alloc_context();
    input->m_context->pb = input->m_io;
    input->m_context->flags |= AVFMT_FLAG_CUSTOM_IO;
    input->m_context->io_open = &MediaInput::refuse;
    input->m_context->format_whitelist = av_strdup(containers);
    input->m_context->probesize = probeBytes;
    input->m_context->max_analyze_duration = probeMicroseconds;
    // On a failure libavformat frees the context itself.
    if (const int error = avformat_open_input(&input->m_context, nullptr, nullptr, nullptr); error < 0)
        return std::unexpected(describe(error));
    if (input->m_context->probe_score <= AVPROBE_SCORE_RETRY)
        return std::unexpected(u"not an audio file"_s);
    const auto findAudio = [&input] {
        input->m_audio = av_find_best_stream(input->m_context, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
        return input->m_audio >= 0;
    };
    // Some streams say what they are only in their packets.
    if (!findAudio() && avformat_find_stream_info(input->m_context, nullptr) >= 0)
        findAudio();
    if (input->m_audio < 0)
        return std::unexpected(u"no sound in the file"_s);
    return input;
}

int MediaInput::read(void *self, uint8_t *to, int length)
{
    auto *input = static_cast<MediaInput *>(self);
    const qint64 wanted = std::min<qint64>(length, input->m_left);
    const qint64 got = input->m_file->read(input->m_position, reinterpret_cast<char *>(to), wanted);
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
        return input->m_file->size();
    case SEEK_SET:
        break;
    case SEEK_CUR:
        offset += input->m_position;
        break;
    case SEEK_END:
        offset += input->m_file->size();
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

double seconds(int64_t value, AVRational base)
{
    return value == AV_NOPTS_VALUE || value <= 0 ? 0 : double(value) * av_q2d(base);
}

/// What the header tells; 0 when it tells nothing.
double headerDuration(const MediaInput &input)
{
    const AVStream *audio = input.audio();
    const double stream = seconds(audio->duration, audio->time_base);
    return stream > 0 ? stream : seconds(input.context()->duration, AVRational{1, AV_TIME_BASE});
}

/// Reads all packets. The sum of their lengths counts where their timestamps stand still.
double countedDuration(const MediaInput &input, qint64 fileSize)
{
    AVPacket *packet = av_packet_alloc();
    int64_t begin = std::numeric_limits<int64_t>::max();
    int64_t end = 0;
    int64_t total = 0;
    while (av_read_frame(input.context(), packet) >= 0) {
        if (packet->stream_index == input.audio()->index) {
            const int64_t at = packet->pts != AV_NOPTS_VALUE ? packet->pts : total;
            begin = std::min(begin, at);
            total += packet->duration;
            end = std::max(end, at + packet->duration);
        }
        av_packet_unref(packet);
    }
    av_packet_free(&packet);
    const int64_t span = end > begin ? end - begin : 0;
    const double scale = input.atLimit() ? double(fileSize) / double(input.bytesRead()) : 1;
    return seconds(std::max(span, total), input.audio()->time_base) * scale;
}

QLatin1StringView formatName(const AVFormatContext *context)
{
    const QByteArrayView name(context->iformat->name);
    return name.startsWith("matroska") ? "mkv"_L1 : name == "rm" ? "real"_L1 : "av"_L1;
}

void addDictionary(TagFields &fields, const std::shared_ptr<MediaInput> &input,
                   const AVDictionary *dictionary)
{
    const AVDictionaryEntry *entry = nullptr;
    while ((entry = av_dict_get(dictionary, "", entry, AV_DICT_IGNORE_SUFFIX))) {
        const QString name = QString::fromUtf8(entry->key);
        const CommonKeys::Field meaning = CommonKeys::field(name);
        fields.add({.key = name,
                    .identifier =
                        formatName(input->context()) + u'/' + CommonKeys::identifierName(name, meaning.role),
                    .field = meaning,
                    .text = [input, entry] { return legacyText(QByteArrayView(entry->value)); }});
    }
}

void addPictures(TagFields &fields, const std::shared_ptr<MediaInput> &input)
{
    const std::span streams(input->context()->streams, input->context()->nb_streams);
    for (const AVStream *stream : streams) {
        const AVPacket &picture = stream->attached_pic;
        if (!(stream->disposition & AV_DISPOSITION_ATTACHED_PIC) || picture.size <= 0)
            continue;
        // Matroska names the front cover "cover" (cover.jpg) and others "small_cover", "cover_land".
        const AVDictionaryEntry *name = av_dict_get(stream->metadata, "filename", nullptr, 0);
        const bool front = name && QByteArrayView(name->value).startsWith("cover.");
        CommonKeys::Field meaning = CommonKeys::field(u"COVR"_s);
        fields.add({.key = u"artwork"_s,
                    .identifier = formatName(input->context()) + "/artwork"_L1,
                    .field = meaning,
                    .bytes =
                        [input, &picture] {
                            return QByteArray(reinterpret_cast<const char *>(picture.data), picture.size);
                        },
                    .pictureRank = front ? 0 : 1});
    }
}

class AvformatAsset final : public FieldAsset
{
public:
    AvformatAsset(std::shared_ptr<FileBytes> file, std::shared_ptr<MediaInput> input)
        : m_file(std::move(file))
        , m_input(std::move(input))
    {
    }

    std::expected<double, QString> duration(bool precise) override
    {
        double length = headerDuration(*m_input);
        if (length <= 0) {
            // Reading packets moves on for good: a second input does it.
            const auto input = MediaInput::open(m_file, precise ? noLimit : readLimit);
            length = input ? countedDuration(**input, m_file->size()) : 0;
        }
        if (length > 0)
            return length;
        return std::unexpected(u"the file does not tell its length"_s);
    }

protected:
    TagFields readFields() override
    {
        TagFields fields;
        addDictionary(fields, m_input, m_input->context()->metadata);
        TagFields ofStream;
        addDictionary(ofStream, m_input, m_input->audio()->metadata);
        fields.fillGaps(std::move(ofStream));
        addPictures(fields, m_input);
        fields.sortByRank();
        return fields;
    }

private:
    std::shared_ptr<FileBytes> m_file;
    std::shared_ptr<MediaInput> m_input;
};

} // namespace

std::expected<std::unique_ptr<AssetMetadata>, QString>
AvformatAssetReader::open(const std::shared_ptr<FileBytes> &file)
{
    auto input = MediaInput::open(file, readLimit);
    if (!input)
        return std::unexpected(input.error());
    return std::make_unique<AvformatAsset>(file, *std::move(input));
}

} // namespace cadorel
