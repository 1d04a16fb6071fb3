// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/NavidromeConfig.h"

#include "Models/JsonFields.h"
#include "Utils/JsonForms.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView idKey{"id"};
constexpr QLatin1StringView nameKey{"name"};
constexpr QLatin1StringView serverURLKey{"serverURL"};
constexpr QLatin1StringView apiBasePathKey{"apiBasePath"};
constexpr QLatin1StringView usernameKey{"username"};
constexpr QLatin1StringView isEnabledKey{"isEnabled"};
constexpr QLatin1StringView lastSyncDateKey{"lastSyncDate"};

} // namespace

QString NavidromeConfig::uuidText() const
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

QString NavidromeConfig::passwordKeychainKey() const
{
    return u"navidrome_password_"_s + uuidText();
}

std::optional<QUrl> NavidromeConfig::apiBaseURL() const
{
    QString server = serverURL.trimmed();
    if (server.endsWith(u'/'))
        server.chop(1);
    QString path = apiBasePath.trimmed();
    if (path.isEmpty())
        path = u"/rest"_s;
    if (!path.startsWith(u'/'))
        path.prepend(u'/');
    const QUrl url(server + path);
    return url.isValid() ? std::optional(url) : std::nullopt;
}

QJsonObject NavidromeConfig::toJson() const
{
    QJsonObject object{{idKey, uuidText()},           {nameKey, name},         {serverURLKey, serverURL},
                       {apiBasePathKey, apiBasePath}, {usernameKey, username}, {isEnabledKey, isEnabled}};
    if (lastSyncDate)
        object.insert(lastSyncDateKey, dateToJson(*lastSyncDate));
    return object;
}

NavidromeConfig NavidromeConfig::fromJson(const QJsonObject &object)
{
    return {.id = json::requiredUuid(object, idKey),
            .name = json::requiredText(object, nameKey),
            .serverURL = json::requiredText(object, serverURLKey),
            .apiBasePath = json::requiredText(object, apiBasePathKey),
            .username = json::requiredText(object, usernameKey),
            .isEnabled = json::requiredBool(object, isEnabledKey),
            .lastSyncDate = json::optionalDate(object, lastSyncDateKey)};
}

size_t qHash(const NavidromeConfig &config, size_t seed)
{
    return qHashMulti(seed, config.id, config.name, config.serverURL, config.apiBasePath, config.username,
                      config.isEnabled,
                      config.lastSyncDate ? config.lastSyncDate->toMSecsSinceEpoch() : qint64{-1});
}

} // namespace cadorel
