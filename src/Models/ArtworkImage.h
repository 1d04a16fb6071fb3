// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ArtworkData.h"

#include <QImage>

#include <optional>

namespace cadorel {

/// The picture of an album or artist: already decoded, or decoded from a song's cover when it is asked for.
/// Building a thousand albums therefore opens no picture. Any thread.
class ArtworkImage
{
public:
    /// No picture.
    ArtworkImage() = default;

    /// A picture that is already decoded; a null image is no picture.
    explicit ArtworkImage(const QImage &decoded)
        : m_decoded(decoded)
    {
    }

    /// The picture of a cover that is decoded on demand.
    explicit ArtworkImage(const ArtworkData &encoded)
        : m_encoded(encoded)
    {
    }

    /// The decoded picture; nothing when there is none or its bytes are no picture. Decodes at each call.
    std::optional<QImage> image() const;

    /// The encoded bytes behind the picture, absent for one that was given decoded.
    const ArtworkData &encoded() const { return m_encoded; }

private:
    QImage m_decoded;
    ArtworkData m_encoded;
};

} // namespace cadorel
