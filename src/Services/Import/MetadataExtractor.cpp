// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/MetadataExtractor.h"

#include "Utils/Files.h"
#include "Utils/StableHash.h"

#include <QRegularExpression>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString unknownArtist = u"未知艺术家"_s;
const QString unknownAlbum = u"未知专辑"_s;

/// The values that the passes over the tags fill.
struct Values
{
    QString fileTitle;
    QString title;
    QString artist = unknownArtist;
    QString album = unknownAlbum;
    double duration = 0;
    int trackNumber = 0;
    std::optional<QByteArray> artwork;
    std::optional<QString> lyrics;
};

std::optional<QString> nonEmptyString(const MetadataItem &item)
{
    std::optional<QString> text = item.stringValue();
    return text && !text->isEmpty() ? text : std::nullopt;
}

std::optional<QByteArray> nonEmptyData(const MetadataItem &item)
{
    std::optional<QByteArray> data = item.dataValue();
    return data && !data->isEmpty() ? data : std::nullopt;
}

QString byteCount(const QByteArray &bytes)
{
    return QString::number(bytes.size()) + " bytes"_L1;
}

void commonPass(AssetMetadata &asset, Values &values, QStringList &log)
{
    const std::expected<MetadataItems, QString> items = asset.commonMetadata();
    if (!items) {
        log.append("Failed to load common metadata: "_L1 + items.error());
        return;
    }
    log.append("Common metadata items: "_L1 + QString::number(items->size()));
    for (const auto &item : *items) {
        const std::optional<CommonKey> key = item->commonKey();
        if (!key)
            continue;
        log.append("Common key: "_L1 + commonKeyName(*key));
        switch (*key) {
        case CommonKey::title:
            if (const auto text = nonEmptyString(*item)) {
                values.title = *text;
                log.append(u"✓ Title from common: "_s + *text);
            }
            break;
        case CommonKey::artist:
            if (const auto text = nonEmptyString(*item)) {
                values.artist = *text;
                log.append(u"✓ Artist from common: "_s + *text);
            }
            break;
        case CommonKey::creator:
            if (values.artist != unknownArtist)
                break;
            if (const auto text = nonEmptyString(*item)) {
                values.artist = *text;
                log.append(u"✓ Artist (creator) from common: "_s + *text);
            }
            break;
        case CommonKey::albumName:
            if (const auto text = nonEmptyString(*item)) {
                values.album = *text;
                log.append(u"✓ Album from common: "_s + *text);
            }
            break;
        case CommonKey::artwork:
            if (const auto data = nonEmptyData(*item)) {
                values.artwork = *data;
                log.append(u"✓ Artwork from common: "_s + byteCount(*data));
            }
            break;
        }
    }
}

/// Text of a log line that quotes the beginning of the lyrics, in characters as a reader counts them.
QString lyricsExcerpt(const QString &lyrics)
{
    constexpr int shown = 50;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, lyrics);
    for (int i = 0; i < shown && finder.position() < lyrics.size(); ++i)
        finder.toNextBoundary();
    return lyrics.first(finder.position()) + "..."_L1;
}

void formatPass(AssetMetadata &asset, Values &values, QStringList &log)
{
    const std::expected<MetadataItems, QString> items = asset.metadata();
    if (!items) {
        log.append("Failed to load metadata: "_L1 + items.error());
        return;
    }
    log.append("All metadata items: "_L1 + QString::number(items->size()));
    for (const auto &item : *items) {
        const QString identifier = item->identifier().toLower();
        const auto contains = [&identifier](std::initializer_list<QLatin1StringView> names) {
            return std::any_of(names.begin(), names.end(),
                               [&](QLatin1StringView name) { return identifier.contains(name); });
        };
        // The rules are tested in this order, by substring, and one item may satisfy several.
        if (values.title == values.fileTitle && contains({"tit2"_L1, "nam"_L1})) {
            if (const auto text = nonEmptyString(*item)) {
                values.title = *text;
                log.append(u"✓ Title from ID3: "_s + *text);
            }
        }
        if (values.artist == unknownArtist && contains({"tpe1"_L1, "tpe2"_L1, "art"_L1})) {
            if (const auto text = nonEmptyString(*item)) {
                values.artist = *text;
                log.append(u"✓ Artist from ID3: "_s + *text);
            }
        }
        if (values.album == unknownAlbum && contains({"talb"_L1, "alb"_L1})) {
            if (const auto text = nonEmptyString(*item)) {
                values.album = *text;
                log.append(u"✓ Album from ID3: "_s + *text);
            }
        }
        if (!values.artwork && contains({"apic"_L1, "pic"_L1, "covr"_L1, "artwork"_L1})) {
            if (const auto data = nonEmptyData(*item)) {
                values.artwork = *data;
                log.append(u"✓ Artwork from ID3: "_s + byteCount(*data));
            }
        }
        if (!values.lyrics && contains({"uslt"_L1, "sylt"_L1, "lyr"_L1})) {
            if (const auto text = nonEmptyString(*item)) {
                values.lyrics = *text;
                log.append(u"✓ Lyrics from ID3: "_s + lyricsExcerpt(*text));
            }
        }
        if (contains({"trck"_L1, "trkn"_L1})) {
            if (const auto text = item->stringValue()) {
                bool isNumber = false;
                const int number = text->section(u'/', 0, 0).toInt(&isNumber);
                if (isNumber)
                    values.trackNumber = number;
            }
        }
    }
}

} // namespace

QString cleanFileName(const QString &name)
{
    static const QRegularExpression uuidPrefix(
        u"^[0-9A-Fa-f]{8}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{12}_"_s);
    static const QRegularExpression trackPrefix(u"^\\d+\\.?\\s*[-–—]?\\s*"_s,
                                                QRegularExpression::UseUnicodePropertiesOption);
    QString title = name;
    if (const qsizetype dot = title.lastIndexOf(u'.'); dot >= 0)
        title.truncate(dot);
    title.remove(uuidPrefix);
    title.remove(trackPrefix);
    const auto isBlank = [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; };
    qsizetype from = 0;
    qsizetype to = title.size();
    while (from < to && isBlank(title[from]))
        ++from;
    while (to > from && isBlank(title[to - 1]))
        --to;
    return title.sliced(from, to - from);
}

QString artworkFilePath(const QString &metadataDirectory, const QString &id)
{
    return metadataDirectory + u'/' + id + "_artwork.jpg"_L1;
}

QString lyricsFilePath(const QString &metadataDirectory, const QString &id)
{
    return metadataDirectory + u'/' + id + "_lyrics.lrc"_L1;
}

Extraction extractMetadata(const AssetReader &reader, const QString &path, const QString &originalName,
                           const QString &metadataDirectory, const QDateTime &now)
{
    QStringList log;
    const std::unique_ptr<AssetMetadata> asset = reader.open(path);
    Values values;
    values.fileTitle = cleanFileName(originalName);
    values.title = values.fileTitle;

    if (const std::expected<double, QString> duration = asset->duration())
        values.duration = *duration;
    else
        log.append("Failed to get duration: "_L1 + duration.error());
    commonPass(*asset, values, log);
    formatPass(*asset, values, log);

    const bool hasLyrics = values.lyrics && !values.lyrics->isEmpty();
    log.append(u"=== Final Extracted Metadata ==="_s);
    log.append("Title: "_L1 + values.title);
    log.append("Artist: "_L1 + values.artist);
    log.append("Album: "_L1 + values.album);
    log.append("Artwork: "_L1 + (values.artwork ? byteCount(*values.artwork) : u"none"_s));
    log.append("Lyrics: "_L1 + (hasLyrics ? "yes"_L1 : "none"_L1));

    const QString id = stableHash(path.section(u'/', -1));
    SongFields fields;
    if (values.artwork) {
        const QString artworkPath = artworkFilePath(metadataDirectory, id);
        if (const auto written = writeFileAtomically(artworkPath, *values.artwork); !written) {
            log.append("Failed to save artwork: "_L1 + written.error());
            fields.artworkData = ArtworkData(*values.artwork);
        } else {
            // The bytes stay in the file from here on: a large import would otherwise hold every cover in
            // memory.
            fields.artworkURL = QUrl::fromLocalFile(artworkPath);
            fields.artworkData = ArtworkData::inFile(artworkPath.toUtf8(), values.artwork->size());
        }
    }
    if (hasLyrics) {
        const auto written =
            writeFileAtomically(lyricsFilePath(metadataDirectory, id), values.lyrics->toUtf8());
        if (!written)
            log.append("Failed to save lyrics: "_L1 + written.error());
    }

    fields.id = id;
    fields.title = values.title;
    fields.artist = values.artist;
    fields.album = values.album;
    fields.albumId = "album_"_L1 + stableHash(values.album);
    fields.duration = values.duration;
    fields.trackNumber = values.trackNumber;
    fields.dateAdded = now;
    fields.assetURL = QUrl::fromLocalFile(path);
    fields.embeddedLyrics = values.lyrics;
    return {.song = Song(fields), .log = log};
}

} // namespace cadorel
