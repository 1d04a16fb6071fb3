// SPDX-License-Identifier: GPL-3.0-or-later
// Songs made of files on a server, and what their ids hold.
#pragma once

#include "Models/Song.h"
#include "Models/WebDAVConfig.h"
#include "Services/WebDAV/WebDAVFile.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace cadorel {

/// What the ids of all songs of a server begin with: "webdav_" and its UUID. Any thread.
QString webDAVSongPrefix(const WebDAVConfig &config);
/// Id of the song at @p path of a server. It holds exactly two "_", so that both parts can be taken out
/// again. Any thread.
QString webDAVSongId(const WebDAVConfig &config, const QString &path);
/// UUID of the server of a song. Any thread.
std::optional<QString> extractConfigId(const QString &songId);
/// Path on the server of a song; nothing when the id holds none. Any thread.
std::optional<QString> extractFilePath(const QString &songId);

/// Makes songs of a server's audio files, in the order of the files. Logs how many there are and the address
/// of each. Any thread.
QList<Song> songsOfFiles(const QList<WebDAVFile> &files, const WebDAVConfig &config, const QString &password,
                         const QDateTime &dateAdded);

/// A server with its password.
struct WebDAVAccess
{
    WebDAVConfig config;
    QString password;
};

/// The songs of the servers in @p accesses (by UUID text) with their addresses built anew. Those of other
/// servers, and those whose id holds no path, are left out. Logs each address. Any thread.
QList<Song> songsWithAddresses(QList<Song> songs, const QHash<QString, WebDAVAccess> &accesses);

/// All songs, those of one server with their addresses built anew. Logs each address. Any thread.
QList<Song> songsWithFreshAddresses(QList<Song> songs, const WebDAVAccess &access);

} // namespace cadorel
