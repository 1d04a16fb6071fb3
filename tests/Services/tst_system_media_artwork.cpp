// SPDX-License-Identifier: GPL-3.0-or-later
// Covers on their way to the desktop.
#include "Fixtures/MadePicture.h"
#include "Services/Cloud/CoverRequest.h"
#include "Services/CloudBench.h"
#include "Services/DesktopBench.h"

#include <QFile>
#include <QSemaphore>
#include <QTest>
#include <QThreadPool>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString coverUrl = u"https://music.example/rest/getCoverArt?id=1&u=user&t=geheim&s=salz"_s;
const QString otherCoverUrl = u"https://music.example/rest/getCoverArt?id=2"_s;
const QString onlineCoverUrl = u"https://api.example/pic?id="_s;

Song withCover(Song song, const ArtworkData &cover)
{
    song.setArtworkData(cover);
    return song;
}

HttpResponse picture(const QByteArray &bytes, int status = 200)
{
    return {.url = {}, .status = status, .headers = {}, .body = bytes};
}

/// Keeps every worker busy while it lives, so that nothing that is begun comes to an end.
class BusyWorkers
{
public:
    BusyWorkers()
    {
        for (int worker = 0; worker < QThreadPool::globalInstance()->maxThreadCount(); ++worker) {
            QThreadPool::globalInstance()->start([this] {
                m_begun.release();
                m_end.acquire();
            });
        }
        m_begun.acquire(QThreadPool::globalInstance()->maxThreadCount());
    }
    ~BusyWorkers() { release(); }
    Q_DISABLE_COPY_MOVE(BusyWorkers)

    void release()
    {
        m_end.release(QThreadPool::globalInstance()->maxThreadCount());
        QThreadPool::globalInstance()->waitForDone();
    }

private:
    QSemaphore m_begun;
    QSemaphore m_end;
};

/// Lets every worker end, and what they bring arrive.
void finishWork()
{
    settle();
    QVERIFY(QThreadPool::globalInstance()->waitForDone());
    settle();
}

/// A song whose cover is fetched, up to the request for it.
void playStreamed(DesktopBench &bench, const Song &song)
{
    bench.player().playSong(song, {});
    settle();
    bench.console.take();
}

} // namespace

class SystemMediaArtworkTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void coverOfAnImportedSongIsShown();
    void coverInAFileIsShown();
    void largeCoverIsScaledDown_data();
    void largeCoverIsScaledDown();
    void coverIsDecodedOnce();
    void coverThatDoesNotDecodeIsNotTriedAgain();
    void songWithNewLyricsKeepsItsCover();
    void replacedCoverIsShown();
    void coverOfTheSongBeforeIsDropped();
    void coverAfterManyThatWereSkippedIsShown();
    void coverStandsBesideItsOwnSongAlone();

    void remoteCoverIsFetchedOnceAndShown();
    void remoteCoverIsAskedForWithLimits();
    void importedSongAsksForNoRemoteCover();
    void remoteCoverThatFailsIsSilentAndNotAskedForAgain_data();
    void remoteCoverThatFailsIsSilentAndNotAskedForAgain();
    void anyAnswerOfSuccessCounts();
    void lateRemoteCoverOfASongBeforeIsDropped_data();
    void lateRemoteCoverOfASongBeforeIsDropped();
    void remoteCoverThatIsDecodedTooLateIsDropped_data();
    void remoteCoverThatIsDecodedTooLateIsDropped();
    void songPlayedAgainDuringItsLoadIsShownWithItsCover();
    void serverSongLosesItsMergedCoverAtTheNextTick();

    void onlineCoverIsFetchedOnceAndShown();
    void onlineCoverThatFailsIsLoggedOnceAndNotAskedForAgain_data();
    void onlineCoverThatFailsIsLoggedOnceAndNotAskedForAgain();
    void onlineSongPlayedAgainAsksAgain();
    void onlineSongWithoutAnAddressHasNoCover();
    void lateOnlineCoverOfASongBeforeIsDropped();
    void lateOnlineCoverOfASongWithTheSameIdIsDropped();
    void onlineSongTakesNoCoverOfTheSongBefore();

    void coverThatIsMergedWithoutASongIsDropped();
    void playerMayGoWhileACoverIsOnItsWay_data();
    void playerMayGoWhileACoverIsOnItsWay();
};

// MARK: imported songs

void SystemMediaArtworkTest::coverOfAnImportedSongIsShown()
{
    DesktopBench bench;
    bench.start().playSong(withCover(fileSong(u"a"_s), ArtworkData(madePng(Qt::green, 20))), {});
    QTRY_VERIFY(bench.shown().artwork);
    QCOMPARE(bench.shown().artwork->size(), QSize(20, 20));
    QCOMPARE(bench.shown().artwork->pixelColor(5, 5), QColor(Qt::green));
    QCOMPARE(bench.shown().title, u"Title a"_s);
}

void SystemMediaArtworkTest::coverInAFileIsShown()
{
    DesktopBench bench;
    const QByteArray bytes = madeJpeg(Qt::blue, 30);
    const QString path = bench.home.addMetadataFile(u"a_artwork.jpg"_s, bytes);
    bench.start().playSong(withCover(fileSong(u"a"_s), ArtworkData::inFile(path.toUtf8(), bytes.size())), {});
    QTRY_VERIFY(bench.shown().artwork);
    QCOMPARE(bench.shown().artwork->size(), QSize(30, 30));
}

void SystemMediaArtworkTest::largeCoverIsScaledDown_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("JPEG") << madeJpeg(Qt::red, 3000);
    QTest::newRow("PNG") << madePng(Qt::red, 3000);
}

void SystemMediaArtworkTest::largeCoverIsScaledDown()
{
    QFETCH(QByteArray, bytes);
    const QSize largest(SystemMediaCenter::longestSide, SystemMediaCenter::longestSide);
    DesktopBench bench;
    bench.start().playSong(withCover(fileSong(u"a"_s), ArtworkData(bytes)), {});
    QTRY_VERIFY(bench.shown().artwork);
    QCOMPARE(bench.shown().artwork->size(), largest);

    playStreamed(bench, streamedSong(u"b"_s, coverUrl));
    bench.home.web().answer(picture(bytes));
    QTRY_VERIFY(bench.shown().artwork);
    QCOMPARE(bench.shown().artwork->size(), largest);
}

void SystemMediaArtworkTest::coverIsDecodedOnce()
{
    DesktopBench bench;
    const QByteArray bytes = madePng(Qt::green, 20);
    const QString path = bench.home.addMetadataFile(u"a_artwork.jpg"_s, bytes);
    bench.start().playSong(withCover(fileSong(u"a"_s), ArtworkData::inFile(path.toUtf8(), bytes.size())), {});
    QTRY_VERIFY(bench.shown().artwork);
    const qint64 key = bench.shown().artwork->cacheKey();
    QVERIFY(QFile::remove(path));
    bench.tickOn();
    finishWork();
    QVERIFY(bench.shown().artwork);
    // The desktop sees by the key that it has this one already.
    QCOMPARE(bench.shown().artwork->cacheKey(), key);
}

void SystemMediaArtworkTest::coverThatDoesNotDecodeIsNotTriedAgain()
{
    DesktopBench bench;
    const QByteArray bytes = madePng(Qt::green, 20);
    const QString path = bench.home.addMetadataFile(u"a_artwork.jpg"_s, QByteArray(bytes.size(), 'x'));
    bench.start().playSong(withCover(fileSong(u"a"_s), ArtworkData::inFile(path.toUtf8(), bytes.size())), {});
    finishWork();
    QVERIFY(!bench.shown().artwork);
    bench.home.addMetadataFile(u"a_artwork.jpg"_s, bytes);
    bench.tickOn();
    finishWork();
    QVERIFY(!bench.shown().artwork);
    QCOMPARE(bench.shown().title, u"Title a"_s);
}

void SystemMediaArtworkTest::songWithNewLyricsKeepsItsCover()
{
    DesktopBench bench;
    Song song = withCover(fileSong(u"a"_s), ArtworkData(madePng(Qt::green, 20)));
    bench.start().playSong(song, {});
    QTRY_VERIFY(bench.shown().artwork);
    const qint64 key = bench.shown().artwork->cacheKey();
    song.setEmbeddedLyrics(u"歌词"_s);
    song.setTitle(u"新标题"_s);
    bench.player().playSong(song, {});
    QCOMPARE(bench.shown().title, u"新标题"_s);
    QVERIFY(bench.shown().artwork);
    QCOMPARE(bench.shown().artwork->cacheKey(), key);
}

void SystemMediaArtworkTest::replacedCoverIsShown()
{
    DesktopBench bench;
    bench.start().playSong(withCover(fileSong(u"a"_s), ArtworkData(madePng(Qt::green, 20))), {});
    QTRY_VERIFY(bench.shown().artwork);
    bench.player().playSong(withCover(fileSong(u"a"_s), ArtworkData(madePng(Qt::red, 30))), {});
    const auto shownSize = [&bench] { return bench.shown().artwork.value_or(QImage()).size(); };
    QTRY_COMPARE(shownSize(), QSize(30, 30));
}

void SystemMediaArtworkTest::coverOfTheSongBeforeIsDropped()
{
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    for (const Song &next : {fileSong(u"b"_s), streamedSong(u"b"_s)}) {
        BusyWorkers workers;
        player.playSong(withCover(fileSong(u"a"_s), ArtworkData(madePng(Qt::green, 20))), {});
        player.playSong(next, {});
        workers.release();
        finishWork();
        QCOMPARE(bench.shown().title, u"Title b"_s);
        QVERIFY(!bench.shown().artwork);
    }
    // Decoded, and not told yet.
    player.playSong(withCover(fileSong(u"a"_s), ArtworkData(madePng(Qt::green, 20))), {});
    QVERIFY(QThreadPool::globalInstance()->waitForDone());
    player.playSong(fileSong(u"b"_s), {});
    finishWork();
    QVERIFY(!bench.shown().artwork);

    BusyWorkers workers;
    player.playSong(withCover(fileSong(u"a"_s), ArtworkData(madePng(Qt::green, 20))), {});
    bench.playOnline(onlineSong(u"1"_s));
    workers.release();
    finishWork();
    QVERIFY(!bench.shown().artwork);
}

void SystemMediaArtworkTest::coverAfterManyThatWereSkippedIsShown()
{
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    BusyWorkers workers;
    for (int song = 0; song < 50; ++song)
        player.playSong(withCover(fileSong(QString::number(song)), ArtworkData(madePng(Qt::green, 20))), {});
    workers.release();
    QTRY_VERIFY(bench.shown().artwork);
    QCOMPARE(bench.shown().title, u"Title 49"_s);
}

void SystemMediaArtworkTest::coverStandsBesideItsOwnSongAlone()
{
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    QStringList wrong;
    bench.desktop().onPublished = [&wrong](const NowPlayingInfo &info) {
        if (info.artwork && info.title != u"Title "_s + QString::number(info.artwork->width()))
            wrong.append(info.title);
    };
    // A worker is now and then done with a cover before anybody waits for it.
    constexpr int songs = 100;
    for (int side = 1; side <= songs; ++side) {
        player.playSong(withCover(fileSong(QString::number(side)), ArtworkData(madePng(Qt::green, side))),
                        {});
        QTRY_VERIFY(bench.shown().artwork);
        QCOMPARE(bench.shown().title, u"Title "_s + QString::number(side));
    }
    QCOMPARE(wrong, QStringList());
}

// MARK: covers on servers

void SystemMediaArtworkTest::remoteCoverIsFetchedOnceAndShown()
{
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    bench.tickOn();
    QCOMPARE(bench.home.web().sent.size(), 1);
    QVERIFY(!bench.shown().artwork);
    QCOMPARE(player.nowPlayingArtworkURL(), std::optional(QUrl(coverUrl)));
    bench.home.web().answer(picture(madeJpeg(Qt::red, 24)));
    // It does not wait for the next tick.
    QTRY_VERIFY(bench.shown().artwork);
    QCOMPARE(bench.shown().artwork->size(), QSize(24, 24));
    QVERIFY(player.nowPlayingArtwork());
    const qint64 key = bench.shown().artwork->cacheKey();
    bench.tickOn();
    QCOMPARE(bench.shown().artwork->cacheKey(), key);
    QCOMPARE(bench.home.web().sent.size(), 1);
    QCOMPARE(bench.console.take(), QStringList());
}

void SystemMediaArtworkTest::remoteCoverIsAskedForWithLimits()
{
    DesktopBench bench;
    bench.start();
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    const HttpRequest &request = bench.home.web().sent.constFirst();
    QCOMPARE(request.url, QUrl(coverUrl));
    QCOMPARE(request.method, "GET"_ba);
    QVERIFY(request.headers.isEmpty());
    QCOMPARE(request.sizeLimit, largestCover);
    QVERIFY(request.totalTimeout.count() > 0);
}

void SystemMediaArtworkTest::importedSongAsksForNoRemoteCover()
{
    DesktopBench bench;
    bench.start();
    Song song = fileSong(u"a"_s);
    song.setArtworkURL(QUrl(coverUrl));
    playStreamed(bench, song);
    QVERIFY(bench.home.web().sent.isEmpty());
}

void SystemMediaArtworkTest::remoteCoverThatFailsIsSilentAndNotAskedForAgain_data()
{
    QTest::addColumn<WebAnswer>("answer");
    const auto failed = [](HttpError::Kind kind) {
        return WebAnswer{std::unexpected(HttpError{kind, u"失败"_s})};
    };
    QTest::newRow("no connection") << failed(HttpError::Kind::connection);
    QTest::newRow("time-out") << failed(HttpError::Kind::timeout);
    QTest::newRow("too large") << failed(HttpError::Kind::tooLarge);
    QTest::newRow("not found") << WebAnswer{picture(madePng(), 404)};
    QTest::newRow("server error") << WebAnswer{picture(madePng(), 500)};
    QTest::newRow("not modified") << WebAnswer{picture(madePng(), 304)};
    QTest::newRow("no picture") << WebAnswer{picture("<html>error</html>")};
    QTest::newRow("nothing") << WebAnswer{picture({})};
    QTest::newRow("torn picture") << WebAnswer{picture(madePng().first(20))};
    QTest::newRow("unsafe picture") << WebAnswer{picture(madePictureBomb(30'000))};
    QTest::newRow("vector drawing") << WebAnswer{picture(
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' height='9'/></svg>")};
}

void SystemMediaArtworkTest::remoteCoverThatFailsIsSilentAndNotAskedForAgain()
{
    QFETCH(WebAnswer, answer);
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    bench.home.web().answer(answer.result);
    finishWork();
    bench.tickOn();
    QVERIFY(!bench.shown().artwork);
    QVERIFY(!player.nowPlayingArtwork());
    QCOMPARE(bench.shown().title, u"Title a"_s);
    QCOMPARE(bench.console.take(), QStringList());
    QCOMPARE(bench.home.web().sent.size(), 1);
    // A listener who plays it anew may be luckier.
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    QCOMPARE(bench.home.web().sent.size(), 2);
    bench.home.web().answer(picture(madePng()));
    QTRY_VERIFY(bench.shown().artwork);
}

void SystemMediaArtworkTest::anyAnswerOfSuccessCounts()
{
    DesktopBench bench;
    bench.start();
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    bench.home.web().answer(picture(madePng(), 203));
    QTRY_VERIFY(bench.shown().artwork);
}

void SystemMediaArtworkTest::lateRemoteCoverOfASongBeforeIsDropped_data()
{
    QTest::addColumn<Song>("next");
    QTest::newRow("another cover") << streamedSong(u"b"_s, otherCoverUrl);
    QTest::newRow("no cover") << streamedSong(u"b"_s);
    QTest::newRow("imported song") << fileSong(u"b"_s);
}

void SystemMediaArtworkTest::lateRemoteCoverOfASongBeforeIsDropped()
{
    QFETCH(Song, next);
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    // The answer is there when the listener goes on, and is told after that.
    bench.home.web().answer(picture(madePng(Qt::red, 8)));
    player.playSong(next, {});
    finishWork();
    bench.tickOn();
    QCOMPARE(bench.shown().title, u"Title b"_s);
    QVERIFY(!bench.shown().artwork);
    QVERIFY(!player.nowPlayingArtwork());
    QCOMPARE(player.nowPlayingArtworkURL(), next.isImported() ? std::nullopt : next.artworkURL());
}

void SystemMediaArtworkTest::remoteCoverThatIsDecodedTooLateIsDropped_data()
{
    lateRemoteCoverOfASongBeforeIsDropped_data();
}

void SystemMediaArtworkTest::remoteCoverThatIsDecodedTooLateIsDropped()
{
    QFETCH(Song, next);
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    BusyWorkers workers;
    bench.home.web().answer(picture(madePng(Qt::red, 8)));
    settle();
    // Decoded, and not told yet.
    workers.release();
    player.playSong(next, {});
    finishWork();
    QCOMPARE(bench.shown().title, u"Title b"_s);
    QVERIFY(!bench.shown().artwork);
    QVERIFY(!player.nowPlayingArtwork());
}

void SystemMediaArtworkTest::songPlayedAgainDuringItsLoadIsShownWithItsCover()
{
    DesktopBench bench;
    bench.start();
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    QCOMPARE(bench.home.web().pending.size(), size_t{1});
    bench.home.web().answer(picture(madePng()));
    QTRY_VERIFY(bench.shown().artwork);
}

void SystemMediaArtworkTest::serverSongLosesItsMergedCoverAtTheNextTick()
{
    CloudBench bench;
    bench.usesSystemMediaCenter = true;
    bench.restart();
    SongFields fields;
    fields.id = u"webdav_a"_s;
    fields.albumId = u"webdav_1_"_s;
    fields.assetURL = serverSong(u"a"_s).assetURL();
    bench.playUnloaded(Song(fields));
    bench.cache(taggedAsset(), parsedLine);
    const NowPlayingInfo &shown = bench.home.nowPlayingCenter().nowPlayingInfo();
    QCOMPARE(shown.title, u"新标题"_s);
    QVERIFY(shown.artwork);
    QCOMPARE(shown.artwork->size(), QSize(8, 8));
    bench.stream().tick(1);
    QCOMPARE(shown.title, u"新标题"_s);
    QVERIFY(!shown.artwork);
    QVERIFY(bench.player().nowPlayingArtwork());
}

// MARK: online songs

void SystemMediaArtworkTest::onlineCoverIsFetchedOnceAndShown()
{
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    bench.playOnline(onlineSong(u"1"_s));
    bench.tickOn();
    QCOMPARE(bench.home.web().pending.size(), size_t{1});
    const HttpRequest request = bench.home.web().pending.front().request;
    QCOMPARE(request.url, QUrl(onlineCoverUrl + u'1'));
    QCOMPARE(request.sizeLimit, largestCover);
    bench.home.web().answer(picture(madeJpeg(Qt::red, 24)));
    QTRY_VERIFY(bench.shown().artwork);
    QCOMPARE(bench.shown().artwork->size(), QSize(24, 24));
    QVERIFY(player.nowPlayingArtwork());
    const qint64 key = bench.shown().artwork->cacheKey();
    bench.tickOn();
    QCOMPARE(bench.shown().artwork->cacheKey(), key);
    QVERIFY(bench.home.web().pending.empty());
    QCOMPARE(bench.console.take(), QStringList());
}

void SystemMediaArtworkTest::onlineCoverThatFailsIsLoggedOnceAndNotAskedForAgain_data()
{
    QTest::addColumn<WebAnswer>("answer");
    QTest::addColumn<QString>("error");
    QTest::newRow("no connection") << WebAnswer{std::unexpected(
                                          HttpError{HttpError::Kind::connection, u"无法连接"_s})}
                                   << u"无法连接"_s;
    QTest::newRow("not found") << WebAnswer{picture(madePng(), 404)} << u"HTTP 404"_s;
    QTest::newRow("no picture") << WebAnswer{picture("{\"code\":404}")} << u"不是图片"_s;
}

void SystemMediaArtworkTest::onlineCoverThatFailsIsLoggedOnceAndNotAskedForAgain()
{
    QFETCH(WebAnswer, answer);
    QFETCH(QString, error);
    DesktopBench bench;
    bench.start();
    bench.playOnline(onlineSong(u"1"_s));
    bench.home.web().answer(answer.result);
    finishWork();
    bench.tickOn();
    QVERIFY(!bench.shown().artwork);
    QCOMPARE(bench.shown().title, u"Online 1"_s);
    QCOMPARE(bench.console.take(), QStringList(u"Failed to load online artwork: "_s + error));
    QVERIFY(bench.home.web().pending.empty());
}

void SystemMediaArtworkTest::onlineSongPlayedAgainAsksAgain()
{
    DesktopBench bench;
    bench.start();
    bench.playOnline(onlineSong(u"1"_s));
    bench.home.web().answer(picture(madePng(), 500));
    finishWork();
    for (int time = 0; time < 2; ++time) {
        bench.playOnline(onlineSong(u"1"_s));
        QVERIFY(!bench.shown().artwork);
        bench.home.web().answer(picture(madePng()));
        QTRY_VERIFY(bench.shown().artwork);
    }
}

void SystemMediaArtworkTest::onlineSongWithoutAnAddressHasNoCover()
{
    DesktopBench bench;
    bench.start();
    bench.player().playOnlineSong(onlineSong(u"1"_s), {});
    bench.addresses.silent = true;
    bench.answerWeb(
        HttpResponse{.url = QUrl(u"https://cdn.example/1.mp3"_s), .status = 200, .headers = {}, .body = {}});
    QCOMPARE(bench.shown().title, u"Online 1"_s);
    QVERIFY(bench.home.web().pending.empty());
    QVERIFY(!bench.shown().artwork);
}

void SystemMediaArtworkTest::lateOnlineCoverOfASongBeforeIsDropped()
{
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    bench.playOnline(onlineSong(u"1"_s));
    bench.home.web().answer(picture(madePng()));
    player.playOnlineSong(onlineSong(u"2"_s), {});
    finishWork();
    QVERIFY(!player.nowPlayingArtwork());
    QVERIFY(!bench.shown().artwork);

    bench.home.web().answer(
        u"url?id=2"_s,
        HttpResponse{.url = QUrl(u"https://cdn.example/2.mp3"_s), .status = 200, .headers = {}, .body = {}});
    settle();
    BusyWorkers workers;
    QVERIFY(bench.home.web().answer(u"pic?id=2"_s, picture(madePng())));
    settle();
    player.playSong(fileSong(u"a"_s), {});
    workers.release();
    finishWork();
    QVERIFY(!player.nowPlayingArtwork());
    QVERIFY(!bench.shown().artwork);
    QCOMPARE(bench.shown().title, u"Title a"_s);
}

void SystemMediaArtworkTest::lateOnlineCoverOfASongWithTheSameIdIsDropped()
{
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    bench.playOnline(onlineSong(u"1"_s));
    bench.home.web().answer(picture(madePng()));
    OnlineSong other = onlineSong(u"1"_s);
    other.platform = MusicPlatform::qq;
    player.playOnlineSong(other, {});
    finishWork();
    QVERIFY(!player.nowPlayingArtwork());
}

void SystemMediaArtworkTest::onlineSongTakesNoCoverOfTheSongBefore()
{
    DesktopBench bench;
    AudioPlayerService &player = bench.start();
    playStreamed(bench, streamedSong(u"a"_s, coverUrl));
    bench.home.web().answer(picture(madePng()));
    // The address of the song before stands there until the online song is shown.
    player.playOnlineSong(onlineSong(u"1"_s), {});
    QCOMPARE(player.nowPlayingArtworkURL(), std::optional(QUrl(coverUrl)));
    finishWork();
    QVERIFY(!player.nowPlayingArtwork());
    QVERIFY(!bench.shown().artwork);
}

// MARK: the end

void SystemMediaArtworkTest::coverThatIsMergedWithoutASongIsDropped()
{
    TestPlatform home;
    SystemMediaCenter center(home.platform);
    center.mergeNowPlayingArtwork(QImage(8, 8, QImage::Format_RGB32));
    QCOMPARE(home.nowPlayingCenter().publications, 0);
}

void SystemMediaArtworkTest::playerMayGoWhileACoverIsOnItsWay_data()
{
    QTest::addColumn<Song>("song");
    QTest::addColumn<bool>("isAnswered");
    QTest::newRow("in the library") << withCover(fileSong(u"a"_s), ArtworkData(madePng(Qt::green, 20)))
                                    << false;
    QTest::newRow("asked for") << streamedSong(u"a"_s, coverUrl) << false;
    QTest::newRow("decoding") << streamedSong(u"a"_s, coverUrl) << true;
}

void SystemMediaArtworkTest::playerMayGoWhileACoverIsOnItsWay()
{
    QFETCH(Song, song);
    QFETCH(bool, isAnswered);
    DesktopBench bench;
    BusyWorkers workers;
    bench.start().playSong(song, {});
    settle();
    if (isAnswered) {
        bench.home.web().answer(picture(madePng()));
        settle();
    }
    bench.stop();
    const int publications = bench.desktop().publications;
    workers.release();
    finishWork();
    QVERIFY(bench.home.web().pending.empty());
    QCOMPARE(bench.desktop().publications, publications);
    QVERIFY(!bench.shown().artwork);
}

QTEST_GUILESS_MAIN(SystemMediaArtworkTest)
#include "tst_system_media_artwork.moc"
