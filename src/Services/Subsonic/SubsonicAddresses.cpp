// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Subsonic/SubsonicAddresses.h"

#include "Platform/Random.h"
#include "Services/Subsonic/NavidromeRequestError.h"
#include "Utils/PercentCoding.h"

#include <QCryptographicHash>

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString apiVersion = u"1.16.1"_s;
const QString clientName = u"TarnovaPlayer"_s;

/// What may stand for itself in a query beside letters and digits. A "+" may not: servers read a blank.
const QByteArray queryMarks = "-._~"_ba;

std::optional<QUrl> rootOf(const NavidromeConfig &config)
{
    std::optional<QUrl> url = config.apiBaseURL();
    // Of a mere "http://" the path of the API would become the host.
    const bool hasHost = !QUrl(config.serverURL.trimmed()).host().isEmpty();
    if (!url || !hasHost || (url->scheme() != "http"_L1 && url->scheme() != "https"_L1))
        return std::nullopt;
    // A user in the address would make a song look like one of a WebDAV server.
    url->setUserInfo(QString());
    url->setQuery(QString());
    url->setFragment(QString());
    if (const QString path = url->path(QUrl::FullyEncoded); !path.endsWith(u'/'))
        url->setPath(path + u'/', QUrl::StrictMode);
    return url;
}

} // namespace

SubsonicAddresses::SubsonicAddresses(const SubsonicAccess &access, MakeSalt makeSalt)
    : m_root(rootOf(access.config))
    , m_username(access.config.username)
    , m_password(access.password)
    , m_makeSalt(std::move(makeSalt))
{
}

QUrl SubsonicAddresses::signedAPIURL(const QString &endpoint, const QueryItems &queryItems) const
{
    if (!m_root)
        throw NavidromeRequestError(u"服务器地址无效"_s);
    const QString salt = m_makeSalt();
    const QueryItems signature{{u"u"_s, m_username},
                               {u"t"_s, md5Hex(m_password + salt)},
                               {u"s"_s, salt},
                               {u"v"_s, apiVersion},
                               {u"c"_s, clientName}};
    QString query;
    for (const auto &[name, value] : signature + queryItems) {
        const std::optional<QString> encoded = percentEncoded(value, queryMarks);
        if (!encoded)
            throw NavidromeRequestError(u"请求 URL 构建失败"_s);
        if (!query.isEmpty())
            query += u'&';
        query += name + u'=' + *encoded;
    }
    QUrl url = *m_root;
    url.setPath(url.path(QUrl::FullyEncoded) + endpoint, QUrl::StrictMode);
    url.setQuery(query, QUrl::StrictMode);
    if (!url.isValid())
        throw NavidromeRequestError(u"请求 URL 构建失败"_s);
    return url;
}

std::optional<QUrl> SubsonicAddresses::signedOrNothing(const QString &endpoint,
                                                       const QueryItems &queryItems) const
{
    try {
        return signedAPIURL(endpoint, queryItems);
    } catch (const NavidromeRequestError &) {
        return std::nullopt;
    }
}

std::optional<QUrl> SubsonicAddresses::coverArtURL(const std::optional<QString> &coverArtId) const
{
    if (!coverArtId || coverArtId->isEmpty())
        return std::nullopt;
    return signedOrNothing(u"getCoverArt.view"_s, {{u"id"_s, *coverArtId}, {u"size"_s, u"400"_s}});
}

std::optional<QUrl> SubsonicAddresses::streamURL(const QString &songId) const
{
    return signedOrNothing(u"stream.view"_s, {{u"id"_s, songId}});
}

QString randomSalt(Random &random)
{
    constexpr QLatin1StringView alphabet{"abcdefghijklmnopqrstuvwxyz0123456789"};
    constexpr qsizetype length = 12;
    QString salt(length, Qt::Uninitialized);
    for (QChar &character : salt)
        character = alphabet[random.index(static_cast<int>(alphabet.size()))];
    return salt;
}

QString md5Hex(const QString &text)
{
    return QString::fromLatin1(QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex());
}

} // namespace cadorel
