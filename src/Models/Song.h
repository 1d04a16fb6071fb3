// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ArtworkData.h"
#include "Models/MediaItem.h"

#include <QDateTime>
#include <QImage>
#include <QJsonObject>
#include <QList>
#include <QSharedData>
#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

class JsonWriter;

/// The values of a new Song, in the order of the record.
struct SongFields
{
    QString id;
    QString title;
    QString artist;
    QString album;
    QString albumId;
    double duration = 0;
    int trackNumber = 0;
    QDateTime dateAdded = QDateTime::currentDateTimeUtc();
    std::optional<QUrl> artworkURL;
    std::optional<QUrl> assetURL;
    std::optional<QString> embeddedLyrics;
    ArtworkData artworkData;
};

/// One song of any source but the online platforms. The source is read from the shape of `id` and `albumId`.
///
/// A value type with shared contents: a list of 100,000 songs is copied by raising reference counts. Equality
/// and hashing use `id` alone; code that must notice a new cover or lyrics compares `uiIdentity` instead.
/// Reentrant: one value belongs to one thread at a time, copies may go to others.
class Song
{
    Q_GADGET
public:
    Song();
    explicit Song(const SongFields &fields);

    /// The song of an item of the system's media library.
    explicit Song(const MediaItem &item);

    const QString &id() const { return d->id; }
    const QString &title() const { return d->title; }
    const QString &artist() const { return d->artist; }
    const QString &album() const { return d->album; }
    const QString &albumId() const { return d->albumId; }
    /// Length in seconds as known when the record was built; 0 or less means unknown.
    double duration() const { return d->duration; }
    /// Track number in its album, 0 when unknown.
    int trackNumber() const { return d->trackNumber; }
    QDateTime dateAdded() const { return QDateTime::fromMSecsSinceEpoch(d->dateAddedMs, Qt::UTC); }
    /// Remote or file location of a cover; never stored in JSON.
    std::optional<QUrl> artworkURL() const { return toUrl(d->artworkURL); }
    /// Where the audio is: a file, a web address or an address of the media library; never stored in JSON.
    std::optional<QUrl> assetURL() const { return toUrl(d->assetURL); }
    /// Path of the audio file; empty when the song is not held as a file.
    QString assetPath() const;
    /// The same path in UTF-8, shared with the record.
    QByteArray assetPathUtf8() const { return d->assetURL.isFile ? d->assetURL.text : QByteArray(); }
    /// Lyrics text found in the file or beside it.
    std::optional<QString> embeddedLyrics() const;
    bool hasLyricsText() const { return !d->lyrics.isEmpty(); }
    const ArtworkData &artworkData() const { return d->artworkData; }

    void setTitle(const QString &title) { d->title = title; }
    void setArtist(const QString &artist) { d->artist = artist; }
    void setAlbum(const QString &album) { d->album = album; }
    void setDuration(double seconds) { d->duration = seconds; }
    void setArtworkURL(const std::optional<QUrl> &url) { d->artworkURL = fromUrl(url); }
    void setAssetURL(const std::optional<QUrl> &url) { d->assetURL = fromUrl(url); }
    /// The same two for a file, given by its path in UTF-8, which the record then shares.
    void setArtworkFile(const QByteArray &utf8Path) { d->artworkURL = Location{utf8Path, true, true}; }
    void setAssetFile(const QByteArray &utf8Path) { d->assetURL = Location{utf8Path, true, true}; }
    void setEmbeddedLyrics(const std::optional<QString> &lyrics);
    void setArtworkData(const ArtworkData &data) { d->artworkData = data; }

    /// The song lies in the player's own storage.
    bool isImported() const;
    /// The song lies on a WebDAV server.
    bool isWebDAV() const;
    /// Changes when the cover or the lyrics of an equal song change; views of covers are keyed on it.
    QString uiIdentity() const;
    /// The cover, decoded at each call; nothing when there is none or it does not decode.
    std::optional<QImage> embeddedArtwork() const;
    /// Minutes and seconds, truncated: "3:05". `duration` must be finite; another gives "0:00".
    QString formattedDuration() const;

    /// Writes the record as one JSON object. The addresses have no key: whoever reads a song back computes
    /// them.
    void writeJson(JsonWriter &writer) const;

    /// Reads such an object. @throws DecodingError on the first required key that is missing or mistyped.
    static Song fromJson(const QJsonObject &object);

    /// Sample values for trying a screen without a library.
    static Song example();
    static QList<Song> examples();

    friend bool operator==(const Song &a, const Song &b) { return a.d == b.d || a.d->id == b.d->id; }
    friend size_t qHash(const Song &song, size_t seed = 0) { return qHash(song.d->id, seed); }

    /// True when both share their contents: the cheap test for "nothing at all changed".
    bool isSameRecord(const Song &other) const { return d == other.d; }

private:
    // A file is kept as its bare path: a parsed URL of 100,000 songs would cost 40 MB more.
    struct Location
    {
        QByteArray text;
        bool isPresent = false;
        bool isFile = false;
    };
    struct Data : QSharedData
    {
        QString id;
        QString title;
        QString artist;
        QString album;
        QString albumId;
        double duration = 0;
        qint64 dateAddedMs = 0;
        int trackNumber = 0;
        bool lyricsPresent = false;
        Location artworkURL;
        Location assetURL;
        QByteArray lyrics; // UTF-8: half the size of the decoded text
        ArtworkData artworkData;
    };
    static Location fromUrl(const std::optional<QUrl> &url);
    static std::optional<QUrl> toUrl(const Location &location);

    QSharedDataPointer<Data> d;
};

} // namespace cadorel
