// SPDX-License-Identifier: GPL-3.0-or-later
// Servers, connections and requests. The walk over a server is in WebDAVScan.cpp, the list of songs in
// WebDAVSongList.cpp.
#include "Services/WebDAVService.h"

#include "Models/DecodingError.h"
#include "Platform/HttpStatus.h"
#include "Platform/HttpTransfer.h"
#include "Platform/SharedServices.h"
#include "Services/WebDAV/TransportError.h"
#include "Services/WebDAV/WebDAVSongStore.h"
#include "Services/WebDAV/WebDAVXMLParser.h"
#include "Utils/Console.h"
#include "Utils/KeychainHelper.h"
#include "Utils/Tasks.h"
#include "Utils/TextPreview.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <chrono>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString configsKey = u"webdav_configs"_s;

constexpr auto longestSilence = 30s;
constexpr auto longestAnswer = 300s;
/// A directory of 100,000 files takes about 90 MB with the wordiest servers.
constexpr qint64 largestListing = qint64{128} * 1024 * 1024;
/// Reading a longer answer would be noticed on the screen.
constexpr qsizetype largestParsedAtOnce = qsizetype{256} * 1024;
/// Of an answer, in the log.
constexpr int shownCharacters = 500;

constexpr int statusUnauthorized = 401;
constexpr int statusForbidden = 403;
constexpr int statusNotFound = 404;

/// The properties that a listing is asked for.
const QByteArray propfindBody = R"(<?xml version="1.0" encoding="utf-8" ?>
<D:propfind xmlns:D="DAV:">
    <D:prop>
        <D:displayname/>
        <D:getcontentlength/>
        <D:getcontenttype/>
        <D:getlastmodified/>
        <D:resourcetype/>
    </D:prop>
</D:propfind>)";

HttpRequest propfindRequest(const QUrl &url, const QString &username, const QString &password)
{
    HttpRequest request;
    request.url = url;
    request.method = "PROPFIND";
    request.headers = {{"Depth", "1"},
                       {"Content-Type", "application/xml"},
                       {"Authorization", "Basic " + (username + u':' + password).toUtf8().toBase64()}};
    request.body = propfindBody;
    request.idleTimeout = longestSilence;
    request.totalTimeout = longestAnswer;
    request.sizeLimit = largestListing;
    return request;
}

/// @throws WebDAVError for a status that is no success
void checkStatus(int status)
{
    using Case = WebDAVError::Case;
    if (isSuccess(status))
        return;
    switch (status) {
    case statusUnauthorized:
        throw WebDAVError(Case::authenticationFailed);
    case statusForbidden:
        throw WebDAVError(Case::accessDenied);
    case statusNotFound:
        throw WebDAVError(Case::fileNotFound);
    default:
        throw WebDAVError::serverError(status);
    }
}

QList<WebDAVFile> parsed(const QByteArray &body, const QUrl &url)
{
    return WebDAVXMLParser(body, url).parse();
}

} // namespace

WebDAVService::WebDAVService(Platform &platform)
    : m_platform(platform)
    , m_store(std::make_unique<WebDAVSongStore>(*platform.preferences,
                                                [this] { return m_webDAVSongs + m_heldBack; }))
{
    m_loaded.start();
    loadConfigs();
    detach(loadCachedSongs());
}

WebDAVService::~WebDAVService()
{
    for (const auto &transfer : std::exchange(m_transfers, {}))
        transfer->cancel();
    m_loaded.finish();
}

WebDAVService &WebDAVService::shared()
{
    return sharedService<WebDAVService>([] { return std::make_unique<WebDAVService>(processPlatform()); });
}

// MARK: published state

template <typename T>
void WebDAVService::publish(T &member, const T &value, void (WebDAVService::*signal)())
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*signal)();
}

void WebDAVService::setCurrentConfig(const std::optional<WebDAVConfig> &config)
{
    // Equal servers may differ in all but their id.
    if (!m_currentConfig && !config)
        return;
    m_currentConfig = config;
    Q_EMIT currentConfigChanged();
}

void WebDAVService::setIsConnected(bool value)
{
    publish(m_isConnected, value, &WebDAVService::isConnectedChanged);
}

void WebDAVService::setIsScanning(bool value)
{
    publish(m_isScanning, value, &WebDAVService::isScanningChanged);
}

void WebDAVService::setError(const std::optional<QString> &value)
{
    publish(m_error, value, &WebDAVService::errorChanged);
}

void WebDAVService::setScanProgress(double value)
{
    publish(m_scanProgress, value, &WebDAVService::scanProgressChanged);
}

void WebDAVService::changeTests(int by)
{
    m_runningTests += by;
    publish(m_isTesting, m_runningTests > 0, &WebDAVService::isTestingChanged);
}

// MARK: servers

void WebDAVService::loadConfigs()
{
    const QJsonDocument document =
        QJsonDocument::fromJson(m_platform.preferences->dataValue(configsKey).value_or(QByteArray()));
    if (!document.isArray())
        return;
    QList<WebDAVConfig> configs;
    const QJsonArray array = document.array();
    try {
        for (const auto &value : array) {
            if (!value.isObject())
                return;
            configs.append(WebDAVConfig::fromJson(value.toObject()));
        }
    } catch (const DecodingError &) {
        return;
    }
    m_configs = configs;
    print(u"📂 WebDAV: 加载了 "_s + QString::number(m_configs.size()) + u" 个配置"_s);
}

void WebDAVService::saveConfigs()
{
    QJsonArray array;
    for (const WebDAVConfig &config : std::as_const(m_configs))
        array.append(config.toJson());
    m_platform.preferences->setData(configsKey, QJsonDocument(array).toJson(QJsonDocument::Compact));
    Q_EMIT configsChanged();
}

QCoro::Task<void> WebDAVService::saveConfig(WebDAVConfig config, QString password)
{
    const QPointer<WebDAVService> self(this);
    co_await QtConcurrent::run(&KeychainHelper::queue(), &KeychainHelper::save, password,
                               config.passwordKeychainKey());
    if (!self)
        co_return;
    const qsizetype listed = m_configs.indexOf(config);
    if (listed >= 0)
        m_configs[listed] = config;
    else
        m_configs.append(config);
    saveConfigs();
    print(u"✓ WebDAV: 保存配置 - "_s + config.name);
}

QCoro::Task<void> WebDAVService::deleteConfig(WebDAVConfig config)
{
    const QPointer<WebDAVService> self(this);
    dropScans(config.id);
    co_await QtConcurrent::run(&KeychainHelper::queue(), &KeychainHelper::remove,
                               config.passwordKeychainKey());
    if (!self)
        co_return;
    dropScans(config.id);
    m_configs.removeAll(config);
    saveConfigs();
    co_await songsLoaded();
    if (!self)
        co_return;
    replaceSongs(config, {});
    if (m_currentConfig == config)
        disconnectFromServer();
    print(u"✓ WebDAV: 删除配置 - "_s + config.name);
}

QCoro::Task<WebDAVService::Password> WebDAVService::storedPassword(WebDAVConfig config)
{
    co_return co_await QtConcurrent::run(&KeychainHelper::queue(), &KeychainHelper::lookup,
                                         config.passwordKeychainKey());
}

// MARK: connections

QCoro::Task<std::expected<void, WebDAVError>> WebDAVService::testConnection(WebDAVConfig config,
                                                                            QString password)
{
    const QPointer<WebDAVService> self(this);
    std::expected<void, WebDAVError> result;
    changeTests(1);
    try {
        co_await performPROPFIND(config, password, QString(), std::make_shared<HttpTransfer>());
    } catch (const WebDAVError &error) {
        result = std::unexpected(error);
    } catch (const std::exception &error) {
        result = std::unexpected(WebDAVError::networkError(QString::fromUtf8(error.what())));
    }
    if (self)
        changeTests(-1);
    co_return result;
}

QCoro::Task<void> WebDAVService::connectTo(WebDAVConfig config)
{
    const QPointer<WebDAVService> self(this);
    const bool wasListed = m_configs.contains(config);
    try {
        const Password password = co_await storedPassword(config);
        if (!self)
            co_return;
        if (!password)
            throw WebDAVError(WebDAVError::Case::invalidConfig);
        co_await performPROPFIND(config, *password, QString(), std::make_shared<HttpTransfer>());
    } catch (const std::exception &) {
        if (self)
            disconnectFromServer();
        throw;
    }
    // A server that was deleted meanwhile is connected to no more.
    if (!self || (wasListed && !m_configs.contains(config)))
        co_return;
    setCurrentConfig(config);
    setIsConnected(true);
    print(u"✓ WebDAV: 连接成功 - "_s + config.name);
}

void WebDAVService::disconnectFromServer()
{
    setCurrentConfig(std::nullopt);
    setIsConnected(false);
}

QCoro::Task<QList<WebDAVFile>> WebDAVService::performPROPFIND(WebDAVConfig config, QString password,
                                                              QString path,
                                                              std::shared_ptr<HttpTransfer> transfer)
{
    const QPointer<WebDAVService> self(this);
    const std::optional<QUrl> url = config.buildURL(path);
    if (!url)
        throw WebDAVError(WebDAVError::Case::invalidURL);
    if (!m_platform.httpClient)
        throw WebDAVError(WebDAVError::Case::connectionFailed);
    HttpRequest request = propfindRequest(*url, config.username, password);
    request.transfer = transfer;
    m_transfers.append(transfer);
    const std::expected<HttpResponse, HttpError> response = co_await m_platform.httpClient->send(request);
    if (self)
        m_transfers.removeOne(transfer);
    if (!response) {
        if (response.error().kind == HttpError::Kind::notHttp)
            throw WebDAVError(WebDAVError::Case::connectionFailed);
        throw TransportError(response.error().description);
    }
    const QByteArray &body = response->body;
    print(QStringList{u"📡 WebDAV PROPFIND: "_s + QString::fromLatin1(url->toEncoded()),
                      u"📡 HTTP Status: "_s + QString::number(response->status),
                      u"📡 Response size: "_s + QString::number(body.size()) + u" bytes"_s});
    checkStatus(response->status);
    if (body.isEmpty()) {
        print(u"⚠️ WebDAV: 响应为空"_s);
        co_return QList<WebDAVFile>();
    }
    if (const std::optional<QString> text = textPreview(body, shownCharacters))
        print(u"📡 Response preview: "_s + *text);
    const QList<WebDAVFile> items = body.size() > largestParsedAtOnce
                                        ? co_await QtConcurrent::run(parsed, body, *url)
                                        : parsed(body, *url);
    print(u"📡 Parsed "_s + QString::number(items.size()) + u" items"_s);
    // A page to sign in at, of a hotel's network for instance, is no empty directory: a scan would take the
    // server's songs for gone.
    if (items.isEmpty() && response->mimeType() == "text/html"_L1)
        throw WebDAVError(WebDAVError::Case::parseError);
    co_return items;
}

} // namespace cadorel
