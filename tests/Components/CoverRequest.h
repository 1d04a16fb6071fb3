// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Pixels.h"

#include <QImage>
#include <QQuickAsyncImageProvider>
#include <QQuickImageResponse>
#include <QQuickTextureFactory>
#include <QSignalSpy>

#include <memory>

namespace cadorel {

/// One picture as QML asks a provider for it.
class CoverRequest
{
public:
    /// @param address what stands behind the provider's name
    CoverRequest(QQuickAsyncImageProvider &provider, const QString &address, const QSize &size)
        : m_response(provider.requestImageResponse(address, size))
        , m_finished(m_response.get(), &QQuickImageResponse::finished)
    {
    }

    /// How often the answer came; QML bears no more than one.
    qsizetype answers() const { return m_finished.size(); }
    void cancel() { m_response->cancel(); }
    /// The picture; a null image when none came.
    QImage wait()
    {
        constexpr int patience = 20'000;
        if (answers() == 0 && !m_finished.wait(patience))
            return {};
        const std::unique_ptr<QQuickTextureFactory> factory(m_response->textureFactory());
        return factory ? factory->image() : QImage();
    }

private:
    std::unique_ptr<QQuickImageResponse> m_response;
    QSignalSpy m_finished;
};

/// What stands behind the provider's name in an address of a picture.
inline QString coverAddress(const QString &source)
{
    return source.mid(QStringLiteral("image://cover/").size());
}

/// Whether a pixel is of that colour after a cover has been decoded and scaled.
inline bool isOfCover(const QColor &pixel, const QColor &color)
{
    constexpr int tolerance = 11;
    return isNear(pixel, color, tolerance);
}

} // namespace cadorel
