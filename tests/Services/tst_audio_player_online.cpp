// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// An answer from the address that was asked, so that its body counts.
HttpResponse body(PlayerBench &bench, const QByteArray &bytes, int status = 200)
{
    return {
        .url = bench.home.web().pending.front().request.url, .status = status, .headers = {}, .body = bytes};
}

HttpResponse redirected(const QString &address)
{
    return {
        .url = QUrl(address), .status = 200, .headers = {}, .body = "{\"url\":\"https://wrong.example\"}"};
}

QString playedAddress(PlayerBench &bench)
{
    return bench.home.streamPlayer() ? QString::fromLatin1(bench.item().asset().url.toEncoded()) : QString();
}

} // namespace

class AudioPlayerOnlineTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void songIsCurrentAndLoadingWhileItsAddressIsFetched();
    void requestIsAPlainGetOfTheApiAddress();
    void qualityIsThatOfThePreferences();
    void addressFromTheAnswer_data();
    void addressFromTheAnswer();
    void redirectYieldsItsTarget();
    void failedRequestIsLoggedAndFallsBackToTheApiAddress();
    void songWithoutAnyAddressShowsAnError();
    void withoutOnlinePartsThereIsNoAddress();
    void errorIsClearedByTheNextOnlineSong();
    void localSongWhileAnAddressIsFetchedWins();
    void localSongEndsTheLoading();
    void songWithoutAddressEndsTheLoading();
    void laterOnlineSongWins();
    void sameSongAskedForTwicePlaysOnce();
    void backToTheFirstSongTakesTheLatestAnswer();
    void runningSongPlaysOnWhileAnAddressIsFetched();
    void onlineSongShowsNoDurationOfAnEarlierSong();
    void onlineFileAddressIsEqualized();
};

void AudioPlayerOnlineTest::songIsCurrentAndLoadingWhileItsAddressIsFetched()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"0"_s, u"1"_s}));
    QCOMPARE(player.currentOnlineSong(), std::optional(onlineSong(u"1"_s)));
    QCOMPARE(player.currentIndex(), 1);
    QVERIFY(player.isLoading());
    QVERIFY(!player.isPlaying());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
    bench.answerWeb(redirected(u"https://cdn.example/1.mp3"_s));
    QVERIFY(!player.isLoading());
    QVERIFY(player.isPlaying());
    QVERIFY(!player.playError());
    QCOMPARE(bench.console.take().mid(0, 2),
             (QStringList{u"🔍 播放检查: isFileURL=false, EQ启用=false, URL=https"_s, u"▶️ 播放: 1.mp3"_s}));
}

void AudioPlayerOnlineTest::requestIsAPlainGetOfTheApiAddress()
{
    PlayerBench bench;
    bench.start().playOnlineSong(onlineSong(u"1"_s), {});
    const HttpRequest &request = bench.home.web().pending.front().request;
    QCOMPARE(request.url, QUrl(u"https://api.example/url?id=1"_s));
    QCOMPARE(request.method, "GET"_ba);
    QVERIFY(request.headers.isEmpty());
    QVERIFY(request.body.isEmpty());
}

void AudioPlayerOnlineTest::qualityIsThatOfThePreferences()
{
    PlayerBench bench;
    bench.start().playOnlineSong(onlineSong(u"1"_s), {});
    bench.home.preferences().setString(u"audioQuality"_s, u"flac"_s);
    bench.player().playOnlineSong(onlineSong(u"2"_s), {});
    QCOMPARE(bench.addresses.qualities, (QStringList{u"320k"_s, u"flac"_s}));
}

void AudioPlayerOnlineTest::addressFromTheAnswer_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("expected");
    const QString api = u"https://api.example/url?id=1"_s;
    QTest::newRow("JSON") << "{\"code\":1,\"url\":\"https://cdn.example/a.mp3\"}"_ba
                          << u"https://cdn.example/a.mp3"_s;
    QTest::newRow("JSON, escapes") << "{\"url\":\"http:\\/\\/cdn.example\\/a.mp3\"}"_ba
                                   << u"http://cdn.example/a.mp3"_s;
    QTest::newRow("JSON, other member") << "{\"link\":\"https://cdn.example/a.mp3\"}"_ba << api;
    QTest::newRow("JSON, no text") << "{\"url\":5}"_ba << api;
    QTest::newRow("JSON, null") << "{\"url\":null}"_ba << api;
    QTest::newRow("JSON, empty text") << "{\"url\":\"\"}"_ba << api;
    QTest::newRow("JSON, no address") << "{\"url\":\"http://[\"}"_ba << api;
    QTest::newRow("JSON, a list") << "[\"https://cdn.example/a.mp3\"]"_ba << api;
    QTest::newRow("text") << "https://cdn.example/a.mp3"_ba << u"https://cdn.example/a.mp3"_s;
    QTest::newRow("text with white space")
        << " \r\n\thttp://cdn.example/a.mp3\n"_ba << u"http://cdn.example/a.mp3"_s;
    QTest::newRow("other text") << "not found"_ba << api;
    QTest::newRow("other scheme") << "ftp://cdn.example/a.mp3"_ba << api;
    QTest::newRow("text that is no address") << "http://[ is not one"_ba << api;
    QTest::newRow("no UTF-8") << "http://cdn.example/\xff.mp3"_ba << api;
    QTest::newRow("cut UTF-8") << "http://cdn.example/\xe6\xad"_ba << api;
    QTest::newRow("nothing") << QByteArray() << api;
}

void AudioPlayerOnlineTest::addressFromTheAnswer()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, expected);
    PlayerBench bench;
    bench.start().playOnlineSong(onlineSong(u"1"_s), {});
    bench.answerWeb(body(bench, answer));
    QCOMPARE(playedAddress(bench), expected);
    QVERIFY(!bench.player().isLoading());
    // The status is not looked at.
    bench.player().playOnlineSong(onlineSong(u"1"_s), {});
    bench.answerWeb(body(bench, answer, 404));
    QCOMPARE(playedAddress(bench), expected);
}

void AudioPlayerOnlineTest::redirectYieldsItsTarget()
{
    PlayerBench bench;
    bench.start().playOnlineSong(onlineSong(u"1"_s), {});
    bench.answerWeb(redirected(u"https://cdn.example/%E6%AD%8C.mp3?sign=a%2Bb"_s));
    QCOMPARE(playedAddress(bench), u"https://cdn.example/%E6%AD%8C.mp3?sign=a%2Bb"_s);
}

void AudioPlayerOnlineTest::failedRequestIsLoggedAndFallsBackToTheApiAddress()
{
    PlayerBench bench;
    bench.start().playOnlineSong(onlineSong(u"1"_s), {});
    bench.answerWeb(std::unexpected(HttpError{HttpError::Kind::timeout, u"timed out"_s}));
    QCOMPARE(bench.console.take().constFirst(), u"Failed to fetch real play URL: timed out"_s);
    QCOMPARE(playedAddress(bench), u"https://api.example/url?id=1"_s);
    QVERIFY(bench.player().isPlaying());
    QVERIFY(!bench.player().playError());
}

void AudioPlayerOnlineTest::songWithoutAnyAddressShowsAnError()
{
    PlayerBench bench;
    bench.addresses.silent = true;
    bench.start().playOnlineSong(onlineSong(u"1"_s), {});
    settle();
    QCOMPARE(bench.player().playError(), std::optional(u"无法获取播放链接"_s));
    QVERIFY(!bench.player().isLoading());
    QVERIFY(bench.home.web().pending.empty());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
}

void AudioPlayerOnlineTest::withoutOnlinePartsThereIsNoAddress()
{
    PlayerBench bench;
    bench.home.platform.httpClient.reset();
    LocalMusicImportService importService(bench.home.platform);
    {
        AudioPlayerService player(bench.home.platform, importService);
        player.playOnlineSong(onlineSong(u"1"_s), {});
        settle();
        QCOMPARE(player.playError(), std::optional(u"无法获取播放链接"_s));
        QVERIFY(!player.isLoading());
    }
    bench.home.platform.httpClient = std::make_unique<FakeHttpClient>();
}

void AudioPlayerOnlineTest::errorIsClearedByTheNextOnlineSong()
{
    PlayerBench bench;
    bench.addresses.silent = true;
    bench.start().playOnlineSong(onlineSong(u"1"_s), {});
    settle();
    QVERIFY(bench.player().playError());
    bench.addresses.silent = false;
    bench.player().playOnlineSong(onlineSong(u"2"_s), {});
    QVERIFY(!bench.player().playError());
}

void AudioPlayerOnlineTest::localSongWhileAnAddressIsFetchedWins()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.playSong(fileSong(u"a"_s), {});
    bench.answerWeb(redirected(u"https://cdn.example/1.mp3"_s));
    QCOMPARE(songOf(player).id(), u"a"_s);
    QVERIFY(!player.currentOnlineSong());
    QCOMPARE(bench.stream().items.size(), 1);
    QVERIFY(player.isPlaying());
    QVERIFY(!player.playError());
}

void AudioPlayerOnlineTest::localSongEndsTheLoading()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.playSong(fileSong(u"a"_s), {});
    QVERIFY(!player.isLoading());
    bench.answerWeb(std::unexpected(HttpError{HttpError::Kind::timeout, u"timed out"_s}));
    QVERIFY(!player.isLoading());
    QCOMPARE(songOf(player).id(), u"a"_s);
}

void AudioPlayerOnlineTest::songWithoutAddressEndsTheLoading()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    Song song = fileSong(u"a"_s);
    song.setAssetURL({});
    player.playSong(song, {});
    bench.answerWeb(redirected(u"https://cdn.example/1.mp3"_s));
    QVERIFY(!player.isLoading());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
}

void AudioPlayerOnlineTest::laterOnlineSongWins()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.playOnlineSong(onlineSong(u"2"_s), {});
    bench.answerWeb(redirected(u"https://cdn.example/1.mp3"_s));
    QVERIFY(player.isLoading());
    QCOMPARE(bench.home.streamPlayersMade(), 0);
    bench.answerWeb(redirected(u"https://cdn.example/2.mp3"_s));
    QCOMPARE(playedAddress(bench), u"https://cdn.example/2.mp3"_s);
    QVERIFY(!player.isLoading());
}

void AudioPlayerOnlineTest::sameSongAskedForTwicePlaysOnce()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playOnlineSong(onlineSong(u"1"_s), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    bench.answerWeb(redirected(u"https://cdn.example/1.mp3"_s));
    bench.answerWeb(redirected(u"https://cdn.example/1.mp3"_s));
    QCOMPARE(bench.stream().items.size(), 1);
    QVERIFY(player.isPlaying());
}

void AudioPlayerOnlineTest::backToTheFirstSongTakesTheLatestAnswer()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    for (const QString &id : {u"1"_s, u"2"_s, u"1"_s})
        player.playOnlineSong(onlineSong(id), {});
    bench.answerWeb(redirected(u"https://cdn.example/old.mp3"_s));
    bench.answerWeb(redirected(u"https://cdn.example/2.mp3"_s));
    QVERIFY(player.isLoading());
    bench.answerWeb(redirected(u"https://cdn.example/new.mp3"_s));
    QCOMPARE(playedAddress(bench), u"https://cdn.example/new.mp3"_s);
    QCOMPARE(bench.stream().items.size(), 1);
}

void AudioPlayerOnlineTest::runningSongPlaysOnWhileAnAddressIsFetched()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(fileSong(u"a"_s), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    QVERIFY(player.isPlaying());
    QCOMPARE(bench.stream().rate(), 1.0);
    bench.answerWeb(redirected(u"https://cdn.example/1.mp3"_s));
    QCOMPARE(bench.stream().calls,
             (QStringList{u"replace a.mp3"_s, u"play"_s, u"replace 1.mp3"_s, u"play"_s}));
}

void AudioPlayerOnlineTest::onlineSongShowsNoDurationOfAnEarlierSong()
{
    PlayerBench bench;
    AudioPlayerService &player = bench.start();
    player.playSong(webSong(u"w"_s, 180), {});
    player.playOnlineSong(onlineSong(u"1"_s), {});
    bench.answerWeb(redirected(u"https://cdn.example/1.mp3"_s));
    QCOMPARE(player.duration(), 0.0);
    bench.answerDuration(240);
    QCOMPARE(player.duration(), 240.0);
}

void AudioPlayerOnlineTest::onlineFileAddressIsEqualized()
{
    PlayerBench bench;
    bench.equalizer.enabled = true;
    bench.start().playOnlineSong(onlineSong(u"1"_s), {});
    bench.answerWeb(redirected(u"https://cdn.example/1.mp3"_s));
    QVERIFY(bench.equalizer.calls.isEmpty());
    bench.player().playOnlineSong(onlineSong(u"2"_s), {});
    bench.answerWeb(body(bench, "{\"url\":\"file:///music/2.mp3\"}"));
    QCOMPARE(bench.equalizer.calls, (QStringList{u"prepare 2.mp3"_s, u"play"_s}));
}

QTEST_GUILESS_MAIN(AudioPlayerOnlineTest)
#include "tst_audio_player_online.moc"
