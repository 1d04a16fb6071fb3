// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QImage>
#include <QSize>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

namespace cadorel {

/// Cover held by the system's media library, drawn at the size that is asked for. Any thread.
class MediaItemArtwork
{
public:
    using Renderer = std::function<QImage(QSize)>;

    /// @param bounds the picture's own size in pixels
    /// @param renderer gives the picture at a size
    MediaItemArtwork(QSize bounds, Renderer renderer)
        : m_bounds(bounds)
        , m_renderer(std::move(renderer))
    {
    }

    QSize bounds() const { return m_bounds; }

    /// The picture at @p size; nothing when it cannot be drawn.
    std::optional<QImage> image(QSize size) const
    {
        const QImage drawn = m_renderer ? m_renderer(size) : QImage();
        return drawn.isNull() ? std::nullopt : std::optional(drawn);
    }

private:
    QSize m_bounds;
    Renderer m_renderer;
};

/// One song of the system's media library, as that library tells it.
struct MediaItem
{
    quint64 persistentID = 0;
    quint64 albumPersistentID = 0;
    quint64 artistPersistentID = 0;
    std::optional<QString> title;
    std::optional<QString> artist;
    std::optional<QString> albumTitle;
    std::optional<QString> albumArtist;
    double playbackDuration = 0; ///< seconds
    int albumTrackNumber = 0;
    QDateTime dateAdded;
    std::optional<QDateTime> releaseDate;
    std::optional<QUrl> assetURL;
    std::shared_ptr<const MediaItemArtwork> artwork;
};

/// The songs of one album or one artist of the system's media library.
struct MediaItemCollection
{
    std::optional<MediaItem> representativeItem;
    int count = 0;
};

} // namespace cadorel
