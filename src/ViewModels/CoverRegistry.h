// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ArtworkData.h"

#include <QCache>
#include <QString>
#include <QUrl>

#include <mutex>
#include <optional>

namespace cadorel {

class Song;
struct OnlineSong;
struct Playlist;

/// Where the image provider of covers finds what lies behind a picture address: the bytes of a cover, or the
/// web address that it is fetched from. Views name a cover by a key in the address; whoever hands out such an
/// address leaves the cover here first. The key is a digest that holds no address: web addresses of covers
/// are credentials. Any thread.
class CoverRegistry
{
public:
    /// Covers remembered by default: far more than rows that a window shows or that wait to be decoded.
    static constexpr int defaultCapacity = 4096;

    explicit CoverRegistry(int capacity = defaultCapacity);

    /// The registry of the process.
    static CoverRegistry &shared();

    /// Address for the `source` of an Image, and the cover is remembered under it: the embedded one, else the
    /// one at Song::artworkURL(). The address changes with Song::uiIdentity(), so a replaced cover is drawn
    /// anew; that of a cover on a server stays the same however often its web address is signed. All songs
    /// without a cover share one address.
    QString source(const Song &song);
    /// The same for an online song, whose cover lies at @p coverUrl; absent when none could be built.
    QString source(const OnlineSong &song, const std::optional<QUrl> &coverUrl);
    /// The cover of a playlist: its own, else that of a local playlist's first song, else that of an online
    /// playlist's first record. Empty when there is none: a playlist has a symbol of its own then.
    /// @param firstSong the first song of a local playlist that is still there
    QString source(const Playlist &playlist, const std::optional<Song> &firstSong);

    /// The cover of a key that source() gave; absent when the song has none, when it has to be fetched, or
    /// when the key was forgotten.
    ArtworkData artwork(const QString &key) const;
    /// Where the cover of a key has to be fetched from, as it was signed last; a credential. Absent for every
    /// other key.
    std::optional<QUrl> remoteAddress(const QString &key) const;

private:
    struct Cover
    {
        ArtworkData artwork;
        QUrl remoteAddress;
    };

    QString keep(const QString &identity, Cover cover);
    QString keepRemote(const QString &owner, const QUrl &url);
    Cover find(const QString &key) const;

    mutable std::mutex m_mutex;
    mutable QCache<QString, Cover> m_covers;
};

} // namespace cadorel
