// SPDX-License-Identifier: GPL-3.0-or-later
// What the searches and the charts of the online music service share.
#pragma once

#include "Platform/HttpClient.h"
#include "Services/Online/OnlineRecords.h"
#include "Services/OnlineMusicService.h"
#include "Services/WebDAV/TransportError.h"
#include "Utils/Console.h"
#include "Utils/TextPreview.h"

#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

namespace cadorel {

/// An address as it stands in a log line.
inline QString shownAddress(const QUrl &url)
{
    return QString::fromLatin1(url.adjusted(QUrl::RemoveUserInfo).toEncoded());
}

/// Prints the beginning of an answer behind @p mark, unless it is no text.
inline void printAnswer(const QString &mark, const QByteArray &body, int characters)
{
    if (const std::optional<QString> text = textPreview(body, characters))
        print(mark + *text);
}

/// The list that an answer holds in its data, which both may be missing.
template <typename Response, typename List>
auto listIn(const Response &response, List list)
{
    return response.data ? (*response.data).*list : decltype((*response.data).*list){};
}

template <typename T, typename Signal>
void OnlineMusicService::publish(T &member, const T &value, Signal signal)
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*signal)();
    Q_EMIT changed();
}

template <typename Response>
QCoro::Task<Response> OnlineMusicService::decoded(QByteArray body)
{
    // Reading a longer answer would be noticed on the screen.
    constexpr qsizetype largestReadAtOnce = qsizetype{256} * 1024;
    const std::optional<Response> response =
        body.size() > largestReadAtOnce ? co_await QtConcurrent::run(decodedOnlineAnswer<Response>, body)
                                        : decodedOnlineAnswer<Response>(body);
    if (!response)
        throw TransportError(QStringLiteral("无法识别服务器的回答"));
    co_return *response;
}

} // namespace cadorel
