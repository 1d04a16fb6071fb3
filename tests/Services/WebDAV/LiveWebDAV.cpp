// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/LiveWebDAV.h"

#include "Fakes/Await.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Services/WebDAV/WebDAVSongs.h"
#include "Utils/KeychainHelper.h"

namespace cadorel {

using namespace Qt::StringLiterals;

LiveWebDAV::LiveWebDAV(const QString &kind)
    : server(WebDAVServer::make(kind))
{
    platform.preferences = std::make_unique<FakePreferences>();
    platform.clock = std::make_unique<SystemClock>();
    platform.httpClient = std::make_unique<NetworkHttpClient>();
    platform.secretStore = std::make_unique<FakeSecretStore>();
    KeychainHelper::setStore(platform.secretStore.get());
}

LiveWebDAV::~LiveWebDAV()
{
    m_service.reset();
    KeychainHelper::setStore(nullptr);
}

const QString &LiveWebDAV::user()
{
    static const QString text = u"ann@home/5% +音?#&"_s;
    return text;
}

const QString &LiveWebDAV::password()
{
    static const QString text = u"p:w@d/%41+ \"密码\"?#&"_s;
    return text;
}

bool LiveWebDAV::startServer()
{
    return server->start(tree.root(), user(), password());
}

WebDAVConfig LiveWebDAV::config(const QString &basePath) const
{
    WebDAVConfig config;
    config.name = u"家里的服务器"_s;
    config.serverURL = u"http://127.0.0.1"_s;
    config.port = server->port();
    config.username = user();
    config.basePath = basePath;
    return config;
}

WebDAVService &LiveWebDAV::service()
{
    if (!m_service)
        m_service = std::make_unique<WebDAVService>(platform);
    return *m_service;
}

bool LiveWebDAV::restartService(std::unique_ptr<HttpClient> web)
{
    const bool isStored = await(service().songsStored()).has_value();
    m_service.reset();
    platform.httpClient = std::move(web);
    return isStored && await(service().songsLoaded());
}

bool LiveWebDAV::scan(const WebDAVConfig &config)
{
    return await(service().saveConfig(config, password())) && await(service().scanMusic(config));
}

QString LiveWebDAV::test(const WebDAVConfig &config, const QString &password)
{
    const auto result = await(service().testConnection(config, password));
    if (!result)
        return u"no end"_s;
    return *result ? QString() : result->error().description();
}

QString LiveWebDAV::connectTo(const WebDAVConfig &config)
{
    const auto failure = [](QCoro::Task<void> task) -> QCoro::Task<QString> {
        try {
            co_await task;
        } catch (const WebDAVError &error) {
            co_return error.description();
        }
        co_return QString();
    };
    return await(failure(service().connectTo(config))).value_or(u"no end"_s);
}

QStringList LiveWebDAV::songPaths()
{
    QStringList paths;
    for (const Song &song : service().webDAVSongs())
        paths.append(extractFilePath(song.id()).value_or(u"(none)"_s));
    return paths;
}

QByteArray LiveWebDAV::fetch(const Song &song)
{
    const QUrl url = song.assetURL().value_or(QUrl());
    const QString credentials = url.userName(QUrl::FullyDecoded) + u':' + url.password(QUrl::FullyDecoded);
    HttpRequest request;
    request.url = url;
    request.headers = {{"Authorization", "Basic " + credentials.toUtf8().toBase64()}};
    const auto response = await(platform.httpClient->send(request));
    if (!response || !*response)
        return response ? "no answer: " + response->error().description.toUtf8() : "no end"_ba;
    constexpr int ok = 200;
    const int status = (*response)->status;
    return status == ok ? (*response)->body : "status " + QByteArray::number(status);
}

} // namespace cadorel
