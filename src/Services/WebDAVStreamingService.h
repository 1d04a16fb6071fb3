// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpClient.h"
#include "Platform/MediaAsset.h"
#include "Platform/Platform.h"
#include "Platform/ResourceLoader.h"

#include <QCoroTask>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QPromise>
#include <QSet>
#include <QString>
#include <QUrl>

#include <chrono>
#include <expected>
#include <memory>
#include <optional>

namespace cadorel {

/// Streams songs of WebDAV servers: it fetches a file whole, with the credentials of its address, and answers
/// the stream player's requests for ranges of it from memory once it is there. Main thread.
///
/// Every change to its records is made from the event loop, in the order in which it was asked for.
///
/// A download goes on when nobody waits for it any more, because a later play will use it, but it yields the
/// line while another one is waited for. Complete files that no player uses are dropped, the longest unused
/// first, when all of them together exceed the memory budget; their next play downloads them again.
class WebDAVStreamingService : public QObject, public ResourceLoader
{
    Q_OBJECT
public:
    /// Scheme of the addresses that the stream player is given.
    static constexpr QLatin1StringView customScheme{"webdavstream"};
    /// Bytes of complete files. An album of lossless songs or thirty lossy ones: enough to go back and forth
    /// in what is being heard, and below what a browser tab takes.
    static constexpr qint64 defaultMemoryBudget = qint64{256} * 1024 * 1024;
    /// An asset that the player has not begun to load by then is not going to be loaded.
    static constexpr std::chrono::seconds loadingGrace{5};

    /// @param platform outlives the service
    /// @param memoryBudget bytes of complete files that may stay without being used
    explicit WebDAVStreamingService(Platform &platform, qint64 memoryBudget = defaultMemoryBudget);
    /// Ends the downloads and fails the requests.
    ~WebDAVStreamingService() override;
    Q_DISABLE_COPY_MOVE(WebDAVStreamingService)

    static WebDAVStreamingService &shared();

    /// An asset that the stream player reads through this service; nothing when @p url cannot be rewritten.
    std::optional<MediaAsset> createStreamingAsset(const QUrl &url);
    /// Drops the file of a song, and its download. Requests for it fail.
    /// @param url the song's address, with its credentials
    void clearCache(const QUrl &url);
    void clearAllCache();
    /// Ends when no download of the file is under way. An asset that has just been created counts as one
    /// until the player asks for it, another asset is created or `loadingGrace` is over.
    QCoro::Task<void> downloadSettled(QUrl url);
    /// Ends when no player waits for the file: it is there, or failed, or the listener went on to another
    /// song while the download continues. An asset that has just been created counts as waited for, as above.
    QCoro::Task<void> listenerServed(QUrl url);

    bool shouldWaitForLoadingOfRequestedResource(std::shared_ptr<ResourceLoadingRequest> request) override;
    void didCancel(std::shared_ptr<ResourceLoadingRequest> request) override;

private:
    struct ContentInfo
    {
        qint64 contentLength = 0;
        QString contentType;
    };
    struct ExpectedLoad
    {
        QString urlKey;
        std::unique_ptr<ClockTimer> grace;
    };
    using DownloadResult = std::expected<HttpResponse, HttpError>;
    using Transfer = std::shared_ptr<HttpTransfer>;

    static std::optional<QUrl> convertToStreamingURL(const QUrl &url);
    static std::optional<QUrl> restoreOriginalURL(const QUrl &url);
    static QCoro::Task<void> fetch(QPointer<WebDAVStreamingService> self, HttpClient *client,
                                   HttpRequest request, QString urlKey);

    void takeRequest(const QString &urlKey, const QUrl &cleanURL, const QString &user,
                     const QString &password, const std::shared_ptr<ResourceLoadingRequest> &request);
    void startDownload(const QUrl &url, const QString &user, const QString &password, const QString &urlKey);
    void downloadEnded(const QString &urlKey, const Transfer &transfer, DownloadResult result);
    void processPendingRequests(const QString &urlKey);
    bool fillInContentInformation(ResourceLoadingRequest &request, const QString &urlKey) const;
    bool respondWithData(ResourceLoadingRequest &request, const QString &urlKey) const;
    void failAllPendingRequests(const QString &urlKey, const LoadingError &error);
    void dropPendingRequests(const QString &urlKey);
    void drop(const QString &urlKey);
    void touch(const QString &urlKey);
    void forgetClosedReaders(const QString &urlKey);
    void evict();
    void updatePausing();
    void expectLoad(const QString &urlKey);
    bool isUnsettled(const QString &urlKey) const;
    bool isListenedFor(const QString &urlKey) const;
    void tellSettled();

    Platform &m_platform;
    const qint64 m_memoryBudget;
    // Keyed by the song's address with its credentials, which stays in here.
    QHash<QString, Transfer> m_activeDataTasks;
    QHash<QString, QByteArray> m_dataBuffers;
    QHash<QString, QList<std::shared_ptr<ResourceLoadingRequest>>> m_pendingRequests;
    QHash<QString, ContentInfo> m_contentInfoCache;
    QSet<QString> m_completedDownloads;
    /// The answered requests of a file: while one of them lives, a player reads it.
    QHash<QString, QList<std::weak_ptr<ResourceLoadingRequest>>> m_readers;
    /// Keys of `m_dataBuffers`, the longest unused first.
    QList<QString> m_leastRecentlyUsed;
    std::optional<ExpectedLoad> m_expectedLoad;
    using Waiters = QMultiHash<QString, std::shared_ptr<QPromise<void>>>;
    static QFuture<void> wait(Waiters &waiters, const QString &urlKey);
    /// Who waits for a download to end, and for the listener to need it no more.
    Waiters m_settling;
    Waiters m_serving;
};

} // namespace cadorel
