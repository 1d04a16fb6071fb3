// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Navidrome/NavidromeFixture.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace cadorel {

using namespace Qt::StringLiterals;

NavidromeFixture::~NavidromeFixture()
{
    stop();
}

NavidromeConfig NavidromeFixture::makeConfig(const QString &name)
{
    NavidromeConfig config;
    config.name = name;
    config.serverURL = u"http://"_s + name + u".test"_s;
    config.username = u"listener"_s;
    m_machine.secrets().put(config.passwordKeychainKey(), "sesame");
    return config;
}

void NavidromeFixture::store(const QList<NavidromeConfig> &configs)
{
    QJsonArray array;
    for (const NavidromeConfig &config : configs)
        array.append(config.toJson());
    m_machine.preferences().setData(u"navidrome_configs"_s, QJsonDocument(array).toJson());
}

QList<NavidromeConfig> NavidromeFixture::storedConfigs()
{
    QList<NavidromeConfig> configs;
    const QJsonArray array =
        QJsonDocument::fromJson(
            m_machine.preferences().dataValue(u"navidrome_configs"_s).value_or(QByteArray()))
            .array();
    for (const QJsonValue &value : array)
        configs.append(NavidromeConfig::fromJson(value.toObject()));
    return configs;
}

NavidromeService &NavidromeFixture::start()
{
    stop();
    m_service = std::make_unique<NavidromeService>(m_machine.platform);
    return *m_service;
}

NavidromeConfig NavidromeFixture::startConnected(const QString &name)
{
    const NavidromeConfig config = makeConfig(name);
    store({config});
    start();
    addAnswer(u"ping.view"_s, webAnswer(subsonicAnswer()));
    const auto connected = serve(m_service->connectTo(config));
    if (!connected || !*connected)
        qFatal("the made server is not connected");
    return config;
}

void NavidromeFixture::stop()
{
    m_service.reset();
    settle();
}

bool NavidromeFixture::waitForPending(std::size_t count)
{
    return QTest::qWaitFor([this, count] { return web().pending.size() == count; }, patienceMs);
}

QUrlQuery NavidromeFixture::lastQuery()
{
    return web().sent.isEmpty() ? QUrlQuery() : QUrlQuery(web().sent.constLast().url);
}

QStringList NavidromeFixture::titles() const
{
    QStringList list;
    for (const Song &song : m_service->songs())
        list.append(song.title());
    return list;
}

} // namespace cadorel
