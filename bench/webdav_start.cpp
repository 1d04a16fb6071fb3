// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: the time from launch to the first frame, and to the list, with 50,000 kept songs of a server.
#include "Platform/Linux/FileSecretStore.h"
#include "Platform/Sql/SqlitePreferences.h"
#include "Support/MadeServer.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"

#include <QCoreApplication>
#include <QElapsedTimer>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int songCount = 50'000;
constexpr int runs = 5;
constexpr double barSeconds = 1.5;

void measure(Report &report, const VirtualDisplay &display, int covers)
{
    const MadeHome home;
    const QString data = home.directories().applicationSupport;
    storeServer(*std::make_unique<SqlitePreferences>(data + "/preferences.sqlite"_L1),
                madeServerSongs(songCount, covers));
    // A home without a desktop: the player keeps its passwords in a file.
    FileSecretStore secrets(data + "/secrets.json"_L1);
    secrets.add(u"com.cadorel"_s, madeServer().passwordKeychainKey(), "secret");

    QList<double> firstFrames;
    QList<double> listed;
    QList<double> residentMiB;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        RunningPlayer player(home, display, [](QProcessEnvironment &environment) {
            environment.insert(u"QT_QUICK_BACKEND"_s, u"software"_s);
        });
        firstFrames.append(player.firstFrameSeconds());
        const QByteArray line = u"加载了 %1 首缓存歌曲"_s.arg(songCount).toUtf8();
        if (!waitFor([&] { return player.output().contains(line); }, 60s))
            qFatal("the player does not list the songs of the server");
        constexpr double nsPerSecond = 1e9;
        listed.append(static_cast<double>(timer.nsecsElapsed()) / nsPerSecond);
        player.waitUntilIdle();
        residentMiB.append(player.usage().residentMiB());
    }
    report.add({.what = u"start with 50,000 songs of a server, %1 covers: first frame"_s.arg(covers),
                .value = std::ranges::min(firstFrames),
                .unit = u"s"_s,
                .bar = barSeconds});
    report.add({.what = u"  songs listed"_s, .value = std::ranges::min(listed), .unit = u"s"_s});
    report.add(
        {.what = u"  resident memory at rest"_s, .value = std::ranges::min(residentMiB), .unit = u"MiB"_s});
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    const VirtualDisplay display;
    for (const int covers : {0, 2'000})
        measure(report, display, covers);
    return 0;
}
