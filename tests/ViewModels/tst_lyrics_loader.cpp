// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LyricsBench.h"

#include <QScopeGuard>
#include <QSignalSpy>
#include <QThreadPool>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestLyricsLoader : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<LyricsBench> m_bench;
    std::unique_ptr<LyricsLoader> m_loader;

    LyricsBench &bench() { return *m_bench; }
    LyricsLoader &loader() { return *m_loader; }
    QStringList shown() const { return LyricsBench::texts(m_loader->lines()); }
    void playOnline(const QString &id) { bench().player().playOnlineSong(onlineSong(id), onlineSongs({id})); }
    qsizetype lyricsRequests()
    {
        qsizetype count = 0;
        for (const QString &endpoint : bench().subsonic.askedEndpoints())
            count += endpoint.startsWith(u"getLyrics"_s) ? 1 : 0;
        return count;
    }

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<LyricsBench>();
        m_loader = std::make_unique<LyricsLoader>(bench().player(), bench().sources());
    }
    void cleanup()
    {
        m_loader.reset();
        m_bench.reset();
    }

    void withoutASongThereIsNothing()
    {
        loader().load();
        QCOMPARE(loader().lastSongId(), u"none"_s);
        QCOMPARE(shown(), QStringList());
    }

    void nothingIsLookedForBeforeItIsAskedFor()
    {
        bench().play(LyricsBench::songWith(u"a"_s, u"[00:01.00]词"_s));
        QCOMPARE(shown(), QStringList());
        loader().load();
        QCOMPARE(shown(), QStringList{u"词"_s});
    }

    // MARK: sources

    void lyricsOfAnOnlineSongComeFromItsPlatformAlone()
    {
        bench().addSideFile(u"a"_s, "[00:01.00]beside");
        playOnline(u"a"_s);
        loader().load();
        QCOMPARE(loader().lastSongId(), u"a"_s);
        QCOMPARE(shown(), QStringList());
        QVERIFY(loader().isLoading());
        bench().answerOnline(u"a"_s, "[00:02.00]from the platform");
        QTRY_COMPARE(shown(), QStringList{u"from the platform"_s});
        QVERIFY(!loader().isLoading());
    }

    void anOnlineSongWithoutLyricsHasNone()
    {
        bench().addSideFile(u"a"_s, "[00:01.00]beside");
        playOnline(u"a"_s);
        loader().load();
        QVERIFY(loader().isLoading());
        QVERIFY(bench().home.web().answer(u"type=lrc"_s, onlineAnswers::broken(u"断了"_s)));
        settle();
        QCOMPARE(shown(), QStringList());
        QVERIFY(!loader().isLoading());
        QCOMPARE(lyricsRequests(), 0);
    }

    void whatIsAtHandIsNotWaitedFor()
    {
        bench().play(LyricsBench::songWith(u"a"_s, u"[00:01.00]embedded"_s));
        loader().load();
        QCOMPARE(shown(), QStringList{u"embedded"_s});
        QVERIFY(!loader().isLoading());
        bench().play(fileSong(u"b"_s));
        QVERIFY(!loader().isLoading());
        playOnline(u"c"_s);
        QVERIFY(loader().isLoading());
        loader().clear();
        QVERIFY(!loader().isLoading());
        // A song that passes by while its lyrics are asked for ends nothing of the next one's search.
        playOnline(u"d"_s);
        loader().load();
        playOnline(u"e"_s);
        QVERIFY(loader().isLoading());
        bench().answerOnline(u"e"_s, "[00:01.00]of the last");
        QTRY_COMPARE(shown(), QStringList{u"of the last"_s});
        QVERIFY(!loader().isLoading());
    }

    void embeddedLyricsComeFirst()
    {
        Song song = bench().addNavidromeSong(u"1"_s);
        song.setEmbeddedLyrics(u"[00:01.00]embedded"_s);
        bench().addSideFile(song.id(), "[00:01.00]beside");
        bench().play(song);
        loader().load();
        QCOMPARE(shown(), QStringList{u"embedded"_s});
        settle();
        QCOMPARE(lyricsRequests(), 0);
    }

    void emptyEmbeddedLyricsAreNone()
    {
        bench().addSideFile(u"a"_s, "[00:01.00]beside");
        bench().play(LyricsBench::songWith(u"a"_s, u""_s));
        loader().load();
        QCOMPARE(shown(), QStringList{u"beside"_s});
    }

    void embeddedLyricsOfNothingButTagsEndTheSearch()
    {
        bench().addSideFile(u"a"_s, "[00:01.00]beside");
        bench().play(LyricsBench::songWith(u"a"_s, u"[ti:歌]"_s));
        loader().load();
        QCOMPARE(shown(), QStringList());
    }

    void theServerIsAskedBeforeTheSideFile()
    {
        const Song song = bench().addNavidromeSong(u"1"_s);
        bench().addSideFile(song.id(), "[00:01.00]beside");
        bench().subsonic.setAnswer(u"getLyricsBySongId.view"_s,
                                   webAnswer(lyricsAnswer("[00:01.00]on the server")));
        bench().play(song);
        loader().load();
        QCOMPARE(shown(), QStringList());
        QVERIFY(bench().answerServer());
        QTRY_COMPARE(shown(), QStringList{u"on the server"_s});
    }

    void aServerThatBringsNothingLeavesItToTheSideFile_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("an empty text") << lyricsAnswer("");
        QTest::newRow("no record") << subsonicAnswer();
        QTest::newRow("a refusal") << subsonicRefusal("no");
    }

    void aServerThatBringsNothingLeavesItToTheSideFile()
    {
        QFETCH(QByteArray, body);
        const Song song = bench().addNavidromeSong(u"1"_s);
        bench().addSideFile(song.id(), "[00:01.00]beside");
        bench().subsonic.setAnswer(u"getLyricsBySongId.view"_s, webAnswer(body));
        bench().subsonic.setAnswer(u"getLyrics.view"_s, webAnswer(body));
        bench().play(song);
        loader().load();
        QTRY_COMPARE((settle(), bench().subsonic.answerAll(), shown()), QStringList{u"beside"_s});
    }

    void onlySongsOfSuchServersAreAskedFor()
    {
        for (const QString &id : {u"a"_s, u"webdav_1"_s, u"my_navidrome_1"_s}) {
            bench().addSideFile(id, "[00:01.00]beside " + id.toUtf8());
            bench().play(fileSong(id));
            loader().load();
            QCOMPARE(shown(), QStringList{u"beside "_s + id});
        }
        QCOMPARE(lyricsRequests(), 0);
    }

    void withoutAnySourceThereIsNothing()
    {
        bench().play(fileSong(u"a"_s));
        loader().load();
        settle();
        QCOMPARE(shown(), QStringList());
        QCOMPARE(loader().lastSongId(), u"a"_s);
    }

    void plainTextIsReadToo()
    {
        bench().play(LyricsBench::songWith(u"a"_s, u"one\ntwo"_s));
        loader().load();
        QCOMPARE(shown(), (QStringList{u"one"_s, u"two"_s}));
        QCOMPARE(loader().lines().at(1).timeMs, 5000);
    }

    // MARK: changes of the song

    void anotherSongBringsItsOwn()
    {
        bench().play(LyricsBench::songWith(u"a"_s, u"[00:01.00]of a"_s));
        loader().load();
        bench().play(LyricsBench::songWith(u"b"_s, u"[00:01.00]of b"_s));
        QCOMPARE(shown(), QStringList{u"of b"_s});
        QCOMPARE(loader().lastSongId(), u"b"_s);
        bench().play(fileSong(u"c"_s));
        QCOMPARE(shown(), QStringList());
    }

    void theOldLinesGoBeforeTheNewOnesCome()
    {
        bench().play(LyricsBench::songWith(u"a"_s, u"[00:01.00]of a"_s));
        loader().load();
        playOnline(u"b"_s);
        QCOMPARE(loader().lastSongId(), u"b"_s);
        QCOMPARE(shown(), QStringList());
        bench().answerOnline(u"b"_s, "[00:01.00]of b");
        QTRY_COMPARE(shown(), QStringList{u"of b"_s});
    }

    void theAnswerForASongThatHasPassedIsDropped()
    {
        playOnline(u"a"_s);
        loader().load();
        playOnline(u"b"_s);
        bench().answerOnline(u"b"_s, "[00:01.00]of b");
        QTRY_COMPARE(shown(), QStringList{u"of b"_s});
        QSignalSpy changes(&loader(), &LyricsLoader::linesChanged);
        QVERIFY(!bench().asksOnline(u"a"_s));
        QVERIFY(QThreadPool::globalInstance()->waitForDone(patienceMs));
        settle();
        QCOMPARE(shown(), QStringList{u"of b"_s});
        QCOMPARE(changes.size(), 0);
    }

    void theServersAnswerForASongThatHasPassedIsDropped()
    {
        const Song song = bench().addNavidromeSong(u"1"_s);
        bench().addSideFile(song.id(), "[00:01.00]beside");
        bench().subsonic.setAnswer(u"getLyricsBySongId.view"_s, webAnswer(lyricsAnswer("[00:01.00]late")));
        bench().play(song);
        loader().load();
        QTRY_VERIFY(bench().subsonic.isAsked());
        bench().play(fileSong(u"b"_s));
        settle();
        QVERIFY(!bench().subsonic.isAsked());
        // Neither is the second question asked.
        QCOMPARE(lyricsRequests(), 1);
        QCOMPARE(shown(), QStringList());
        QCOMPARE(loader().lastSongId(), u"b"_s);
    }
    void anAnswerThatMeetsTheNextSongOnItsWayIsDropped()
    {
        playOnline(u"a"_s);
        loader().load();
        QVERIFY(bench().home.web().answer(u"id=a&type=lrc"_s, onlineAnswers::body("[00:01.00]of a")));
        playOnline(u"b"_s);
        settle();
        QCOMPARE(shown(), QStringList());
        // It is no failure that anybody has to read of.
        QVERIFY(bench().console.take().filter(u"lyrics"_s).isEmpty());
        // And one that is being read by a worker already.
        QVERIFY(bench().home.web().answer(u"id=b&type=lrc"_s, onlineAnswers::body(timedText(5000).toUtf8())));
        settle();
        playOnline(u"c"_s);
        QVERIFY(QThreadPool::globalInstance()->waitForDone(patienceMs));
        settle();
        QCOMPARE(shown(), QStringList());
    }
    void songsThatPassByLeaveNothingInLine()
    {
        loader().load();
        for (int i = 0; i < 20; ++i)
            playOnline(QString::number(i));
        settle();
        int waiting = 0;
        for (const FakeHttpClient::Pending &request : bench().home.web().pending)
            waiting += request.request.url.toString().contains(u"type=lrc"_s) ? 1 : 0;
        QCOMPARE(waiting, 1);
        bench().answerOnline(u"19"_s, "[00:01.00]of the last");
        QTRY_COMPARE(shown(), QStringList{u"of the last"_s});
    }

    void aLongTextOfASongThatHasPassedIsDropped()
    {
        bench().play(LyricsBench::songWith(u"a"_s, timedText(5000)));
        loader().load();
        // It is being read by a worker.
        QCOMPARE(shown(), QStringList());
        bench().play(LyricsBench::songWith(u"b"_s, u"[00:01.00]of b"_s));
        QVERIFY(QThreadPool::globalInstance()->waitForDone(patienceMs));
        settle();
        QCOMPARE(shown(), QStringList{u"of b"_s});
    }

    void lyricsThatComeWhileTheSongPlaysAreShown()
    {
        const Song song = serverSong(u"a"_s, 200);
        bench().play(song);
        loader().load();
        QCOMPARE(shown(), QStringList());
        Song known = song;
        known.setEmbeddedLyrics(u"[00:01.00]from the stream"_s);
        bench().play(known);
        QCOMPARE(shown(), QStringList{u"from the stream"_s});
        // What says nothing new is not read again.
        QSignalSpy changes(&loader(), &LyricsLoader::linesChanged);
        known.setTitle(u"another title"_s);
        bench().play(known);
        QCOMPARE(changes.size(), 0);
        QCOMPARE(shown(), QStringList{u"from the stream"_s});
    }

    void clearedLyricsFollowThePlayerNoMore()
    {
        bench().play(LyricsBench::songWith(u"a"_s, u"[00:01.00]of a"_s));
        loader().load();
        loader().clear();
        QCOMPARE(shown(), QStringList());
        bench().play(LyricsBench::songWith(u"b"_s, u"[00:01.00]of b"_s));
        QCOMPARE(shown(), QStringList());
        loader().load();
        QCOMPARE(shown(), QStringList{u"of b"_s});
    }

    void anAnswerAfterClearingIsDropped()
    {
        playOnline(u"a"_s);
        loader().load();
        loader().clear();
        settle();
        QVERIFY(!bench().asksOnline(u"a"_s));
        QVERIFY(QThreadPool::globalInstance()->waitForDone(patienceMs));
        settle();
        QCOMPARE(shown(), QStringList());
    }

    void anAnswerAfterTheEndOfTheLoaderTouchesNothing()
    {
        playOnline(u"a"_s);
        loader().load();
        QVERIFY(bench().home.web().answer(u"id=a&type=lrc"_s, onlineAnswers::body("[00:01.00]of a")));
        m_loader.reset();
        QVERIFY(QThreadPool::globalInstance()->waitForDone(patienceMs));
        settle();
    }

    void loadingAgainReadsAnew()
    {
        bench().play(fileSong(u"a"_s));
        loader().load();
        QCOMPARE(shown(), QStringList());
        bench().addSideFile(u"a"_s, "[00:01.00]new");
        loader().load();
        QCOMPARE(shown(), QStringList{u"new"_s});
    }

    void fiveThousandLinesAreReadByAWorker()
    {
        bench().play(LyricsBench::songWith(u"a"_s, timedText(5000)));
        {
            // Without a worker nothing is read.
            QThreadPool &workers = *QThreadPool::globalInstance();
            const int count = workers.maxThreadCount();
            for (int i = 0; i < count; ++i)
                workers.reserveThread();
            const auto release = qScopeGuard([&workers, count] {
                for (int i = 0; i < count; ++i)
                    workers.releaseThread();
            });
            loader().load();
            settle();
            QCOMPARE(loader().lines().size(), 0);
        }
        QTRY_COMPARE(loader().lines().size(), 5000);
        QCOMPARE(loader().lines().constLast().text, u"line 4999"_s);
    }

    void aThousandChangesOfTheSongEndWithTheLast()
    {
        loader().load();
        constexpr int changes = 1000;
        for (int i = 0; i < changes; ++i) {
            switch (i % 4) {
            case 0:
                bench().play(LyricsBench::songWith(QString::number(i), u"[00:01.00]embedded %1"_s.arg(i)));
                QCOMPARE(shown(), QStringList{u"embedded %1"_s.arg(i)});
                break;
            case 1:
                playOnline(QString::number(i));
                QCOMPARE(shown(), QStringList());
                break;
            case 2:
                bench().play(fileSong(QString::number(i)));
                QCOMPARE(shown(), QStringList());
                break;
            default:
                bench().play(LyricsBench::songWith(QString::number(i), timedText(1200)));
                break;
            }
        }
        // Answers come late, in whatever order.
        while (!bench().home.web().pending.empty())
            bench().answerWeb(onlineAnswers::body("[00:01.00]late"));
        QVERIFY(QThreadPool::globalInstance()->waitForDone(patienceMs));
        settle();
        QCOMPARE(loader().lastSongId(), QString::number(changes - 1));
        QTRY_COMPARE(loader().lines().size(), 1200);
    }
};

QTEST_GUILESS_MAIN(TestLyricsLoader)
#include "tst_lyrics_loader.moc"
