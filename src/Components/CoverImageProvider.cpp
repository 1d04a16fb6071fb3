// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/CoverImageProvider.h"

#include "Components/CoverPainter.h"
#include "ViewModels/CoverRegistry.h"

#include <QCache>
#include <QQuickTextureFactory>
#include <QThreadPool>
#include <QUrlQuery>

#include <mutex>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int cacheKilobytes = 24 * 1024;
constexpr int bytesPerKilobyte = 1024;
// Two rows of a list may wait for one cover of tens of megabytes without holding up the others.
constexpr int threadCount = 2;
constexpr int defaultSide = 96;
constexpr int largestSide = 2048;

/// What is shared between a response, which QML may drop at any time, and the thread that draws for it.
struct Order
{
    std::mutex mutex;
    QQuickImageResponse *response = nullptr; // null once it is gone
    QImage image;
    bool cancelled = false;

    bool isCancelled()
    {
        const std::scoped_lock lock(mutex);
        return cancelled;
    }
    void deliver(const QImage &drawn)
    {
        const std::scoped_lock lock(mutex);
        image = drawn;
        if (response)
            QMetaObject::invokeMethod(response, &QQuickImageResponse::finished, Qt::QueuedConnection);
    }
};

class CoverResponse : public QQuickImageResponse
{
public:
    CoverResponse() { m_order->response = this; }
    ~CoverResponse() override
    {
        const std::scoped_lock lock(m_order->mutex);
        m_order->response = nullptr;
        m_order->cancelled = true;
    }

    std::shared_ptr<Order> order() const { return m_order; }

    QQuickTextureFactory *textureFactory() const override
    {
        const std::scoped_lock lock(m_order->mutex);
        return QQuickTextureFactory::textureFactoryForImage(m_order->image);
    }

    void cancel() override
    {
        const std::scoped_lock lock(m_order->mutex);
        m_order->cancelled = true;
    }

private:
    std::shared_ptr<Order> m_order = std::make_shared<Order>();
};

} // namespace

class CoverImageProvider::Workshop
{
public:
    explicit Workshop(CoverRegistry &registry)
        : m_registry(registry)
        , m_drawn(cacheKilobytes)
    {
        m_threads.setMaxThreadCount(threadCount);
    }

    ~Workshop()
    {
        m_threads.clear();
        m_threads.waitForDone();
    }

    void start(const std::shared_ptr<Order> &order, const QString &address, int side)
    {
        const QString drawnKey = address + u'@' + QString::number(side);
        if (const QImage known = find(drawnKey); !known.isNull()) {
            order->deliver(known);
            return;
        }
        m_threads.start([this, order, address, side, drawnKey] {
            // A row that was scrolled away before its turn costs nothing.
            if (order->isCancelled()) {
                order->deliver({});
                return;
            }
            QImage image = find(drawnKey);
            if (image.isNull()) {
                image = draw(address, side);
                keep(drawnKey, image);
            }
            order->deliver(image);
        });
    }

private:
    QImage draw(const QString &address, int side) const
    {
        const QString key = address.section(u'?', 0, 0);
        const qreal share = QUrlQuery(address.section(u'?', 1)).queryItemValue(u"radius"_s).toDouble();
        return drawCover(m_registry.artwork(key), side, qBound(0.0, share, 0.5) * side);
    }

    QImage find(const QString &key)
    {
        const std::scoped_lock lock(m_mutex);
        const QImage *known = m_drawn.object(key);
        return known ? *known : QImage();
    }

    void keep(const QString &key, const QImage &image)
    {
        const std::scoped_lock lock(m_mutex);
        m_drawn.insert(key, new QImage(image), 1 + image.sizeInBytes() / bytesPerKilobyte);
    }

    CoverRegistry &m_registry;
    std::mutex m_mutex;
    QCache<QString, QImage> m_drawn;
    QThreadPool m_threads;
};

CoverImageProvider::CoverImageProvider(CoverRegistry &registry)
    : m_workshop(std::make_unique<Workshop>(registry))
{
}

CoverImageProvider::~CoverImageProvider() = default;

QQuickImageResponse *CoverImageProvider::requestImageResponse(const QString &address,
                                                              const QSize &requestedSize)
{
    const int side = qMax(requestedSize.width(), requestedSize.height());
    auto *response = new CoverResponse;
    m_workshop->start(response->order(), address, side > 0 ? qMin(side, largestSide) : defaultSide);
    return response;
}

} // namespace cadorel
