// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/CloudBench.h"

#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class AudioPlayerCloudTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void streamStartsWithItsLogLines();
    void streamClearsAnEarlierError();
    void streamShowsItsKnownDurationUntilTheLoadedOneComes();
    void streamDurationThatCannotBeLoadedIsLogged();
    void streamTicksAskForASnapshot();
    void streamObservesLikeAFile();
    void streamThatFailsShowsItsErrorAndIsNotDownloadedInstead();
    void streamStartsBesideTheEqualizerEngine();
    void songThatCannotBeStreamedShowsAnError();
    void cachedSongPlaysFromItsFile();
    void cachedSongIsEqualized();
    void cachedSongWithLyricsIsNotParsedAgain();
    void cachedSongWithoutLyricsIsParsed();
};

void AudioPlayerCloudTest::streamStartsWithItsLogLines()
{
    CloudBench bench;
    const Song song = serverSong(u"a"_s);
    bench.player().playSong(song, {song});
    QCOMPARE(bench.lines(),
             (QStringList{u"🌐 WebDAV: 开始流式播放..."_s, u"🎵 WebDAV Streaming: 创建流式资源 - a.mp3"_s,
                          u"▶️ 播放: a.mp3"_s, u"⏳ PlayerItem 状态: unknown (加载中...)"_s,
                          u"▶️ WebDAV: 流式播放已启动"_s}));
    const MediaAsset &asset = bench.item().asset();
    QCOMPARE(asset.url.scheme(), u"webdavstream"_s);
    QCOMPARE(asset.resourceLoader, &bench.streaming());
    QVERIFY(bench.player().isPlaying());
    QVERIFY(!bench.player().isLoading());
    QVERIFY(bench.player().isSimulatingLevels());
    QCOMPARE(bench.mediaCenter.publishedTitle, song.title());
    QVERIFY(bench.mediaCenter.publishedPlaying);
    QCOMPARE(bench.stream().calls, (QStringList{u"replace a.mp3"_s, u"play"_s}));
    QCOMPARE(bench.stream().volume, 1.0F);
    QVERIFY(bench.stream().waitsToMinimizeStalling);
    QCOMPARE(bench.stream().timeObservers(), 1);
    QCOMPARE(bench.stream().observerInterval(), 250ms);
}

void AudioPlayerCloudTest::streamClearsAnEarlierError()
{
    CloudBench bench;
    bench.player().playSong(fileSong(u"f"_s), {});
    bench.item().fail(u"broken"_s);
    QVERIFY(bench.player().playError());
    QSignalSpy loading(&bench.player(), &AudioPlayerService::isLoadingChanged);
    bench.player().playSong(serverSong(u"a"_s), {});
    QVERIFY(!bench.player().playError());
    QCOMPARE(loading.size(), 2);
}

void AudioPlayerCloudTest::streamShowsItsKnownDurationUntilTheLoadedOneComes()
{
    CloudBench bench;
    bench.player().playSong(serverSong(u"a"_s, 180), {});
    QCOMPARE(bench.player().duration(), 180.0);
    bench.lines();
    bench.answerDuration(182.5);
    QCOMPARE(bench.player().duration(), 182.5);
    QCOMPARE(bench.lines(), QStringList{u"📏 流式播放时长: 182.5s"_s});
}

void AudioPlayerCloudTest::streamDurationThatCannotBeLoadedIsLogged()
{
    CloudBench bench;
    bench.player().playSong(serverSong(u"a"_s, 180), {});
    bench.lines();
    bench.answerDuration(std::unexpected(u"no length"_s));
    QCOMPARE(bench.lines(), QStringList{u"Failed to load streaming duration: no length"_s});
    QCOMPARE(bench.player().duration(), 180.0);
}

void AudioPlayerCloudTest::streamTicksAskForASnapshot()
{
    CloudBench bench;
    const auto asksAtATick = [&bench] {
        bench.home.clock().advance(10s);
        const std::optional<QDateTime> before = AudioPlayerCloudAccess::lastPersistDate(bench.player());
        bench.stream().tick(3);
        return AudioPlayerCloudAccess::lastPersistDate(bench.player()) != before;
    };
    bench.player().playSong(serverSong(u"a"_s, 180), {});
    QVERIFY(asksAtATick());
    QCOMPARE(bench.player().currentTime(), 3.0);
    // A song that lies on a server is not remembered, however often it is asked.
    QVERIFY(bench.snapshot().isEmpty());
    bench.player().seek(9);
    QVERIFY(!asksAtATick());
    bench.player().playSong(fileSong(u"f"_s), {});
    QVERIFY(!asksAtATick());
}

void AudioPlayerCloudTest::streamObservesLikeAFile()
{
    CloudBench bench;
    const Song first = serverSong(u"a"_s);
    const Song second = serverSong(u"b"_s);
    bench.player().playSong(first, {first, second});
    bench.lines();
    bench.item().becomeReady();
    QCOMPARE(bench.lines(), QStringList{u"✅ PlayerItem 状态: readyToPlay"_s});
    const std::shared_ptr<FakePlayerItem> old = bench.stream().lastItem();
    bench.reachEnd();
    QCOMPARE(songOf(bench.player()).id(), second.id());
    QCOMPARE(bench.stream().timeObservers(), 1);
    bench.lines();
    old->becomeReady();
    old->reachEnd();
    QVERIFY(bench.lines().isEmpty());
    QCOMPARE(songOf(bench.player()).id(), second.id());
}

void AudioPlayerCloudTest::streamThatFailsShowsItsErrorAndIsNotDownloadedInstead()
{
    CloudBench bench;
    bench.player().playSong(serverSong(u"a"_s), {});
    bench.lines();
    bench.item().fail(u"HTTP 404"_s);
    settle();
    QCOMPARE(bench.player().playError(), u"HTTP 404"_s);
    QVERIFY(!bench.player().isPlaying());
    QCOMPARE(bench.stream().items.size(), 1);
    QVERIFY(bench.lines().contains(u"❌ PlayerItem 状态: failed - HTTP 404"_s));
}

void AudioPlayerCloudTest::streamStartsBesideTheEqualizerEngine()
{
    CloudBench bench;
    bench.equalizer.enabled = true;
    bench.player().playSong(fileSong(u"f"_s), {});
    QVERIFY(bench.player().usingEqualizerEngine());
    bench.equalizer.calls.clear();
    bench.player().playSong(serverSong(u"a"_s), {});
    QVERIFY(bench.player().usingEqualizerEngine());
    QCOMPARE(bench.equalizer.calls, QStringList());
    QCOMPARE(bench.stream().rate(), 1.0);
    bench.player().playSong(webSong(u"w"_s), {});
    QCOMPARE(bench.equalizer.calls, QStringList{u"stop"_s});
}

void AudioPlayerCloudTest::songThatCannotBeStreamedShowsAnError()
{
    CloudBench bench;
    AudioPlayerService player(bench.home.platform, bench.importService());
    const Song song = serverSong(u"a"_s);
    player.playSong(song, {song});
    QCOMPARE(player.playError(), u"无法创建流式播放资源"_s);
    QVERIFY(!player.isCurrentLoaded());
    QVERIFY(!player.isLoading());
    QVERIFY(!player.isPlaying());
    QCOMPARE(songOf(player), song);
    QCOMPARE(bench.home.streamPlayersMade(), 0);
    QCOMPARE(bench.lines(), QStringList{u"🌐 WebDAV: 开始流式播放..."_s});
    settle();
    QVERIFY(bench.home.web().sent.isEmpty());
}

void AudioPlayerCloudTest::cachedSongPlaysFromItsFile()
{
    CloudBench bench;
    bench.putCopy(u"a.mp3"_s);
    Song song = serverSong(u"a"_s);
    song.setEmbeddedLyrics(u"词"_s);
    bench.player().playSong(song, {song});
    QCOMPARE(bench.lines(),
             (QStringList{u"🌐 WebDAV: 开始流式播放..."_s, u"📁 WebDAV: 使用本地缓存 - a.mp3"_s,
                          u"🔍 播放检查: isFileURL=true, EQ启用=false, URL=file"_s, u"▶️ 播放: a.mp3"_s,
                          u"⏳ PlayerItem 状态: unknown (加载中...)"_s}));
    QCOMPARE(bench.item().asset().url, QUrl::fromLocalFile(bench.pathOf(u"a.mp3"_s)));
    QVERIFY(!bench.item().asset().resourceLoader);
    QVERIFY(bench.player().isPlaying());
    QVERIFY(!bench.player().isLoading());
    settle();
    QVERIFY(bench.home.web().sent.isEmpty());
}

void AudioPlayerCloudTest::cachedSongIsEqualized()
{
    CloudBench bench;
    bench.putCopy(u"a.mp3"_s);
    bench.equalizer.enabled = true;
    bench.player().playSong(serverSong(u"a"_s), {});
    QVERIFY(bench.player().usingEqualizerEngine());
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare a.mp3"_s, u"play"_s}));
    bench.linesUntil(parsedLine);
}

void AudioPlayerCloudTest::cachedSongWithLyricsIsNotParsedAgain()
{
    CloudBench bench;
    bench.putCopy(u"a.mp3"_s);
    bench.home.assetReader().onOpen = [](const QString &) { QFAIL("it was parsedLine"); };
    for (const QString &lyrics : {u"词"_s, QString(u""_s)}) {
        Song song = serverSong(u"a"_s);
        song.setEmbeddedLyrics(lyrics);
        bench.player().playSong(song, {});
    }
    QVERIFY(QThreadPool::globalInstance()->waitForDone());
    settle();
    QVERIFY(bench.lines().filter(u"元数据"_s).isEmpty());
}

void AudioPlayerCloudTest::cachedSongWithoutLyricsIsParsed()
{
    CloudBench bench;
    bench.putCopy(u"a.mp3"_s);
    bench.home.assetReader().assets.insert(u"a.mp3"_s, taggedAsset());
    bench.player().playSong(serverSong(u"a"_s), {});
    const QStringList lines = bench.linesUntil(parsedLine);
    // It plays before it is read.
    QVERIFY(lines.indexOf(u"▶️ 播放: a.mp3"_s) >= 0);
    QVERIFY(lines.indexOf(u"▶️ 播放: a.mp3"_s) < lines.indexOf(u"🔍 所有元数据键:"_s));
    QCOMPARE(songOf(bench.player()).title(), u"新标题"_s);
    QCOMPARE(bench.player().duration(), 0.0);
}

QTEST_GUILESS_MAIN(AudioPlayerCloudTest)
#include "tst_audio_player_cloud.moc"
