// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/CoverRegistry.h"

#include "Models/OnlineSong.h"
#include "Models/Playlist.h"
#include "Models/Song.h"
#include "Services/Online/ToldAddress.h"
#include "Utils/Redaction.h"

#include <QCryptographicHash>
#include <QUrlQuery>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto addressPrefix = "image://cover/"_L1;
constexpr auto noCoverKey = "none"_L1;

/// The embedded cover, or the picture file that the song names.
ArtworkData artworkOf(const Song &song)
{
    if (song.artworkData().isPresent())
        return song.artworkData();
    const std::optional<QUrl> url = song.artworkURL();
    if (url && url->isLocalFile())
        return ArtworkData::inFile(url->toLocalFile().toUtf8(), 0);
    return {};
}

} // namespace

CoverRegistry::CoverRegistry(int capacity)
    : m_covers(capacity)
{
}

CoverRegistry &CoverRegistry::shared()
{
    static CoverRegistry registry;
    return registry;
}

QString CoverRegistry::source(const Song &song)
{
    if (const ArtworkData artwork = artworkOf(song); artwork.isPresent())
        return keep(song.uiIdentity(), {.artwork = artwork, .remoteAddress = {}});
    const std::optional<QUrl> url = toldAddress(song.artworkURL().value_or(QUrl()));
    // Without the song: the songs of an album often share one cover, which is then fetched once.
    return url ? keepRemote(u"song"_s, *url) : addressPrefix + noCoverKey;
}

QString CoverRegistry::source(const OnlineSong &song, const std::optional<QUrl> &coverUrl)
{
    const std::optional<QUrl> url = toldAddress(coverUrl.value_or(QUrl()));
    if (!url)
        return addressPrefix + noCoverKey;
    // Ids stand in the address as they are, and may hold what looks like a signature.
    return keepRemote(rawValue(song.platform) + u'/' + song.id, *url);
}

QString CoverRegistry::source(const Playlist &playlist, const std::optional<Song> &firstSong)
{
    if (playlist.coverImageData) {
        const QString digest = QString::number(qHash(*playlist.coverImageData), 16);
        return keep(u"playlist\n"_s + playlist.id + u'\n' + digest,
                    {.artwork = ArtworkData(*playlist.coverImageData), .remoteAddress = {}});
    }
    QString cover = addressPrefix + noCoverKey;
    if (playlist.type == PlaylistType::local && firstSong)
        cover = source(*firstSong);
    if (playlist.type == PlaylistType::online && !playlist.onlineSongs.isEmpty()) {
        const OnlineSong &first = playlist.onlineSongs.constFirst();
        if (!first.picUrl.isEmpty())
            cover = source(first, QUrl(first.picUrl));
    }
    return cover == addressPrefix + noCoverKey ? QString() : cover;
}

/// Remembers a web address. Its key leaves out what differs each time that it is signed, but not the account:
/// another one may see other covers.
QString CoverRegistry::keepRemote(const QString &owner, const QUrl &url)
{
    const QString account = url.userName() + u'\n' + QUrlQuery(url).queryItemValue(u"u"_s);
    return keep(u"web\n"_s + owner + u'\n' + account + u'\n' + redacted(url),
                {.artwork = {}, .remoteAddress = url});
}

QString CoverRegistry::keep(const QString &identity, Cover cover)
{
    // A digest instead of the identity itself: ids may hold characters that an address changes.
    const QString key =
        QString::fromLatin1(QCryptographicHash::hash(identity.toUtf8(), QCryptographicHash::Sha1).toHex());
    {
        const std::scoped_lock lock(m_mutex);
        m_covers.insert(key, new Cover(std::move(cover)));
    }
    return addressPrefix + key;
}

CoverRegistry::Cover CoverRegistry::find(const QString &key) const
{
    const std::scoped_lock lock(m_mutex);
    const Cover *cover = m_covers.object(key);
    return cover ? *cover : Cover();
}

ArtworkData CoverRegistry::artwork(const QString &key) const
{
    return find(key).artwork;
}

std::optional<QUrl> CoverRegistry::remoteAddress(const QString &key) const
{
    const QUrl url = find(key).remoteAddress;
    return url.isEmpty() ? std::nullopt : std::optional(url);
}

} // namespace cadorel
