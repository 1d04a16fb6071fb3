// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: the time from launch to the first frame and the memory in use, with 100,000 songs.
#include "Support/MadeLibrary.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"

#include <QCoreApplication>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int songCount = 100'000;
constexpr int runs = 5;
constexpr double barSeconds = 1;
constexpr double barMiB = 200;

struct Start
{
    QList<double> seconds;
    QList<double> residentMiB;
    QList<double> scannedMiB;
    QList<double> peakMiB;
};

Start measureStart(const MadeHome &home, const VirtualDisplay &display, int songs, const QString &backend)
{
    Start start;
    for (int run = 0; run < runs; ++run) {
        RunningPlayer player(home, display, [&](QProcessEnvironment &environment) {
            environment.insert(backend == "software"_L1 ? u"QT_QUICK_BACKEND"_s : u"QSG_RHI_BACKEND"_s,
                               backend);
        });
        start.seconds.append(player.firstFrameSeconds());
        start.residentMiB.append(player.usage().residentMiB());
        player.waitForScan();
        start.scannedMiB.append(player.usage().residentMiB());
        start.peakMiB.append(player.usage().peakMiB());
        if (!player.output().contains(QByteArray::number(songs)))
            qFatal("the player did not load the library");
    }
    return start;
}

void tell(Report &report, const QString &name, const Start &start, std::optional<double> timeBar,
          std::optional<double> memoryBar)
{
    report.add({.what = name + ", first frame, best of "_L1 + QString::number(runs),
                .value = std::ranges::min(start.seconds),
                .unit = u"s"_s,
                .bar = timeBar});
    report.add({.what = u"  in the middle"_s, .value = median(start.seconds), .unit = u"s"_s});
    report.add({.what = u"  resident memory then"_s,
                .value = median(start.residentMiB),
                .unit = u"MiB"_s,
                .bar = memoryBar});
    report.add({.what = u"  resident memory after the scan"_s,
                .value = median(start.scannedMiB),
                .unit = u"MiB"_s,
                .bar = memoryBar});
    report.add({.what = u"  peak of resident memory until then"_s,
                .value = median(start.peakMiB),
                .unit = u"MiB"_s});
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    const VirtualDisplay display;
    const MadeHome empty;
    tell(report, u"start with no song, raster"_s, measureStart(empty, display, 0, u"software"_s), {}, {});
    const MadeHome home;
    makeLibrary(home.directories(), songCount);
    tell(report, u"start with 100,000 songs, raster"_s, measureStart(home, display, songCount, u"software"_s),
         barSeconds, barMiB);
    // The compiler behind software OpenGL takes 90 MiB of its own.
    tell(report, u"start with 100,000 songs, software OpenGL"_s,
         measureStart(home, display, songCount, u"opengl"_s), barSeconds, {});
    return 0;
}
