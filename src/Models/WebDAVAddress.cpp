// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/WebDAVAddress.h"

#include "Models/WebDAVConfig.h"
#include "Utils/PercentCoding.h"

#include <limits>

namespace cadorel::webdav {

using namespace Qt::StringLiterals;

namespace {

/// What may stand for itself in a path beside letters and digits (RFC 3986, section 3.3). Servers that take
/// the grammar at its word refuse the brackets that QUrl would leave.
const QByteArray pathMarks = "-._~/!$&'()*+,;=:@"_ba;

} // namespace

std::optional<QUrl> serverURL(const WebDAVConfig &config)
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

std::optional<QUrl> withPath(std::optional<QUrl> server, const QString &path)
{
    const std::optional<QString> encoded = percentEncoded(path, pathMarks);
    if (!server || !encoded)
        return std::nullopt;
    server->setPath(*encoded, QUrl::StrictMode);
    return server->isValid() ? server : std::nullopt;
}

} // namespace cadorel::webdav
