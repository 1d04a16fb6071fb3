// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/NavidromeService.h"

#include "Models/DecodingError.h"
#include "Platform/HttpStatus.h"
#include "Platform/HttpTransfer.h"
#include "Platform/SharedServices.h"
#include "Services/Subsonic/NavidromeRequestError.h"
#include "Services/Subsonic/SubsonicRefusal.h"
#include "Services/Subsonic/SubsonicSongs.h"
#include "Utils/KeychainHelper.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>

#include <algorithm>
#include <chrono>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

struct NavidromeService::Listing
{
    QString endpoint;
    QueryItems queryItems;
    NavidromeRequestError badStatus;
};

namespace {

const QString configsKey = u"navidrome_configs"_s;

constexpr auto longestSilence = 30s;
constexpr auto longestAnswer = 60s;
/// Hundreds of times what a listing takes.
constexpr qint64 largestAnswer = qint64{32} * 1024 * 1024;
/// Reading a longer answer, or making more songs, would be noticed on the screen.
constexpr qsizetype largestReadAtOnce = qsizetype{256} * 1024;
constexpr qsizetype mostMadeAtOnce = 1000;

constexpr int searchFailed = 2;
constexpr int listingFailed = 3;

/// The songs of a list, which a server may leave out like what it lies in.
QList<SubsonicSong> songsOf(const std::optional<SubsonicSongList> &list)
{
    return list ? list->song.value_or(QList<SubsonicSong>()) : QList<SubsonicSong>();
}

QList<SubsonicSong> songsOf(const SubsonicRandomSongsResponse &response)
{
    return songsOf(response.subsonicResponse.randomSongs);
}

QList<SubsonicSong> songsOf(const SubsonicSearch3Response &response)
{
    return songsOf(response.subsonicResponse.searchResult3);
}

std::unexpected<NavidromeServiceError> failure(const QString &message)
{
    return std::unexpected(NavidromeServiceError{message});
}

} // namespace

NavidromeService::NavidromeService(Platform &platform)
    : m_platform(platform)
{
    loadConfigs();
}

NavidromeService::~NavidromeService()
{
    for (const Transfer &transfer : std::exchange(m_transfers, {}))
        transfer->cancel();
}

NavidromeService &NavidromeService::shared()
{
    return sharedService<NavidromeService>(
        [] { return std::make_unique<NavidromeService>(processPlatform()); });
}

// MARK: published state

template <typename T>
void NavidromeService::publish(T &member, const T &value, void (NavidromeService::*signal)())
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*signal)();
}

void NavidromeService::setCurrentConfig(const std::optional<NavidromeConfig> &config)
{
    publish(m_currentConfig, config, &NavidromeService::currentConfigChanged);
    publish(m_isConnected, config.has_value(), &NavidromeService::isConnectedChanged);
}

void NavidromeService::setIsSearching(bool value)
{
    publish(m_isSearching, value, &NavidromeService::isSearchingChanged);
}

void NavidromeService::setError(const std::optional<QString> &value)
{
    publish(m_error, value, &NavidromeService::errorChanged);
}

void NavidromeService::setSongs(const QList<Song> &songs)
{
    // Equal songs may differ in all but their id.
    if (m_songs.isEmpty() && songs.isEmpty())
        return;
    m_songs = songs;
    Q_EMIT songsChanged();
}

void NavidromeService::changeTests(int by)
{
    m_runningTests += by;
    publish(m_isTesting, m_runningTests > 0, &NavidromeService::isTestingChanged);
}

// MARK: servers

void NavidromeService::loadConfigs()
{
    const QJsonDocument document =
        QJsonDocument::fromJson(m_platform.preferences->dataValue(configsKey).value_or(QByteArray()));
    QList<NavidromeConfig> configs;
    const QJsonArray array = document.array();
    try {
        for (const auto &value : array)
            configs.append(NavidromeConfig::fromJson(value.toObject()));
    } catch (const DecodingError &) {
        return;
    }
    m_configs = configs;
}

void NavidromeService::saveConfigs()
{
    QJsonArray array;
    for (const NavidromeConfig &config : std::as_const(m_configs))
        array.append(config.toJson());
    m_platform.preferences->setData(configsKey, QJsonDocument(array).toJson(QJsonDocument::Compact));
    Q_EMIT configsChanged();
}

QCoro::Task<void> NavidromeService::saveConfig(NavidromeConfig config, QString password)
{
    const QPointer<NavidromeService> self(this);
    co_await QtConcurrent::run(&KeychainHelper::queue(), &KeychainHelper::save, password,
                               config.passwordKeychainKey());
    if (!self)
        co_return;
    const auto listed = std::ranges::find(m_configs, config.id, &NavidromeConfig::id);
    if (listed != m_configs.end())
        *listed = config;
    else
        m_configs.append(config);
    saveConfigs();
}

QCoro::Task<void> NavidromeService::deleteConfig(NavidromeConfig config)
{
    const QPointer<NavidromeService> self(this);
    co_await QtConcurrent::run(&KeychainHelper::queue(), &KeychainHelper::remove,
                               config.passwordKeychainKey());
    if (!self)
        co_return;
    // A server that is being connected to is deleted for good.
    if (m_connecting && m_connectingConfig == config.id)
        giveUp(m_connecting);
    m_configs.removeIf([&config](const NavidromeConfig &listed) { return listed.id == config.id; });
    saveConfigs();
    if (m_currentConfig && m_currentConfig->id == config.id) {
        dropListing();
        setCurrentConfig(std::nullopt);
    }
}

QCoro::Task<std::optional<QString>> NavidromeService::storedPassword(NavidromeConfig config)
{
    co_return co_await QtConcurrent::run(&KeychainHelper::queue(), &KeychainHelper::get,
                                         config.passwordKeychainKey());
}

// MARK: requests

NavidromeService::Transfer NavidromeService::begin(Transfer &newest)
{
    giveUp(newest);
    newest = std::make_shared<HttpTransfer>();
    return newest;
}

void NavidromeService::giveUp(Transfer &newest)
{
    if (const Transfer given = std::exchange(newest, nullptr))
        given->cancel();
}

QUrl NavidromeService::signedAPIURL(const SubsonicAccess &access, const QString &endpoint,
                                    const QueryItems &queryItems) const
{
    return SubsonicAddresses(access, [this] { return randomSalt(*m_platform.random); })
        .signedAPIURL(endpoint, queryItems);
}

QCoro::Task<QByteArray> NavidromeService::fetch(QUrl url, NavidromeRequestError badStatus, Transfer transfer)
{
    const QPointer<NavidromeService> self(this);
    if (!m_platform.httpClient)
        throw badStatus;
    HttpRequest request;
    request.url = url;
    request.idleTimeout = longestSilence;
    request.totalTimeout = longestAnswer;
    request.sizeLimit = largestAnswer;
    request.transfer = transfer;
    m_transfers.append(transfer);
    const std::expected<HttpResponse, HttpError> response = co_await m_platform.httpClient->send(request);
    if (self)
        m_transfers.removeOne(transfer);
    if (!response)
        throw NavidromeRequestError(response.error().description);
    if (!isSuccess(response->status))
        throw NavidromeRequestError(badStatus.description(),
                                    badStatus.code() > 0 ? badStatus.code() : response->status);
    co_return response->body;
}

template <typename Response>
QCoro::Task<Response> NavidromeService::ask(QUrl url, NavidromeRequestError badStatus, Transfer transfer)
{
    const QByteArray body = co_await fetch(url, badStatus, transfer);
    const std::optional<Response> response = body.size() > largestReadAtOnce
                                                 ? co_await QtConcurrent::run(decodedAnswer<Response>, body)
                                                 : decodedAnswer<Response>(body);
    if (!response)
        throw NavidromeRequestError(u"无法识别服务器的回答"_s);
    ensureOK(response->subsonicResponse.status, fitToShow(response->subsonicResponse.error, url));
    co_return *response;
}

void NavidromeService::ensureOK(const QString &status, const std::optional<SubsonicError> &error)
{
    if (status == "ok"_L1)
        return;
    const QString message = error ? error->message.value_or(QString()) : QString();
    // An empty text would show as no error at all.
    throw NavidromeRequestError(message.trimmed().isEmpty() ? u"请求失败"_s : message);
}

QCoro::Task<void> NavidromeService::ping(SubsonicAccess access, Transfer transfer)
{
    const QUrl url = signedAPIURL(access, u"ping.view"_s, {{u"f"_s, u"json"_s}});
    co_await ask<SubsonicPingResponse>(url, NavidromeRequestError(u"连接失败"_s), transfer);
}

// MARK: connections

QCoro::Task<NavidromeService::Result> NavidromeService::testConnection(NavidromeConfig config,
                                                                       QString password)
{
    const QPointer<NavidromeService> self(this);
    Result result;
    changeTests(1);
    try {
        co_await ping({config, password}, std::make_shared<HttpTransfer>());
    } catch (const NavidromeRequestError &error) {
        result = failure(error.description());
    }
    if (self)
        changeTests(-1);
    co_return result;
}

QCoro::Task<NavidromeService::Result> NavidromeService::connectTo(NavidromeConfig config)
{
    const QPointer<NavidromeService> self(this);
    const Transfer transfer = begin(m_connecting);
    m_connectingConfig = config.id;
    const std::optional<QString> password = co_await storedPassword(config);
    std::optional<QString> problem;
    if (self && m_connecting == transfer && password) {
        try {
            co_await ping({config, *password}, transfer);
        } catch (const NavidromeRequestError &error) {
            problem = error.description();
        }
    }
    if (!self || m_connecting != transfer)
        co_return failure(u"已取消"_s);
    m_connecting.reset();
    if (!password) {
        problem = u"无法获取密码"_s;
    } else {
        // A listing that is under way is of the server before.
        dropListing();
        setCurrentConfig(problem ? std::nullopt : std::optional(config));
    }
    if (!problem)
        co_return Result();
    setError(problem);
    co_return failure(*problem);
}

void NavidromeService::disconnectFromServer()
{
    giveUp(m_connecting);
    dropListing();
    setCurrentConfig(std::nullopt);
}

// MARK: songs

QCoro::Task<void> NavidromeService::loadDefaultSongs(int songCount)
{
    const QPointer<NavidromeService> self(this);
    const Transfer transfer = begin(m_listing);
    const std::optional<SubsonicAccess> access = co_await listingAccess(transfer);
    if (!self || !access)
        co_return;
    co_await list<SubsonicRandomSongsResponse>(
        *access,
        {.endpoint = u"getRandomSongs.view"_s,
         .queryItems = {{u"size"_s, QString::number(songCount)}, {u"f"_s, u"json"_s}},
         .badStatus = NavidromeRequestError(u"拉取歌曲失败"_s, listingFailed)},
        transfer);
}

QCoro::Task<void> NavidromeService::searchSongs(QString query, int songCount)
{
    const QPointer<NavidromeService> self(this);
    const Transfer transfer = begin(m_listing);
    const std::optional<SubsonicAccess> access = co_await listingAccess(transfer);
    if (!self || !access)
        co_return;
    const QString wanted = query.trimmed();
    if (wanted.isEmpty()) {
        setSongs({});
        endListing(transfer);
        co_return;
    }
    co_await list<SubsonicSearch3Response>(*access,
                                           {.endpoint = u"search3.view"_s,
                                            .queryItems = {{u"query"_s, wanted},
                                                           {u"songCount"_s, QString::number(songCount)},
                                                           {u"f"_s, u"json"_s}},
                                            .badStatus = NavidromeRequestError(u"搜索失败"_s, searchFailed)},
                                           transfer);
}

QCoro::Task<std::optional<SubsonicAccess>> NavidromeService::listingAccess(Transfer transfer)
{
    const QPointer<NavidromeService> self(this);
    std::optional<SubsonicAccess> access;
    if (const std::optional<NavidromeConfig> config = m_currentConfig) {
        if (const std::optional<QString> password = co_await storedPassword(*config))
            access = SubsonicAccess{*config, *password};
    }
    if (!self || m_listing != transfer)
        co_return std::nullopt;
    if (!access) {
        setError(u"请先连接 Navidrome"_s);
        endListing(transfer);
    }
    co_return access;
}

template <typename Response>
QCoro::Task<void> NavidromeService::list(SubsonicAccess access, Listing listing, Transfer transfer)
{
    const QPointer<NavidromeService> self(this);
    setIsSearching(true);
    setError(std::nullopt);
    std::optional<QString> problem;
    QList<Song> songs;
    try {
        const QUrl url = signedAPIURL(access, listing.endpoint, listing.queryItems);
        const Response response = co_await ask<Response>(url, listing.badStatus, transfer);
        if (self && m_listing == transfer)
            songs = co_await listedSongs(songsOf(response), access);
    } catch (const NavidromeRequestError &error) {
        problem = error.description();
    }
    if (!self || m_listing != transfer)
        co_return;
    if (problem)
        setError(problem);
    else
        setSongs(songs);
    endListing(transfer);
}

void NavidromeService::endListing(const Transfer &transfer)
{
    // Who heard of the songs may have asked for others.
    if (m_listing != transfer)
        return;
    m_listing.reset();
    setIsSearching(false);
}

void NavidromeService::dropListing()
{
    giveUp(m_listing);
    setIsSearching(false);
}

QCoro::Task<QList<Song>> NavidromeService::listedSongs(QList<SubsonicSong> records,
                                                       SubsonicAccess access) const
{
    QStringList salts;
    salts.reserve(saltsOfASong * records.size());
    while (salts.size() < saltsOfASong * records.size())
        salts.append(randomSalt(*m_platform.random));
    const QDateTime now = m_platform.clock->now();
    if (records.size() <= mostMadeAtOnce)
        co_return makeSongs(records, access, salts, now);
    co_return co_await QtConcurrent::run(makeSongs, records, access, salts, now);
}

// MARK: lyrics

QCoro::Task<std::optional<QString>> NavidromeService::lyrics(Song song, Transfer transfer)
{
    const QPointer<NavidromeService> self(this);
    if (!transfer)
        transfer = std::make_shared<HttpTransfer>();
    const std::optional<SubsonicContext> context = co_await resolveSubsonicContext(song.id());
    if (!self || !context || transfer->isCancelled())
        co_return std::nullopt;
    const std::optional<QString> byId = co_await lyricsBySongId(context->access, context->songId, transfer);
    if (!self || byId || transfer->isCancelled())
        co_return byId;
    co_return co_await lyricsByArtistTitle(context->access, song.artist(), song.title(), transfer);
}

QCoro::Task<std::optional<NavidromeService::SubsonicContext>>
NavidromeService::resolveSubsonicContext(QString songId) const
{
    const std::optional<SubsonicSongId> id = SubsonicSongId::parse(songId);
    if (!id)
        co_return std::nullopt;
    const auto listed = std::ranges::find(m_configs, id->config, &NavidromeConfig::id);
    if (listed == m_configs.cend())
        co_return std::nullopt;
    SubsonicContext context{.access = {*listed, {}}, .songId = id->song};
    const std::optional<QString> password = co_await storedPassword(context.access.config);
    if (!password)
        co_return std::nullopt;
    context.access.password = *password;
    co_return context;
}

QCoro::Task<std::optional<QString>>
NavidromeService::lyricsBySongId(SubsonicAccess access, QString subsonicSongId, Transfer transfer)
{
    co_return co_await askedLyrics(access, u"getLyricsBySongId.view"_s,
                                   {{u"id"_s, subsonicSongId}, {u"f"_s, u"json"_s}}, transfer);
}

QCoro::Task<std::optional<QString>>
NavidromeService::lyricsByArtistTitle(SubsonicAccess access, QString artist, QString title, Transfer transfer)
{
    co_return co_await askedLyrics(access, u"getLyrics.view"_s,
                                   {{u"artist"_s, artist}, {u"title"_s, title}, {u"f"_s, u"json"_s}},
                                   transfer);
}

QCoro::Task<std::optional<QString>> NavidromeService::askedLyrics(SubsonicAccess access, QString endpoint,
                                                                  QueryItems queryItems, Transfer transfer)
{
    try {
        const QUrl url = signedAPIURL(access, endpoint, queryItems);
        const SubsonicLyricsResponse response =
            co_await ask<SubsonicLyricsResponse>(url, NavidromeRequestError(u"请求失败"_s), transfer);
        const std::optional<SubsonicLyrics> &lyrics = response.subsonicResponse.lyrics;
        co_return lyrics ? lyrics->value : std::nullopt;
    } catch (const NavidromeRequestError &) {
        co_return std::nullopt;
    }
}

} // namespace cadorel
