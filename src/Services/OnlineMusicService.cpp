// SPDX-License-Identifier: GPL-3.0-or-later
// Searches and lookups. The charts are in OnlineCharts.cpp.
#include "Services/OnlineMusicService.h"

#include "Platform/HttpTransfer.h"
#include "Services/APIConfigService.h"
#include "Services/Online/OnlineAnswers.h"
#include "Services/SharedServices.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QStringDecoder>

#include <algorithm>
#include <chrono>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

struct OnlineMusicService::Search
{
    QString requestMark;
    QString statusMark; ///< empty where the status is not printed
    QString answerMark;
    QString foundMark;
    QString foundUnit;
    QString unreadableLine;
    QString failureMark;
    /// Of an item that names none, or one that the player does not know.
    MusicPlatform platform = MusicPlatform::netease;
};

namespace {

constexpr auto longestSilence = 30s;
constexpr auto longestAnswer = 60s;
/// Thousands of times what a search gives.
constexpr qint64 largestAnswer = qint64{32} * 1024 * 1024;
constexpr int shownCharacters = 500;

OnlineSong songOf(const OnlineMusicItem &item, MusicPlatform searched)
{
    return {.id = item.id,
            .name = item.name,
            .artist = item.artist,
            .album = item.album.value_or(QString()),
            .platform = musicPlatform(item.platform.value_or(QString())).value_or(searched),
            .picUrl = {},
            .lrcUrl = {}};
}

std::optional<QString> textOf(const QByteArray &utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(utf8);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

std::optional<QUrl> addressOf(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    return url.isValid() && !url.isEmpty() ? std::optional(url) : std::nullopt;
}

/// The member "url" of an object that holds nothing but texts.
std::optional<QString> urlMember(const QByteArray &body)
{
    const QJsonObject object = QJsonDocument::fromJson(body).object();
    const bool isTextMap = std::all_of(object.constBegin(), object.constEnd(),
                                       [](const QJsonValue &value) { return value.isString(); });
    const auto member = object.constFind("url"_L1);
    return isTextMap && member != object.constEnd() ? std::optional(member->toString()) : std::nullopt;
}

} // namespace

OnlineMusicService::OnlineMusicService(Platform &platform, APIConfigService &apiConfig)
    : m_platform(platform)
    , m_apiConfig(apiConfig)
{
}

OnlineMusicService::~OnlineMusicService()
{
    for (const auto &transfer : std::exchange(m_transfers, {}))
        transfer->cancel();
}

OnlineMusicService &OnlineMusicService::shared()
{
    return sharedService<OnlineMusicService>([] {
        APIConfigService &apiConfig = APIConfigService::shared();
        return std::make_unique<OnlineMusicService>(processPlatform(), apiConfig);
    });
}

// MARK: published state

void OnlineMusicService::setIsSearching(bool value)
{
    publish(m_isSearching, value, &OnlineMusicService::isSearchingChanged);
}

void OnlineMusicService::setSearchError(const std::optional<QString> &value)
{
    publish(m_searchError, value, &OnlineMusicService::searchErrorChanged);
}

void OnlineMusicService::clearSearchError()
{
    setSearchError(std::nullopt);
}

void OnlineMusicService::setSearchResults(const QList<OnlineSong> &songs)
{
    // Equal songs may differ in all but id and platform.
    if (m_searchResults.isEmpty() && songs.isEmpty())
        return;
    m_searchResults = songs;
    Q_EMIT searchResultsChanged();
    Q_EMIT changed();
}

// MARK: requests

QCoro::Task<HttpResponse> OnlineMusicService::fetch(QUrl url)
{
    const QPointer<OnlineMusicService> self(this);
    if (!m_platform.httpClient)
        throw TransportError(u"没有网络"_s);
    HttpRequest request;
    request.url = url;
    request.idleTimeout = longestSilence;
    request.totalTimeout = longestAnswer;
    request.sizeLimit = largestAnswer;
    request.transfer = std::make_shared<HttpTransfer>();
    m_transfers.append(request.transfer);
    const std::expected<HttpResponse, HttpError> response = co_await m_platform.httpClient->send(request);
    if (self)
        m_transfers.removeOne(request.transfer);
    if (!response)
        throw TransportError(response.error().description);
    co_return *response;
}

// MARK: searches

QCoro::Task<void> OnlineMusicService::search(QString keyword, MusicPlatform platform, int limit)
{
    if (keyword.isEmpty()) {
        setSearchResults({});
        co_return;
    }
    co_await runSearch<OnlineMusicSearchResponse>(
        m_apiConfig.buildSearchURL(rawValue(platform), keyword, limit),
        Search{.requestMark = u"Search URL: "_s,
               .statusMark = u"Response status: "_s,
               .answerMark = u"Raw response: "_s,
               .foundMark = u"Found "_s,
               .foundUnit = u" results"_s,
               .unreadableLine = u"Failed to parse response"_s,
               .failureMark = u"Search error: "_s,
               .platform = platform});
}

QCoro::Task<void> OnlineMusicService::aggregateSearch(QString keyword, int limit)
{
    if (keyword.isEmpty()) {
        setSearchResults({});
        co_return;
    }
    co_await runSearch<AggregateSearchResponse>(m_apiConfig.buildAggregateSearchURL(keyword, limit),
                                                Search{.requestMark = u"📤 聚合搜索: "_s,
                                                       .statusMark = {},
                                                       .answerMark = u"📥 聚合搜索响应: "_s,
                                                       .foundMark = u"✅ 找到 "_s,
                                                       .foundUnit = u" 首歌曲"_s,
                                                       .unreadableLine = u"⚠️ 解析响应失败"_s,
                                                       .failureMark = u"❌ 聚合搜索错误: "_s,
                                                       .platform = MusicPlatform::netease});
}

template <typename Response>
QCoro::Task<void> OnlineMusicService::runSearch(std::optional<QUrl> url, Search search)
{
    using Data = typename decltype(Response::data)::value_type;
    const QPointer<OnlineMusicService> self(this);
    setIsSearching(true);
    setSearchError(std::nullopt);
    if (!url) {
        setIsSearching(false);
        setSearchError(u"无效的 URL"_s);
        co_return;
    }
    print(search.requestMark + shownAddress(*url));
    try {
        const HttpResponse response = co_await fetch(*url);
        if (!self)
            co_return;
        if (!search.statusMark.isEmpty())
            print(search.statusMark + QString::number(response.status));
        printAnswer(search.answerMark, response.body, shownCharacters);
        const auto answer = co_await decoded<Response>(response.body);
        if (!self)
            co_return;
        QList<OnlineSong> songs;
        if (const std::optional<QList<OnlineMusicItem>> items = listIn(answer, &Data::results)) {
            for (const OnlineMusicItem &item : *items)
                songs.append(songOf(item, search.platform));
            setSearchResults(songs);
            print(search.foundMark + QString::number(songs.size()) + search.foundUnit);
        } else {
            setSearchResults({});
            print(search.unreadableLine);
        }
        setIsSearching(false);
    } catch (const TransportError &error) {
        if (!self)
            co_return;
        setIsSearching(false);
        setSearchError(u"搜索失败: "_s + error.description());
        print(search.failureMark + error.description());
    }
}

// MARK: lookups

QCoro::Task<std::optional<QUrl>> OnlineMusicService::getPlayUrl(OnlineSong song, QString quality)
{
    const std::optional<QUrl> address = m_apiConfig.getPlayUrl(song, quality);
    if (!address)
        co_return std::nullopt;
    const QPointer<OnlineMusicService> self(this);
    try {
        const HttpResponse response = co_await fetch(*address);
        if (const std::optional<QString> member = urlMember(response.body))
            co_return addressOf(*member);
        if (const std::optional<QString> text = textOf(response.body)) {
            if (const std::optional<QUrl> url = addressOf(text->trimmed()))
                co_return url;
        }
    } catch (const TransportError &error) {
        print(u"Failed to get play URL: "_s + error.description());
    }
    // The endpoint of the moment, which may have changed meanwhile.
    co_return self ? m_apiConfig.getPlayUrl(song, quality) : address;
}

QCoro::Task<QList<LyricLine>> OnlineMusicService::getLyrics(OnlineSong song)
{
    const std::optional<QUrl> address = m_apiConfig.getLyricUrl(song);
    if (!address)
        co_return QList<LyricLine>();
    try {
        const HttpResponse response = co_await fetch(*address);
        if (const std::optional<QString> text = textOf(response.body))
            co_return co_await QtConcurrent::run(LyricLine::parse, *text);
    } catch (const TransportError &error) {
        print(u"Failed to get lyrics: "_s + error.description());
    }
    co_return QList<LyricLine>();
}

std::optional<QUrl> OnlineMusicService::getCoverUrl(const OnlineSong &song) const
{
    return m_apiConfig.getCoverUrl(song);
}

} // namespace cadorel
