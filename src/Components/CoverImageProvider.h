// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickAsyncImageProvider>

#include <memory>

namespace cadorel {

class CoverRegistry;
class PictureWorkshop;
class RemoteCovers;

/// Image provider "cover": draws the covers whose addresses CoverRegistry gives out. Covers are decoded on
/// threads of its own at the size asked for, cut to a square about the centre and given rounded corners;
/// `?radius=` in the address is the corner radius as a fraction of the side. A song without a cover, or with
/// one that cannot be had or does not decode, gets the drawing of a note. Drawn covers are kept up to 24 MB.
class CoverImageProvider : public QQuickAsyncImageProvider
{
public:
    static constexpr auto id = "cover";

    /// @param registry and @param remoteCovers outlive the provider. Without the latter a cover that lies on
    /// a server cannot be had.
    explicit CoverImageProvider(CoverRegistry &registry, RemoteCovers *remoteCovers = nullptr);
    ~CoverImageProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &address, const QSize &requestedSize) override;

private:
    std::shared_ptr<PictureWorkshop> m_workshop;
};

} // namespace cadorel
