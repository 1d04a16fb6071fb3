// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace cadorel {

/// Writes a file that anybody may read; ends the program when it cannot. @return its path
QString writeServerFile(const QString &directory, const QString &name, const QByteArray &content);

/// A user's line of a password file that httpd, lighttpd and nginx all understand, with its end.
QByteArray passwordLine(const QString &user, const QString &password);

/// Media types by file ending; what a server needs to know of the files that tests serve.
struct MediaType
{
    QLatin1StringView ending;
    QLatin1StringView type;
};
inline constexpr MediaType mediaTypes[] = {
    {QLatin1StringView("mp3"), QLatin1StringView("audio/mpeg")},
    {QLatin1StringView("flac"), QLatin1StringView("audio/flac")},
    {QLatin1StringView("m4a"), QLatin1StringView("audio/mp4")},
    {QLatin1StringView("ogg"), QLatin1StringView("audio/ogg")},
    {QLatin1StringView("opus"), QLatin1StringView("audio/ogg")},
    {QLatin1StringView("wav"), QLatin1StringView("audio/x-wav")},
    {QLatin1StringView("jpg"), QLatin1StringView("image/jpeg")},
    {QLatin1StringView("txt"), QLatin1StringView("text/plain")},
};

} // namespace cadorel
