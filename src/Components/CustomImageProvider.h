// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickImageProvider>

#include <memory>

namespace cadorel {

class CustomPictures;

/// Image provider "custom": the listener's own pictures under the addresses that ThemeService gives out, no
/// larger than asked for. With `radius=` in its query, a fraction of the side, a picture is cut to a square
/// about its centre and given round corners. A picture that is not there any more is transparent. Any thread.
class CustomImageProvider : public QQuickImageProvider
{
public:
    static constexpr auto id = "custom";

    explicit CustomImageProvider(std::shared_ptr<const CustomPictures> pictures);

    QImage requestImage(const QString &address, QSize *size, const QSize &requestedSize) override;

private:
    const std::shared_ptr<const CustomPictures> m_pictures;
};

} // namespace cadorel
