// SPDX-License-Identifier: GPL-3.0-or-later
// Figure: processor time while a song plays and the window shows the library.
#include "Fixtures/Sound/SoundServer.h"
#include "Support/MadeLibrary.h"
#include "Support/MadeSound.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"

#include <QCoreApplication>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int usualSeconds = 60;
constexpr int librarySize = 1000;
constexpr int marginSeconds = 30;
constexpr double bar = 1.5;

/// Processor time of a process over a stretch of time in which it plays.
double processorSecondsOver(const ProcessUsage &usage, std::chrono::seconds length)
{
    const double before = usage.processorSeconds();
    letPass(length);
    return usage.processorSeconds() - before;
}

/// From the moment at which it plays; starting it is left out on both sides.
double ofReference(const QString &file, std::chrono::seconds length)
{
    QProcess process;
    process.start(u"mpv"_s, {u"--no-config"_s, u"--no-video"_s, u"--ao=null"_s,
                             u"--term-status-msg=at=${=time-pos}"_s, file});
    QByteArray output;
    const bool plays = waitFor(
        [&] {
            output += process.readAllStandardOutput() + process.readAllStandardError();
            return output.contains("at=1.");
        },
        10s);
    if (!plays)
        qFatal("the reference does not play: %s", output.constData());
    const double seconds =
        processorSecondsOver(ProcessUsage(static_cast<pid_t>(process.processId())), length);
    process.terminate();
    process.waitForFinished();
    return seconds;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    const int seconds = measuredSeconds(usualSeconds);
    const std::chrono::seconds length(seconds);
    const MadeHome home;
    makeLibrary(home.directories(), librarySize);
    const QString file = makeSound(home, u"sound.mp3"_s, seconds + marginSeconds);
    leaveSnapshot(home, file);

    const double reference = ofReference(file, length);

    SoundServer server;
    if (!server.start())
        qFatal("no sound server");
    const VirtualDisplay display;
    for (const QString &backend : {u"software"_s, u"opengl"_s}) {
        RunningPlayer player(home, display, [&](QProcessEnvironment &environment) {
            environment.insert(u"PULSE_SERVER"_s, qEnvironmentVariable("PULSE_SERVER"));
            environment.insert(backend == "software"_L1 ? u"QT_QUICK_BACKEND"_s : u"QSG_RHI_BACKEND"_s,
                               backend);
        });
        player.waitForScan();
        player.typeKey(u"space"_s);
        if (!waitFor([&] { return server.streams().contains("Corked: no"); }, 10s))
            qFatal("the player does not play");
        letPass(2s); // the window has shown that it plays
        const double ours = processorSecondsOver(player.usage(), length);
        report.add({.what = u"processor time of playing an MP3 for %1 s, %2"_s.arg(seconds).arg(
                        backend == "software"_L1 ? u"raster"_s : u"software OpenGL"_s),
                    .value = ours,
                    .unit = u"s"_s,
                    .reference = Reference{u"mpv --no-video --ao=null"_s, reference},
                    .bar = backend == "software"_L1 ? std::optional(bar) : std::nullopt});
    }
    return 0;
}
