// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/MadeServer.h"

#include "Services/WebDAV/WebDAVSongStore.h"
#include "Services/WebDAV/WebDAVSongs.h"
#include "Support/MadeHome.h"
#include "Support/MadeLibrary.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

WebDAVConfig madeServer()
{
    WebDAVConfig server;
    server.id = QUuid(u"5f0d7c1e-3f0a-4a46-9a55-0f5f0d7c1e3f"_s);
    server.name = u"家里的服务器"_s;
    server.serverURL = u"http://127.0.0.1"_s;
    server.port = 9;
    server.username = u"listener"_s;
    server.basePath = u"/music"_s;
    return server;
}

QList<Song> madeServerSongs(int count, int covers)
{
    constexpr int songsPerDirectory = 12;
    constexpr int lyricLines = 40;
    const WebDAVConfig server = madeServer();
    const QString artist = "WebDAV - "_L1 + server.name;
    const QString albumId = webDAVSongPrefix(server);
    const QString lyrics = u"[00:01.00]远山与河流之间的歌\n"_s.repeated(lyricLines);
    const ArtworkData cover(madeCover());
    const int every = covers > 0 ? std::max(1, count / covers) : count + 1;
    QList<Song> songs;
    songs.reserve(count);
    for (int number = 0; number < count; ++number) {
        SongFields fields;
        fields.id = webDAVSongId(
            server, u"/music/专辑 %1/%2 夜航星.mp3"_s.arg(number / songsPerDirectory).arg(number));
        fields.title = u"%1 夜航星"_s.arg(number);
        fields.artist = artist;
        fields.album = server.name;
        fields.albumId = albumId;
        if (covers > 0 && number % every == 0) {
            fields.artworkData = cover;
            fields.embeddedLyrics = lyrics;
        }
        songs.append(Song(fields));
    }
    return songs;
}

void storeServer(Preferences &preferences, const QList<Song> &songs)
{
    preferences.setData(u"webdav_configs"_s, QJsonDocument(QJsonArray{madeServer().toJson()}).toJson());
    preferences.setData(u"webdav_songs"_s, WebDAVSongStore::encode(songs));
}

} // namespace cadorel
