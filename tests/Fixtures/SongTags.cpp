// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/SongTags.h"

#include <QFile>

#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/textidentificationframe.h>
#include <taglib/tpropertymap.h>
#include <taglib/trueaudiofile.h>
#include <taglib/unsynchronizedlyricsframe.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/wavpackfile.h>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr int frontCover = 3;

TagLib::String toTagLib(const QString &text)
{
    return {text.toStdString(), TagLib::String::UTF8};
}

TagLib::ByteVector toTagLib(const QByteArray &bytes)
{
    return {bytes.constData(), unsigned(bytes.size())};
}

TagLib::String::Type encodingOf(Id3Text text)
{
    switch (text) {
    case Id3Text::latin1:
        return TagLib::String::Latin1;
    case Id3Text::utf16:
        return TagLib::String::UTF16;
    case Id3Text::utf8:
        return TagLib::String::UTF8;
    }
    return TagLib::String::UTF16;
}

/// The song under the names that TagLib has for all formats.
TagLib::PropertyMap properties(const MadeSong &song)
{
    TagLib::PropertyMap map;
    const auto set = [&map](const char *name, const QString &value) {
        if (!value.isEmpty())
            map.insert(name, TagLib::StringList(toTagLib(value)));
    };
    set("TITLE", song.title);
    set("ARTIST", song.artist);
    set("ALBUMARTIST", song.albumArtist);
    set("ALBUM", song.album);
    set("TRACKNUMBER", song.track);
    set("LYRICS", song.lyrics.value(0));
    return map;
}

TagLib::FLAC::Picture *flacPicture(const QByteArray &cover)
{
    auto *picture = new TagLib::FLAC::Picture;
    picture->setType(TagLib::FLAC::Picture::FrontCover);
    picture->setMimeType(toTagLib(QString::fromLatin1(pictureMimeType(cover))));
    picture->setData(toTagLib(cover));
    return picture;
}

template <typename File>
bool writeXiph(const QByteArray &path, const MadeSong &song)
{
    File file(path.constData());
    file.tag()->setProperties(properties(song));
    if (!song.cover.isEmpty())
        file.tag()->addPicture(flacPicture(song.cover));
    return file.save();
}

bool writeFlac(const QByteArray &path, const MadeSong &song)
{
    TagLib::FLAC::File file(path.constData());
    file.xiphComment(true)->setProperties(properties(song));
    if (!song.cover.isEmpty())
        file.addPicture(flacPicture(song.cover));
    return file.save();
}

void setApeItems(TagLib::APE::Tag &tag, const MadeSong &song)
{
    tag.setProperties(properties(song));
    if (!song.cover.isEmpty()) {
        const QByteArray named = (pictureMimeType(song.cover) == "image/png" ? "cover.png" : "cover.jpg") +
                                 QByteArray(1, '\0') + song.cover;
        tag.setData("Cover Art (Front)", toTagLib(named));
    }
}

template <typename File>
bool writeApe(const QByteArray &path, const MadeSong &song)
{
    File file(path.constData());
    setApeItems(*file.APETag(true), song);
    return file.save();
}

bool writeMp4(const QByteArray &path, const MadeSong &song)
{
    TagLib::MP4::File file(path.constData());
    file.tag()->setProperties(properties(song));
    if (!song.cover.isEmpty()) {
        const auto type = pictureMimeType(song.cover) == "image/png" ? TagLib::MP4::CoverArt::PNG
                                                                     : TagLib::MP4::CoverArt::JPEG;
        TagLib::MP4::CoverArtList covers;
        covers.append({type, toTagLib(song.cover)});
        file.tag()->setItem("covr", covers);
    }
    return file.save();
}

bool writeAsf(const QByteArray &path, const MadeSong &song)
{
    TagLib::ASF::File file(path.constData());
    file.tag()->setProperties(properties(song));
    if (!song.cover.isEmpty()) {
        TagLib::ASF::Picture picture;
        picture.setType(TagLib::ASF::Picture::FrontCover);
        picture.setMimeType(toTagLib(QString::fromLatin1(pictureMimeType(song.cover))));
        picture.setPicture(toTagLib(song.cover));
        file.tag()->setAttribute("WM/Picture", TagLib::ASF::Attribute(picture));
    }
    return file.save();
}

/// Formats whose file class has an ID3v2 tag under this name.
template <typename File>
bool writeId3(const QByteArray &path, const MadeSong &song)
{
    File file(path.constData());
    if constexpr (requires { file.ID3v2Tag(true); })
        setId3Frames(*file.ID3v2Tag(true), song);
    else if constexpr (requires { file.ID3v2Tag(); })
        setId3Frames(*file.ID3v2Tag(), song);
    else
        setId3Frames(*file.tag(), song);
    return file.save();
}

} // namespace

QByteArray pictureMimeType(const QByteArray &picture)
{
    return picture.startsWith("\x89PNG") ? "image/png" : "image/jpeg";
}

void setId3Frames(TagLib::ID3v2::Tag &tag, const MadeSong &song)
{
    namespace Id3 = TagLib::ID3v2;
    const TagLib::String::Type encoding = encodingOf(song.id3Text);
    const auto set = [&](const char *id, const QString &value) {
        if (value.isEmpty())
            return;
        auto *frame = new Id3::TextIdentificationFrame(id, encoding);
        frame->setText(toTagLib(value));
        tag.addFrame(frame);
    };
    set("TIT2", song.title);
    set("TPE1", song.artist);
    set("TPE2", song.albumArtist);
    set("TALB", song.album);
    set("TRCK", song.track);
    for (const QString &lyrics : song.lyrics) {
        auto *frame = new Id3::UnsynchronizedLyricsFrame(encoding);
        frame->setLanguage("zho");
        frame->setText(toTagLib(lyrics));
        tag.addFrame(frame);
    }
    if (!song.cover.isEmpty()) {
        auto *frame = new Id3::AttachedPictureFrame;
        frame->setType(Id3::AttachedPictureFrame::Type(frontCover));
        frame->setMimeType(toTagLib(QString::fromLatin1(pictureMimeType(song.cover))));
        frame->setPicture(toTagLib(song.cover));
        tag.addFrame(frame);
    }
}

QByteArray renderedId3(const MadeSong &song)
{
    TagLib::ID3v2::Tag tag;
    setId3Frames(tag, song);
    const TagLib::ByteVector bytes = tag.render(TagLib::ID3v2::v4);
    return {bytes.data(), qsizetype(bytes.size())};
}

QByteArray renderedApe(const MadeSong &song)
{
    TagLib::APE::Tag tag;
    setApeItems(tag, song);
    const TagLib::ByteVector bytes = tag.render();
    return {bytes.data(), qsizetype(bytes.size())};
}

bool writeTags(const QString &path, const QString &format, const MadeSong &song)
{
    using Writer = bool (*)(const QByteArray &, const MadeSong &);
    static const QHash<QString, Writer> writers{
        {u"mp3"_s, &writeId3<TagLib::MPEG::File>},
        {u"wav"_s, &writeId3<TagLib::RIFF::WAV::File>},
        {u"aiff"_s, &writeId3<TagLib::RIFF::AIFF::File>},
        {u"tta"_s, &writeId3<TagLib::TrueAudio::File>},
        {u"flac"_s, &writeFlac},
        {u"ogg"_s, &writeXiph<TagLib::Vorbis::File>},
        {u"oga"_s, &writeXiph<TagLib::Ogg::FLAC::File>},
        {u"opus"_s, &writeXiph<TagLib::Ogg::Opus::File>},
        {u"spx"_s, &writeXiph<TagLib::Ogg::Speex::File>},
        {u"m4a"_s, &writeMp4},
        {u"alac"_s, &writeMp4},
        {u"wma"_s, &writeAsf},
        {u"wv"_s, &writeApe<TagLib::WavPack::File>},
        {u"ape"_s, &writeApe<TagLib::APE::File>},
    };
    const Writer writer = writers.value(format);
    return writer && writer(QFile::encodeName(path), song);
}

} // namespace cadorel
