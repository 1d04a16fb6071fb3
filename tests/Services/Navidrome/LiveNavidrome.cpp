// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Navidrome/LiveNavidrome.h"

#include "Fakes/Await.h"
#include "Fakes/FakePreferences.h"
#include "Fakes/FakeSecretStore.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/SystemRandom.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Utils/KeychainHelper.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

// MARK: SubsonicMusic

bool SubsonicMusic::add(const QString &name, const MadeSong &song) const
{
    return makeSong(m_directory.filePath(name), song);
}

bool SubsonicMusic::addLyrics(const QString &name, const QString &text) const
{
    QFile file(m_directory.filePath(QFileInfo(name).completeBaseName() + u".txt"_s));
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool SubsonicMusic::remove(const QString &name) const
{
    return QFile::remove(m_directory.filePath(name));
}

QByteArray SubsonicMusic::bytes(const QString &name) const
{
    QFile file(m_directory.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// MARK: LiveNavidrome

LiveNavidrome::LiveNavidrome()
{
    m_platform.preferences = std::make_unique<FakePreferences>();
    m_platform.clock = std::make_unique<SystemClock>();
    m_platform.random = std::make_unique<SystemRandom>();
    m_platform.httpClient = std::make_unique<NetworkHttpClient>();
    m_platform.secretStore = std::make_unique<FakeSecretStore>();
    KeychainHelper::setStore(m_platform.secretStore.get());
    m_service = std::make_unique<NavidromeService>(m_platform);
}

LiveNavidrome::~LiveNavidrome()
{
    m_service.reset();
    KeychainHelper::queue().waitForDone();
    KeychainHelper::setStore(nullptr);
}

const QString &LiveNavidrome::user()
{
    static const QString text = u"lauscher@heim/5% +音?#&"_s;
    return text;
}

const QString &LiveNavidrome::password()
{
    static const QString text = u"Kp7Zxw9@Qd4Tvmc/Hb2Rsnf%41+ \"密钥\"?#&="_s;
    return text;
}

NavidromeConfig LiveNavidrome::config(const SubsonicServer &server)
{
    NavidromeConfig config;
    config.name = u"家里的服务器"_s;
    config.serverURL = server.address().toString();
    config.username = user();
    return config;
}

QString LiveNavidrome::connectTo(const NavidromeConfig &config, const QString &word)
{
    if (!await(m_service->saveConfig(config, word)))
        return u"no end"_s;
    const auto result = await(m_service->connectTo(config));
    if (!result)
        return u"no end"_s;
    return *result ? QString() : result->error().message;
}

QString LiveNavidrome::test(const NavidromeConfig &config, const QString &word)
{
    const auto result = await(m_service->testConnection(config, word));
    if (!result)
        return u"no end"_s;
    return *result ? QString() : result->error().message;
}

QStringList LiveNavidrome::search(const QString &query)
{
    if (!await(m_service->searchSongs(query)))
        return {u"no end"_s};
    QStringList titles;
    for (const Song &song : m_service->songs())
        titles.append(song.title());
    titles.sort();
    return titles;
}

Song LiveNavidrome::song(const QString &title)
{
    const QList<Song> songs = m_service->songs();
    const auto found = std::ranges::find(songs, title, &Song::title);
    if (found == songs.end())
        qFatal("there is no song with the title %s", qPrintable(title));
    return *found;
}

HttpResponse LiveNavidrome::fetch(const std::optional<QUrl> &url)
{
    HttpRequest request;
    request.url = url.value_or(QUrl());
    const auto response = await(m_platform.httpClient->send(request));
    return response && *response ? **response : HttpResponse();
}

QByteArray LiveNavidrome::storedConfigs() const
{
    return m_platform.preferences->dataValue(u"navidrome_configs"_s).value_or(QByteArray());
}

} // namespace cadorel
