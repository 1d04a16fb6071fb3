// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Cloud/CloudMetadata.h"

#include "Services/Cloud/CoverImage.h"
#include "Services/Cloud/FlacPicture.h"
#include "Utils/CharacterCount.h"

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto pictureBlockKey = "metadata_block_picture"_L1;

QString keyOf(const MetadataItem &item)
{
    const QString key = item.key();
    return key.isEmpty() ? item.identifier() : key;
}

bool containsAny(const QString &key, std::initializer_list<QStringView> parts)
{
    return std::ranges::any_of(parts, [&key](QStringView part) { return key.contains(part); });
}

QString byteCount(const QByteArray &bytes)
{
    return QString::number(bytes.size()) + " bytes"_L1;
}

/// The bytes of base64 text; none when they are anything else.
QByteArray fromBase64(const QByteArray &text)
{
    const auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? decoded.decoded : QByteArray();
}

/// Takes bytes as the cover if they are an image.
bool takeCover(const QByteArray &bytes, CloudMetadata &found)
{
    const QImage image = bytes.isEmpty() ? QImage() : decodedCover(bytes);
    if (image.isNull())
        return false;
    found.cover = bytes;
    found.coverImage = image;
    return true;
}

void commonWalk(const MetadataItems &items, CloudMetadata &found)
{
    for (const auto &item : items) {
        const std::optional<CommonKey> key = item->commonKey();
        if (!key)
            continue;
        switch (*key) {
        case CommonKey::title:
            found.title = item->stringValue().value_or(found.title);
            break;
        case CommonKey::artist:
            found.artist = item->stringValue().value_or(found.artist);
            break;
        case CommonKey::albumName:
            found.album = item->stringValue().value_or(found.album);
            break;
        case CommonKey::artwork:
            if (const std::optional<QByteArray> data = item->dataValue(); data && !data->isEmpty()) {
                found.cover = *data;
                found.log.append(u"🖼️ 从 commonMetadata 获取封面: "_s + byteCount(*data));
            }
            break;
        case CommonKey::creator:
            break;
        }
    }
}

/// Looks for a cover in a tag whose name speaks of one.
void coverWalk(const QString &key, const QByteArray &data, CloudMetadata &found)
{
    found.log.append(u"🖼️ 尝试解析封面 ["_s + key + "]: "_L1 + byteCount(data));
    if (!key.contains(pictureBlockKey)) {
        if (takeCover(data, found))
            found.log.append(u"🖼️ 获取封面成功"_s);
        return;
    }
    if (takeCover(data, found)) {
        found.log.append(u"🖼️ 直接作为图片成功"_s);
    } else if (takeCover(fromBase64(data), found)) {
        found.log.append(u"🖼️ Base64 解码成功"_s);
    } else if (const auto picture = flacPicture(data); picture && takeCover(*picture, found)) {
        found.log.append(u"🖼️ FLAC 二进制格式解析成功: "_s + byteCount(*picture));
    }
}

/// Fills what is still empty. A tag is known by parts of its name, and one tag may fill several values.
void formatWalk(const MetadataItems &items, CloudMetadata &found)
{
    for (const auto &item : items) {
        const QString key = keyOf(*item).toLower();
        const auto fill = [&item](QString &value) {
            value = item->stringValue().value_or(QString());
            return !value.isEmpty();
        };
        if (found.title.isEmpty() && key.contains("title"_L1))
            fill(found.title);
        if (found.artist.isEmpty() && containsAny(key, {u"artist", u"performer"}))
            fill(found.artist);
        if (found.album.isEmpty() && key.contains("album"_L1))
            fill(found.album);
        if (!found.cover &&
            containsAny(key, {u"artwork", u"cover", u"apic", u"pict", u"metadata_block_picture"})) {
            if (const std::optional<QByteArray> data = item->dataValue())
                coverWalk(key, *data, found);
        }
        // "lyr" is in most of the others' names, and in that of a lyricist too.
        if (found.lyrics.isEmpty() && containsAny(key, {u"lyr", u"uslt", u"sylt", u"unsynced"}) &&
            fill(found.lyrics))
            found.log.append(u"🎤 找到歌词标签: "_s + key);
    }
}

void summarize(CloudMetadata &found)
{
    const auto shown = [](const QString &text) { return text.isEmpty() ? u"无"_s : text; };
    const QString lyrics =
        found.lyrics.isEmpty() ? u"无"_s : u"有 (%1 字符)"_s.arg(characterCount(found.lyrics));
    found.log.append({u"📋 元数据解析结果:"_s, u"   标题: "_s + shown(found.title),
                      u"   艺术家: "_s + shown(found.artist), u"   专辑: "_s + shown(found.album),
                      u"   歌词: "_s + lyrics, u"   封面: "_s + (found.cover ? u"有"_s : u"无"_s)});
}

CloudMetadata unread(QStringList log, const QString &description)
{
    log.append(u"❌ 元数据解析失败: "_s + description);
    CloudMetadata result;
    result.log = std::move(log);
    return result;
}

} // namespace

CloudMetadata readCloudMetadata(const AssetReader &reader, const QString &path)
{
    const std::unique_ptr<AssetMetadata> asset = reader.open(path);
    const std::expected<MetadataItems, QString> all = asset->metadata();
    if (!all)
        return unread({}, all.error());
    const std::expected<MetadataItems, QString> common = asset->commonMetadata();
    if (!common)
        return unread({}, common.error());
    const std::expected<std::optional<QString>, QString> lyrics = asset->lyrics();
    if (!lyrics)
        return unread({}, lyrics.error());

    CloudMetadata found;
    found.log.append(u"🔍 所有元数据键:"_s);
    for (const auto &item : *all)
        found.log.append(u"   - "_s + keyOf(*item));
    found.lyrics = lyrics->value_or(QString());
    commonWalk(*common, found);
    formatWalk(*all, found);
    const std::expected<double, QString> duration = asset->duration();
    if (!duration)
        return unread(found.log, duration.error());
    found.duration = *duration;
    summarize(found);
    if (found.cover && found.coverImage.isNull())
        found.coverImage = decodedCover(*found.cover);
    found.isRead = true;
    return found;
}

} // namespace cadorel
