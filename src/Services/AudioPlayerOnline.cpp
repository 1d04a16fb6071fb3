// SPDX-License-Identifier: GPL-3.0-or-later
// Online songs: their address is fetched before they play.
#include "Services/AudioPlayerService.h"

#include "Services/AudioPlayerSupport.h"
#include "Services/Seams/OnlineSongAddresses.h"
#include "Utils/Console.h"
#include "Utils/Tasks.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QStringDecoder>

#include <QCoroTask>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

std::optional<QUrl> parsedUrl(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    return url.isValid() && !url.isEmpty() ? std::optional(url) : std::nullopt;
}

} // namespace

void AudioPlayerService::playOnlineSong(const OnlineSong &song, const QList<OnlineSong> &queue)
{
    setCurrent(std::nullopt, song);
    setPlayError(std::nullopt);
    setIsLoading(true);
    m_nowPlayingArtwork.reset();
    if (!queue.isEmpty()) {
        setOnlineQueue(queue);
        setCurrentIndex(indexOrFirst(m_onlineQueue, song));
    }
    detach(resolveAndPlay(song));
}

QCoro::Task<void> AudioPlayerService::resolveAndPlay(OnlineSong song)
{
    const QPointer<AudioPlayerService> self(this);
    const quint64 request = ++m_onlineRequest;
    std::optional<QUrl> url = co_await fetchRealPlayUrl(song);
    // Another song may have been asked for while the address was fetched.
    if (!self || request != m_onlineRequest)
        co_return;
    if (!url && m_parts.onlineAddresses)
        url = m_parts.onlineAddresses->getPlayUrl(song, audioQuality());
    setIsLoading(false);
    if (url)
        playURL(*url);
    else
        setPlayError(u"无法获取播放链接"_s);
}

QCoro::Task<std::optional<QUrl>> AudioPlayerService::fetchRealPlayUrl(OnlineSong song)
{
    if (!m_parts.onlineAddresses || !m_platform.httpClient)
        co_return std::nullopt;
    const std::optional<QUrl> address = m_parts.onlineAddresses->getPlayUrl(song, audioQuality());
    if (!address)
        co_return std::nullopt;
    HttpRequest request;
    request.url = *address;
    const std::expected<HttpResponse, HttpError> response = co_await m_platform.httpClient->send(request);
    if (!response) {
        print(u"Failed to fetch real play URL: "_s + response.error().description);
        co_return std::nullopt;
    }
    if (response->url.toString() != address->toString())
        co_return response->url;
    const QJsonDocument document = QJsonDocument::fromJson(response->body);
    if (const QJsonValue member = document.object().value("url"_L1); member.isString()) {
        if (std::optional<QUrl> url = parsedUrl(member.toString()))
            co_return url;
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = QString(decoder(response->body)).trimmed();
    if (!decoder.hasError() && text.startsWith("http"_L1))
        co_return parsedUrl(text);
    co_return std::nullopt;
}

} // namespace cadorel
