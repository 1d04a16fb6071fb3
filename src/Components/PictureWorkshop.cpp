// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/PictureWorkshop.h"

#include "Components/PictureOrder.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/RemoteCovers.h"

namespace cadorel {

namespace {

constexpr int bytesPerKilobyte = 1024;
// Two rows of a list may wait for one cover of tens of megabytes without holding up the others.
constexpr int threadCount = 2;

} // namespace

PictureWorkshop::PictureWorkshop(CoverRegistry &registry, RemoteCovers *remoteCovers, int kilobytes)
    : m_registry(registry)
    , m_remoteCovers(remoteCovers)
    , m_drawn(kilobytes)
{
    m_threads.setMaxThreadCount(threadCount);
}

PictureWorkshop::~PictureWorkshop()
{
    m_threads.clear();
    m_threads.waitForDone();
}

void PictureWorkshop::draw(const std::shared_ptr<PictureOrder> &order, const Picture &picture,
                           const Drawing &drawing)
{
    if (const QImage known = find(picture.name); !known.isNull())
        order->deliver(known);
    else
        start(order, picture, drawing);
}

void PictureWorkshop::drawCover(const std::shared_ptr<PictureOrder> &order, const Picture &picture,
                                const CoverDrawing &drawing)
{
    if (const QImage known = find(picture.name); !known.isNull())
        order->deliver(known);
    else if (const auto url = m_registry.remoteAddress(drawing.key); url && m_remoteCovers)
        fetch(order, picture, drawing, *url);
    else
        start(order, picture, [this, drawing] { return drawing.own(m_registry.artwork(drawing.key)); });
}

void PictureWorkshop::fetch(const std::shared_ptr<PictureOrder> &order, const Picture &picture,
                            const CoverDrawing &drawing, const QUrl &url)
{
    const auto arrived = [self = weak_from_this(), order, picture, drawing](const QByteArray &bytes) {
        if (const std::shared_ptr<PictureWorkshop> workshop = self.lock())
            workshop->drawFetched(order, picture, drawing, bytes);
    };
    const quint64 wish = m_remoteCovers->wish(drawing.key, url, arrived);
    order->setWithdrawal([covers = m_remoteCovers, wish] { covers->withdraw(wish); });
}

void PictureWorkshop::drawFetched(const std::shared_ptr<PictureOrder> &order, const Picture &picture,
                                  const CoverDrawing &drawing, const QByteArray &bytes)
{
    order->setWithdrawal(nullptr);
    start(order, picture, [this, drawing, bytes]() -> std::optional<QImage> {
        if (bytes.isEmpty())
            return std::nullopt;
        std::optional<QImage> image = drawing.fetched(bytes);
        if (!image)
            m_remoteCovers->discard(drawing.key);
        return image;
    });
}

void PictureWorkshop::start(const std::shared_ptr<PictureOrder> &order, const Picture &picture,
                            const Drawing &drawing)
{
    m_threads.start([this, order, picture, drawing] {
        // A row that was scrolled away before its turn costs nothing.
        if (order->isCancelled()) {
            order->deliver({});
            return;
        }
        QImage image = find(picture.name);
        if (image.isNull()) {
            const std::optional<QImage> drawn = drawing();
            image = drawn ? *drawn : picture.fallback();
            if (drawn)
                keep(picture.name, image);
        }
        order->deliver(image);
    });
}

QImage PictureWorkshop::find(const QString &name)
{
    const std::scoped_lock lock(m_mutex);
    const QImage *known = m_drawn.object(name);
    return known ? *known : QImage();
}

void PictureWorkshop::keep(const QString &name, const QImage &image)
{
    const std::scoped_lock lock(m_mutex);
    m_drawn.insert(name, new QImage(image), 1 + image.sizeInBytes() / bytesPerKilobyte);
}

} // namespace cadorel
