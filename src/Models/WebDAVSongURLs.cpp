// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/WebDAVSongURLs.h"

#include "Models/WebDAVAddress.h"
#include "Utils/LogText.h"
#include "Utils/PercentCoding.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QByteArray credentialMarks = "-._~"_ba;

QString hostText(const QUrl &url)
{
    const QString host = url.host();
    const QString text = host.contains(u':') ? u'[' + host + u']' : host;
    return url.port() < 0 ? text : text + u':' + QString::number(url.port());
}

} // namespace

WebDAVSongURLs::WebDAVSongURLs(const WebDAVConfig &config, const QString &password)
{
    std::optional<QUrl> server = webdav::serverURL(config);
    const std::optional<QString> user = percentEncoded(config.username, credentialMarks);
    const std::optional<QString> secret = percentEncoded(password, credentialMarks);
    if (!server || !user || !secret)
        return;
    if (server->scheme().isEmpty())
        server->setScheme(u"https"_s);
    m_lineStart = u"🔗 WebDAV URL: "_s + server->scheme() + "://"_L1 + *user + ":***@"_L1 + hostText(*server);
    server->setUserName(*user, QUrl::StrictMode);
    server->setPassword(*secret, QUrl::StrictMode);
    m_server = std::move(server);
}

std::optional<QUrl> WebDAVSongURLs::build(const QString &path, QString &line) const
{
    const QString fullPath = webdav::withLeadingSlash(path);
    std::optional<QUrl> url = webdav::withPath(m_server, fullPath);
    line = url ? m_lineStart + logText(fullPath) : QString();
    return url;
}

} // namespace cadorel
