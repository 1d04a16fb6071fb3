// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAVStreamingService.h"

#include "Platform/HttpTransfer.h"
#include "Platform/ResourceLoadingRequest.h"
#include "Platform/SharedServices.h"
#include "Services/WebDAV/AudioTypeIdentifier.h"
#include "Services/WebDAV/LargestSong.h"
#include "Utils/Console.h"
#include "Utils/FileSizeText.h"
#include "Utils/Tasks.h"

#include <QCoroFuture>

#include <algorithm>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int statusOK = 200;

LoadingError streamingError(int code, const QString &description)
{
    return {.domain = u"WebDAVStreaming"_s, .code = code, .description = description};
}

LoadingError missingCredentials()
{
    return streamingError(-1, u"缺少认证信息"_s);
}

LoadingError invalidURL()
{
    return streamingError(-2, u"无效的 URL"_s);
}

LoadingError invalidResponse()
{
    return streamingError(-3, u"无效的响应"_s);
}

LoadingError noData()
{
    return streamingError(-4, u"无数据"_s);
}

/// A failure of the way to the server, with the web client's own numbers and text.
LoadingError transportError(const HttpError &error)
{
    return {.domain = u"Http"_s, .code = static_cast<int>(error.kind), .description = error.description};
}

/// For requests whose file is dropped under them.
LoadingError dropped()
{
    return transportError({.kind = HttpError::Kind::cancelled, .description = u"已取消"_s});
}

QString absoluteText(const QUrl &url)
{
    return url.toString(QUrl::FullyEncoded);
}

/// Decoded, whether the path ends in "/" or not.
QString lastPathComponent(const QUrl &url)
{
    const QString name = url.fileName(QUrl::FullyDecoded);
    return name.isEmpty() ? url.adjusted(QUrl::StripTrailingSlash).fileName(QUrl::FullyDecoded) : name;
}

} // namespace

WebDAVStreamingService::WebDAVStreamingService(Platform &platform, qint64 memoryBudget)
    : m_platform(platform)
    , m_memoryBudget(memoryBudget)
{
}

WebDAVStreamingService::~WebDAVStreamingService()
{
    for (const QList<QString> keys = m_pendingRequests.keys(); const QString &urlKey : keys)
        dropPendingRequests(urlKey);
    for (const auto transfers = std::exchange(m_activeDataTasks, {}); const Transfer &transfer : transfers)
        transfer->cancel();
    m_expectedLoad.reset();
    tellSettled();
}

WebDAVStreamingService &WebDAVStreamingService::shared()
{
    return sharedService<WebDAVStreamingService>(
        [] { return std::make_unique<WebDAVStreamingService>(processPlatform()); });
}

std::optional<QUrl> WebDAVStreamingService::convertToStreamingURL(const QUrl &url)
{
    if (!url.isValid())
        return {};
    const QString scheme = url.scheme().isEmpty() ? u"https"_s : url.scheme();
    QUrl streaming = url;
    streaming.setScheme(customScheme);
    streaming.setPath(u'/' + scheme + url.path(QUrl::FullyEncoded), QUrl::TolerantMode);
    if (!streaming.isValid())
        return {};
    return streaming;
}

std::optional<QUrl> WebDAVStreamingService::restoreOriginalURL(const QUrl &url)
{
    const QString path = url.path(QUrl::FullyEncoded);
    if (path.size() <= 1)
        return {};
    const QStringView pieces = QStringView(path).sliced(1);
    const qsizetype slash = pieces.indexOf(u'/');
    const QStringView scheme = slash < 0 ? pieces : pieces.first(slash);
    QUrl original = url;
    original.setScheme(scheme.toString());
    original.setPath(slash < 0 ? u"/"_s : pieces.sliced(slash).toString(), QUrl::TolerantMode);
    if (!original.isValid())
        return {};
    return original;
}

std::optional<MediaAsset> WebDAVStreamingService::createStreamingAsset(const QUrl &url)
{
    const auto streamingURL = convertToStreamingURL(url);
    if (!streamingURL) {
        print(u"❌ WebDAV Streaming: 无法转换 URL"_s);
        return {};
    }
    print(u"🎵 WebDAV Streaming: 创建流式资源 - "_s + lastPathComponent(*streamingURL));
    if (const auto original = restoreOriginalURL(*streamingURL))
        expectLoad(absoluteText(*original));
    return MediaAsset{.url = *streamingURL, .prefersPreciseDuration = true, .resourceLoader = this};
}

bool WebDAVStreamingService::shouldWaitForLoadingOfRequestedResource(
    std::shared_ptr<ResourceLoadingRequest> request)
{
    const auto url = restoreOriginalURL(request->request());
    if (!url) {
        print(u"❌ WebDAV Streaming: 无法解析 URL"_s);
        return false;
    }
    const QString urlKey = absoluteText(*url);
    print(u"📥 WebDAV Streaming: 收到加载请求 - "_s + lastPathComponent(*url));
    const QString user = url->userName(QUrl::FullyDecoded);
    const QString password = url->password(QUrl::FullyDecoded);
    if (user.isEmpty() || password.isEmpty()) {
        print(u"❌ WebDAV Streaming: URL 缺少认证信息"_s);
        request->finishLoading(missingCredentials());
        return false;
    }
    QUrl cleanURL = *url;
    cleanURL.setUserInfo(QString());
    if (!cleanURL.isValid()) {
        request->finishLoading(invalidURL());
        return false;
    }
    QMetaObject::invokeMethod(
        this,
        [this, urlKey, cleanURL, user, password, request = std::move(request)] {
            takeRequest(urlKey, cleanURL, user, password, request);
        },
        Qt::QueuedConnection);
    return true;
}

void WebDAVStreamingService::takeRequest(const QString &urlKey, const QUrl &cleanURL, const QString &user,
                                         const QString &password,
                                         const std::shared_ptr<ResourceLoadingRequest> &request)
{
    m_pendingRequests[urlKey].append(request);
    if (m_dataBuffers.contains(urlKey) && m_contentInfoCache.contains(urlKey))
        processPendingRequests(urlKey);
    if (!m_activeDataTasks.contains(urlKey) && !m_completedDownloads.contains(urlKey))
        startDownload(cleanURL, user, password, urlKey);
    if (m_expectedLoad && m_expectedLoad->urlKey == urlKey)
        m_expectedLoad.reset();
    updatePausing();
    tellSettled();
}

void WebDAVStreamingService::didCancel(std::shared_ptr<ResourceLoadingRequest> request)
{
    const auto url = restoreOriginalURL(request->request());
    if (!url)
        return;
    QMetaObject::invokeMethod(
        this,
        [this, urlKey = absoluteText(*url), request = std::move(request)] {
            const auto pending = m_pendingRequests.find(urlKey);
            if (pending == m_pendingRequests.end())
                return;
            pending->removeOne(request);
            updatePausing();
            tellSettled();
        },
        Qt::QueuedConnection);
}

void WebDAVStreamingService::startDownload(const QUrl &url, const QString &user, const QString &password,
                                           const QString &urlKey)
{
    const auto transfer = std::make_shared<HttpTransfer>();
    HttpRequest request;
    request.url = url;
    request.headers = {{"Authorization", "Basic " + (user + u':' + password).toUtf8().toBase64()},
                       {"Cache-Control", "no-cache"}};
    request.ownConnection = true;
    request.mustBeWhole = true;
    request.sizeLimit = webdav::largestSong;
    request.transfer = transfer;
    print(u"🌐 WebDAV Streaming: 开始下载 - "_s + lastPathComponent(url));
    m_activeDataTasks.insert(urlKey, transfer);
    detach(fetch(this, m_platform.httpClient.get(), std::move(request), urlKey));
}

QCoro::Task<void> WebDAVStreamingService::fetch(QPointer<WebDAVStreamingService> self, HttpClient *client,
                                                HttpRequest request, QString urlKey)
{
    const Transfer transfer = request.transfer;
    DownloadResult result = co_await client->send(std::move(request));
    if (!self)
        co_return;
    QMetaObject::invokeMethod(
        self.data(),
        [self, urlKey, transfer, result = std::move(result)]() mutable {
            self->downloadEnded(urlKey, transfer, std::move(result));
        },
        Qt::QueuedConnection);
}

void WebDAVStreamingService::downloadEnded(const QString &urlKey, const Transfer &transfer,
                                           DownloadResult result)
{
    const bool notHttp = !result && result.error().kind == HttpError::Kind::notHttp;
    if (!result && !notHttp)
        print(u"❌ WebDAV Streaming: 下载失败 - "_s + result.error().description);
    // A download that was dropped may have a successor by now.
    if (m_activeDataTasks.value(urlKey) != transfer)
        return;
    if (notHttp) {
        failAllPendingRequests(urlKey, invalidResponse());
    } else if (!result) {
        failAllPendingRequests(urlKey, transportError(result.error()));
    } else if (result->status != statusOK) {
        const QString description = u"HTTP %1"_s.arg(result->status);
        print(u"❌ WebDAV Streaming: "_s + description);
        failAllPendingRequests(urlKey, streamingError(result->status, description));
    } else if (result->body.isEmpty()) {
        // Nothing can be played, and the file may still be on its way to the server: not worth keeping.
        failAllPendingRequests(urlKey, noData());
    } else {
        const QString mimeType = result->mimeType();
        const qint64 size = result->body.size();
        m_contentInfoCache.insert(
            urlKey, {.contentLength = size, .contentType = mimeType.isEmpty() ? u"audio/mpeg"_s : mimeType});
        m_dataBuffers.insert(urlKey, result->body);
        m_completedDownloads.insert(urlKey);
        m_activeDataTasks.remove(urlKey);
        print(u"✅ WebDAV Streaming: 下载完成 - "_s + fileSizeText(size));
        touch(urlKey);
        processPendingRequests(urlKey);
        evict();
    }
    updatePausing();
    tellSettled();
}

void WebDAVStreamingService::processPendingRequests(const QString &urlKey)
{
    const auto pending = m_pendingRequests.find(urlKey);
    if (pending == m_pendingRequests.end())
        return;
    touch(urlKey);
    forgetClosedReaders(urlKey);
    pending->removeIf([&](const std::shared_ptr<ResourceLoadingRequest> &request) {
        if (!fillInContentInformation(*request, urlKey))
            return false;
        if (request->dataRequest() && !respondWithData(*request, urlKey))
            return false;
        request->finishLoading();
        m_readers[urlKey].append(request);
        return true;
    });
}

bool WebDAVStreamingService::fillInContentInformation(ResourceLoadingRequest &request,
                                                      const QString &urlKey) const
{
    const auto info = m_contentInfoCache.constFind(urlKey);
    if (info == m_contentInfoCache.constEnd())
        return false;
    if (auto *information = request.contentInformationRequest()) {
        information->isByteRangeAccessSupported = true;
        information->contentLength = info->contentLength;
        information->contentType = audioTypeIdentifier(info->contentType);
    }
    return true;
}

bool WebDAVStreamingService::respondWithData(ResourceLoadingRequest &request, const QString &urlKey) const
{
    const auto buffer = m_dataBuffers.constFind(urlKey);
    if (buffer == m_dataBuffers.constEnd())
        return false;
    const bool complete = m_completedDownloads.contains(urlKey);
    ResourceLoadingRequest::DataRequest &data = *request.dataRequest();
    const qint64 offset = data.currentOffset();
    if (offset >= buffer->size())
        return complete;
    const qint64 count = std::min(data.requestedLength(), buffer->size() - offset);
    data.respond(buffer->mid(offset, count));
    // The end of what was asked for may lie beyond the numbers: compare lengths instead.
    return complete || count >= data.requestedLength() - (offset - data.requestedOffset());
}

void WebDAVStreamingService::failAllPendingRequests(const QString &urlKey, const LoadingError &error)
{
    const auto requests = m_pendingRequests.take(urlKey);
    for (const std::shared_ptr<ResourceLoadingRequest> &request : requests)
        request->finishLoading(error);
    m_activeDataTasks.remove(urlKey);
}

void WebDAVStreamingService::dropPendingRequests(const QString &urlKey)
{
    // Nothing would ever answer them.
    for (const auto requests = m_pendingRequests.take(urlKey); const auto &request : requests)
        request->finishLoading(dropped());
}

void WebDAVStreamingService::clearCache(const QUrl &url)
{
    QMetaObject::invokeMethod(
        this,
        [this, urlKey = absoluteText(url)] {
            drop(urlKey);
            updatePausing();
            tellSettled();
        },
        Qt::QueuedConnection);
}

void WebDAVStreamingService::clearAllCache()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            const QSet<QString> keys =
                QSet<QString>(m_activeDataTasks.keyBegin(), m_activeDataTasks.keyEnd()) +
                QSet<QString>(m_pendingRequests.keyBegin(), m_pendingRequests.keyEnd()) +
                m_completedDownloads;
            for (const QString &urlKey : keys)
                drop(urlKey);
            tellSettled();
        },
        Qt::QueuedConnection);
}

void WebDAVStreamingService::drop(const QString &urlKey)
{
    if (const Transfer transfer = m_activeDataTasks.take(urlKey))
        transfer->cancel();
    m_dataBuffers.remove(urlKey);
    dropPendingRequests(urlKey);
    m_contentInfoCache.remove(urlKey);
    m_completedDownloads.remove(urlKey);
    m_readers.remove(urlKey);
    m_leastRecentlyUsed.removeOne(urlKey);
}

void WebDAVStreamingService::touch(const QString &urlKey)
{
    if (!m_dataBuffers.contains(urlKey))
        return;
    m_leastRecentlyUsed.removeOne(urlKey);
    m_leastRecentlyUsed.append(urlKey);
}

void WebDAVStreamingService::forgetClosedReaders(const QString &urlKey)
{
    const auto readers = m_readers.find(urlKey);
    if (readers == m_readers.end())
        return;
    readers->removeIf([](const std::weak_ptr<ResourceLoadingRequest> &request) { return request.expired(); });
    if (readers->isEmpty())
        m_readers.erase(readers);
}

void WebDAVStreamingService::evict()
{
    qint64 total = 0;
    for (const QByteArray &buffer : std::as_const(m_dataBuffers))
        total += buffer.size();
    const QList<QString> candidates = m_leastRecentlyUsed.first(m_leastRecentlyUsed.size() - 1);
    for (const QString &urlKey : candidates) {
        if (total <= m_memoryBudget)
            return;
        // Dropping what a player holds too would free nothing.
        forgetClosedReaders(urlKey);
        if (m_readers.contains(urlKey))
            continue;
        total -= m_dataBuffers.value(urlKey).size();
        drop(urlKey);
    }
}

void WebDAVStreamingService::updatePausing()
{
    const auto isWaitedFor = [this](const QString &urlKey) {
        return !m_pendingRequests.value(urlKey).isEmpty();
    };
    const bool somebodyWaits =
        std::any_of(m_activeDataTasks.keyBegin(), m_activeDataTasks.keyEnd(), isWaitedFor);
    const auto downloads = m_activeDataTasks;
    for (auto download = downloads.cbegin(); download != downloads.cend(); ++download)
        download.value()->setPaused(somebodyWaits && !isWaitedFor(download.key()));
}

void WebDAVStreamingService::expectLoad(const QString &urlKey)
{
    m_expectedLoad.reset();
    if (!m_completedDownloads.contains(urlKey)) {
        m_expectedLoad =
            ExpectedLoad{.urlKey = urlKey, .grace = m_platform.clock->singleShot(loadingGrace, [this] {
                             m_expectedLoad.reset();
                             tellSettled();
                         })};
    }
    tellSettled();
}

bool WebDAVStreamingService::isUnsettled(const QString &urlKey) const
{
    return m_activeDataTasks.contains(urlKey) || (m_expectedLoad && m_expectedLoad->urlKey == urlKey);
}

bool WebDAVStreamingService::isListenedFor(const QString &urlKey) const
{
    return !m_pendingRequests.value(urlKey).isEmpty() || (m_expectedLoad && m_expectedLoad->urlKey == urlKey);
}

QFuture<void> WebDAVStreamingService::wait(Waiters &waiters, const QString &urlKey)
{
    const auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    waiters.insert(urlKey, promise);
    return promise->future();
}

QCoro::Task<void> WebDAVStreamingService::downloadSettled(QUrl url)
{
    const QString urlKey = absoluteText(url);
    if (isUnsettled(urlKey))
        co_await wait(m_settling, urlKey);
}

QCoro::Task<void> WebDAVStreamingService::listenerServed(QUrl url)
{
    const QString urlKey = absoluteText(url);
    if (isListenedFor(urlKey))
        co_await wait(m_serving, urlKey);
}

void WebDAVStreamingService::tellSettled()
{
    QList<std::shared_ptr<QPromise<void>>> settled;
    const auto take = [&settled](Waiters &waiters, const auto &isWaiting) {
        waiters.removeIf([&](const auto &waiting) {
            if (isWaiting(waiting.key()))
                return false;
            settled.append(waiting.value());
            return true;
        });
    };
    take(m_serving, [this](const QString &urlKey) { return isListenedFor(urlKey); });
    take(m_settling, [this](const QString &urlKey) { return isUnsettled(urlKey); });
    for (const std::shared_ptr<QPromise<void>> &promise : settled)
        promise->finish();
}

} // namespace cadorel
