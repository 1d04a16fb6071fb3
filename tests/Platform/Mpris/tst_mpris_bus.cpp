// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpris/MprisBench.h"
#include "Views/WarningWatch.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Being on the bus, and not being there.
class TestMprisBus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSecondPlayerTakesANameOfItsOwn();
    void aThirdOfTheSameProcessStandsBack();
    void theNameIsFreeWhenThePlayerEnds();
    void withoutABusNothingHappens();
    void aBusThatDiesIsSurvived();
    void theBusIsFoundAgain();
    void itEndsInTheMiddleOfACall();
    void itEndsBeforeItIsOnTheBus();

private:
    static std::unique_ptr<MprisPlayer> makePlayer(const QTemporaryDir &caches, const Clock &clock,
                                                   const MprisBus::Connect &connect);
};

std::unique_ptr<MprisPlayer> TestMprisBus::makePlayer(const QTemporaryDir &caches, const Clock &clock,
                                                      const MprisBus::Connect &connect)
{
    return std::make_unique<MprisPlayer>(
        Directories{.documents = {}, .applicationSupport = {}, .caches = caches.path()}, clock, connect);
}

void TestMprisBus::aSecondPlayerTakesANameOfItsOwn()
{
    MprisBench bench;
    QVERIFY(bench.begin());
    const QTemporaryDir caches;
    const auto second = makePlayer(caches, bench.clock(), MprisBench::connectTo(bench.bus()));
    const QString name =
        u"org.mpris.MediaPlayer2.cadorel.instance%1"_s.arg(QCoreApplication::applicationPid());
    MprisClient client(bench.bus(), name);
    QVERIFY(client.findsPlayer());
    NowPlayingInfo info = MprisBench::song();
    info.title = u"第二"_s;
    second->setNowPlayingInfo(info);
    QCOMPARE(client.metadata().value(u"xesam:title"_s).toString(), u"第二"_s);
    QCOMPARE(bench.client().metadata().value(u"xesam:title"_s).toString(), u"晴天"_s);
    // Each hears its own commands.
    second->setPlaybackControls(MprisBench::everything());
    CommandLog log(*second);
    QCOMPARE(client.play(u"Next"_s), QString());
    QCOMPARE(log.take(), QStringList{u"next"_s});
    QCOMPARE(bench.takeCommands(), QStringList());
}

void TestMprisBus::aThirdOfTheSameProcessStandsBack()
{
    MprisBench bench;
    QVERIFY(bench.begin());
    const QTemporaryDir caches;
    const auto second = makePlayer(caches, bench.clock(), MprisBench::connectTo(bench.bus()));
    const QString name =
        u"org.mpris.MediaPlayer2.cadorel.instance%1"_s.arg(QCoreApplication::applicationPid());
    MprisClient client(bench.bus(), name);
    QVERIFY(client.findsPlayer());
    WarningWatch warnings;
    QStringList said;
    const QTemporaryDir otherCaches;
    const auto third = makePlayer(otherCaches, bench.clock(), MprisBench::connectTo(bench.bus()));
    const auto complains = [&] {
        said += warnings.take();
        return !said.isEmpty();
    };
    QTRY_VERIFY(complains());
    QCOMPARE(said, QStringList{u"no media controls: %1 is taken"_s.arg(name)});
    third->setNowPlayingInfo(MprisBench::song());
    QVERIFY(bench.client().settle());
    QVERIFY(client.settle());
}

void TestMprisBus::theNameIsFreeWhenThePlayerEnds()
{
    MprisBench bench;
    QVERIFY(bench.begin());
    bench.end();
    QTRY_VERIFY(!bench.bus().hasService(MprisBus::busName));
}

void TestMprisBus::withoutABusNothingHappens()
{
    const QTemporaryDir caches;
    FakeClock clock;
    std::atomic<int> looks = 0;
    const auto nowhere = [&looks](const QString &name) {
        ++looks;
        return QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, name);
    };
    const auto player = makePlayer(caches, clock, nowhere);
    QTRY_COMPARE(looks.load(), 1);
    player->setPlaybackControls(MprisBench::everything());
    NowPlayingInfo info = MprisBench::song();
    for (int second = 0; second < 60; ++second) {
        clock.advance(1s);
        info.playbackRate = second % 2;
        player->setNowPlayingInfo(info);
        QCoreApplication::processEvents();
    }
    QCOMPARE(player->nowPlayingInfo().title, u"晴天"_s);
    QCOMPARE(looks.load(), 1);
}

void TestMprisBus::aBusThatDiesIsSurvived()
{
    MprisBench bench;
    QVERIFY(bench.begin());
    bench.bus().stop();
    NowPlayingInfo info = MprisBench::song();
    for (int second = 0; second < 20; ++second) {
        bench.clock().advance(1s);
        info.playbackRate = second % 2;
        info.elapsedPlaybackTime = second * 7;
        bench.tell(info);
        bench.tell(PlaybackControls{});
        bench.tell(MprisBench::everything());
        QCoreApplication::processEvents();
    }
    QCOMPARE(bench.player().nowPlayingInfo().elapsedPlaybackTime, 19.0 * 7);
    bench.end();
}

void TestMprisBus::theBusIsFoundAgain()
{
    MprisBench bench;
    QVERIFY(bench.begin());
    bench.bus().stop();
    QVERIFY(bench.bus().start());
    MprisClient client(bench.bus());
    NowPlayingInfo info = MprisBench::song();
    // At the next occasion, but not more often than it makes sense.
    const auto isBack = [&] {
        bench.clock().advance(MprisBus::lookInterval);
        info.playbackRate = info.playbackRate == 0 ? 1 : 0;
        bench.tell(info);
        return bench.bus().hasService(MprisBus::busName);
    };
    QTRY_VERIFY(isBack());
    bench.tell(MprisBench::song(u"after that"_s));
    QVERIFY(client.settle());
    QCOMPARE(client.get(u"PlaybackStatus"_s).toString(), u"Playing"_s);
    QCOMPARE(client.play(u"Next"_s), QString());
    QCOMPARE(bench.takeCommands(), QStringList{u"next"_s});
    client.takeChanges();
    bench.tell(PlaybackControls{});
    QCOMPARE(client.takeChanges().size(), 1);
}

void TestMprisBus::itEndsInTheMiddleOfACall()
{
    MprisBench bench;
    QVERIFY(bench.begin());
    QDBusConnection connection = bench.bus().connection(u"in a hurry"_s);
    for (int i = 0; i < 100; ++i)
        QVERIFY(connection.send(QDBusMessage::createMethodCall(
            MprisBus::busName, u"/org/mpris/MediaPlayer2"_s, MprisClient::playerInterface, u"Next"_s)));
    bench.tell(PlaybackControls{});
    bench.end();
    QTRY_VERIFY(!bench.bus().hasService(MprisBus::busName));
}

void TestMprisBus::itEndsBeforeItIsOnTheBus()
{
    PrivateBus bus;
    QVERIFY(bus.start());
    const QTemporaryDir caches;
    FakeClock clock;
    for (int i = 0; i < 20; ++i)
        makePlayer(caches, clock, MprisBench::connectTo(bus));
    QTRY_VERIFY(!bus.hasService(MprisBus::busName));
    const auto player = makePlayer(caches, clock, MprisBench::connectTo(bus));
    QTRY_VERIFY(bus.hasService(MprisBus::busName));
}

QTEST_GUILESS_MAIN(TestMprisBus)
#include "tst_mpris_bus.moc"
