// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickAsyncImageProvider>

#include <memory>

namespace cadorel {

class CoverRegistry;

/// Image provider "cover": draws the covers whose addresses CoverRegistry gives out. Covers are decoded on
/// threads of its own at the size asked for, cut to a square about the centre and given rounded corners;
/// `?radius=` in the address is the corner radius as a fraction of the side. A song without a cover, or with
/// one that does not decode, gets the drawing of a note. Drawn covers are kept up to 24 MB.
class CoverImageProvider : public QQuickAsyncImageProvider
{
public:
    static constexpr auto id = "cover";

    /// @param registry outlives the provider.
    explicit CoverImageProvider(CoverRegistry &registry);
    ~CoverImageProvider() override;

    QQuickImageResponse *requestImageResponse(const QString &address, const QSize &requestedSize) override;

private:
    class Workshop;
    std::unique_ptr<Workshop> m_workshop;
};

} // namespace cadorel
