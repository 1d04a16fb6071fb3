// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/CloudBench.h"

#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class AudioPlayerCloudDownloadTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void copyIsNotFetchedBeforeTheStreamHasItsFile();
    void copiesUnderWayLeaveTheLineToANewStream();
    void copyOfASongThatWasLeftIsStillFetched();
    void copyIsStoredParsedAndPlayedNextTime();
    void failedCopyIsLoggedAndTheStreamPlaysOn_data();
    void failedCopyIsLoggedAndTheStreamPlaysOn();
    void copyWithoutCredentialsIsNotAttempted();
    void songPlayedTwiceIsFetchedOnce();
    void playerThatGoesLeavesNoHalfCopy();
    void downloadAndPlayStoresThenPlays();
    void downloadAndPlayTellsItsFailures_data();
    void downloadAndPlayTellsItsFailures();
    void downloadAndPlayJoinsACopyUnderWay();
    void downloadAndPlayDoesNotTakeOverAnotherSong();
};

void AudioPlayerCloudDownloadTest::copyIsNotFetchedBeforeTheStreamHasItsFile()
{
    CloudBench bench;
    bench.player().playSong(serverSong(u"a"_s), {});
    settle();
    QVERIFY(bench.home.web().sent.isEmpty());
    const auto request = bench.loadStream();
    QCOMPARE(bench.home.web().sent.size(), 1);
    QVERIFY(bench.lastRequest().ownConnection);
    bench.home.web().answer(answered("song"));
    QVERIFY(bench.waitForRequests());
    QVERIFY(request->isFinished());
    QCOMPARE(bench.home.web().sent.size(), 2);
    QVERIFY(!bench.lastRequest().outputFile.isEmpty());
    QVERIFY(!bench.lastRequest().transfer->isPaused());
}

void AudioPlayerCloudDownloadTest::copiesUnderWayLeaveTheLineToANewStream()
{
    CloudBench bench;
    bench.playUnloaded(serverSong(u"a"_s));
    const auto copy = bench.lastRequest().transfer;
    QVERIFY(!copy->isPaused());
    bench.player().playSong(serverSong(u"b"_s), {});
    QVERIFY(copy->isPaused());
    bench.loadStream();
    QVERIFY(copy->isPaused());
    QVERIFY(bench.home.web().answer(u"b.mp3"_s, answered("song")));
    QTRY_VERIFY(!copy->isPaused());
    QVERIFY(bench.waitForRequests(2));
}

void AudioPlayerCloudDownloadTest::copyOfASongThatWasLeftIsStillFetched()
{
    CloudBench bench;
    bench.player().playSong(serverSong(u"a"_s), {});
    bench.player().playSong(fileSong(u"f"_s), {});
    bench.lines();
    bench.home.clock().advance(WebDAVStreamingService::loadingGrace);
    QVERIFY(bench.waitForRequests());
    bench.home.web().answer(answered("song"));
    QVERIFY(bench.linesUntil(u"   封面: "_s).contains(u"💾 WebDAV: 后台缓存完成 - a.mp3"_s));
    QVERIFY(QFile::exists(bench.pathOf(u"a.mp3"_s)));
    settle();
    // There is no server song to write to.
    QVERIFY(bench.lines().isEmpty());
    QVERIFY(bench.updatedSongs.isEmpty());
    QCOMPARE(songOf(bench.player()).id(), u"f"_s);
}

void AudioPlayerCloudDownloadTest::copyIsStoredParsedAndPlayedNextTime()
{
    CloudBench bench;
    const Song song = serverSong(u"a"_s);
    bench.playUnloaded(song);
    const qsizetype items = bench.stream().items.size();
    const QStringList lines = bench.cache(taggedAsset(), parsedLine);
    QCOMPARE(lines, (QStringList{u"💾 WebDAV: 后台缓存完成 - a.mp3"_s, u"🔍 所有元数据键:"_s, u"   - TITLE"_s,
                                 u"   - ARTIST"_s, u"   - ALBUM"_s, u"   - APIC"_s,
                                 u"🖼️ 尝试解析封面 [apic]: %1 bytes"_s.arg(madePng(Qt::green, 8).size()),
                                 u"🖼️ 获取封面成功"_s, u"📋 元数据解析结果:"_s, u"   标题: 新标题"_s,
                                 u"   艺术家: 新歌手"_s, u"   专辑: 新专辑"_s, u"   歌词: 有 (3 字符)"_s,
                                 u"   封面: 有"_s, u"🎤 已设置内嵌歌词"_s,
                                 u"🎵 元数据解析完成: 新标题 - 新歌手"_s}));
    QCOMPARE(bench.stream().items.size(), items);
    QVERIFY(bench.player().isPlaying());

    // The queue holds the song as it was, so it is parsedLine again.
    bench.player().playSong(song, {song});
    QVERIFY(bench.item().asset().url.isLocalFile());
    QVERIFY(bench.linesUntil(parsedLine).contains(u"📁 WebDAV: 使用本地缓存 - a.mp3"_s));
}

void AudioPlayerCloudDownloadTest::failedCopyIsLoggedAndTheStreamPlaysOn_data()
{
    QTest::addColumn<WebAnswer>("answer");
    QTest::addColumn<QString>("description");
    QTest::newRow("no connection") << WebAnswer(std::unexpected(
                                          HttpError{HttpError::Kind::connection, u"无法连接"_s}))
                                   << u"无法连接"_s;
    QTest::newRow("disk full") << WebAnswer(
                                      std::unexpected(HttpError{HttpError::Kind::file, u"设备空间不足"_s}))
                               << u"设备空间不足"_s;
    QTest::newRow("refused") << WebAnswer(answered("no", 401)) << u"HTTP 401"_s;
    QTest::newRow("part") << WebAnswer(answered("so", 206)) << u"HTTP 206"_s;
    QTest::newRow("page") << WebAnswer(answered("<html>", 200, {{"Content-Type", "text/html"}}))
                          << u"服务器返回的是网页"_s;
    QTest::newRow("empty") << WebAnswer(answered("")) << u"无数据"_s;
}

void AudioPlayerCloudDownloadTest::failedCopyIsLoggedAndTheStreamPlaysOn()
{
    QFETCH(WebAnswer, answer);
    QFETCH(QString, description);
    CloudBench bench;
    bench.playUnloaded(serverSong(u"a"_s));
    bench.home.web().answer(answer.result);
    QCOMPARE(bench.linesUntil(u"⚠️"_s), QStringList{u"⚠️ WebDAV: 后台缓存失败 - "_s + description});
    QVERIFY(bench.player().isPlaying());
    QVERIFY(!bench.player().playError());
    QVERIFY(!QFile::exists(bench.pathOf(u"a.mp3"_s)));
    QCOMPARE(bench.stream().calls.constLast(), u"play"_s);
}

void AudioPlayerCloudDownloadTest::copyWithoutCredentialsIsNotAttempted()
{
    CloudBench bench;
    for (const QString &address : {u"https://h.example/a.mp3"_s, u"https://u@h.example/a.mp3"_s})
        QCoro::waitFor(AudioPlayerCloudAccess::downloadForCache(bench.player(), QUrl(address)));
    QVERIFY(bench.home.web().sent.isEmpty());
    QVERIFY(bench.lines().isEmpty());
}

void AudioPlayerCloudDownloadTest::songPlayedTwiceIsFetchedOnce()
{
    CloudBench bench;
    const Song song = serverSong(u"a"_s);
    bench.player().playSong(song, {song});
    bench.player().playSong(song, {song});
    bench.home.clock().advance(WebDAVStreamingService::loadingGrace);
    QVERIFY(bench.waitForRequests());
    bench.player().playSong(song, {song});
    bench.home.clock().advance(WebDAVStreamingService::loadingGrace);
    settle();
    QCOMPARE(bench.home.web().sent.size(), 1);
    bench.lines();
    QCOMPARE(bench.cache(untaggedAsset(), parsedLine).filter(u"💾"_s).size(), 1);
    settle();
    QVERIFY(bench.lines().isEmpty());
}

void AudioPlayerCloudDownloadTest::playerThatGoesLeavesNoHalfCopy()
{
    CloudBench bench;
    bench.playUnloaded(serverSong(u"a"_s));
    QFile half(bench.lastRequest().outputFile);
    QVERIFY(half.open(QIODevice::WriteOnly) && half.write("half") == 4);
    const auto transfer = bench.lastRequest().transfer;
    bench.stop();
    QVERIFY(transfer->isCancelled());
    QVERIFY(bench.home.web().pending.empty());
    const QDir folder(QFileInfo(half.fileName()).path());
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
    QVERIFY(bench.lines().isEmpty());
}

void AudioPlayerCloudDownloadTest::downloadAndPlayStoresThenPlays()
{
    CloudBench bench;
    const Song song = serverSong(u"a"_s);
    bench.player().playSong(song, {song});
    bench.lines();
    auto task = AudioPlayerCloudAccess::downloadAndPlay(bench.player(), *song.assetURL());
    QCOMPARE(bench.lines(), QStringList{u"🌐 WebDAV: 降级到下载后播放..."_s});
    AudioPlayerCloudAccess::setIsLoading(bench.player(), true);
    QVERIFY(bench.waitForRequests());
    QCOMPARE(bench.lastRequest().headers,
             (HttpHeaders{{"Authorization", "Basic " + QByteArray("user:secret").toBase64()}}));
    bench.home.assetReader().otherwise = taggedAsset();
    bench.home.web().answer(answered("song"));
    QCoro::waitFor(std::move(task));
    QVERIFY(!bench.player().isLoading());
    QVERIFY(bench.player().isPlaying());
    QCOMPARE(bench.item().asset().url, QUrl::fromLocalFile(bench.pathOf(u"a.mp3"_s)));
    const QStringList lines = bench.linesUntil(parsedLine);
    QCOMPARE(lines.constFirst(), u"✅ WebDAV: 下载完成 - a.mp3"_s);
    QVERIFY(lines.contains(u"▶️ 播放: a.mp3"_s));
    QCOMPARE(songOf(bench.player()).title(), u"新标题"_s);
}

void AudioPlayerCloudDownloadTest::downloadAndPlayTellsItsFailures_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<WebAnswer>("answer");
    QTest::addColumn<QString>("error");
    const QUrl url = *serverSong(u"a"_s).assetURL();
    QUrl hostless = url;
    hostless.setScheme({});
    QTest::newRow("no credentials") << QUrl(u"https://h.example/a.mp3"_s) << WebAnswer()
                                    << u"WebDAV URL 缺少认证信息"_s;
    QTest::newRow("no address") << hostless << WebAnswer() << u"无效的 URL"_s;
    QTest::newRow("no connection") << url
                                   << WebAnswer(std::unexpected(
                                          HttpError{HttpError::Kind::connection, u"无法连接"_s}))
                                   << u"下载失败: 无法连接"_s;
    QTest::newRow("missing") << url << WebAnswer(answered("no", 404)) << u"下载失败: HTTP 404"_s;
    QTest::newRow("no file") << url << WebAnswer(answered("")) << u"下载失败"_s;
    QTest::newRow("disk full") << url
                               << WebAnswer(
                                      std::unexpected(HttpError{HttpError::Kind::file, u"设备空间不足"_s}))
                               << u"缓存失败: 设备空间不足"_s;
}

void AudioPlayerCloudDownloadTest::downloadAndPlayTellsItsFailures()
{
    QFETCH(QUrl, url);
    QFETCH(WebAnswer, answer);
    QFETCH(QString, error);
    CloudBench bench;
    AudioPlayerCloudAccess::setIsLoading(bench.player(), true);
    auto task = AudioPlayerCloudAccess::downloadAndPlay(bench.player(), url);
    const bool isAsked = !answer.result || answer.result->status != 0;
    if (isAsked) {
        QVERIFY(bench.waitForRequests());
        bench.home.web().answer(answer.result);
    }
    QCoro::waitFor(std::move(task));
    QCOMPARE(bench.player().playError(), error);
    QVERIFY(!bench.player().isLoading());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
    QCOMPARE(bench.home.web().sent.size(), isAsked ? 1 : 0);
}

void AudioPlayerCloudDownloadTest::downloadAndPlayJoinsACopyUnderWay()
{
    CloudBench bench;
    const Song song = serverSong(u"a"_s);
    bench.playUnloaded(song);
    auto task = AudioPlayerCloudAccess::downloadAndPlay(bench.player(), *song.assetURL());
    settle();
    QCOMPARE(bench.home.web().sent.size(), 1);
    bench.home.web().answer(answered("song"));
    QCoro::waitFor(std::move(task));
    QVERIFY(bench.item().asset().url.isLocalFile());
    bench.linesUntil(parsedLine);
}

void AudioPlayerCloudDownloadTest::downloadAndPlayDoesNotTakeOverAnotherSong()
{
    CloudBench bench;
    const Song song = serverSong(u"a"_s);
    auto task = AudioPlayerCloudAccess::downloadAndPlay(bench.player(), *song.assetURL());
    QVERIFY(bench.waitForRequests());
    bench.player().playSong(fileSong(u"f"_s), {});
    const auto item = bench.stream().lastItem();
    bench.home.web().answer(answered("song"));
    QCoro::waitFor(std::move(task));
    QCOMPARE(bench.stream().lastItem(), item);
    QVERIFY(QFile::exists(bench.pathOf(u"a.mp3"_s)));

    task = AudioPlayerCloudAccess::downloadAndPlay(bench.player(), *serverSong(u"b"_s).assetURL());
    QVERIFY(bench.waitForRequests());
    bench.player().playSong(fileSong(u"g"_s), {});
    bench.home.web().answer(answered("no", 404));
    QCoro::waitFor(std::move(task));
    QVERIFY(!bench.player().playError());
}

QTEST_GUILESS_MAIN(AudioPlayerCloudDownloadTest)
#include "tst_audio_player_cloud_download.moc"
