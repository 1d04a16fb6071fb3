// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/WebDAVSongs.h"

#include "Models/WebDAVSongURLs.h"
#include "Utils/Console.h"
#include "Utils/PercentCoding.h"

#include <QStringList>
#include <QUrl>

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView idStart{"webdav_"};

/// Prints the lines of many addresses a good number at a time: one by one is slow, and all at once keeps what
/// the main thread has to say waiting until somebody has read them.
class AddressLog
{
public:
    AddressLog() = default;
    ~AddressLog() { print(m_lines); }
    Q_DISABLE_COPY_MOVE(AddressLog)

    std::optional<QUrl> build(const WebDAVSongURLs &server, const QString &path)
    {
        constexpr qsizetype linesAtOnce = 200;
        QString line;
        std::optional<QUrl> url = server.build(path, line);
        if (url)
            m_lines.append(line);
        if (m_lines.size() >= linesAtOnce)
            print(std::exchange(m_lines, {}));
        return url;
    }

private:
    QStringList m_lines;
};

/// Title of a file's song: its name without the extension.
QString titleOf(const WebDAVFile &file)
{
    const qsizetype extension = file.fileExtension().size();
    return extension > 0 ? file.name.chopped(extension + 1) : file.name;
}

} // namespace

QString webDAVSongPrefix(const WebDAVConfig &config)
{
    return idStart + config.uuidText();
}

QString webDAVSongId(const WebDAVConfig &config, const QString &path)
{
    return webDAVSongPrefix(config) + u'_' + percentEncoded(path).value_or(path);
}

std::optional<QString> extractConfigId(const QString &songId)
{
    const QStringList pieces = songId.split(u'_');
    return pieces.size() >= 2 ? std::optional(pieces[1]) : std::nullopt;
}

std::optional<QString> extractFilePath(const QString &songId)
{
    const qsizetype separator = songId.indexOf(u'_', idStart.size());
    return separator >= 0 ? percentDecoded(songId.sliced(separator + 1)) : std::nullopt;
}

QList<Song> songsOfFiles(const QList<WebDAVFile> &files, const WebDAVConfig &config, const QString &password,
                         const QDateTime &dateAdded)
{
    QList<const WebDAVFile *> audioFiles;
    for (const WebDAVFile &file : files) {
        if (file.isAudioFile())
            audioFiles.append(&file);
    }
    print(u"🎵 WebDAV: 其中 "_s + QString::number(audioFiles.size()) + u" 个音频文件"_s);
    // What all songs have in common is held once.
    SongFields fields;
    fields.artist = "WebDAV - "_L1 + config.name;
    fields.album = config.name;
    fields.albumId = webDAVSongPrefix(config);
    fields.dateAdded = dateAdded;
    const WebDAVSongURLs server(config, password);
    AddressLog addresses;
    QList<Song> songs;
    songs.reserve(audioFiles.size());
    for (const WebDAVFile *file : std::as_const(audioFiles)) {
        fields.id = webDAVSongId(config, file->path);
        fields.title = titleOf(*file);
        fields.assetURL = addresses.build(server, file->path);
        songs.append(Song(fields));
    }
    return songs;
}

QList<Song> songsWithAddresses(QList<Song> songs, const QHash<QString, WebDAVAccess> &accesses)
{
    QHash<QString, WebDAVSongURLs> servers;
    for (const auto &[id, access] : accesses.asKeyValueRange())
        servers.insert(id, WebDAVSongURLs(access.config, access.password));
    AddressLog addresses;
    QList<Song> kept;
    kept.reserve(songs.size());
    for (Song &song : songs) {
        const auto server = servers.constFind(extractConfigId(song.id()).value_or(QString()));
        const std::optional<QString> path = extractFilePath(song.id());
        if (!song.isWebDAV() || server == servers.cend() || !path)
            continue;
        song.setAssetURL(addresses.build(*server, *path));
        kept.append(std::move(song));
    }
    return kept;
}

QList<Song> songsWithFreshAddresses(QList<Song> songs, const WebDAVAccess &access)
{
    const QString prefix = webDAVSongPrefix(access.config);
    const WebDAVSongURLs server(access.config, access.password);
    AddressLog addresses;
    for (Song &song : songs) {
        if (!song.id().startsWith(prefix))
            continue;
        if (const std::optional<QString> path = extractFilePath(song.id()))
            song.setAssetURL(addresses.build(server, *path));
    }
    return songs;
}

} // namespace cadorel
