// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/NamedFields.h"

#include "Platform/Linux/Tags/TagLibText.h"

#include <taglib/apetag.h>
#include <taglib/asftag.h>
#include <taglib/flacpicture.h>
#include <taglib/infotag.h>
#include <taglib/mp4tag.h>
#include <taglib/xiphcomment.h>

#include <mutex>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr auto freeAtom = "----"_L1;

TagField wordField(QLatin1StringView format, const QString &name)
{
    const CommonKeys::Field meaning = CommonKeys::field(name);
    return {.key = name,
            .identifier = format + u'/' + CommonKeys::identifierName(name, meaning.role),
            .field = meaning};
}

/// Several values of one field: verses below each other, everything else in one line.
QLatin1StringView separatorOf(FieldRole role)
{
    return role == FieldRole::lyrics ? "\n"_L1 : valueSeparator;
}

class InfoBytes final : public TagLib::RIFF::Info::StringHandler
{
public:
    TagLib::String parse(const TagLib::ByteVector &data) const override
    {
        return {data, TagLib::String::Latin1};
    }
};

TagField apeField(const std::shared_ptr<const TagLib::APE::Tag> &tag, const QString &name,
                  const TagLib::APE::Item &item)
{
    TagField field = wordField("ape"_L1, name);
    if (item.type() != TagLib::APE::Item::Binary) {
        field.text = [tag, &item, role = field.field.role] {
            return toQString(item.values(), separatorOf(role));
        };
        return field;
    }
    // A picture comes behind its file name and a zero byte.
    constexpr auto coverPrefix = "Cover Art"_L1;
    const bool cover = name.startsWith(coverPrefix, Qt::CaseInsensitive);
    const TagLib::ByteVector data = item.binaryData();
    const int start = cover ? data.find('\0') + 1 : 0;
    const bool empty = start >= int(data.size());
    if (!empty)
        field.bytes = [tag, data, start] {
            return QByteArray(data.data() + start, qsizetype(data.size()) - start);
        };
    if (cover) {
        field.pictureRank = field.field.role == FieldRole::artwork ? 0 : 1;
        field.field.role = empty ? FieldRole::other : FieldRole::artwork;
    }
    return field;
}

QString mp4Text(const TagLib::MP4::Item &item)
{
    return toQString(item.toStringList());
}

QString mp4Pair(const TagLib::MP4::Item &item)
{
    const TagLib::MP4::Item::IntPair pair = item.toIntPair();
    return pair.second > 0 ? u"%1/%2"_s.arg(pair.first).arg(pair.second) : QString::number(pair.first);
}

void addMp4Pictures(TagFields &fields, const std::shared_ptr<const TagLib::MP4::Tag> &tag,
                    const TagField &like, const TagLib::MP4::Item &item)
{
    for (const TagLib::MP4::CoverArt &cover : item.toCoverArtList()) {
        if (cover.data().isEmpty())
            continue;
        TagField field = like;
        field.bytes = [tag, data = cover.data()] { return toQByteArray(data); };
        fields.add(std::move(field));
    }
}

void addAsfAttribute(TagFields &fields, const std::shared_ptr<const TagLib::ASF::Tag> &tag,
                     const QString &name, const TagLib::ASF::AttributeList &values)
{
    TagField field = wordField("asf"_L1, name);
    if (field.field.role == FieldRole::artwork) {
        for (const TagLib::ASF::Attribute &value : values) {
            const TagLib::ASF::Picture picture = value.toPicture();
            if (!picture.isValid() || picture.picture().isEmpty())
                continue;
            TagField one = field;
            one.pictureRank = TagFields::rankOfPictureType(picture.type());
            one.bytes = [tag, picture] { return toQByteArray(picture.picture()); };
            fields.add(std::move(one));
        }
        return;
    }
    const bool binary = !values.isEmpty() && (values.front().type() == TagLib::ASF::Attribute::BytesType ||
                                              values.front().type() == TagLib::ASF::Attribute::GuidType);
    if (binary)
        field.bytes = [tag, &values] { return toQByteArray(values.front().toByteVector()); };
    else
        field.text = [tag, &values, role = field.field.role] {
            QStringList texts;
            for (const TagLib::ASF::Attribute &value : values)
                texts.append(value.type() == TagLib::ASF::Attribute::UnicodeType
                                 ? toQString(value.toString())
                                 : QString::number(value.type() == TagLib::ASF::Attribute::QWordType
                                                       ? value.toULongLong()
                                                       : value.toUInt()));
            return texts.join(separatorOf(role));
        };
    fields.add(std::move(field));
}

} // namespace

void addXiphFields(TagFields &fields, const std::shared_ptr<TagLib::Ogg::XiphComment> &tag)
{
    for (const auto &[name, values] : tag->fieldListMap()) {
        TagField field = wordField("vorb"_L1, toQString(name));
        field.text = [tag, &list = values, role = field.field.role] {
            return toQString(list, separatorOf(role));
        };
        fields.add(std::move(field));
    }
    addFlacPictures(fields, tag, tag->pictureList());
}

void addFlacPictures(TagFields &fields, const std::shared_ptr<const void> &owner,
                     const TagLib::List<TagLib::FLAC::Picture *> &pictures)
{
    for (const TagLib::FLAC::Picture *picture : pictures) {
        const TagLib::ByteVector data = picture->data();
        if (data.isEmpty())
            continue;
        TagField field = wordField("vorb"_L1, u"METADATA_BLOCK_PICTURE"_s);
        field.pictureRank = TagFields::rankOfPictureType(picture->type());
        field.bytes = [owner, data] { return toQByteArray(data); };
        fields.add(std::move(field));
    }
}

void addApeFields(TagFields &fields, const std::shared_ptr<const TagLib::APE::Tag> &tag)
{
    // TagLib's names are upper case; an item knows how its writer spelled it.
    for (const auto &[name, item] : tag->itemListMap())
        fields.add(apeField(tag, toQString(item.key()), item));
}

void addMp4Fields(TagFields &fields, const std::shared_ptr<const TagLib::MP4::Tag> &tag)
{
    for (const auto &[atom, item] : tag->itemMap()) {
        const QString name = toQString(atom);
        TagField field;
        field.key = name;
        if (name.startsWith(freeAtom)) {
            // "----:com.apple.iTunes:NAME": as with TXXX, only a known name goes into the identifier.
            field.field = CommonKeys::freeField(name.section(u':', -1));
            field.identifier = "itsk/"_L1 + (field.field.role == FieldRole::other ? QString(freeAtom) : name);
        } else {
            field.field = CommonKeys::field(name);
            field.identifier = "itsk/"_L1 + name;
        }
        if (field.field.role == FieldRole::artwork) {
            addMp4Pictures(fields, tag, field, item);
            continue;
        }
        const bool isPair = field.field.role == FieldRole::track || name == "disk"_L1;
        field.text = [tag, &value = item, isPair] { return isPair ? mp4Pair(value) : mp4Text(value); };
        fields.add(std::move(field));
    }
}

void addAsfFields(TagFields &fields, const std::shared_ptr<const TagLib::ASF::Tag> &tag)
{
    // These two are fields of a header that every file has.
    const auto add = [&](const QString &name, TagLib::String (TagLib::ASF::Tag::*value)() const) {
        if (((*tag).*value)().isEmpty())
            return;
        TagField field = wordField("asf"_L1, name);
        field.text = [tag, value] { return toQString(((*tag).*value)()); };
        fields.add(std::move(field));
    };
    add(u"Title"_s, &TagLib::ASF::Tag::title);
    add(u"Author"_s, &TagLib::ASF::Tag::artist);
    for (const auto &[name, values] : tag->attributeListMap())
        addAsfAttribute(fields, tag, toQString(name), values);
}

void addInfoFields(TagFields &fields, const std::shared_ptr<const TagLib::RIFF::Info::Tag> &tag)
{
    const TagLib::RIFF::Info::FieldListMap map = tag->fieldListMap();
    for (const auto &[id, value] : map) {
        TagField field = wordField("riff"_L1, QString::fromLatin1(id.data(), qsizetype(id.size())));
        field.text = [text = value] { return legacyText(text.data(TagLib::String::Latin1)); };
        fields.add(std::move(field));
    }
}

void addChunkTexts(TagFields &fields, QLatin1StringView format, const ChunkTexts &texts)
{
    for (const auto &[name, bytes] : texts) {
        TagField field = wordField(format, name);
        field.text = [text = bytes] { return legacyText(text); };
        fields.add(std::move(field));
    }
}

void keepInfoBytes()
{
    static std::once_flag once;
    std::call_once(once, [] {
        static const InfoBytes handler;
        TagLib::RIFF::Info::Tag::setStringHandler(&handler);
    });
}

} // namespace cadorel
