// SPDX-License-Identifier: GPL-3.0-or-later
// Searches and lookups. The charts are in OnlineCharts.cpp.
#include "Services/OnlineMusicService.h"

#include "Platform/HttpTransfer.h"
#include "Platform/SharedServices.h"
#include "Services/Online/OnlineAnswers.h"
#include "Services/Online/ToldAddress.h"
#include "Utils/Utf8Text.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

struct OnlineMusicService::Search
{
    LogMarks marks;
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
/// What is read of an answer to the question for an address, in bytes: others are often the audio itself.
constexpr qint64 longestAddress = qint64{16} * 1024;

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
    publishSongs(m_searchResults, songs, &OnlineMusicService::searchResultsChanged);
}

/// Equal songs may differ in all but id and platform: lists are not compared.
void OnlineMusicService::publishSongs(QList<OnlineSong> &member, const QList<OnlineSong> &songs,
                                      void (OnlineMusicService::*signal)())
{
    if (member.isEmpty() && songs.isEmpty())
        return;
    member = songs;
    Q_EMIT(this->*signal)();
    Q_EMIT changed();
}

// MARK: requests

QCoro::Task<std::expected<HttpResponse, HttpError>>
OnlineMusicService::fetch(QUrl url, qint64 atMost, bool isCut, std::shared_ptr<HttpTransfer> transfer)
{
    const QPointer<OnlineMusicService> self(this);
    if (!m_platform.httpClient)
        co_return std::unexpected(
            HttpError{.kind = HttpError::Kind::connection, .description = u"没有网络"_s});
    HttpRequest request;
    request.url = url;
    request.idleTimeout = longestSilence;
    request.totalTimeout = longestAnswer;
    request.sizeLimit = atMost;
    request.cutsAtLimit = isCut;
    request.transfer = transfer ? transfer : std::make_shared<HttpTransfer>();
    m_transfers.append(request.transfer);
    std::expected<HttpResponse, HttpError> response = co_await m_platform.httpClient->send(request);
    if (self)
        m_transfers.removeOne(request.transfer);
    co_return response;
}

// MARK: searches

QCoro::Task<void> OnlineMusicService::search(QString keyword, MusicPlatform platform, int limit)
{
    if (keyword.isEmpty()) {
        dropSearchResults();
        co_return;
    }
    co_await runSearch<OnlineMusicSearchResponse>(
        m_apiConfig.buildSearchURL(rawValue(platform), keyword, limit),
        Search{.marks = {.request = u"Search URL: "_s,
                         .status = u"Response status: "_s,
                         .answer = u"Raw response: "_s},
               .foundMark = u"Found "_s,
               .foundUnit = u" results"_s,
               .unreadableLine = u"Failed to parse response"_s,
               .failureMark = u"Search error: "_s,
               .platform = platform});
}

QCoro::Task<void> OnlineMusicService::aggregateSearch(QString keyword, int limit)
{
    if (keyword.isEmpty()) {
        dropSearchResults();
        co_return;
    }
    co_await runSearch<AggregateSearchResponse>(
        m_apiConfig.buildAggregateSearchURL(keyword, limit),
        Search{.marks = {.request = u"📤 聚合搜索: "_s, .status = {}, .answer = u"📥 聚合搜索响应: "_s},
               .foundMark = u"✅ 找到 "_s,
               .foundUnit = u" 首歌曲"_s,
               .unreadableLine = u"⚠️ 解析响应失败"_s,
               .failureMark = u"❌ 聚合搜索错误: "_s,
               .platform = MusicPlatform::netease});
}

/// For an empty keyword, which nobody is asked about.
void OnlineMusicService::dropSearchResults()
{
    if (m_searches.show(m_searches.arrive()))
        setSearchResults({});
}

template <typename Response>
QCoro::Task<void> OnlineMusicService::runSearch(std::optional<QUrl> url, Search search)
{
    using Data = typename decltype(Response::data)::value_type;
    const QPointer<OnlineMusicService> self(this);
    m_searches.begin();
    setIsSearching(true);
    setSearchError(std::nullopt);
    if (!url) {
        setIsSearching(false);
        setSearchError(u"无效的 URL"_s);
        co_return;
    }
    const auto answer = co_await ask<Response>(*url, search.marks, &OnlineMusicService::m_searches);
    if (!self)
        co_return;
    if (!answer.content) {
        if (m_searches.endsWait(answer.arrived)) {
            setIsSearching(false);
            setSearchError(u"搜索失败: "_s + answer.content.error());
        }
        print(search.failureMark + answer.content.error());
        co_return;
    }
    const std::optional<QList<OnlineMusicItem>> items = listIn(*answer.content, &Data::results);
    QList<OnlineSong> songs;
    for (const OnlineMusicItem &item : items.value_or(QList<OnlineMusicItem>()))
        songs.append(songOf(item, search.platform));
    if (m_searches.show(answer.arrived))
        setSearchResults(songs);
    print(items ? search.foundMark + QString::number(songs.size()) + search.foundUnit
                : search.unreadableLine);
    if (m_searches.endsWait(answer.arrived))
        setIsSearching(false);
}

// MARK: lookups

QCoro::Task<std::optional<QUrl>> OnlineMusicService::getPlayUrl(OnlineSong song, QString quality)
{
    const QPointer<OnlineMusicService> self(this);
    const std::optional<QUrl> address = m_apiConfig.getPlayUrl(song, quality);
    if (!address)
        co_return std::nullopt;
    const std::expected<HttpResponse, HttpError> response = co_await fetch(*address, longestAddress, true);
    if (!self)
        co_return address;
    if (response) {
        if (const std::optional<QString> member = urlMember(response->body))
            co_return toldAddress(QUrl(*member, QUrl::TolerantMode));
        // Strictly, or pages and messages would become addresses.
        const bool isWhole = response->bodySize < longestAddress;
        const QString text = isWhole ? utf8Text(response->body).value_or(QString()).trimmed() : QString();
        if (const std::optional<QUrl> url = toldAddress(QUrl(text, QUrl::StrictMode)))
            co_return url;
    } else {
        print(u"Failed to get play URL: "_s + response.error().description);
    }
    // At the endpoint of the moment, which may have changed meanwhile.
    co_return m_apiConfig.getPlayUrl(song, quality);
}

QCoro::Task<QList<LyricLine>> OnlineMusicService::getLyrics(OnlineSong song,
                                                            std::shared_ptr<HttpTransfer> transfer)
{
    const QPointer<OnlineMusicService> self(this);
    const std::optional<QUrl> address = m_apiConfig.getLyricUrl(song);
    if (!address)
        co_return QList<LyricLine>();
    const std::expected<HttpResponse, HttpError> response =
        co_await fetch(*address, largestAnswer, false, transfer);
    if (!self)
        co_return QList<LyricLine>();
    if (!response) {
        if (response.error().kind != HttpError::Kind::cancelled)
            print(u"Failed to get lyrics: "_s + response.error().description);
        co_return QList<LyricLine>();
    }
    const std::optional<QString> text = utf8Text(response->body);
    co_return text ? co_await QtConcurrent::run(LyricLine::parse, *text) : QList<LyricLine>();
}

std::optional<QUrl> OnlineMusicService::getCoverUrl(const OnlineSong &song) const
{
    return m_apiConfig.getCoverUrl(song);
}

} // namespace cadorel
