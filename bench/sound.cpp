// SPDX-License-Identifier: GPL-3.0-or-later
// Figure: from the command to play a local MP3 to its first sound.
#include "Fixtures/Sound/SoundServer.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Support/HeardSound.h"
#include "Support/MadeSound.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QProcess>

#include <clocale>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int runs = 9;
constexpr int soundSeconds = 5;
constexpr double bar = 1.2;

double ofReference(Recorder &recorder, const QString &file)
{
    QProcess process;
    const double seconds = secondsToSound(recorder, [&] {
        process.start(u"mpv"_s, {u"--no-config"_s, u"--no-video"_s, u"--really-quiet"_s, file});
    });
    process.terminate();
    process.waitForFinished();
    return seconds;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // as the program does, for libmpv
    Report report;
    const MadeHome home;
    const QString file = makeSound(home, u"sound.mp3"_s, soundSeconds);
    const QString other = makeSound(home, u"other.mp3"_s, soundSeconds);
    SoundServer server;
    if (!server.start())
        qFatal("no sound server");
    Recorder recorder(server);

    QList<double> reference;
    QList<double> first;
    QList<double> next;
    QList<double> resumed;
    for (int run = 0; run < runs; ++run) {
        reference.append(ofReference(recorder, file));

        Platform platform = home.platform();
        LocalMusicImportService service(platform);
        AudioPlayerService player(platform, service);
        first.append(secondsToSound(recorder, [&] { player.playSong(songAt(file), {}); }));
        player.pause();
        next.append(secondsToSound(recorder, [&] { player.playSong(songAt(other), {}); }));
        player.pause();
        resumed.append(secondsToSound(recorder, [&] { player.play(); }));
        player.pause();
    }
    const Reference launched{u"mpv --no-video, from its launch"_s, median(reference)};
    report.add({.what = u"first sound of the first song"_s,
                .value = median(first),
                .unit = u"s"_s,
                .reference = launched,
                .bar = bar});
    report.add({.what = u"first sound of the next song"_s,
                .value = median(next),
                .unit = u"s"_s,
                .reference = launched,
                .bar = bar});
    report.add({.what = u"first sound after a pause"_s,
                .value = median(resumed),
                .unit = u"s"_s,
                .reference = launched,
                .bar = bar});
    return 0;
}
