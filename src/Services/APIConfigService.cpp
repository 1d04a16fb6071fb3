// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/APIConfigService.h"

#include "Platform/SharedServices.h"
#include "Utils/PercentCoding.h"

namespace cadorel {

using namespace Qt::StringLiterals;

const QString APIConfigService::defaultBaseURL = u"https://music-api.example.com"_s;
const QString APIConfigService::defaultQuality = u"320k"_s;

namespace {

const QString baseURLKey = u"api_base_url"_s;

/// What may stand in a query without an escape (RFC 3986, section 3.4), beside letters and digits.
const QByteArray queryMarks = "-._~!$&'()*+,;=:@/?";

/// The keyword as it stands in an address; one without a UTF-8 form goes in as it is.
QString queryText(const QString &keyword)
{
    return percentEncoded(keyword, queryMarks).value_or(keyword);
}

/// The address of a joined text. Ids of platforms may hold blanks and letters of any script, which are
/// escaped here; what is escaped already stays so.
std::optional<QUrl> parsed(const QString &text)
{
    const QUrl url(text, QUrl::TolerantMode);
    return url.isValid() && !url.isEmpty() ? std::optional(url) : std::nullopt;
}

} // namespace

APIConfigService::APIConfigService(Platform &platform)
    : m_platform(platform)
    , m_baseURL(platform.preferences->stringValue(baseURLKey).value_or(defaultBaseURL))
{
}

APIConfigService &APIConfigService::shared()
{
    return sharedService<APIConfigService>(
        [] { return std::make_unique<APIConfigService>(processPlatform()); });
}

void APIConfigService::setBaseURL(const QString &baseURL)
{
    m_platform.preferences->setString(baseURLKey, baseURL);
    if (m_baseURL == baseURL)
        return;
    m_baseURL = baseURL;
    Q_EMIT baseURLChanged();
}

void APIConfigService::resetToDefault()
{
    setBaseURL(defaultBaseURL);
}

QString APIConfigService::apiEndpoint() const
{
    return m_baseURL + (m_baseURL.endsWith(u'/') ? "api/"_L1 : "/api/"_L1);
}

bool APIConfigService::isValidURL(const QString &text)
{
    // A parsed address has its scheme in lower case, whatever it was.
    const bool isWeb = text.startsWith("http:"_L1) || text.startsWith("https:"_L1);
    return isWeb && QUrl(text, QUrl::StrictMode).isValid();
}

std::optional<QUrl> APIConfigService::buildURL(const QString &source, const QString &id, const QString &type,
                                               const QList<QPair<QString, QString>> &params) const
{
    QString text = apiEndpoint() + "?source="_L1 + source + "&id="_L1 + id + "&type="_L1 + type;
    for (const auto &[key, value] : params)
        text += u'&' + key + u'=' + value;
    return parsed(text);
}

std::optional<QUrl> APIConfigService::buildSearchURL(const QString &source, const QString &keyword,
                                                     int limit) const
{
    return parsed(apiEndpoint() + "?source="_L1 + source + "&type=search&keyword="_L1 + queryText(keyword) +
                  "&limit="_L1 + QString::number(limit));
}

std::optional<QUrl> APIConfigService::buildAggregateSearchURL(const QString &keyword, int limit) const
{
    return parsed(apiEndpoint() + "?type=aggregateSearch&keyword="_L1 + queryText(keyword) + "&limit="_L1 +
                  QString::number(limit));
}

std::optional<QUrl> APIConfigService::buildTopListsURL(const QString &source) const
{
    return parsed(apiEndpoint() + "?source="_L1 + source + "&type=toplists"_L1);
}

std::optional<QUrl> APIConfigService::buildTopListSongsURL(const QString &source, const QString &id) const
{
    return parsed(apiEndpoint() + "?source="_L1 + source + "&id="_L1 + id + "&type=toplist"_L1);
}

std::optional<QUrl> APIConfigService::getPlayUrl(const OnlineSong &song, const QString &quality) const
{
    return buildURL(rawValue(song.platform), song.id, u"url"_s, {{u"br"_s, quality}});
}

std::optional<QUrl> APIConfigService::getCoverUrl(const OnlineSong &song) const
{
    return buildURL(rawValue(song.platform), song.id, u"pic"_s);
}

std::optional<QUrl> APIConfigService::getLyricUrl(const OnlineSong &song) const
{
    return buildURL(rawValue(song.platform), song.id, u"lrc"_s);
}

} // namespace cadorel
