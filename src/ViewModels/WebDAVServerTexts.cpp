// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/WebDAVServerTexts.h"

#include "ViewModels/ServerAddress.h"

#include <QLocale>

namespace cadorel::serverTexts {

using namespace Qt::StringLiterals;

QString host(const WebDAVConfig &config)
{
    const std::optional<QUrl> url = config.baseURL();
    if (!url || url->host().isEmpty())
        return u"地址无效"_s;
    const QString name = url->host().contains(u':') ? u'[' + url->host() + u']' : url->host();
    return url->port() < 0 ? name : name + u':' + QString::number(url->port());
}

QString host(const NavidromeConfig &config)
{
    const ServerAddress address = ServerAddress::parse(config.serverURL);
    return address.problem == ServerAddress::Problem::none ? address.authority : u"地址无效"_s;
}

QString symbol(const WebDAVConfig &config)
{
    const QString address = config.serverURL.toLower();
    if (address.contains("jianguoyun"_L1))
        return u"cloud.fill"_s;
    if (address.contains("nextcloud"_L1))
        return u"server.rack"_s;
    if (address.contains("synology"_L1))
        return u"externaldrive.connected.to.line.below"_s;
    return u"externaldrive.fill.badge.wifi"_s;
}

QString lastSync(const WebDAVConfig &config, const QDateTime &now)
{
    if (!config.lastSyncDate)
        return u"从未同步"_s;
    const QDateTime date = config.lastSyncDate->toLocalTime();
    const bool isThisYear = date.date().year() == now.toLocalTime().date().year();
    const QLocale chinese(QLocale::Chinese, QLocale::China);
    return u"同步于 "_s + chinese.toString(date, isThisYear ? u"M月d日 HH:mm"_s : u"yyyy年M月d日"_s);
}

} // namespace cadorel::serverTexts
