// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/WebDAVFixture.h"

#include "Services/WebDAV/WebDAVSongStore.h"
#include "Services/WebDAV/WebDAVSongs.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace cadorel {

using namespace Qt::StringLiterals;

QByteArray multistatus(const QList<MadeEntry> &entries)
{
    QByteArray xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<D:multistatus xmlns:D=\"DAV:\">\n";
    for (const MadeEntry &entry : entries) {
        xml += "<D:response><D:href>" + QUrl::toPercentEncoding(entry.href, "/:"_ba) +
               "</D:href><D:propstat><D:prop>";
        if (!entry.displayName.isEmpty())
            xml += "<D:displayname>" + entry.displayName.toHtmlEscaped().toUtf8() + "</D:displayname>";
        xml += entry.isDirectory ? "<D:resourcetype><D:collection/></D:resourcetype>"
                                 : "<D:resourcetype/><D:getcontentlength>5</D:getcontentlength>";
        xml += "</D:prop><D:status>HTTP/1.1 200 OK</D:status></D:propstat></D:response>\n";
    }
    return xml + "</D:multistatus>\n";
}

HttpResponse answerWith(int status, const QByteArray &body, const QByteArray &contentType)
{
    HttpResponse response;
    response.status = status;
    response.body = body;
    response.headers = {{"Content-Type", contentType}};
    return response;
}

WebDAVFixture::~WebDAVFixture()
{
    stop();
}

WebDAVConfig WebDAVFixture::makeConfig(const QString &name, const QString &basePath)
{
    WebDAVConfig config;
    config.name = name;
    config.serverURL = u"http://music.test"_s;
    config.username = u"listener"_s;
    config.basePath = basePath;
    m_machine.secrets().put(config.passwordKeychainKey(), "secret");
    return config;
}

void WebDAVFixture::store(const QList<WebDAVConfig> &configs)
{
    QJsonArray array;
    for (const WebDAVConfig &config : configs)
        array.append(config.toJson());
    m_machine.preferences().setData(u"webdav_configs"_s, QJsonDocument(array).toJson());
}

void WebDAVFixture::store(const QList<Song> &songs)
{
    m_machine.preferences().setData(u"webdav_songs"_s, WebDAVSongStore::encode(songs));
}

Song WebDAVFixture::song(const WebDAVConfig &config, const QString &path, const QString &title)
{
    SongFields fields;
    fields.id = webDAVSongId(config, path);
    fields.title = title;
    fields.artist = "WebDAV - "_L1 + config.name;
    fields.album = config.name;
    fields.albumId = webDAVSongPrefix(config);
    return Song(fields);
}

WebDAVService &WebDAVFixture::start(bool waits)
{
    stop();
    m_service = std::make_unique<WebDAVService>(m_machine.platform);
    if (waits && !await(m_service->songsLoaded()))
        qFatal("the songs are not loaded");
    return *m_service;
}

WebDAVService &WebDAVFixture::startWith(const QList<WebDAVConfig> &configs, const QList<Song> &songs)
{
    store(configs);
    store(songs);
    start();
    m_console.take();
    return *m_service;
}

void WebDAVFixture::stop()
{
    m_service.reset();
    settle();
}

void WebDAVFixture::addDirectory(const QString &path, const QStringList &names)
{
    QList<MadeEntry> entries{{.href = path + u'/', .isDirectory = true}};
    for (const QString &name : names)
        entries.append({.href = path + u'/' + name, .isDirectory = name.endsWith(u'/')});
    addAnswer(path, answerWith(207, multistatus(entries)));
}

void WebDAVFixture::addAnswer(const QString &path, const std::expected<HttpResponse, HttpError> &answer)
{
    m_answers.insert(path + u'/', answer);
}

void WebDAVFixture::answerPending()
{
    while (!m_machine.web().pending.empty()) {
        const QString path = m_machine.web().pending.front().request.url.path();
        m_machine.web().answer(m_answers.value(path, answerWith(404)));
    }
}

QStringList WebDAVFixture::askedPaths()
{
    QStringList paths;
    for (const HttpRequest &request : m_machine.web().sent)
        paths.append(request.url.path());
    return paths;
}

QStringList WebDAVFixture::takeScanLines()
{
    QStringList lines = m_console.take();
    lines.removeIf([](const QString &line) { return line.startsWith(u"📡"_s) || line.startsWith(u"🔗"_s); });
    return lines;
}

QStringList WebDAVFixture::titles() const
{
    QStringList list;
    for (const Song &song : m_service->webDAVSongs())
        list.append(song.title());
    return list;
}

std::optional<QStringList> WebDAVFixture::storedTitles()
{
    const std::optional<QList<Song>> songs =
        WebDAVSongStore::decode(m_machine.preferences().dataValue(u"webdav_songs"_s).value_or(QByteArray()));
    if (!songs)
        return std::nullopt;
    QStringList list;
    for (const Song &song : *songs)
        list.append(song.title());
    return list;
}

QList<WebDAVConfig> WebDAVFixture::storedConfigs()
{
    QList<WebDAVConfig> configs;
    const QJsonArray array =
        QJsonDocument::fromJson(m_machine.preferences().dataValue(u"webdav_configs"_s).value_or(QByteArray()))
            .array();
    for (const QJsonValue &value : array)
        configs.append(WebDAVConfig::fromJson(value.toObject()));
    return configs;
}

} // namespace cadorel
