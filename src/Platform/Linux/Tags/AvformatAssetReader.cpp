// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/AvformatAssetReader.h"

#include "Platform/Linux/Tags/FieldAsset.h"
#include "Platform/Linux/Tags/LegacyText.h"
#include "Platform/Linux/Tags/MediaInput.h"

#include <algorithm>
#include <limits>
#include <span>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

/// No header and no tag is near that size; a search through garbage ends there.
constexpr qint64 readLimit = qint64(64) * 1024 * 1024;
constexpr qint64 noLimit = std::numeric_limits<qint64>::max();

std::expected<std::unique_ptr<MediaInput>, QString> openInput(std::shared_ptr<FileBytes> file, qint64 limit)
{
    auto input = MediaInput::open({.file = std::move(file), .readLimit = limit});
    if (!input)
        return std::unexpected(input.error().text);
    return *std::move(input);
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
            const auto input = openInput(m_file, precise ? noLimit : readLimit);
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
    auto input = openInput(file, readLimit);
    if (!input)
        return std::unexpected(input.error());
    return std::make_unique<AvformatAsset>(file, *std::move(input));
}

} // namespace cadorel
