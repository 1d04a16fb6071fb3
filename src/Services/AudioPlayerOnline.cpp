// SPDX-License-Identifier: GPL-3.0-or-later
// Online songs: their address is fetched before they play.
#include "Services/AudioPlayerService.h"

#include "Platform/HttpTransfer.h"
#include "Services/AudioPlayerSupport.h"
#include "Services/Online/ToldAddress.h"
#include "Services/Seams/OnlineSongAddresses.h"
#include "Utils/Console.h"
#include "Utils/Tasks.h"
#include "Utils/Utf8Text.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

#include <QCoroTask>

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// What is read of an answer, in bytes: more than any that tells an address. The others are often the audio
/// itself, which the stream player fetches again.
constexpr qint64 longestAnswer = qint64{16} * 1024;

/// The two addresses lead to the same place. The client asks without user and fragment, and with the steps
/// of the path resolved.
bool isSameAddress(const QUrl &a, const QUrl &b)
{
    const auto absolute = [](const QUrl &url) {
        return url.adjusted(QUrl::RemoveUserInfo | QUrl::RemoveFragment | QUrl::NormalizePathSegments)
            .toEncoded();
    };
    return absolute(a) == absolute(b);
}

/// The address in the body of an answer.
std::optional<QUrl> addressIn(const HttpResponse &response)
{
    if (response.bodySize >= longestAnswer)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(response.body);
    const QUrl member(document.object().value("url"_L1).toString(), QUrl::TolerantMode);
    if (member.isValid() && !member.isEmpty()) {
        // One that leaves out the server is meant as it would be on a page of that server.
        if (const auto url = toldAddress(response.url.resolved(member)))
            return url;
    }
    const QString text = utf8Text(response.body).value_or(QString()).trimmed();
    if (text.startsWith("http"_L1) && !text.contains(u'\n'))
        return toldAddress(QUrl(text, QUrl::TolerantMode));
    return std::nullopt;
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

/// An address that is still being fetched is wanted no more.
void AudioPlayerService::leaveAddress()
{
    ++m_onlineRequest;
    m_isUnloaded = false;
    if (const auto transfer = std::exchange(m_addressTransfer, nullptr))
        transfer->cancel();
}

QCoro::Task<void> AudioPlayerService::resolveAndPlay(OnlineSong song)
{
    const QPointer<AudioPlayerService> self(this);
    leaveAddress();
    const quint64 request = m_onlineRequest;
    const auto transfer = std::make_shared<HttpTransfer>();
    m_addressTransfer = transfer;
    std::optional<QUrl> url = co_await fetchRealPlayUrl(song, transfer);
    // Another song may have been asked for while the address was fetched.
    if (!self || request != m_onlineRequest)
        co_return;
    m_addressTransfer.reset();
    if (!url && m_parts.onlineAddresses)
        url = m_parts.onlineAddresses->getPlayUrl(song, audioQuality());
    setIsLoading(false);
    if (url) {
        playURL(*url);
        co_return;
    }
    setPlayError(u"无法获取播放链接"_s);
    standUnloaded();
}

QCoro::Task<std::optional<QUrl>> AudioPlayerService::fetchRealPlayUrl(OnlineSong song,
                                                                      std::shared_ptr<HttpTransfer> transfer)
{
    if (!m_parts.onlineAddresses || !m_platform.httpClient)
        co_return std::nullopt;
    const std::optional<QUrl> address = m_parts.onlineAddresses->getPlayUrl(song, audioQuality());
    if (!address)
        co_return std::nullopt;
    HttpRequest request;
    request.url = *address;
    request.sizeLimit = longestAnswer;
    request.cutsAtLimit = true;
    request.transfer = transfer;
    const std::expected<HttpResponse, HttpError> response = co_await m_platform.httpClient->send(request);
    if (transfer->isCancelled())
        co_return std::nullopt;
    if (!response) {
        print(u"Failed to fetch real play URL: "_s + response.error().description);
        co_return std::nullopt;
    }
    co_return isSameAddress(response->url, *address) ? addressIn(*response) : response->url;
}

} // namespace cadorel
