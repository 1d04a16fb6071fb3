// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/Id3Fields.h"

#include "Platform/Linux/Tags/TagLibText.h"

#include <taglib/attachedpictureframe.h>
#include <taglib/commentsframe.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/synchronizedlyricsframe.h>
#include <taglib/textidentificationframe.h>
#include <taglib/unsynchronizedlyricsframe.h>
#include <taglib/urllinkframe.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

namespace Id3 = TagLib::ID3v2;
using Owner = std::shared_ptr<const Id3::Tag>;

constexpr int id3v1FieldBytes = 30;

/// TagLib keeps whatever byte the frame has as its encoding.
template <typename Frame>
DeclaredEncoding encodingOf(const Frame &frame)
{
    return frame.textEncoding() == TagLib::String::Latin1 ? DeclaredEncoding::latin1
                                                          : DeclaredEncoding::unicode;
}

/// The values of a text frame, without the description that comes first in a TXXX frame.
QString frameText(const Id3::TextIdentificationFrame &frame, bool described)
{
    const TagLib::StringList values = frame.fieldList();
    QStringList texts;
    for (auto value = values.begin(); value != values.end(); ++value) {
        const QString text =
            described && value == values.begin() ? QString() : toQString(*value, encodingOf(frame));
        if (!text.isEmpty())
            texts.append(text);
    }
    return texts.join(valueSeparator);
}

/// One line of an LRC text.
QString lrcLine(double seconds, const QString &text)
{
    const qint64 hundredths = std::llround(seconds * 100);
    return u"[%1:%2.%3]%4\n"_s.arg(hundredths / 6000, 2, 10, QChar(u'0'))
        .arg(hundredths / 100 % 60, 2, 10, QChar(u'0'))
        .arg(hundredths % 100, 2, 10, QChar(u'0'))
        .arg(text);
}

/// The texts with their times as LRC. Where texts begin with line feeds they are syllables, and a line lasts
/// until the next line feed; otherwise each of them is a line.
QString lrcText(const Id3::SynchronizedLyricsFrame &frame, double frameSeconds)
{
    const double unit =
        frame.timestampFormat() == Id3::SynchronizedLyricsFrame::AbsoluteMpegFrames ? frameSeconds : 0.001;
    const Id3::SynchronizedLyricsFrame::SynchedTextList texts = frame.synchedText();
    QList<std::pair<double, QString>> lines;
    bool syllables = false;
    for (const auto &entry : texts) {
        const QString text = toQString(entry.text, encodingOf(frame));
        const bool newLine = text.startsWith(u'\n') || text.startsWith(u'\r');
        syllables = syllables || (newLine && &entry != &texts.front());
        lines.append({double(entry.time) * unit, text});
    }
    QString lrc;
    for (qsizetype i = 0; i < lines.size();) {
        QString line = lines[i].second;
        const double seconds = lines[i].first;
        for (++i; syllables && i < lines.size() && !lines[i].second.startsWith(u'\n') &&
                  !lines[i].second.startsWith(u'\r');
             ++i)
            line += lines[i].second;
        lrc += lrcLine(seconds, line.simplified());
    }
    return lrc;
}

TagField namedField(const QString &key, const QString &name, CommonKeys::Field meaning)
{
    return {.key = key, .identifier = "id3/"_L1 + name, .field = meaning};
}

/// The field of a frame that its description, not its name, tells the meaning of.
TagField describedField(const QString &name, const QString &description)
{
    if (description.isEmpty())
        return namedField(name, name, {});
    // The description stays out of the identifier unless it is known: "REPLAYGAIN_ALBUM_GAIN" is no album.
    const CommonKeys::Field meaning = CommonKeys::freeField(description);
    const QString key = name + u':' + description;
    return namedField(key, meaning.role == FieldRole::other ? name : key, meaning);
}

TagField textField(const QString &name, const Owner &tag, const Id3::TextIdentificationFrame &frame)
{
    const auto *user = dynamic_cast<const Id3::UserTextIdentificationFrame *>(&frame);
    TagField field = user ? describedField(name, toQString(user->description(), encodingOf(frame)))
                          : namedField(name, name, CommonKeys::field(name));
    field.text = [tag, &frame, described = user != nullptr] { return frameText(frame, described); };
    return field;
}

TagField fieldOf(const Owner &tag, const Id3::Frame &frame, double frameSeconds)
{
    const TagLib::ByteVector id = frame.frameID();
    const QString name = QString::fromLatin1(id.data(), qsizetype(id.size()));
    if (const auto *text = dynamic_cast<const Id3::TextIdentificationFrame *>(&frame))
        return textField(name, tag, *text);

    TagField field = namedField(name, name, CommonKeys::field(name));
    if (const auto *picture = dynamic_cast<const Id3::AttachedPictureFrame *>(&frame)) {
        field.pictureRank = TagFields::rankOfPictureType(picture->type());
        if (!picture->picture().isEmpty() && picture->mimeType() != "-->")
            field.bytes = [tag, picture] { return toQByteArray(picture->picture()); };
        else
            field.field = {};
    } else if (const auto *lyrics = dynamic_cast<const Id3::UnsynchronizedLyricsFrame *>(&frame)) {
        field.text = [tag, lyrics] { return toQString(lyrics->text(), encodingOf(*lyrics)); };
    } else if (const auto *timed = dynamic_cast<const Id3::SynchronizedLyricsFrame *>(&frame)) {
        using Frame = Id3::SynchronizedLyricsFrame;
        const bool words = timed->type() == Frame::Lyrics || timed->type() == Frame::TextTranscription ||
                           timed->type() == Frame::Other;
        if (words)
            field.text = [tag, timed, frameSeconds] { return lrcText(*timed, frameSeconds); };
    } else if (const auto *comment = dynamic_cast<const Id3::CommentsFrame *>(&frame)) {
        field = describedField(name, toQString(comment->description(), encodingOf(*comment)));
        field.text = [tag, comment] { return toQString(comment->text(), encodingOf(*comment)); };
    } else if (const auto *link = dynamic_cast<const Id3::UrlLinkFrame *>(&frame)) {
        field.text = [tag, link] { return toQString(link->url()); };
    }
    return field;
}

} // namespace

void addId3v2Fields(TagFields &fields, const std::shared_ptr<const TagLib::ID3v2::Tag> &tag,
                    double frameSeconds)
{
    for (const Id3::Frame *frame : tag->frameList())
        fields.add(fieldOf(tag, *frame, frameSeconds));
}

void addId3v1Fields(TagFields &fields, const std::shared_ptr<const TagLib::ID3v1::Tag> &tag)
{
    const auto add = [&](const QString &name, std::function<QString()> text) {
        const CommonKeys::Field meaning = CommonKeys::field(name);
        fields.add({.key = name,
                    .identifier = "id3v1/"_L1 + CommonKeys::identifierName(name, meaning.role),
                    .field = meaning,
                    .text = std::move(text)});
    };
    const auto addText = [&](const QString &name, TagLib::String (TagLib::ID3v1::Tag::*value)() const) {
        if (!((*tag).*value)().isEmpty())
            add(name, [tag, value] {
                const TagLib::ByteVector bytes = ((*tag).*value)().data(TagLib::String::Latin1);
                return legacyText(bytes, int(bytes.size()) >= id3v1FieldBytes - 2 ? FieldEnd::maybeCut
                                                                                  : FieldEnd::whole);
            });
    };
    addText(u"TITLE"_s, &TagLib::ID3v1::Tag::title);
    addText(u"ARTIST"_s, &TagLib::ID3v1::Tag::artist);
    addText(u"ALBUM"_s, &TagLib::ID3v1::Tag::album);
    addText(u"COMMENT"_s, &TagLib::ID3v1::Tag::comment);
    if (tag->track() > 0)
        add(u"TRACK"_s, [tag] { return QString::number(tag->track()); });
}

} // namespace cadorel
