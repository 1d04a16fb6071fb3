// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/CoverRegistry.h"

#include "Models/Song.h"

#include <QCryptographicHash>

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
    const ArtworkData artwork = artworkOf(song);
    if (!artwork.isPresent())
        return addressPrefix + noCoverKey;
    // A digest instead of the identity itself: ids may hold characters that an address changes.
    const QString key = QString::fromLatin1(
        QCryptographicHash::hash(song.uiIdentity().toUtf8(), QCryptographicHash::Sha1).toHex());
    {
        const std::scoped_lock lock(m_mutex);
        m_covers.insert(key, new ArtworkData(artwork));
    }
    return addressPrefix + key;
}

ArtworkData CoverRegistry::artwork(const QString &key) const
{
    const std::scoped_lock lock(m_mutex);
    const ArtworkData *artwork = m_covers.object(key);
    return artwork ? *artwork : ArtworkData();
}

} // namespace cadorel
