// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Pictures/CustomPictures.h"

namespace cadorel {

QImage CustomPictures::image(const QString &name) const
{
    const std::scoped_lock lock(m_mutex);
    return m_images.value(name);
}

void CustomPictures::setImage(const QString &name, const QImage &image)
{
    const std::scoped_lock lock(m_mutex);
    m_images.insert(name, image);
}

} // namespace cadorel
