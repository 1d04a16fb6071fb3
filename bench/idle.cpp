// SPDX-License-Identifier: GPL-3.0-or-later
// Figure: what the player does while it does nothing: a song is there, paused.
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

constexpr int usualSeconds = 20;
constexpr int librarySize = 1000;
constexpr int soundSeconds = 60;
constexpr double percent = 100;
constexpr double barPercent = 0.02; // four milliseconds of the twenty seconds: the odd event

void measure(Report &report, const RunningPlayer &player, const QString &name)
{
    const int seconds = measuredSeconds(usualSeconds);
    player.waitUntilIdle();
    const double before = player.usage().processorSeconds();
    const QMap<QString, double> threadsBefore = player.usage().wakeUps();
    letPass(std::chrono::seconds(seconds));
    const double used = player.usage().processorSeconds() - before;
    report.add({.what = u"idle for %1 s, %2"_s.arg(seconds).arg(name),
                .value = used / seconds * percent,
                .unit = u"% CPU"_s,
                .bar = barPercent});
    const QMap<QString, double> threads = player.usage().wakeUps();
    double wakeUps = 0;
    for (const auto &[thread, count] : threads.asKeyValueRange())
        wakeUps += count - threadsBefore.value(thread, count);
    report.add({.what = u"  wake-ups a second (an open sound stream makes one)"_s,
                .value = wakeUps / seconds,
                .unit = u"/s"_s});
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    const MadeHome home;
    makeLibrary(home.directories(), librarySize);
    leaveSnapshot(home, makeSound(home, u"sound.mp3"_s, soundSeconds));
    SoundServer server;
    if (!server.start())
        qFatal("no sound server");
    const VirtualDisplay display;
    RunningPlayer player(home, display, [](QProcessEnvironment &environment) {
        environment.insert(u"PULSE_SERVER"_s, qEnvironmentVariable("PULSE_SERVER"));
        environment.insert(u"QT_QUICK_BACKEND"_s, u"software"_s);
    });
    player.waitForScan();
    measure(report, player, u"the last song brought back"_s);

    player.typeKey(u"space"_s);
    if (!waitFor([&] { return server.streams().contains("Corked: no"); }, 10s))
        qFatal("the player does not play");
    player.typeKey(u"space"_s);
    if (!waitFor([&] { return !server.streams().contains("Corked: no"); }, 10s))
        qFatal("the player does not pause");
    measure(report, player, u"paused after playing"_s);
    return 0;
}
