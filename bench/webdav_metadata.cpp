// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: how long the window stands still while playback writes what it learns about songs of a server back
// into a list of 50,000 songs, 2,000 of them with covers.
#include "Support/MadeLibrary.h"
#include "Support/MadeServer.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Support/ServerBench.h"
#include "Support/StallWatch.h"

#include <QCoreApplication>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int songCount = 50'000;
constexpr int coverCount = 2'000;
constexpr int updateCount = 20;

void updateOne(WebDAVService &service, int number, const QByteArray &cover)
{
    Song song = service.webDAVSongs().at(number * (songCount / updateCount) + 1);
    song.setTitle(u"学到的名字 %1"_s.arg(number));
    song.setEmbeddedLyrics(u"[00:00.00]词"_s);
    song.setArtworkData(ArtworkData(cover));
    service.updateSongMetadata(song);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    ServerBench bench;
    storeServer(bench.preferences(), madeServerSongs(songCount, coverCount));
    bench.start();
    StallWatch stalls;
    QElapsedTimer timer;
    timer.start();
    bench.waitForSongs();
    report.add({.what = u"songs of the last run listed"_s,
                .value = static_cast<double>(timer.elapsed()),
                .unit = u"ms"_s});
    tellStall(report, u"songs of the last run loaded"_s, stalls.take());

    const QByteArray cover = madeCover();
    letPass(500ms);
    stalls.take();
    double storedMs = 0;
    for (int number = 0; number < updateCount; ++number) {
        timer.start();
        updateOne(bench.service(), number, cover);
        const QCoro::Task<void> stored = bench.service().songsStored();
        if (!waitFor([&stored] { return stored.isReady(); }, 60s))
            qFatal("the songs are not stored");
        storedMs += static_cast<double>(timer.elapsed());
        letPass(200ms); // the list compares its rows
    }
    tellStall(report, u"20 updates one after the other"_s, stalls.take());
    report.add({.what = u"  time until one is handed to the preferences"_s,
                .value = storedMs / updateCount,
                .unit = u"ms"_s});
    for (int number = 0; number < updateCount; ++number) {
        updateOne(bench.service(), number, cover);
        letPass(10ms);
    }
    const QCoro::Task<void> stored = bench.service().songsStored();
    if (!waitFor([&stored] { return stored.isReady(); }, 60s))
        qFatal("the songs are not stored");
    tellStall(report, u"20 updates in quick succession"_s, stalls.take());
    return 0;
}
