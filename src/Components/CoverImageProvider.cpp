// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/CoverImageProvider.h"

#include "Components/CoverPainter.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/RemoteCovers.h"

#include <QCache>
#include <QQuickTextureFactory>
#include <QThreadPool>

#include <functional>
#include <mutex>
#include <optional>
#include <utility>

namespace cadorel {

namespace {

constexpr int cacheKilobytes = 24 * 1024;
constexpr int bytesPerKilobyte = 1024;
// Two rows of a list may wait for one cover of tens of megabytes without holding up the others.
constexpr int threadCount = 2;
constexpr int defaultSide = 96;
constexpr int largestSide = 2048;

/// What is shared between a response, which QML may drop at any time, and the threads that work for it.
class Order
{
public:
    explicit Order(QQuickImageResponse &response)
        : m_response(&response)
    {
    }

    bool isCancelled()
    {
        const std::scoped_lock lock(m_mutex);
        return m_isCancelled;
    }

    QImage image()
    {
        const std::scoped_lock lock(m_mutex);
        return m_image;
    }

    /// What takes a wish back when the picture is not wanted any more.
    void setWithdrawal(std::function<void()> withdrawal)
    {
        const std::scoped_lock lock(m_mutex);
        m_withdrawal = std::move(withdrawal);
    }

    /// The first delivery counts.
    void deliver(const QImage &drawn)
    {
        const std::scoped_lock lock(m_mutex);
        if (std::exchange(m_isDelivered, true))
            return;
        m_image = drawn;
        if (m_response)
            QMetaObject::invokeMethod(m_response, &QQuickImageResponse::finished, Qt::QueuedConnection);
    }

    void cancel()
    {
        std::function<void()> withdrawal;
        {
            const std::scoped_lock lock(m_mutex);
            m_isCancelled = true;
            withdrawal = std::exchange(m_withdrawal, nullptr);
        }
        // Nobody else would, once the wish is taken back.
        if (withdrawal) {
            withdrawal();
            deliver({});
        }
    }

    /// The response is about to go.
    void abandon()
    {
        {
            const std::scoped_lock lock(m_mutex);
            m_response = nullptr;
        }
        cancel();
    }

private:
    std::mutex m_mutex;
    QQuickImageResponse *m_response; // null once it is gone
    QImage m_image;
    std::function<void()> m_withdrawal;
    bool m_isDelivered = false;
    bool m_isCancelled = false;
};

class CoverResponse : public QQuickImageResponse
{
public:
    CoverResponse()
        : m_order(std::make_shared<Order>(*this))
    {
    }
    ~CoverResponse() override { m_order->abandon(); }

    std::shared_ptr<Order> order() const { return m_order; }

    QQuickTextureFactory *textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_order->image());
    }

    void cancel() override { m_order->cancel(); }

private:
    std::shared_ptr<Order> m_order;
};

} // namespace

class CoverImageProvider::Workshop : public std::enable_shared_from_this<Workshop>
{
public:
    Workshop(CoverRegistry &registry, RemoteCovers *remoteCovers)
        : m_registry(registry)
        , m_remoteCovers(remoteCovers)
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
        const Picture picture{.key = address.section(u'?', 0, 0),
                              .name = address + u'@' + QString::number(side),
                              .side = side,
                              .radius = cornerRadiusOf(address, side)};
        if (const QImage known = find(picture.name); !known.isNull())
            order->deliver(known);
        else if (const auto url = m_registry.remoteAddress(picture.key); url && m_remoteCovers)
            fetch(order, picture, *url);
        else
            draw(order, picture, [this, picture] {
                return drawCover(m_registry.artwork(picture.key), picture.side, picture.radius);
            });
    }

private:
    struct Picture
    {
        QString key;
        /// What tells it from every other drawing.
        QString name;
        int side;
        qreal radius;
    };

    void fetch(const std::shared_ptr<Order> &order, const Picture &picture, const QUrl &url)
    {
        const auto arrived = [self = weak_from_this(), order, picture](const QByteArray &bytes) {
            if (const std::shared_ptr<Workshop> workshop = self.lock())
                workshop->drawFetched(order, picture, bytes);
        };
        const quint64 wish = m_remoteCovers->wish(picture.key, url, arrived);
        order->setWithdrawal([covers = m_remoteCovers, wish] { covers->withdraw(wish); });
    }

    void drawFetched(const std::shared_ptr<Order> &order, const Picture &picture, const QByteArray &bytes)
    {
        order->setWithdrawal(nullptr);
        draw(order, picture, [this, picture, bytes]() -> std::optional<QImage> {
            if (bytes.isEmpty())
                return std::nullopt;
            std::optional<QImage> image = drawFetchedCover(bytes, picture.side, picture.radius);
            if (!image)
                m_remoteCovers->discard(picture.key);
            return image;
        });
    }

    /// Draws on one of the threads. Where nothing comes of it, the placeholder is delivered but not kept: the
    /// cover may be had later.
    void draw(const std::shared_ptr<Order> &order, const Picture &picture,
              const std::function<std::optional<QImage>()> &drawing)
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
                image = drawn ? *drawn : drawCover({}, picture.side, picture.radius);
                if (drawn)
                    keep(picture.name, image);
            }
            order->deliver(image);
        });
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
    RemoteCovers *m_remoteCovers;
    std::mutex m_mutex;
    QCache<QString, QImage> m_drawn;
    QThreadPool m_threads;
};

CoverImageProvider::CoverImageProvider(CoverRegistry &registry, RemoteCovers *remoteCovers)
    : m_workshop(std::make_shared<Workshop>(registry, remoteCovers))
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
