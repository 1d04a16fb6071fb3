// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/WebAddress.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

int effectivePort(const QUrl &url)
{
    constexpr int http = 80;
    constexpr int https = 443;
    return url.port(url.scheme() == "https"_L1 ? https : http);
}

} // namespace

bool isWebAddress(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == "http"_L1 || url.scheme() == "https"_L1);
}

bool isSameOrigin(const QUrl &a, const QUrl &b)
{
    return a.scheme() == b.scheme() && a.host() == b.host() && effectivePort(a) == effectivePort(b);
}

QUrl askedAddress(const QUrl &url)
{
    return wireAddress(url).adjusted(QUrl::RemoveUserInfo | QUrl::NormalizePathSegments);
}

QUrl wireAddress(const QUrl &asked)
{
    const QString path = asked.path(QUrl::FullyEncoded);
    if (!path.startsWith("//"_L1))
        return asked;
    QUrl url = asked;
    url.setPath(u'/' + path, QUrl::TolerantMode);
    return url;
}

} // namespace cadorel
