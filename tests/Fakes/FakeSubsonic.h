// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeHttpClient.h"

#include <QHash>
#include <QStringList>

namespace cadorel {

/// An answer of a Subsonic server; @p members come after its status, each with a comma before it.
QByteArray subsonicAnswer(const QByteArray &members = {});
/// One that says why it refuses.
QByteArray subsonicRefusal(const QByteArray &message);
/// Lists of songs with these titles; the id of a song is "id-" and its title.
QByteArray randomSongsAnswer(const QStringList &titles);
QByteArray search3Answer(const QStringList &titles);
QByteArray lyricsAnswer(const QByteArray &value);

HttpResponse webAnswer(const QByteArray &body, int status = 200);
std::unexpected<HttpError> noAnswer(const QString &description,
                                    HttpError::Kind kind = HttpError::Kind::connection);

/// Subsonic servers behind a fake web, all of which answer alike: as a test said beforehand, when it says so.
class FakeSubsonic
{
public:
    explicit FakeSubsonic(FakeHttpClient &web)
        : m_web(web)
    {
        setAnswer(QStringLiteral("ping.view"), webAnswer(subsonicAnswer()));
    }

    /// The answer to every request for an endpoint from now on, such as "ping.view". Others get 404.
    void setAnswer(const QString &endpoint, const FakeHttpClient::Result &answer);
    void setSongs(const QStringList &titles)
    {
        setAnswer(QStringLiteral("getRandomSongs.view"), webAnswer(randomSongsAnswer(titles)));
    }
    void setFound(const QStringList &titles)
    {
        setAnswer(QStringLiteral("search3.view"), webAnswer(search3Answer(titles)));
    }

    /// Answers the oldest request that waits. @return whether there was one
    bool answerOne();
    void answerAll()
    {
        while (answerOne()) {
        }
    }
    bool isAsked() const;

    /// Endpoints of the requests so far.
    QStringList askedEndpoints() const;

private:
    FakeHttpClient &m_web;
    QHash<QString, FakeHttpClient::Result> m_answers;
};

} // namespace cadorel
