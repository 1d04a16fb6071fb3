// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QImage>
#include <QString>

#include <mutex>

namespace cadorel {

/// The listener's own pictures as they are shown now, by name, for those who draw. Any thread.
class CustomPictures
{
public:
    /// A null image when there is none.
    QImage image(const QString &name) const;
    void setImage(const QString &name, const QImage &image);

private:
    mutable std::mutex m_mutex;
    QHash<QString, QImage> m_images;
};

} // namespace cadorel
