// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"
#include "Services/Subsonic/SubsonicAddresses.h"
#include "Services/Subsonic/SubsonicRecords.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace cadorel {

/// Which server a song lies on and what that server calls it.
struct SubsonicSongId
{
    /// The id of every song of a Subsonic server starts with this.
    static constexpr QLatin1StringView idStart{"navidrome_"};

    QUuid config;
    QString song;

    /// Reads the id of a song; nothing when it is of no Subsonic server. The server's own id may hold "_".
    static std::optional<SubsonicSongId> parse(const QString &songId);
};

/// The song that a server's record stands for, with fresh addresses. Reentrant.
Song makeSong(const SubsonicSong &record, const NavidromeConfig &config, const SubsonicAddresses &addresses,
              const QDateTime &dateAdded);

/// One for the address of the cover, one for that of the audio.
constexpr qsizetype saltsOfASong = 2;
/// The songs of a listing. @param salts `saltsOfASong` for each record. Any thread.
QList<Song> makeSongs(const QList<SubsonicSong> &records, const SubsonicAccess &access,
                      const QStringList &salts, const QDateTime &dateAdded);

} // namespace cadorel
