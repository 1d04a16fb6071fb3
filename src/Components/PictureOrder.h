// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QQuickImageResponse>
#include <QQuickTextureFactory>

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace cadorel {

/// What is shared between a response, which QML may drop at any time, and the threads that work for it. Any
/// thread.
class PictureOrder
{
public:
    explicit PictureOrder(QQuickImageResponse &response)
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

/// What an asynchronous image provider gives QML for an order of its own.
class PictureResponse : public QQuickImageResponse
{
public:
    PictureResponse()
        : m_order(std::make_shared<PictureOrder>(*this))
    {
    }
    ~PictureResponse() override { m_order->abandon(); }

    std::shared_ptr<PictureOrder> order() const { return m_order; }

    QQuickTextureFactory *textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_order->image());
    }

    void cancel() override { m_order->cancel(); }

private:
    std::shared_ptr<PictureOrder> m_order;
};

} // namespace cadorel
