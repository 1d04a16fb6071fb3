// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeClock.h"
#include "Platform/Linux/MprisPosition.h"
#include "Platform/NowPlayingInfo.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Where the song is between two tellings, and what counts as a jump.
class TestMprisPosition : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void nothingIsAtTheStart();
    void aPlayingSongRunsOn();
    void aSongThatWaitsForItsBeginningStands();
    void aPausedSongStands();
    void theEndIsNotPassed();
    void noNumberIsTheStart_data();
    void noNumberIsTheStart();
    void ticksAreNoJumps();
    void aFigureOfTheLastTickIsNoJump();
    void pausingAndPlayingIsNoJump();
    void jumpsAreJumps_data();
    void jumpsAreJumps();
    void aSmallMoveAtRestIsAJump();
    void aSmallJumpThatWasAskedForIsOne();
    void anotherTickIsNotTheJumpThatWasAskedFor();
    void aJumpThatDoesNotComeIsForgotten();
    void aSongThatStopsIsToldAbout();
    void aSlowDriftIsToldAboutOnce();
    void aNewSongBeginsAtTheStart();
    void aNewSongElsewhereIsAJump();
    void theSameSongAnewIsAJump();

private:
    bool tell(double elapsed, double rate = 1);
    double now() const { return std::chrono::duration<double>(m_position->now()).count(); }

    std::unique_ptr<FakeClock> m_clock;
    std::unique_ptr<MprisPosition> m_position;
    QString m_song;
};

void TestMprisPosition::init()
{
    m_clock = std::make_unique<FakeClock>();
    m_position = std::make_unique<MprisPosition>(*m_clock);
    m_song = u"a"_s;
}

bool TestMprisPosition::tell(double elapsed, double rate)
{
    NowPlayingInfo info;
    info.songId = m_song;
    info.playbackDuration = 100;
    info.elapsedPlaybackTime = elapsed;
    info.playbackRate = rate;
    return m_position->take(info);
}

void TestMprisPosition::nothingIsAtTheStart()
{
    m_clock->advance(5s);
    QCOMPARE(now(), 0.0);
}

void TestMprisPosition::aPlayingSongRunsOn()
{
    tell(0);
    tell(10);
    m_clock->advance(1500ms);
    QCOMPARE(now(), 11.5);
}

void TestMprisPosition::aSongThatWaitsForItsBeginningStands()
{
    tell(0);
    m_clock->advance(1min);
    QVERIFY(now() <= 2);
    // Who computes on by themselves hears where it is when it begins.
    QVERIFY(tell(0.25));
    QCOMPARE(now(), 0.25);
}

void TestMprisPosition::aPausedSongStands()
{
    tell(10, 0);
    m_clock->advance(1h);
    QCOMPARE(now(), 10.0);
}

void TestMprisPosition::theEndIsNotPassed()
{
    tell(99);
    m_clock->advance(1h);
    QCOMPARE(now(), 100.0);
}

void TestMprisPosition::noNumberIsTheStart_data()
{
    QTest::addColumn<double>("elapsed");
    QTest::newRow("no number") << qQNaN();
    QTest::newRow("endless") << qInf();
    QTest::newRow("negative") << -1.0;
}

void TestMprisPosition::noNumberIsTheStart()
{
    QFETCH(double, elapsed);
    tell(elapsed, 0);
    QCOMPARE(now(), 0.0);
}

void TestMprisPosition::ticksAreNoJumps()
{
    QVERIFY(!tell(0));
    // Timers are late, and readings a little off, but neither adds up.
    double elapsed = 0;
    for (int tick = 1; tick < 300; ++tick) {
        m_clock->advance(250ms);
        elapsed += 0.25;
        QVERIFY(!tell(elapsed + (tick % 3 == 0 ? 0.05 : 0)));
    }
    QVERIFY(now() > 74);
}

void TestMprisPosition::aFigureOfTheLastTickIsNoJump()
{
    tell(0);
    for (int tick = 1; tick < 40; ++tick) {
        m_clock->advance(240ms);
        // A cover has come: the figure is that of the last tick, and not where the song is.
        const double before = now();
        QVERIFY(!tell((tick - 1) * 0.25));
        QCOMPARE(now(), before);
        m_clock->advance(10ms);
        QVERIFY(!tell(tick * 0.25));
    }
}

void TestMprisPosition::pausingAndPlayingIsNoJump()
{
    tell(0);
    for (int round = 0; round < 10; ++round) {
        const double start = 0.25 * round;
        m_clock->advance(240ms);
        QVERIFY(!tell(start, 0)); // as old as a tick
        m_clock->advance(1min);
        QVERIFY(!tell(start, 0));
        QVERIFY(!tell(start, 1));
        m_clock->advance(250ms);
        QVERIFY(!tell(start + 0.25, 1));
    }
}

void TestMprisPosition::jumpsAreJumps_data()
{
    QTest::addColumn<double>("to");
    QTest::newRow("far ahead") << 80.0;
    QTest::newRow("far back") << 0.0;
    QTest::newRow("a second ahead") << 51.25;
    QTest::newRow("half a second ahead") << 50.75;
    QTest::newRow("half a second back") << 49.75;
}

void TestMprisPosition::jumpsAreJumps()
{
    QFETCH(double, to);
    tell(0);
    QVERIFY(tell(50));
    m_clock->advance(250ms);
    QVERIFY(tell(to));
    QCOMPARE(now(), to);
    m_clock->advance(250ms);
    QVERIFY(!tell(to + 0.25)); // told once
}

void TestMprisPosition::aSmallMoveAtRestIsAJump()
{
    tell(0, 0);
    QVERIFY(tell(20, 0));
    QVERIFY(tell(20.1, 0));
    QVERIFY(!tell(20.1, 0));
}

void TestMprisPosition::aSmallJumpThatWasAskedForIsOne()
{
    tell(0);
    m_clock->advance(10s);
    QVERIFY(!tell(10));
    m_position->expect(10.2);
    QVERIFY(tell(10.2));
    m_clock->advance(250ms);
    QVERIFY(!tell(10.45));
}

void TestMprisPosition::anotherTickIsNotTheJumpThatWasAskedFor()
{
    tell(0);
    m_clock->advance(10s);
    QVERIFY(!tell(10));
    m_position->expect(11);
    m_clock->advance(250ms);
    QVERIFY(!tell(10.25)); // it is still on the way
    m_clock->advance(250ms);
    QVERIFY(tell(11));
}

void TestMprisPosition::aJumpThatDoesNotComeIsForgotten()
{
    tell(0);
    m_position->expect(10);
    m_clock->advance(10s);
    QVERIFY(!tell(10.1)); // where the song got by itself
}

void TestMprisPosition::aSongThatStopsIsToldAbout()
{
    tell(0);
    m_clock->advance(2s);
    QVERIFY(!tell(2));
    // It waits for a server. Who computes on must not run away.
    int told = 0;
    for (int tick = 0; tick < 8; ++tick) {
        m_clock->advance(250ms);
        told += tell(2) ? 1 : 0;
    }
    QVERIFY(told >= 2);
    QVERIFY(now() < 2.5);
}

void TestMprisPosition::aSlowDriftIsToldAboutOnce()
{
    tell(0);
    int told = 0;
    double elapsed = 0;
    for (int tick = 0; tick < 100; ++tick) {
        m_clock->advance(250ms);
        elapsed += 0.245;
        told += tell(elapsed) ? 1 : 0;
    }
    QCOMPARE(told, 1);
}

void TestMprisPosition::aNewSongBeginsAtTheStart()
{
    tell(50);
    m_song = u"b"_s;
    QVERIFY(!tell(0));
    QCOMPARE(now(), 0.0);
    m_song = u"c"_s;
    QVERIFY(!tell(0.1)); // it has just begun
}

void TestMprisPosition::aNewSongElsewhereIsAJump()
{
    QVERIFY(tell(50, 0)); // brought back by the start of the program
    QVERIFY(!tell(50, 0));
    m_song = u"b"_s;
    QVERIFY(tell(30));
}

void TestMprisPosition::theSameSongAnewIsAJump()
{
    tell(0);
    m_clock->advance(99s);
    QVERIFY(!tell(99));
    QVERIFY(tell(0));
}

QTEST_GUILESS_MAIN(TestMprisPosition)
#include "tst_mpris_position.moc"
