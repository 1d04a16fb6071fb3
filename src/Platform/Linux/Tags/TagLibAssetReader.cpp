// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/TagLibAssetReader.h"

#include "Platform/Linux/Tags/AvformatAssetReader.h"
#include "Platform/Linux/Tags/DsdChunks.h"
#include "Platform/Linux/Tags/FieldAsset.h"
#include "Platform/Linux/Tags/Id3Fields.h"
#include "Platform/Linux/Tags/MpegFrames.h"
#include "Platform/Linux/Tags/NamedFields.h"
#include "Platform/Linux/Tags/TagLibStream.h"

#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/trueaudiofile.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/wavpackfile.h>
#include <taglib/xingheader.h>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

/// A file of which only single tags are read, at places that are known already.
class BareFile : public TagLib::File
{
public:
    explicit BareFile(TagLib::IOStream *stream)
        : File(stream)
    {
    }
    TagLib::Tag *tag() const override { return nullptr; }
    TagLib::AudioProperties *audioProperties() const override { return nullptr; }
    bool save() override { return false; }

    std::unique_ptr<TagLib::ID3v2::Tag> id3v2;
    std::unique_ptr<TagLib::APE::Tag> ape;
    std::unique_ptr<TagLib::ID3v1::Tag> id3v1;
};

/// A file open in TagLib together with what it reads from. The items of a file hold on to it.
struct TagSource
{
    template <typename... Where>
    explicit TagSource(const std::shared_ptr<FileBytes> &bytes, Where... where)
        : stream(bytes, where...)
    {
    }

    TagLibStream stream;
    std::unique_ptr<TagLib::File> file;
};

/// What one container gives.
struct Contents
{
    /// Seconds; 0 when the container does not tell.
    double duration = 0;
    /// Counts the length out, where the container only lets it be guessed.
    std::function<double()> count = {};
    std::function<void(TagFields &)> addFields = {};
};

template <typename Tag>
std::shared_ptr<Tag> shared(const std::shared_ptr<TagSource> &source, Tag *tag)
{
    return {source, tag};
}

/// Opens the file as @p File. @return null when it is not valid or holds no sound
template <typename File, typename... Arguments>
File *openAs(TagSource &source, Arguments... arguments)
{
    auto file = std::make_unique<File>(&source.stream, arguments...);
    const TagLib::AudioProperties *properties = file->isValid() ? file->audioProperties() : nullptr;
    if (!properties || (properties->lengthInMilliseconds() <= 0 && properties->sampleRate() <= 0))
        return nullptr;
    File *opened = file.get();
    source.file = std::move(file);
    return opened;
}

double secondsOf(const TagLib::File &file)
{
    constexpr double millisecond = 0.001;
    return file.audioProperties()->lengthInMilliseconds() * millisecond;
}

using MaybeContents = std::optional<Contents>;

Contents fileContents(const TagLib::File &file, std::function<void(TagFields &)> addFields)
{
    return {.duration = secondsOf(file), .addFields = std::move(addFields)};
}

/// Adds what a less trusted tag knows beyond the others. @p add is one of the functions that add a tag's
/// fields
template <typename Tag, typename Add>
void fillGaps(TagFields &fields, const std::shared_ptr<Tag> &tag, Add add)
{
    TagFields others;
    add(others, tag);
    others.sortByRank();
    fields.fillGaps(std::move(others));
}

/// Ogg with a comment: Vorbis, Opus, Speex and FLAC.
template <typename File>
MaybeContents xiphContents(const std::shared_ptr<TagSource> &source)
{
    File *file = openAs<File>(*source);
    if (!file)
        return std::nullopt;
    return fileContents(*file, [source, file](TagFields &fields) {
        if (file->tag())
            addXiphFields(fields, shared<TagLib::Ogg::XiphComment>(source, file->tag()));
        fields.sortByRank();
    });
}

MaybeContents flacContents(const std::shared_ptr<TagSource> &source)
{
    auto *file = openAs<TagLib::FLAC::File>(*source, TagLib::ID3v2::FrameFactory::instance());
    if (!file)
        return std::nullopt;
    return fileContents(*file, [source, file](TagFields &fields) {
        if (file->hasXiphComment())
            addXiphFields(fields, shared(source, file->xiphComment()));
        addFlacPictures(fields, source, file->pictureList());
        fields.sortByRank();
        if (file->hasID3v2Tag())
            fillGaps(fields, shared<const TagLib::ID3v2::Tag>(source, file->ID3v2Tag()),
                     [](TagFields &others, const auto &tag) { addId3v2Fields(others, tag); });
    });
}

MaybeContents mp4Contents(const std::shared_ptr<TagSource> &source)
{
    auto *file = openAs<TagLib::MP4::File>(*source);
    if (!file)
        return std::nullopt;
    return fileContents(*file, [source, file](TagFields &fields) {
        if (file->tag())
            addMp4Fields(fields, shared(source, file->tag()));
        fields.sortByRank();
    });
}

MaybeContents asfContents(const std::shared_ptr<TagSource> &source)
{
    auto *file = openAs<TagLib::ASF::File>(*source);
    if (!file)
        return std::nullopt;
    return fileContents(*file, [source, file](TagFields &fields) {
        if (file->tag())
            addAsfFields(fields, shared(source, file->tag()));
        fields.sortByRank();
    });
}

/// Monkey's Audio and WavPack: an APE tag, now and then an ID3v1 tag.
template <typename File>
MaybeContents apeContents(const std::shared_ptr<TagSource> &source)
{
    File *file = openAs<File>(*source);
    if (!file)
        return std::nullopt;
    return fileContents(*file, [source, file](TagFields &fields) {
        if (file->hasAPETag())
            addApeFields(fields, shared(source, file->APETag()));
        fields.sortByRank();
        if (file->hasID3v1Tag())
            fillGaps(fields, shared<const TagLib::ID3v1::Tag>(source, file->ID3v1Tag()), addId3v1Fields);
    });
}

MaybeContents trueAudioContents(const std::shared_ptr<TagSource> &source)
{
    auto *file = openAs<TagLib::TrueAudio::File>(*source);
    if (!file)
        return std::nullopt;
    return fileContents(*file, [source, file](TagFields &fields) {
        if (file->hasID3v2Tag())
            addId3v2Fields(fields, shared(source, file->ID3v2Tag()));
        if (file->hasID3v1Tag())
            fillGaps(fields, shared<const TagLib::ID3v1::Tag>(source, file->ID3v1Tag()), addId3v1Fields);
    });
}

MaybeContents wavContents(const std::shared_ptr<TagSource> &source)
{
    keepInfoBytes();
    auto *file = openAs<TagLib::RIFF::WAV::File>(*source);
    if (!file)
        return std::nullopt;
    return fileContents(*file, [source, file](TagFields &fields) {
        if (file->hasID3v2Tag())
            addId3v2Fields(fields, shared(source, file->ID3v2Tag()));
        if (file->hasInfoTag())
            fillGaps(fields, shared<const TagLib::RIFF::Info::Tag>(source, file->InfoTag()), addInfoFields);
    });
}

MaybeContents aiffContents(const std::shared_ptr<TagSource> &source, const std::shared_ptr<FileBytes> &bytes)
{
    auto *file = openAs<TagLib::RIFF::AIFF::File>(*source);
    if (!file)
        return std::nullopt;
    return fileContents(*file, [=](TagFields &fields) {
        if (file->hasID3v2Tag())
            addId3v2Fields(fields, shared(source, file->tag()));
        TagFields texts;
        addChunkTexts(texts, "aiff"_L1, aiffTexts(*bytes));
        fields.fillGaps(std::move(texts));
    });
}

/// The tags that surround a stream of frames.
void openTagsAround(const std::shared_ptr<TagSource> &source, const AudioSignature &signature)
{
    auto file = std::make_unique<BareFile>(&source->stream);
    if (signature.hasId3v2)
        file->id3v2 = std::make_unique<TagLib::ID3v2::Tag>(file.get(), 0);
    if (signature.apeFooter >= 0)
        file->ape = std::make_unique<TagLib::APE::Tag>(file.get(), long(signature.apeFooter));
    if (signature.id3v1 >= 0)
        file->id3v1 = std::make_unique<TagLib::ID3v1::Tag>(file.get(), long(signature.id3v1));
    source->file = std::move(file);
}

void addTagsAround(TagFields &fields, const std::shared_ptr<TagSource> &source, double frameSeconds)
{
    const auto *file = static_cast<const BareFile *>(source->file.get());
    if (file->id3v2)
        addId3v2Fields(fields, shared<const TagLib::ID3v2::Tag>(source, file->id3v2.get()), frameSeconds);
    if (file->ape)
        fillGaps(fields, shared<const TagLib::APE::Tag>(source, file->ape.get()), addApeFields);
    if (file->id3v1)
        fillGaps(fields, shared<const TagLib::ID3v1::Tag>(source, file->id3v1.get()), addId3v1Fields);
}

MaybeContents framesContents(const std::shared_ptr<TagSource> &source,
                             const std::shared_ptr<FileBytes> &bytes, const AudioSignature &signature)
{
    const FrameKind kind =
        signature.container == AudioContainer::adts ? FrameKind::adts : FrameKind::mpegAudio;
    MpegFrames frames(*bytes, kind, signature.audioEnd);
    const std::optional<FrameHeader> first = frames.at(signature.audioStart);
    if (!first)
        return std::nullopt;
    const double frameSeconds = double(first->samples) / first->sampleRate;
    openTagsAround(source, signature);
    Contents contents;
    contents.addFields = [source, frameSeconds](TagFields &fields) {
        addTagsAround(fields, source, frameSeconds);
    };
    if (kind == FrameKind::mpegAudio) {
        const QByteArray frame = bytes->read(signature.audioStart, first->bytes);
        const TagLib::MPEG::XingHeader header({frame.constData(), unsigned(frame.size())});
        if (header.isValid()) {
            contents.duration = header.totalFrames() * frameSeconds;
            return contents;
        }
    }
    contents.duration = frames.estimate(signature.audioStart);
    contents.count = [bytes, kind, signature] {
        return MpegFrames(*bytes, kind, signature.audioEnd).count(signature.audioStart);
    };
    return contents;
}

/// TAK's own header is libavformat's to read; around it lie the tags of a stream of frames.
MaybeContents takContents(const std::shared_ptr<TagSource> &source, const AudioSignature &signature)
{
    openTagsAround(source, signature);
    return Contents{.duration = 0,
                    .addFields = [source](TagFields &fields) { addTagsAround(fields, source, 0); }};
}

MaybeContents dsdContents(const std::shared_ptr<FileBytes> &bytes, const std::optional<DsdChunks> &chunks)
{
    if (!chunks)
        return std::nullopt;
    Contents contents;
    contents.duration = chunks->duration;
    contents.addFields = [bytes, chunks](TagFields &fields) {
        if (chunks->id3) {
            auto source = std::make_shared<TagSource>(bytes, chunks->id3->offset, chunks->id3->length);
            openTagsAround(source, {.hasId3v2 = true});
            addTagsAround(fields, source, 0);
        }
        TagFields texts;
        addChunkTexts(texts, "dsdiff"_L1, chunks->texts);
        fields.fillGaps(std::move(texts));
    };
    return contents;
}

MaybeContents contentsOf(const std::shared_ptr<FileBytes> &bytes, const AudioSignature &signature)
{
    auto source = std::make_shared<TagSource>(bytes);
    switch (signature.container) {
    case AudioContainer::mpegAudio:
    case AudioContainer::adts:
        return framesContents(source, bytes, signature);
    case AudioContainer::tak:
        return takContents(source, signature);
    case AudioContainer::flac:
        return flacContents(source);
    case AudioContainer::oggVorbis:
        return xiphContents<TagLib::Vorbis::File>(source);
    case AudioContainer::oggFlac:
        return xiphContents<TagLib::Ogg::FLAC::File>(source);
    case AudioContainer::opus:
        return xiphContents<TagLib::Ogg::Opus::File>(source);
    case AudioContainer::speex:
        return xiphContents<TagLib::Ogg::Speex::File>(source);
    case AudioContainer::mp4:
        return mp4Contents(source);
    case AudioContainer::wav:
        return wavContents(source);
    case AudioContainer::aiff:
        return aiffContents(source, bytes);
    case AudioContainer::asf:
        return asfContents(source);
    case AudioContainer::monkeysAudio:
        return apeContents<TagLib::APE::File>(source);
    case AudioContainer::wavPack:
        return apeContents<TagLib::WavPack::File>(source);
    case AudioContainer::trueAudio:
        return trueAudioContents(source);
    case AudioContainer::dsf:
        return dsdContents(bytes, DsdChunks::ofDsf(*bytes));
    case AudioContainer::dff:
        return dsdContents(bytes, DsdChunks::ofDff(*bytes));
    case AudioContainer::matroska:
    case AudioContainer::realMedia:
    case AudioContainer::unknown:
        break;
    }
    return std::nullopt;
}

class TagLibAsset final : public FieldAsset
{
public:
    TagLibAsset(std::shared_ptr<FileBytes> bytes, Contents contents)
        : m_bytes(std::move(bytes))
        , m_contents(std::move(contents))
    {
    }

    std::expected<double, QString> duration(bool precise) override
    {
        if (precise && m_contents.count)
            m_contents.duration = std::exchange(m_contents.count, {})();
        if (m_contents.duration > 0)
            return m_contents.duration;
        // Streams that were never finished: fragments, unknown totals.
        auto other = AvformatAssetReader::open(m_bytes);
        return other ? (*other)->duration(precise) : std::unexpected(other.error());
    }

protected:
    TagFields readFields() override
    {
        TagFields fields;
        m_contents.addFields(fields);
        return fields;
    }

private:
    std::shared_ptr<FileBytes> m_bytes;
    Contents m_contents;
};

} // namespace

std::unique_ptr<AssetMetadata> TagLibAssetReader::open(const std::shared_ptr<FileBytes> &file,
                                                       const AudioSignature &signature)
{
    MaybeContents contents = contentsOf(file, signature);
    return contents ? std::make_unique<TagLibAsset>(file, *std::move(contents)) : nullptr;
}

} // namespace cadorel
