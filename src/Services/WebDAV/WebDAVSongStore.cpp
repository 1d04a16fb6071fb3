// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/WebDAVSongStore.h"

#include "Platform/Preferences.h"
#include "Utils/Base64.h"
#include "Utils/JsonForms.h"
#include "Utils/JsonWriter.h"

#include <QHash>
#include <QtConcurrent>

#include <QCoroFuture>

#include <simdjson.h>

#include <cmath>
#include <string_view>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString songsKey = u"webdav_songs"_s;

QByteArray rawBytes(std::string_view text)
{
    return QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
}

/// Reads records one after the other. Artists and albums repeat: equal texts share one copy.
class RecordReader
{
public:
    /// Nothing when a value is missing or mistyped, or the text is no JSON.
    std::optional<Song> read(simdjson::ondemand::object object)
    {
        SongFields fields;
        unsigned seen = 0;
        for (auto field : object) {
            std::string_view key;
            if (field.unescaped_key().get(key) != simdjson::SUCCESS)
                return std::nullopt;
            simdjson::ondemand::value value;
            if (field.value().get(value) != simdjson::SUCCESS)
                return std::nullopt;
            const std::optional<unsigned> member = take(key, value, fields);
            if (!member)
                return std::nullopt;
            seen |= *member;
        }
        return seen == allRequired ? std::optional(Song(fields)) : std::nullopt;
    }

private:
    enum Required : unsigned {
        id = 1,
        title = 2,
        artist = 4,
        album = 8,
        albumId = 16,
        duration = 32,
        trackNumber = 64,
        dateAdded = 128,
        allRequired = 255,
    };

    /// @return which required member it was, 0 for another; nothing when it is mistyped
    std::optional<unsigned> take(std::string_view key, simdjson::ondemand::value &value, SongFields &fields)
    {
        const auto found = [](bool isGood, unsigned member) {
            return isGood ? std::optional(member) : std::nullopt;
        };
        if (key == "id")
            return found(text(value, fields.id), Required::id);
        if (key == "title")
            return found(text(value, fields.title), Required::title);
        if (key == "artist")
            return found(pooledText(value, fields.artist), Required::artist);
        if (key == "album")
            return found(pooledText(value, fields.album), Required::album);
        if (key == "albumId")
            return found(pooledText(value, fields.albumId), Required::albumId);
        if (key == "duration")
            return found(value.get_double().get(fields.duration) == simdjson::SUCCESS, Required::duration);
        if (key == "trackNumber")
            return found(track(value, fields.trackNumber), Required::trackNumber);
        if (key == "dateAdded")
            return found(date(value, fields.dateAdded), Required::dateAdded);
        if (key == "embeddedLyrics")
            return found(isNull(value) || lyrics(value, fields.embeddedLyrics), 0);
        if (key == "artworkData")
            return found(isNull(value) || artwork(value, fields.artworkData), 0);
        return 0;
    }

    static bool isNull(simdjson::ondemand::value &value)
    {
        bool result = false;
        return value.is_null().get(result) == simdjson::SUCCESS && result;
    }
    static bool text(simdjson::ondemand::value &value, QString &into)
    {
        std::string_view utf8;
        if (value.get_string().get(utf8) != simdjson::SUCCESS)
            return false;
        into = QString::fromUtf8(rawBytes(utf8));
        return true;
    }
    bool pooledText(simdjson::ondemand::value &value, QString &into)
    {
        std::string_view utf8;
        if (value.get_string().get(utf8) != simdjson::SUCCESS)
            return false;
        // The parser keeps the text as long as this reader is in use.
        const QByteArray key = rawBytes(utf8);
        const auto found = m_texts.constFind(key);
        into = found != m_texts.cend() ? *found : *m_texts.insert(key, QString::fromUtf8(key));
        return true;
    }
    static bool track(simdjson::ondemand::value &value, int &into)
    {
        constexpr double largest = 2147483647.0;
        double number = 0;
        if (value.get_double().get(number) != simdjson::SUCCESS || number != std::trunc(number) ||
            std::abs(number) > largest)
            return false;
        into = static_cast<int>(number);
        return true;
    }
    static bool date(simdjson::ondemand::value &value, QDateTime &into)
    {
        double seconds = 0;
        if (value.get_double().get(seconds) != simdjson::SUCCESS)
            return false;
        const std::optional<QDateTime> date = dateFromJson(seconds);
        into = date.value_or(QDateTime());
        return date.has_value();
    }
    static bool lyrics(simdjson::ondemand::value &value, std::optional<QString> &into)
    {
        return text(value, into.emplace());
    }
    static bool artwork(simdjson::ondemand::value &value, ArtworkData &into)
    {
        std::string_view base64;
        if (value.get_string().get(base64) != simdjson::SUCCESS)
            return false;
        const std::optional<QByteArray> bytes = bytesFromBase64(base64);
        if (!bytes)
            return false;
        into = ArtworkData(*bytes);
        return true;
    }

    QHash<QByteArray, QString> m_texts;
};

} // namespace

WebDAVSongStore::WebDAVSongStore(Preferences &preferences, std::function<QList<Song>()> source)
    : m_preferences(preferences)
    , m_saver(preferences, songsKey, [source = std::move(source)] {
        return PreferenceSaver::Job{.encode = [songs = source()] { return encode(songs); }};
    })
{
}

QCoro::Task<std::shared_ptr<QList<Song>>> WebDAVSongStore::load() const
{
    std::optional<QByteArray> text = co_await m_preferences.loadData(songsKey);
    if (!text)
        co_return std::shared_ptr<QList<Song>>();
    co_return co_await QtConcurrent::run([text = std::move(text).value()] {
        std::optional<QList<Song>> songs = decode(text);
        return songs ? std::make_shared<QList<Song>>(*std::move(songs)) : nullptr;
    });
}

std::optional<QList<Song>> WebDAVSongStore::decode(const QByteArray &text)
{
    const simdjson::padded_string padded(text.constData(), static_cast<size_t>(text.size()));
    simdjson::ondemand::parser parser;
    simdjson::ondemand::document document;
    simdjson::ondemand::array array;
    if (parser.iterate(padded).get(document) != simdjson::SUCCESS ||
        document.get_array().get(array) != simdjson::SUCCESS)
        return std::nullopt;
    QList<Song> songs;
    RecordReader reader;
    for (auto element : array) {
        simdjson::ondemand::object object;
        if (element.get_object().get(object) != simdjson::SUCCESS)
            return std::nullopt;
        std::optional<Song> song = reader.read(object);
        if (!song)
            return std::nullopt;
        songs.append(*std::move(song));
    }
    // Something after the array: no JSON either.
    if (document.current_location().error() != simdjson::OUT_OF_BOUNDS)
        return std::nullopt;
    return songs;
}

QByteArray WebDAVSongStore::encode(const QList<Song> &songs)
{
    JsonWriter writer;
    writer.beginArray();
    for (const Song &song : songs)
        song.writeJson(writer);
    writer.endArray();
    return writer.take();
}

} // namespace cadorel
