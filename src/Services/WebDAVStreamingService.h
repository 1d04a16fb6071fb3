// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/MediaAsset.h"
#include "Platform/Platform.h"
#include "Platform/ResourceLoader.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

/// Streams songs of WebDAV servers: it fetches a file whole, with the credentials of its address, and answers
/// the stream player's requests for ranges of it from memory once it is there. Main thread.
class WebDAVStreamingService : public QObject, public ResourceLoader
{
    Q_OBJECT
public:
    /// @param platform outlives the service
    explicit WebDAVStreamingService(Platform &platform);
    ~WebDAVStreamingService() override;
    Q_DISABLE_COPY_MOVE(WebDAVStreamingService)

    static WebDAVStreamingService &shared();

    /// An asset that the stream player reads through this service; nothing when @p url cannot be rewritten.
    std::optional<MediaAsset> createStreamingAsset(const QUrl &url);
    /// Drops the file of a song, and its download. @param url the song's address, with its credentials
    void clearCache(const QUrl &url);
    void clearAllCache();
    /// Ends when no download of the file is under way: at once when none was asked for.
    QCoro::Task<void> downloadSettled(QUrl url);

    bool shouldWaitForLoadingOfRequestedResource(std::shared_ptr<ResourceLoadingRequest> request) override;
    void didCancel(std::shared_ptr<ResourceLoadingRequest> request) override;

private:
    Platform &m_platform;
};

} // namespace cadorel
