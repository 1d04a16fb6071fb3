// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/ArtworkImage.h"

namespace cadorel {

std::optional<QImage> ArtworkImage::image() const
{
    if (!m_decoded.isNull())
        return m_decoded;
    if (!m_encoded.isPresent())
        return std::nullopt;
    const QImage decoded = QImage::fromData(m_encoded.bytes());
    return decoded.isNull() ? std::nullopt : std::optional(decoded);
}

} // namespace cadorel
