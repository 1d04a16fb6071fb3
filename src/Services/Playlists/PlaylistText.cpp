// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Playlists/PlaylistText.h"

#include "Models/DecodingError.h"
#include "Utils/Base64.h"
#include "Utils/JsonForms.h"

#include <QVarLengthArray>

#include <simdjson.h>

#include <string_view>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

using simdjson::SUCCESS;
using simdjson::ondemand::value;

QByteArray rawBytes(std::string_view text)
{
    return QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
}

/// One member of an object while it is read; each of its functions throws DecodingError when the value is of
/// another type.
class Member
{
public:
    Member(std::string_view key, value content)
        : m_key(key)
        , m_value(content)
    {
    }
    std::string_view key() const { return m_key; }

    QString text() { return QString::fromUtf8(rawBytes(utf8())); }
    QDateTime date()
    {
        double seconds = 0;
        require(m_value.get_double().get(seconds) == SUCCESS);
        return present(dateFromJson(seconds));
    }
    QByteArray bytes()
    {
        // As it stands: base64 needs no escapes, and taking those out would copy megabytes.
        std::string_view token = m_value.raw_json_token();
        token.remove_suffix(token.size() - token.find_last_not_of(" \t\r\n") - 1);
        std::optional<QByteArray> bytes;
        if (token.size() >= 2 && token.starts_with('"') && token.ends_with('"'))
            bytes = bytesFromBase64(token.substr(1, token.size() - 2));
        if (!bytes)
            bytes = bytesFromBase64(utf8());
        return present(std::move(bytes));
    }
    PlaylistType playlistType() { return present(cadorel::playlistType(text())); }
    MusicPlatform platform() { return present(musicPlatform(text())); }
    bool isNull()
    {
        bool result = false;
        return m_value.is_null().get(result) == SUCCESS && result;
    }
    /// Calls @p take with each element of an array.
    template <typename Take>
    void elements(Take take)
    {
        simdjson::ondemand::array array;
        require(m_value.get_array().get(array) == SUCCESS);
        for (auto element : array) {
            value content;
            require(element.get(content) == SUCCESS);
            take(Member(m_key, content));
        }
    }
    /// Calls @p take with each member of an object.
    template <typename Take>
    void members(Take take)
    {
        simdjson::ondemand::object object;
        require(m_value.get_object().get(object) == SUCCESS);
        for (auto field : object) {
            std::string_view key;
            value content;
            require(field.unescaped_key().get(key) == SUCCESS);
            require(field.value().get(content) == SUCCESS);
            take(Member(key, content));
        }
    }

private:
    std::string_view utf8()
    {
        std::string_view text;
        require(m_value.get_string().get(text) == SUCCESS);
        return text;
    }
    DecodingError error() const { return DecodingError(QString::fromUtf8(rawBytes(m_key))); }
    void require(bool isGood) const
    {
        if (!isGood)
            throw error();
    }
    template <typename T>
    T present(std::optional<T> found) const
    {
        if (!found)
            throw error();
        return *std::move(found);
    }

    std::string_view m_key;
    value m_value;
};

/// The required keys of a record that have not been seen yet.
class Missing
{
public:
    Missing(std::initializer_list<std::string_view> keys)
        : m_keys(keys)
    {
    }
    void see(std::string_view key) { m_keys.removeOne(key); }
    /// @throws DecodingError with the first of them, if there is one
    void check() const
    {
        if (!m_keys.isEmpty())
            throw DecodingError(QString::fromUtf8(rawBytes(m_keys.front())));
    }

private:
    /// In the object itself: there is one for each of thousands of songs.
    QVarLengthArray<std::string_view, 8> m_keys;
};

OnlineSong readOnlineSong(Member record)
{
    OnlineSong song;
    Missing missing{"id", "name", "artist", "album", "platform", "picUrl", "lrcUrl"};
    record.members([&](Member member) {
        const std::string_view key = member.key();
        missing.see(key);
        if (key == "id")
            song.id = member.text();
        else if (key == "name")
            song.name = member.text();
        else if (key == "artist")
            song.artist = member.text();
        else if (key == "album")
            song.album = member.text();
        else if (key == "platform")
            song.platform = member.platform();
        else if (key == "picUrl")
            song.picUrl = member.text();
        else if (key == "lrcUrl")
            song.lrcUrl = member.text();
    });
    missing.check();
    return song;
}

/// An address that is none counts as absent: no list of songs is worth losing for it.
std::optional<QUrl> readAddress(Member member)
{
    if (member.isNull())
        return std::nullopt;
    const QUrl address(member.text());
    return address.isValid() ? std::optional(address) : std::nullopt;
}

Playlist readPlaylist(Member record)
{
    Playlist playlist;
    Missing missing{"id", "name", "description", "type", "createdAt", "updatedAt", "songIds", "onlineSongs"};
    record.members([&](Member member) {
        const std::string_view key = member.key();
        missing.see(key);
        if (key == "id")
            playlist.id = member.text();
        else if (key == "name")
            playlist.name = member.text();
        else if (key == "description")
            playlist.description = member.text();
        else if (key == "type")
            playlist.type = member.playlistType();
        else if (key == "coverURL")
            playlist.coverURL = readAddress(member);
        else if (key == "coverImageData")
            playlist.coverImageData = member.isNull() ? std::nullopt : std::optional(member.bytes());
        else if (key == "createdAt")
            playlist.createdAt = member.date();
        else if (key == "updatedAt")
            playlist.updatedAt = member.date();
        else if (key == "songIds")
            member.elements([&](Member id) { playlist.songIds.append(id.text()); });
        else if (key == "onlineSongs")
            member.elements([&](Member song) { playlist.onlineSongs.append(readOnlineSong(song)); });
    });
    missing.check();
    return playlist;
}

} // namespace

std::expected<QList<Playlist>, QString> playlistsFromText(QByteArray text)
{
    // The parser reads beyond the end. A text that nobody else holds grows in its place.
    text.reserve(text.size() + qsizetype{simdjson::SIMDJSON_PADDING});
    const auto size = static_cast<size_t>(text.size());
    const auto capacity = static_cast<size_t>(text.capacity());
    simdjson::ondemand::parser parser;
    simdjson::ondemand::document document;
    simdjson::ondemand::array array;
    if (parser.iterate(text.constData(), size, capacity).get(document) != SUCCESS ||
        document.get_array().get(array) != SUCCESS)
        return std::unexpected(u"no array of playlists"_s);
    QList<Playlist> playlists;
    try {
        for (auto element : array) {
            value content;
            if (element.get(content) != SUCCESS)
                return std::unexpected(u"no array of playlists"_s);
            playlists.append(readPlaylist(Member("playlist", content)));
        }
    } catch (const DecodingError &error) {
        return std::unexpected(
            u"playlist %1: %2"_s.arg(playlists.size()).arg(QString::fromUtf8(error.what())));
    }
    // Something after the array: no JSON either.
    if (document.current_location().error() != simdjson::OUT_OF_BOUNDS)
        return std::unexpected(u"no array of playlists"_s);
    return playlists;
}

} // namespace cadorel
