// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/ArtworkData.h"

#include <QCache>
#include <QImage>
#include <QString>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

class QUrl;

namespace cadorel {

class CoverRegistry;
class PictureOrder;
class RemoteCovers;

/// Draws pictures for image providers on threads of its own, each picture once for as long as it is kept, and
/// gets the covers that they are drawn from, wherever those lie. Made by std::make_shared. Any thread.
class PictureWorkshop : public std::enable_shared_from_this<PictureWorkshop>
{
public:
    using Drawing = std::function<std::optional<QImage>()>;

    /// A picture to be drawn.
    struct Picture
    {
        /// What tells it from every other drawing.
        QString name;
        /// What is shown where nothing comes of the drawing. It is not kept: the cover may be had later.
        std::function<QImage()> fallback;
    };
    /// How a picture is drawn from a cover, on one of the threads; nothing where the cover cannot be drawn.
    struct CoverDrawing
    {
        /// In the registry.
        QString key;
        std::function<std::optional<QImage>(const ArtworkData &)> own;
        /// From encoded bytes of a server.
        std::function<std::optional<QImage>(const QByteArray &)> fetched;
    };

    /// @param registry and @param remoteCovers outlive the workshop. Without the latter a cover that lies on
    /// a server is as one that nobody has.
    /// @param kilobytes of drawn pictures that are kept
    PictureWorkshop(CoverRegistry &registry, RemoteCovers *remoteCovers, int kilobytes);
    ~PictureWorkshop();
    Q_DISABLE_COPY_MOVE(PictureWorkshop)

    void draw(const std::shared_ptr<PictureOrder> &order, const Picture &picture, const Drawing &drawing);
    void drawCover(const std::shared_ptr<PictureOrder> &order, const Picture &picture,
                   const CoverDrawing &drawing);

private:
    void fetch(const std::shared_ptr<PictureOrder> &order, const Picture &picture,
               const CoverDrawing &drawing, const QUrl &url);
    void drawFetched(const std::shared_ptr<PictureOrder> &order, const Picture &picture,
                     const CoverDrawing &drawing, const QByteArray &bytes);
    void start(const std::shared_ptr<PictureOrder> &order, const Picture &picture, const Drawing &drawing);
    QImage find(const QString &name);
    void keep(const QString &name, const QImage &image);

    CoverRegistry &m_registry;
    RemoteCovers *m_remoteCovers;
    std::mutex m_mutex;
    QCache<QString, QImage> m_drawn;
    QThreadPool m_threads;
};

} // namespace cadorel
