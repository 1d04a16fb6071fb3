// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/MadeSound.h"

#include "Models/PlaybackSnapshot.h"
#include "Platform/Sql/SqlitePreferences.h"

#include <QFileInfo>
#include <QProcess>

namespace cadorel {

using namespace Qt::StringLiterals;

QString makeSound(const MadeHome &home, const QString &name, int seconds)
{
    const QString path = home.directories().documents + u'/' + name;
    const QString sound =
        u"aevalsrc=exprs=0.4*sin(2*PI*440*t)+0.1*random(0)|0.4*sin(2*PI*554*t)+0.1*random(1):s=44100:d=%1"_s
            .arg(seconds);
    const int code = QProcess::execute(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-y"_s, u"-f"_s, u"lavfi"_s,
                                                     u"-i"_s, sound, u"-b:a"_s, u"192k"_s, path});
    if (code != 0)
        qFatal("the sound to measure with could not be made");
    return path;
}

void leaveSnapshot(const MadeHome &home, const QString &file)
{
    const PlaybackSnapshot snapshot{.songId = {},
                                    .title = QFileInfo(file).completeBaseName(),
                                    .artist = {},
                                    .album = {},
                                    .filePath = file,
                                    .position = 0,
                                    .duration = 0,
                                    .date = QDateTime::currentDateTimeUtc()};
    SqlitePreferences preferences(home.directories().applicationSupport + "/preferences.sqlite"_L1);
    preferences.setData(u"lastPlaybackState"_s, snapshot.encoded().value_or(QByteArray()));
}

int measuredSeconds(int usual)
{
    const int wanted = qEnvironmentVariableIntValue("BENCH_SECONDS");
    return wanted > 0 ? std::min(wanted, usual) : usual;
}

} // namespace cadorel
