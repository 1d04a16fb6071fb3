// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Pictures/StoredPicture.h"

#include "Platform/Preferences.h"
#include "Services/Cloud/CoverImage.h"

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

StoredPicture::StoredPicture(Preferences &preferences, std::shared_ptr<CustomPictures> shown,
                             const QString &name)
    : m_preferences(preferences)
    , m_shown(std::move(shown))
    , m_name(name)
    , m_image(QImage())
{
}

bool StoredPicture::open(const QString &key)
{
    const bool mayHaveBeen = !m_image || !m_image->isNull();
    const bool mayBe = m_preferences.contains(key);
    m_key = key;
    m_image = mayBe ? std::nullopt : std::optional(QImage());
    m_shown->setImage(m_name, {});
    ++m_revision;
    return mayHaveBeen || mayBe;
}

QImage StoredPicture::image() const
{
    if (!m_image)
        show(decodedCover(m_preferences.dataValue(m_key).value_or(QByteArray()), longestSide));
    return m_image.value_or(QImage());
}

QString StoredPicture::address() const
{
    if (image().isNull())
        return {};
    return u"image://custom/"_s + m_name + u'?' + QString::number(m_revision);
}

bool StoredPicture::set(const QImage &image, const std::optional<QByteArray> &data)
{
    if (data)
        m_preferences.setData(m_key, *data);
    if (m_image && *m_image == image)
        return false;
    ++m_revision;
    show(image);
    return true;
}

bool StoredPicture::clear()
{
    // Not decoded for the answer alone.
    const bool wasThere = !m_image || !m_image->isNull();
    ++m_revision;
    show({});
    m_preferences.remove(m_key);
    return wasThere;
}

void StoredPicture::show(const QImage &image) const
{
    m_image = image;
    m_shown->setImage(m_name, image);
}

} // namespace cadorel
