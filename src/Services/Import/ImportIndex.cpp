// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportIndex.h"

#include "Services/Import/MetadataExtractor.h"
#include "Utils/JsonWriter.h"
#include "Utils/StableHash.h"

#include <QFile>
#include <QSet>
#include <QThread>
#include <QtConcurrent>

#include <simdjson.h>

#include <cmath>
#include <dirent.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// One object of the file: views into the parser's text, which stays while the records are mapped.
struct Record
{
    std::string_view id;
    std::string_view title;
    std::string_view artist;
    std::string_view album;
    std::string_view assetPath;
    std::string_view artworkPath;
    std::string_view lyrics;
    double duration = 0;
    std::optional<double> dateAdded;
    int trackNumber = 0;
    bool hasLyrics = false;
};

/// Reads the members of one object: nothing when a required value is missing or mistyped, an error when the
/// text is no JSON.
std::expected<std::optional<Record>, simdjson::error_code> readRecord(simdjson::ondemand::object object)
{
    enum Required : unsigned { title = 1, artist = 2, album = 4, duration = 8, asset = 16, all = 31 };
    Record record;
    unsigned seen = 0;
    for (auto field : object) {
        std::string_view key;
        if (const simdjson::error_code error = field.unescaped_key().get(key); error != simdjson::SUCCESS)
            return std::unexpected(error);
        auto value = field.value();
        const auto text = [&value](std::string_view &into) {
            return value.get_string().get(into) == simdjson::SUCCESS;
        };
        const auto number = [&value](double &into) {
            return value.get_double().get(into) == simdjson::SUCCESS;
        };
        double parsed = 0;
        if (key == "id")
            text(record.id);
        else if (key == "title")
            seen |= text(record.title) ? Required::title : 0U;
        else if (key == "artist")
            seen |= text(record.artist) ? Required::artist : 0U;
        else if (key == "album")
            seen |= text(record.album) ? Required::album : 0U;
        else if (key == "assetURL")
            seen |= text(record.assetPath) ? Required::asset : 0U;
        else if (key == "artworkURL")
            text(record.artworkPath);
        else if (key == "duration")
            seen |= number(record.duration) ? Required::duration : 0U;
        else if (key == "dateAdded") {
            if (number(parsed))
                record.dateAdded = parsed;
        } else if (key == "trackNumber") {
            if (number(parsed) && parsed == std::trunc(parsed) && std::abs(parsed) < 2147483647.0)
                record.trackNumber = static_cast<int>(parsed);
        } else if (key == "embeddedLyrics") {
            record.hasLyrics = text(record.lyrics);
        }
    }
    return seen == Required::all ? std::optional(record) : std::nullopt;
}

/// Gives one shared copy for equal texts: artists and albums repeat.
class TextPool
{
public:
    QString pooled(std::string_view utf8)
    {
        const QByteArray key = QByteArray::fromRawData(utf8.data(), static_cast<qsizetype>(utf8.size()));
        const auto found = m_texts.constFind(key);
        if (found != m_texts.cend())
            return *found;
        return *m_texts.insert(key, QString::fromUtf8(key));
    }
    /// Album key of a title, hashed once for each title.
    QString albumId(std::string_view title)
    {
        const QByteArray key = QByteArray::fromRawData(title.data(), static_cast<qsizetype>(title.size()));
        const auto found = m_albumIds.constFind(key);
        if (found != m_albumIds.cend())
            return *found;
        return *m_albumIds.insert(key, "album_"_L1 + stableHash(QString::fromUtf8(key)));
    }

private:
    QHash<QByteArray, QString> m_texts;
    QHash<QByteArray, QString> m_albumIds;
};

/// What a directory holds, read once instead of asked for a hundred thousand times.
QSet<QByteArray> namesIn(const QByteArray &nativeDirectory)
{
    QSet<QByteArray> names;
    if (DIR *directory = ::opendir(nativeDirectory.constData())) {
        while (const dirent *entry = ::readdir(directory)) { // NOLINT(concurrency-mt-unsafe): own stream
            if (const QByteArray name(entry->d_name); name.endsWith("_artwork.jpg"))
                names.insert(name);
        }
        ::closedir(directory);
    }
    return names;
}

/// The cover in a file, its bytes left there; nothing when it is missing or unreadable.
std::optional<ArtworkData> readableArtwork(const QByteArray &path)
{
    struct stat status{};
    if (::stat(path.constData(), &status) != 0 || !S_ISREG(status.st_mode) ||
        ::access(path.constData(), R_OK) != 0)
        return std::nullopt;
    return ArtworkData::inFile(path, status.st_size);
}

struct MappedChunk
{
    QList<Song> songs;
    QStringList log;
    bool idsChanged = false;
};

class RecordMapper
{
public:
    RecordMapper(const QString &metadataDirectory, const QDateTime &now)
        : m_metadataDirectory(metadataDirectory)
        , m_artworkNames(namesIn(QFile::encodeName(metadataDirectory)))
        , m_now(now)
    {
    }

    MappedChunk map(std::span<const Record> records) const
    {
        MappedChunk chunk;
        chunk.songs.reserve(static_cast<qsizetype>(records.size()));
        TextPool pool;
        for (const Record &record : records)
            mapRecord(record, pool, chunk);
        return chunk;
    }

private:
    static QByteArray bytes(std::string_view text)
    {
        return QByteArray(text.data(), static_cast<qsizetype>(text.size()));
    }

    void mapRecord(const Record &record, TextPool &pool, MappedChunk &chunk) const
    {
        const QByteArray path = bytes(record.assetPath);
        if (!path.isEmpty() && ::access(path.constData(), F_OK) != 0)
            return;

        SongFields fields;
        fields.id = stableHash(QString::fromUtf8(path.sliced(path.lastIndexOf('/') + 1)));
        fields.title = QString::fromUtf8(record.title.data(), static_cast<qsizetype>(record.title.size()));
        const QString oldId = QString::fromUtf8(record.id.data(), static_cast<qsizetype>(record.id.size()));
        if (oldId != fields.id) {
            chunk.log.append(u"🔄 迁移歌曲ID: "_s + fields.title);
            chunk.log.append(u"  - 旧ID: "_s + oldId);
            chunk.log.append(u"  - 新ID: "_s + fields.id);
            chunk.idsChanged = true;
        }
        fields.artist = pool.pooled(record.artist);
        fields.album = pool.pooled(record.album);
        fields.albumId = pool.albumId(record.album);
        fields.duration = record.duration;
        fields.trackNumber = record.trackNumber;
        constexpr double msPerSecond = 1000.0;
        fields.dateAdded =
            record.dateAdded && std::abs(*record.dateAdded) < 1e13
                ? QDateTime::fromMSecsSinceEpoch(std::llround(*record.dateAdded * msPerSecond), Qt::UTC)
                : m_now;
        if (record.hasLyrics) {
            fields.embeddedLyrics =
                QString::fromUtf8(record.lyrics.data(), static_cast<qsizetype>(record.lyrics.size()));
        }
        Song song(fields);
        if (!path.isEmpty())
            song.setAssetFile(path);
        findArtwork(bytes(record.artworkPath), oldId, song);
        chunk.songs.append(song);
    }

    /// The stored location first, then the side files under the new and the old id.
    void findArtwork(const QByteArray &storedPath, const QString &oldId, Song &song) const
    {
        const auto take = [&song](const QByteArray &path) {
            const std::optional<ArtworkData> artwork = readableArtwork(path);
            if (!artwork)
                return false;
            song.setArtworkFile(path);
            song.setArtworkData(*artwork);
            return true;
        };
        if (!storedPath.isEmpty()) {
            song.setArtworkFile(storedPath);
            if (take(storedPath))
                return;
        }
        for (const QString &id : {song.id(), oldId}) {
            const QByteArray path = artworkFilePath(m_metadataDirectory, id).toUtf8();
            if (m_artworkNames.contains(path.sliced(path.lastIndexOf('/') + 1)) && take(path))
                return;
        }
    }

    QString m_metadataDirectory;
    QSet<QByteArray> m_artworkNames;
    QDateTime m_now;
};

/// All records of the file; nothing when it is no array of objects.
std::optional<std::vector<Record>> readRecords(simdjson::ondemand::parser &parser,
                                               const simdjson::padded_string &text)
{
    std::vector<Record> records;
    simdjson::ondemand::document document;
    simdjson::ondemand::array array;
    if (parser.iterate(text).get(document) != simdjson::SUCCESS ||
        document.get_array().get(array) != simdjson::SUCCESS)
        return std::nullopt;
    for (auto element : array) {
        simdjson::ondemand::object object;
        if (element.get_object().get(object) != simdjson::SUCCESS)
            return std::nullopt;
        const auto record = readRecord(object);
        if (!record)
            return std::nullopt;
        if (const std::optional<Record> &complete = *record)
            records.push_back(*complete);
    }
    // Something after the array: no JSON either.
    if (document.current_location().error() != simdjson::OUT_OF_BOUNDS)
        return std::nullopt;
    return records;
}

} // namespace

std::optional<LoadedIndex> loadIndex(const QString &indexPath, const QString &metadataDirectory,
                                     const QDateTime &now)
{
    const auto text = simdjson::padded_string::load(QFile::encodeName(indexPath).toStdString());
    if (text.error() != simdjson::SUCCESS)
        return std::nullopt;
    simdjson::ondemand::parser parser;
    const std::optional<std::vector<Record>> records = readRecords(parser, text.value_unsafe());
    if (!records)
        return std::nullopt;

    const RecordMapper mapper(metadataDirectory, now);
    // Parts of the file go to all processors; a small library is not worth waking one.
    constexpr size_t smallest = 2000;
    const auto processors = static_cast<size_t>(std::max(1, QThread::idealThreadCount()));
    const size_t perChunk = std::max(smallest, (records->size() + processors - 1) / processors);
    const std::span<const Record> all(*records);
    QList<QFuture<MappedChunk>> others;
    for (size_t from = perChunk; from < all.size(); from += perChunk) {
        others.append(
            QtConcurrent::run([&mapper, part = all.subspan(from, std::min(perChunk, all.size() - from))] {
                return mapper.map(part);
            }));
    }
    MappedChunk first = mapper.map(all.first(std::min(perChunk, all.size())));
    LoadedIndex loaded{.songs = std::move(first.songs), .idsChanged = first.idsChanged, .log = first.log};
    loaded.songs.reserve(static_cast<qsizetype>(all.size()));
    for (QFuture<MappedChunk> &other : others) {
        const MappedChunk chunk = other.result();
        loaded.songs.append(chunk.songs);
        loaded.log.append(chunk.log);
        loaded.idsChanged = loaded.idsChanged || chunk.idsChanged;
    }
    return loaded;
}

QByteArray indexRecords(const QList<Song> &songs)
{
    JsonWriter writer;
    for (const Song &song : songs) {
        writer.beginObject();
        writer.member("id", song.id());
        writer.member("title", song.title());
        writer.member("artist", song.artist());
        writer.member("album", song.album());
        writer.member("albumId", song.albumId());
        writer.member("duration", song.duration());
        writer.member("trackNumber", song.trackNumber());
        constexpr double msPerSecond = 1000.0;
        writer.member("dateAdded", static_cast<double>(song.dateAdded().toMSecsSinceEpoch()) / msPerSecond);
        writer.memberUtf8("assetURL", song.assetPathUtf8());
        const std::optional<QUrl> artworkURL = song.artworkURL();
        writer.member("artworkURL", artworkURL ? artworkURL->toLocalFile() : QString());
        writer.member("hasArtwork", song.artworkData().isPresent());
        writer.member("hasLyrics", song.hasLyricsText());
        if (const std::optional<QString> lyrics = song.embeddedLyrics())
            writer.member("embeddedLyrics", *lyrics);
        writer.endObject();
    }
    return writer.take();
}

} // namespace cadorel
