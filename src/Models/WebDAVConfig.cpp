// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/WebDAVConfig.h"

#include "Models/DecodingError.h"
#include "Models/WebDAVEndpoints.h"
#include "Utils/Console.h"
#include "Utils/JsonForms.h"
#include "Utils/LogText.h"
#include "Utils/PercentCoding.h"

#include <limits>

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

/// What may stand for itself in a path beside letters and digits (RFC 3986, section 3.3). Servers that take
/// the grammar at its word refuse the brackets that QUrl would leave.
const QByteArray pathMarks = "-._~/!$&'()*+,;=:@"_ba;
const QByteArray credentialMarks = "-._~"_ba;

/// Scheme, host and port of a server. Credentials that were typed into the address would be sent and logged
/// beside the ones that count, and a query or fragment belongs to no directory.
std::optional<QUrl> serverOf(const WebDAVConfig &config)
{
    constexpr int largestPort = std::numeric_limits<quint16>::max();
    QUrl url(config.serverURL);
    if (!url.isValid() || url.host().isEmpty())
        return std::nullopt;
    const int port = config.port.value_or(url.port(1));
    if (port < 1 || port > largestPort)
        return std::nullopt;
    url.setUserInfo(QString());
    url.setQuery(QString());
    url.setFragment(QString());
    if (config.port)
        url.setPort(port);
    return url;
}

QString withLeadingSlash(const QString &path)
{
    return path.startsWith(u'/') ? path : u'/' + path;
}

/// The address of a path that is given without percent escapes.
std::optional<QUrl> withPath(std::optional<QUrl> server, const QString &path)
{
    const std::optional<QString> encoded = percentEncoded(path, pathMarks);
    if (!server || !encoded)
        return std::nullopt;
    server->setPath(*encoded, QUrl::StrictMode);
    return server->isValid() ? server : std::nullopt;
}

QString hostText(const QUrl &url)
{
    const QString host = url.host();
    return host.contains(u':') ? u'[' + host + u']' : host;
}

QString requiredText(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (!value.isString())
        throw DecodingError(key);
    return value.toString();
}

bool requiredBool(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (!value.isBool())
        throw DecodingError(key);
    return value.toBool();
}

std::optional<int> optionalInt(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    // A number that is no int gives each of the two defaults.
    if (value.toInt(0) != value.toInt(1))
        throw DecodingError(key);
    return value.toInt();
}

std::optional<QDateTime> optionalDate(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    std::optional<QDateTime> date = dateFromJson(value);
    if (!date)
        throw DecodingError(key);
    return date;
}

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
    return withPath(serverOf(*this), withLeadingSlash(basePath));
}

std::optional<QUrl> WebDAVConfig::buildURL(const QString &subPath) const
{
    QString path = withLeadingSlash(basePath);
    if (!subPath.isEmpty())
        path += withLeadingSlash(subPath);
    if (!path.endsWith(u'/'))
        path += u'/';
    return withPath(serverOf(*this), path);
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
    line.clear();
    const QString fullPath = withLeadingSlash(path);
    std::optional<QUrl> url = withPath(serverOf(*this), fullPath);
    const std::optional<QString> user = percentEncoded(username, credentialMarks);
    const std::optional<QString> secret = percentEncoded(password, credentialMarks);
    if (!url || !user || !secret)
        return std::nullopt;
    if (url->scheme().isEmpty())
        url->setScheme(u"https"_s);
    url->setUserName(*user, QUrl::StrictMode);
    url->setPassword(*secret, QUrl::StrictMode);
    const QString portText = url->port() < 0 ? QString() : u':' + QString::number(url->port());
    line = u"🔗 WebDAV URL: "_s + url->scheme() + "://"_L1 + *user + ":***@"_L1 + hostText(*url) + portText +
           logText(fullPath);
    return url;
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
    const QUuid uuid = QUuid::fromString(requiredText(object, idKey));
    if (uuid.isNull())
        throw DecodingError(idKey);
    return {.id = uuid,
            .name = requiredText(object, nameKey),
            .serverURL = requiredText(object, serverURLKey),
            .port = optionalInt(object, portKey),
            .username = requiredText(object, usernameKey),
            .basePath = requiredText(object, basePathKey),
            .isEnabled = requiredBool(object, isEnabledKey),
            .lastSyncDate = optionalDate(object, lastSyncDateKey)};
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
