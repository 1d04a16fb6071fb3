// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/WebDAVConfig.h"

#include "Models/JsonFields.h"
#include "Models/WebDAVAddress.h"
#include "Models/WebDAVEndpoints.h"
#include "Models/WebDAVSongURLs.h"
#include "Utils/Console.h"
#include "Utils/JsonForms.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView idKey{"id"};
constexpr QLatin1StringView nameKey{"name"};
constexpr QLatin1StringView serverURLKey{"serverURL"};
constexpr QLatin1StringView portKey{"port"};
constexpr QLatin1StringView usernameKey{"username"};
constexpr QLatin1StringView basePathKey{"basePath"};
constexpr QLatin1StringView isEnabledKey{"isEnabled"};
constexpr QLatin1StringView lastSyncDateKey{"lastSyncDate"};

} // namespace

QString WebDAVConfig::uuidText() const
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

QString WebDAVConfig::passwordKeychainKey() const
{
    return u"webdav_password_"_s + uuidText();
}

std::optional<QUrl> WebDAVConfig::baseURL() const
{
    return webdav::withPath(webdav::serverURL(*this), webdav::withLeadingSlash(basePath));
}

std::optional<QUrl> WebDAVConfig::buildURL(const QString &subPath) const
{
    QString path = webdav::withLeadingSlash(basePath);
    if (!subPath.isEmpty())
        path += webdav::withLeadingSlash(subPath);
    if (!path.endsWith(u'/'))
        path += u'/';
    return webdav::withPath(webdav::serverURL(*this), path);
}

std::optional<QUrl> WebDAVConfig::buildAuthenticatedURL(const QString &path, const QString &password) const
{
    QString line;
    std::optional<QUrl> url = buildAuthenticatedURL(path, password, line);
    if (url)
        print(line);
    return url;
}

std::optional<QUrl> WebDAVConfig::buildAuthenticatedURL(const QString &path, const QString &password,
                                                        QString &line) const
{
    return WebDAVSongURLs(*this, password).build(path, line);
}

QJsonObject WebDAVConfig::toJson() const
{
    QJsonObject object{{idKey, uuidText()},     {nameKey, name},         {serverURLKey, serverURL},
                       {usernameKey, username}, {basePathKey, basePath}, {isEnabledKey, isEnabled}};
    if (port)
        object.insert(portKey, *port);
    if (lastSyncDate)
        object.insert(lastSyncDateKey, dateToJson(*lastSyncDate));
    return object;
}

WebDAVConfig WebDAVConfig::fromJson(const QJsonObject &object)
{
    return {.id = json::requiredUuid(object, idKey),
            .name = json::requiredText(object, nameKey),
            .serverURL = json::requiredText(object, serverURLKey),
            .port = json::optionalInt(object, portKey),
            .username = json::requiredText(object, usernameKey),
            .basePath = json::requiredText(object, basePathKey),
            .isEnabled = json::requiredBool(object, isEnabledKey),
            .lastSyncDate = json::optionalDate(object, lastSyncDateKey)};
}

WebDAVConfig WebDAVConfig::jianguoyunPreset(const QString &username, const QString &basePath)
{
    WebDAVConfig config;
    config.name = webdav::jianguoyunName;
    config.serverURL = webdav::jianguoyunEndpoint;
    config.username = username;
    config.basePath = basePath;
    return config;
}

WebDAVConfig WebDAVConfig::nextcloudPreset(const QString &serverURL, const QString &username)
{
    WebDAVConfig config;
    config.name = webdav::nextcloudName;
    config.serverURL = serverURL;
    config.username = username;
    config.basePath = webdav::nextcloudFiles + username;
    return config;
}

WebDAVConfig WebDAVConfig::synologyPreset(const QString &serverURL, const QString &username, bool useHTTPS)
{
    WebDAVConfig config;
    config.name = u"群晖 NAS"_s;
    config.serverURL = serverURL;
    config.port = useHTTPS ? webdav::synologyHttpsPort : webdav::synologyHttpPort;
    config.username = username;
    config.basePath = u'/' + username;
    return config;
}

const WebDAVConfig &WebDAVConfig::example()
{
    static const WebDAVConfig config = [] {
        WebDAVConfig made;
        made.name = u"示例服务器"_s;
        made.serverURL = u"https://webdav.example.com"_s;
        made.username = u"user"_s;
        made.basePath = u"/music"_s;
        return made;
    }();
    return config;
}

} // namespace cadorel
