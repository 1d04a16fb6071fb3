// SPDX-License-Identifier: GPL-3.0-or-later
// What the searches and the charts of the online music service share.
#pragma once

#include "Platform/HttpClient.h"
#include "Services/Online/OnlineRecords.h"
#include "Services/OnlineMusicService.h"
#include "Utils/Console.h"
#include "Utils/TextPreview.h"

#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <expected>
#include <optional>

namespace cadorel {

/// What stands before the parts of a request in the log.
struct OnlineMusicService::LogMarks
{
    QString request;
    QString status; ///< empty where the status is not printed
    QString answer;
    int shownCharacters = 500;
};

/// What came of a request.
template <typename Response>
struct OnlineMusicService::Answer
{
    AnswerOrder::Moment arrived = 0;
    /// The record, or for a listener to read why there is none.
    std::expected<Response, QString> content;
};

/// A body, as far as it can be read.
template <typename Response>
struct ReadBody
{
    std::optional<QString> preview;
    std::optional<Response> record;
};

template <typename Response>
ReadBody<Response> readBody(const QByteArray &body, int shownCharacters)
{
    return {.preview = textPreview(body, shownCharacters), .record = decodedOnlineAnswer<Response>(body)};
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
QCoro::Task<OnlineMusicService::Answer<Response>>
OnlineMusicService::ask(QUrl url, LogMarks marks, AnswerOrder OnlineMusicService::*order)
{
    // Reading a longer answer would be noticed on the screen.
    constexpr qsizetype largestReadAtOnce = qsizetype{256} * 1024;
    const QPointer<OnlineMusicService> self(this);
    print(marks.request + QString::fromLatin1(url.adjusted(QUrl::RemoveUserInfo).toEncoded()));
    const std::expected<HttpResponse, HttpError> response = co_await fetch(url, largestAnswer);
    Answer<Response> answer;
    if (!self)
        co_return answer;
    answer.arrived = (this->*order).arrive();
    if (!response) {
        answer.content = std::unexpected(response.error().description);
        co_return answer;
    }
    if (!marks.status.isEmpty())
        print(marks.status + QString::number(response->status));
    const QByteArray body = response->body;
    const int shown = marks.shownCharacters;
    const ReadBody<Response> read = body.size() > largestReadAtOnce
                                        ? co_await QtConcurrent::run(readBody<Response>, body, shown)
                                        : readBody<Response>(body, shown);
    if (!self)
        co_return answer;
    if (read.preview)
        print(marks.answer + *read.preview);
    if (read.record)
        answer.content = *read.record;
    else
        answer.content = std::unexpected(QStringLiteral("无法识别服务器的回答"));
    co_return answer;
}

} // namespace cadorel
