// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeSubsonic.h"
#include "Fakes/OnlineAnswers.h"
#include "Utils/Tasks.h"
#include "Views/HeldKey.h"
#include "Views/NowPlayingScreenTest.h"

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int lineCount = 40;

QString wordsOf(int line)
{
    return u"第 %1 行"_s.arg(line);
}

/// One line a second.
QByteArray lyricsText()
{
    QString text;
    for (int i = 0; i < lineCount; ++i)
        text += QString::asprintf("[00:%02d.00]", i) + wordsOf(i) + u'\n';
    return text.toUtf8();
}

} // namespace

/// Lyrics of each source on the full-screen player, and a double tap on one of their lines.
class NowPlayingLyricsTest : public NowPlayingScreenTest
{
    Q_OBJECT
private:
    enum class Source { online, embedded, server, sideFile };

    void playOnline()
    {
        s->bench.apiConfig.setBaseURL(u"https://api.example"_s);
        s->bench.player.playOnlineSong(onlineSong(u"7"_s), {});
    }
    Song serverSong(FakeSubsonic &subsonic)
    {
        NavidromeConfig config;
        config.name = u"家"_s;
        config.serverURL = u"http://music.test:4533"_s;
        config.username = u"listener"_s;
        detach(s->bench.navidrome.saveConfig(config, u"sesame"_s));
        if (!QTest::qWaitFor([this, &config] { return s->bench.navidrome.configs().contains(config); }))
            qFatal("a server is not stored");
        subsonic.setAnswer(u"getLyricsBySongId.view"_s,
                           webAnswer(lyricsAnswer(lyricsText().replace('\n', "\\n"))));
        return NowPlayingScene::song(u"navidrome_"_s + config.uuidText() + u"_1"_s, u"夜曲"_s);
    }
    /// The line of that number on the page or beside the cover, wherever it is seen.
    QQuickItem *line(int number) const
    {
        QQuickItem *found = s->item(u"lyricLine%1"_s.arg(number));
        return found && found->isVisible() ? found : nullptr;
    }
    bool isInTheMiddle(int number) const
    {
        const QQuickItem *list = s->item(u"lyricList"_s);
        const QQuickItem *item = line(number);
        return item && std::abs(s->area(item).center().y() - s->area(list).center().y()) < 2;
    }

private Q_SLOTS:
    void lyricsOfEachSourceAreSungAndSought_data()
    {
        QTest::addColumn<int>("source");
        QTest::addColumn<QSize>("size");
        for (const auto &[name, source] :
             {std::pair("online", Source::online), std::pair("embedded", Source::embedded),
              std::pair("on the server", Source::server), std::pair("beside the file", Source::sideFile)}) {
            QTest::addRow("%s, narrow", name) << int(source) << QSize(390, 844);
            QTest::addRow("%s, wide", name) << int(source) << QSize(1000, 700);
        }
    }
    void lyricsOfEachSourceAreSungAndSought()
    {
        QFETCH(int, source);
        QFETCH(QSize, size);
        FakeSubsonic subsonic(s->bench.home.web());
        QString id = u"sung"_s;
        switch (static_cast<Source>(source)) {
        case Source::online:
            playOnline();
            id = u"7"_s;
            break;
        case Source::embedded:
            s->bench.playSong(NowPlayingScene::song(id, u"歌"_s, {}, QString::fromUtf8(lyricsText())), 200);
            break;
        case Source::server: {
            const Song song = serverSong(subsonic);
            id = song.id();
            s->bench.playSong(song, 200);
            break;
        }
        case Source::sideFile:
            s->bench.home.addMetadataFile(id + u"_lyrics.lrc"_s, lyricsText());
            s->bench.playSong(NowPlayingScene::song(id, u"歌"_s), 200);
            break;
        }
        s->bench.offsets.setOffset(500, id);
        QVERIFY(s->show(size));
        if (source == int(Source::online)) {
            FakeHttpClient &web = s->bench.home.web();
            QVERIFY(QTest::qWaitFor(
                [&web] { return web.answer(u"type=lrc"_s, onlineAnswers::body(lyricsText())); }));
            QVERIFY(web.answer(u"url?id=7"_s, onlineAnswers::body("https://cdn.example/7.mp3")));
            // What the address of its sound leads to.
            QTRY_VERIFY(s->bench.home.streamPlayer() && s->bench.stream().lastItem());
            s->bench.stream().lastItem()->answerDuration(200);
            s->bench.stream().lastItem()->becomeReady();
            settle();
        }
        if (source == int(Source::server))
            QTRY_VERIFY((settle(), subsonic.answerAll(), s->bench.lyrics.hasLyrics()));
        QTRY_VERIFY(s->bench.lyrics.hasLyrics());
        if (size.width() < 900)
            s->click(u"lyricsButton"_s);
        QTRY_VERIFY(line(1));
        s->bench.stream().tick(19.6);
        QTRY_VERIFY(isInTheMiddle(20));
        for (int i = 18; i <= 22; ++i)
            QCOMPARE(line(i)->property("text").toString(), wordsOf(i));
        s->bench.stream().seeks.clear();
        QTest::mouseDClick(s->window(), Qt::LeftButton, {}, s->area(line(19)).center().toPoint());
        QCOMPARE(s->bench.stream().seeks.size(), 1);
        QCOMPARE(s->bench.stream().seeks.constFirst().time, 18.5);
        QCOMPARE(s->bench.lyrics.currentLineIndex(), 19);
    }
    void underASongWhoseAddressIsOnItsWayNothingIsSought()
    {
        s->bench.playSong(NowPlayingScene::song(u"before"_s, u"歌"_s, {}, QString::fromUtf8(lyricsText())),
                          200);
        QVERIFY(s->show());
        s->click(u"lyricsButton"_s);
        s->bench.stream().tick(30);
        QTRY_VERIFY(isInTheMiddle(30));
        playOnline();
        FakeHttpClient &web = s->bench.home.web();
        QVERIFY(
            QTest::qWaitFor([&web] { return web.answer(u"type=lrc"_s, onlineAnswers::body(lyricsText())); }));
        QTRY_VERIFY(s->bench.lyrics.hasLyrics());
        // The first line is as high as it comes.
        QTRY_VERIFY(line(0) && line(1));
        s->bench.stream().tick(31);
        QCOMPARE(s->bench.lyrics.currentLineIndex(), 0);
        s->bench.stream().seeks.clear();
        QTest::mouseDClick(s->window(), Qt::LeftButton, {}, s->area(line(1)).center().toPoint());
        QVERIFY(!s->slider()->isEnabled());
        QTest::mouseClick(s->window(), Qt::LeftButton, {}, s->onSlider(s->slider()->width() - 1));
        QVERIFY(s->bench.stream().seeks.isEmpty());
        QCOMPARE(s->bench.player.currentOnlineSong()->id, u"7"_s);
        QVERIFY(s->bench.player.isPlaying());
        // From here on it is a song like any other.
        QVERIFY(web.answer(u"url?id=7"_s, onlineAnswers::body("https://cdn.example/7.mp3")));
        QTRY_VERIFY(!s->bench.player.isLoading());
        s->bench.stream().lastItem()->answerDuration(200);
        s->bench.stream().lastItem()->becomeReady();
        QTRY_VERIFY(s->slider()->isEnabled());
        QTest::mouseDClick(s->window(), Qt::LeftButton, {}, s->area(line(1)).center().toPoint());
        QCOMPARE(s->bench.stream().seeks.size(), 1);
    }
    void lyricsThatAreAskedForAreNotSaidToBeNone()
    {
        playOnline();
        QVERIFY(s->show());
        s->click(u"lyricsButton"_s);
        QTRY_VERIFY(s->shows(u"lyricsLoading"_s));
        QVERIFY(!s->shows(u"noLyrics"_s));
        FakeHttpClient &web = s->bench.home.web();
        QVERIFY(QTest::qWaitFor([&web] { return web.answer(u"type=lrc"_s, onlineAnswers::body("")); }));
        QTRY_VERIFY(s->shows(u"noLyrics"_s));
        QVERIFY(!s->shows(u"lyricsLoading"_s));
    }
    void withoutLyricsTheKeysAreTheScreens()
    {
        s->bench.playSong(NowPlayingScene::song(u"sung"_s, u"歌"_s, {}, QString::fromUtf8(lyricsText())),
                          200);
        QVERIFY(s->show());
        s->click(u"lyricsButton"_s);
        QTRY_VERIFY(line(1));
        s->item(u"lyricList"_s)->forceActiveFocus(Qt::TabFocusReason);
        for (const Qt::Key key : scrollingKeys)
            QVERIFY(takesKey(s->item(u"lyricList"_s), key));
        s->bench.playSong(NowPlayingScene::song(u"silent"_s, u"曲"_s), 200);
        QTRY_VERIFY(s->shows(u"noLyrics"_s));
        for (const Qt::Key key : scrollingKeys)
            QVERIFY(!takesKey(s->item(u"lyricList"_s), key));
    }
    void aSongWithoutLyricsSaysSoOnThePageAndNothingElsewhere()
    {
        QVERIFY(showSong());
        QCOMPARE(s->text(u"miniLyric"_s), QString());
        s->click(u"lyricsButton"_s);
        QTRY_VERIFY(s->shows(u"noLyrics"_s));
        s->resize({1000, 700});
        s->bench.nowPlaying.setCurrentPage(NowPlayingViewModel::CoverPage);
        QTRY_VERIFY(!s->shows(u"lyricList"_s));
    }
};

QTEST_MAIN(NowPlayingLyricsTest)
#include "tst_now_playing_lyrics.moc"
