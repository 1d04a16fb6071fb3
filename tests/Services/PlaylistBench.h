// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/ConsoleLines.h"
#include "Fakes/TestPlatform.h"
#include "Services/LocalMusicImportService.h"
#include "Services/PlaylistService.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>

#include <memory>

namespace cadorel {

/// The service of playlists on a made machine, what it prints, and what it stores.
class PlaylistBench
{
public:
    static inline const QString key = QStringLiteral("playlists");

    TestPlatform machine;
    ConsoleLines console;
    LocalMusicImportService importService{machine.platform};
    std::unique_ptr<PlaylistService> service;

    /// Forgets what the library has printed.
    PlaylistBench() { console.take(); }

    /// Starts the service anew on what is stored.
    PlaylistService &start()
    {
        service.reset();
        service = std::make_unique<PlaylistService>(machine.platform, importService);
        return *service;
    }
    /// What is stored once all that was asked for has landed.
    QByteArray storedText()
    {
        service.reset();
        return machine.preferences().dataValue(key).value_or(QByteArray());
    }
    QJsonArray stored() { return QJsonDocument::fromJson(storedText()).array(); }
    void store(const QByteArray &text) { machine.preferences().setData(key, text); }

    Playlist local(const QString &name = QStringLiteral("本地的"))
    {
        return service->createPlaylist(name, {}, PlaylistType::local);
    }
    Playlist online(const QString &name = QStringLiteral("在线的"))
    {
        return service->createPlaylist(name, {}, PlaylistType::online);
    }
    /// The playlist as it is now.
    Playlist now(const Playlist &playlist) const
    {
        return service->playlist(playlist.id)
            .value_or(Playlist{.id = {},
                               .name = {},
                               .description = {},
                               .coverURL = {},
                               .coverImageData = {},
                               .createdAt = {},
                               .updatedAt = {},
                               .songIds = {},
                               .onlineSongs = {}});
    }
    void passSeconds(int seconds) { machine.clock().advance(std::chrono::seconds(seconds)); }
    QStringList ids() const
    {
        QStringList list;
        for (const Playlist &playlist : service->playlists())
            list.append(playlist.id);
        return list;
    }

    static Song song(const QString &id, const QString &title = QStringLiteral("歌"))
    {
        SongFields fields;
        fields.id = id;
        fields.title = title;
        return Song(fields);
    }
    static OnlineSong onlineSong(const QString &id, MusicPlatform platform = MusicPlatform::netease)
    {
        OnlineSong song;
        song.id = id;
        song.name = QStringLiteral("歌 ") + id;
        song.artist = QStringLiteral("歌手");
        song.album = QStringLiteral("专辑");
        song.platform = platform;
        return song;
    }
};

} // namespace cadorel
