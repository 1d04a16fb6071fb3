// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: what the desktop's view of the song costs, four times a second for as long as music plays.
#include "Fakes/PlayerBench.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <vector>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 25;
constexpr int updatesOfARound = 2000;
constexpr double barMicroseconds = 20;
constexpr int coverSide = 3000;

QByteArray photograph(int quality)
{
    QImage image(coverSide, coverSide, QImage::Format_RGB32);
    for (int y = 0; y < coverSide; ++y) {
        for (int x = 0; x < coverSide; ++x)
            image.setPixel(x, y, qRgb(x * y % 251, x % 241, (x + 3 * y) % 239));
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", quality);
    return buffer.data();
}

Song streamedSong()
{
    SongFields fields;
    fields.id = u"navidrome_1_song"_s;
    fields.albumId = u"navidrome_1_album"_s;
    fields.assetURL = QUrl(u"https://music.example/rest/stream?id=1"_s);
    fields.artworkURL = QUrl(u"https://music.example/rest/getCoverArt?id=1&u=a&t=b&s=c&v=1.16.1"_s);
    return Song(fields);
}

/// Microseconds of one update.
double updateCost(PlayerBench &bench)
{
    constexpr double nsPerUs = 1e3;
    std::vector<double> times;
    SystemMediaCenter &center = bench.systemMediaCenter();
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        for (int update = 0; update < updatesOfARound; ++update)
            center.updateNowPlayingInfo(bench.player());
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / nsPerUs / updatesOfARound);
    }
    return median(times);
}

void measure(Report &report, PlayerBench &bench, const QString &what)
{
    report.add({.what = what, .value = updateCost(bench), .unit = u"µs"_s, .bar = barMicroseconds});
}

void waitForCover(PlayerBench &bench)
{
    const auto isThere = [&bench] {
        return bench.home.nowPlayingCenter().nowPlayingInfo().artwork.has_value();
    };
    if (!QTest::qWaitFor(isThere))
        qFatal("there is no cover");
}

void measureImported(Report &report, PlayerBench &bench, const QByteArray &cover)
{
    Song song = fileSong(u"a"_s);
    song.setArtworkData(ArtworkData(cover));
    song.setEmbeddedLyrics(u"[00:01.00]夜色里的灯火照着我们回家\n"_s.repeated(200));
    QElapsedTimer timer;
    timer.start();
    bench.player().playSong(song, {});
    constexpr double nsPerMs = 1e6;
    report.add({.what = u"playing a song with a cover of %1 MB, the main thread's part"_s.arg(
                    static_cast<double>(cover.size()) / (1 << 20), 0, 'f', 1),
                .value = static_cast<double>(timer.nsecsElapsed()) / nsPerMs,
                .unit = u"ms"_s});
    waitForCover(bench);
    measure(report, bench, u"one update, imported song with its cover"_s);
}

void measureStreamed(Report &report, PlayerBench &bench, const QByteArray &cover)
{
    bench.player().playSong(streamedSong(), {});
    settle();
    measure(report, bench, u"  song of a server whose cover is on its way"_s);
    bench.home.web().answer(HttpResponse{.url = {}, .status = 200, .headers = {}, .body = cover});
    waitForCover(bench);
    measure(report, bench, u"  the same with its cover"_s);
}

void measureOnline(Report &report, PlayerBench &bench)
{
    bench.player().playOnlineSong(onlineSong(u"1"_s), {});
    settle();
    bench.answerWeb(
        HttpResponse{.url = QUrl(u"https://cdn.example/1.mp3"_s), .status = 200, .headers = {}, .body = {}});
    bench.answerWeb(HttpResponse{.url = {}, .status = 404, .headers = {}, .body = {}});
    measure(report, bench, u"  online song whose cover is not to be had"_s);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    PlayerBench bench;
    bench.usesSystemMediaCenter = true;
    bench.start();
    measureImported(report, bench, photograph(100));
    measureStreamed(report, bench, photograph(50));
    measureOnline(report, bench);
    return 0;
}
