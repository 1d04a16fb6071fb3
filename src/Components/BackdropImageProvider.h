// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickAsyncImageProvider>

#include <memory>

namespace cadorel {

class BackdropColors;
class CoverRegistry;
class CustomPictures;
class PictureOrder;
class PictureWorkshop;
class RemoteCovers;

/// Image provider "backdrop": what lies behind a whole screen, a cover or the listener's own picture,
/// blurred. Each is drawn once on threads of its own, small, and kept up to 8 MB; whoever shows it stretches
/// it. What cannot be had or does not decode is a single transparent pixel, with no colours at
/// BackdropColors.
class BackdropImageProvider : public QQuickAsyncImageProvider
{
public:
    static constexpr auto id = "backdrop";
    /// The most that a listener may choose, and what covers are blurred by; see BackdropDrawing.
    static constexpr double largestBlur = 50;
    static constexpr double coverSaturation = 1.3;

    /// @param registry and @param remoteCovers outlive the provider. Without the latter a cover that lies on
    /// a server cannot be had, without @param pictures the listener has none.
    explicit BackdropImageProvider(CoverRegistry &registry, RemoteCovers *remoteCovers = nullptr,
                                   std::shared_ptr<const CustomPictures> pictures = {});
    ~BackdropImageProvider() override;

    /// Where that picture is, of the provider "cover" or "custom", blurred by as many whole pixels; empty for
    /// every other one, and for the cover of a song that has none.
    static QString addressOf(const QString &source, double blur);

    QQuickImageResponse *requestImageResponse(const QString &address, const QSize &requestedSize) override;

private:
    void drawCover(const std::shared_ptr<PictureOrder> &order, const QString &address);
    void drawCustom(const std::shared_ptr<PictureOrder> &order, const QString &address);

    const std::shared_ptr<const CustomPictures> m_pictures;
    std::shared_ptr<PictureWorkshop> m_workshop;
};

} // namespace cadorel
