// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/Await.h"
#include "Fakes/ConsoleLines.h"
#include "Fakes/TestPlatform.h"
#include "Services/APIConfigService.h"
#include "Services/OnlineMusicService.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>
#include <utility>

namespace cadorel {

/// The online services on a machine of fakes, with the API at http://music.test/api/.
class OnlineBench
{
public:
    using Answer = FakeHttpClient::Result;

    OnlineBench() { api.setBaseURL(QStringLiteral("http://music.test")); }

    TestPlatform machine;
    APIConfigService api{machine.platform};
    std::unique_ptr<OnlineMusicService> service = std::make_unique<OnlineMusicService>(machine.platform, api);
    ConsoleLines console;

    FakeHttpClient &web() { return machine.web(); }

    static Answer ok(const QByteArray &body, int status = 200)
    {
        HttpResponse response;
        response.status = status;
        response.body = body;
        return response;
    }
    static Answer failed(const QString &description)
    {
        return std::unexpected(HttpError{HttpError::Kind::connection, description});
    }

    /// What comes of an operation whose one request gets this answer.
    template <typename T>
    auto answered(QCoro::Task<T> task, const Answer &answer)
    {
        web().answer(answer);
        return await(std::move(task));
    }

    /// An answer to a search, and the titles that it holds.
    static QByteArray found(const QByteArray &title)
    {
        return R"({"code":200,"data":{"results":[{"id":"1","name":")" + title + R"(","artist":"歌手"}]}})";
    }
    /// The same in a body so long that a worker reads it.
    static QByteArray foundAtLength(const QByteArray &title)
    {
        return found(title).replace(R"("code")",
                                    R"("padding":")" + QByteArray(1'000'000, 'x') + R"(","code")");
    }
    static QStringList titles(const QList<OnlineSong> &songs)
    {
        QStringList result;
        for (const OnlineSong &song : songs)
            result.append(song.name);
        return result;
    }
    static OnlineSong song(const QString &id = QStringLiteral("7"),
                           MusicPlatform platform = MusicPlatform::kuwo)
    {
        OnlineSong song;
        song.id = id;
        song.platform = platform;
        return song;
    }
};

} // namespace cadorel
