// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Navidrome/NavidromeFixture.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

QByteArray songsAnswer(const QByteArray &key, const QStringList &titles)
{
    QJsonArray songs;
    for (const QString &title : titles) {
        songs.append(QJsonObject{{u"id"_s, u"id-"_s + title},
                                 {u"title"_s, title},
                                 {u"artist"_s, u"歌手"_s},
                                 {u"duration"_s, 180},
                                 {u"coverArt"_s, u"cover-"_s + title}});
    }
    return subsonicAnswer(",\"" + key + "\":{\"song\":" + QJsonDocument(songs).toJson() + "}");
}

QString endpointOf(const HttpRequest &request)
{
    return request.url.fileName();
}

} // namespace

QByteArray subsonicAnswer(const QByteArray &members)
{
    return R"({"subsonic-response":{"status":"ok","version":"1.16.1")" + members + "}}";
}

QByteArray subsonicRefusal(const QByteArray &message)
{
    return R"({"subsonic-response":{"status":"failed","error":{"code":40,"message":")" + message + "\"}}}";
}

QByteArray randomSongsAnswer(const QStringList &titles)
{
    return songsAnswer("randomSongs", titles);
}

QByteArray search3Answer(const QStringList &titles)
{
    return songsAnswer("searchResult3", titles);
}

QByteArray lyricsAnswer(const QByteArray &value)
{
    return subsonicAnswer(R"(,"lyrics":{"artist":"a","title":"t","value":")" + value + "\"}");
}

HttpResponse webAnswer(const QByteArray &body, int status)
{
    HttpResponse response;
    response.status = status;
    response.headers = {{"Content-Type", "application/json"}};
    response.body = body;
    return response;
}

std::unexpected<HttpError> noAnswer(const QString &description, HttpError::Kind kind)
{
    return std::unexpected(HttpError{kind, description});
}

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

void NavidromeFixture::addAnswer(const QString &endpoint, const FakeHttpClient::Result &answer)
{
    m_answers.insert(endpoint, answer);
}

void NavidromeFixture::answerPending()
{
    while (!web().pending.empty()) {
        const QString endpoint = endpointOf(web().pending.front().request);
        web().answer(m_answers.value(endpoint, webAnswer("not found", 404)));
    }
}

bool NavidromeFixture::waitForPending(std::size_t count)
{
    return QTest::qWaitFor([this, count] { return web().pending.size() == count; }, patienceMs);
}

QStringList NavidromeFixture::askedEndpoints()
{
    QStringList endpoints;
    for (const HttpRequest &request : web().sent)
        endpoints.append(endpointOf(request));
    return endpoints;
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
