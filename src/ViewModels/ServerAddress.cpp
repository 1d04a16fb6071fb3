// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ServerAddress.h"

#include <QHostAddress>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

QString decoded(QStringView text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

} // namespace

bool isLocalHost(const QString &host)
{
    const QHostAddress address(host);
    if (!address.isNull()) {
        // Private networks, and the range of carriers' and overlay networks, which no stranger shares.
        static const QList<QPair<QHostAddress, int>> networks = {
            QHostAddress::parseSubnet(u"10.0.0.0/8"_s), QHostAddress::parseSubnet(u"172.16.0.0/12"_s),
            QHostAddress::parseSubnet(u"192.168.0.0/16"_s), QHostAddress::parseSubnet(u"100.64.0.0/10"_s)};
        return address.isLoopback() || address.isLinkLocal() || address.isUniqueLocalUnicast() ||
               std::any_of(networks.cbegin(), networks.cend(),
                           [&address](const auto &network) { return address.isInSubnet(network); });
    }
    static const QStringList endings = {u".local"_s,     u".lan"_s,      u".home"_s,
                                        u".home.arpa"_s, u".internal"_s, u".localhost"_s};
    const QString name = host.toLower();
    return !name.contains(u'.') ||
           std::any_of(endings.cbegin(), endings.cend(),
                       [&name](const QString &ending) { return name.endsWith(ending); });
}

ServerAddress ServerAddress::parse(const QString &typed)
{
    ServerAddress result;
    result.m_trimmed = typed.trimmed();
    static const QRegularExpression parts(u"^(?:([^:/?#]*)://)?([^/?#]*)([^?#]*)"_s);
    const QRegularExpressionMatch match = parts.match(result.m_trimmed);
    const QString scheme = match.captured(1).toLower();
    QString authority = match.captured(2).trimmed();

    const bool isWeb = scheme == u"http" || scheme == u"https";
    if (result.m_trimmed.isEmpty() || (isWeb && authority.isEmpty() && match.captured(3).isEmpty())) {
        result.problem = Problem::missing;
        return result;
    }
    if (!isWeb) {
        result.problem = Problem::scheme;
        return result;
    }
    // A password that was not encoded may hold an "@" too: the host stands behind the last one.
    const qsizetype at = authority.lastIndexOf(u'@');
    const QString credentials = authority.left(std::max<qsizetype>(at, 0));
    authority.remove(0, at + 1);
    const QUrl url(scheme + u"://"_s + authority, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty()) {
        result.problem = Problem::host;
        return result;
    }
    if (at >= 0) {
        const qsizetype colon = credentials.indexOf(u':');
        result.hasCredentials = true;
        result.username = decoded(QStringView(credentials).left(colon < 0 ? credentials.size() : colon));
        if (colon >= 0)
            result.password = decoded(QStringView(credentials).mid(colon + 1));
    }
    result.scheme = scheme;
    result.authority = authority;
    if (match.capturedView(3) != u"/")
        result.m_encodedPath = match.captured(3);
    result.path = decoded(result.m_encodedPath);
    result.isLocal = isLocalHost(url.host());
    return result;
}

QString ServerAddress::text() const
{
    return problem == Problem::none ? scheme + u"://"_s + authority + m_encodedPath : m_trimmed;
}

} // namespace cadorel
