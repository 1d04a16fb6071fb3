// SPDX-License-Identifier: GPL-3.0-or-later
// What the equalizer service asks of its engine, and in which order.
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeAudioEngine.h"
#include "Fakes/FakePreferences.h"
#include "Services/EqualizerService.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// A file of 200 seconds at 44,100 frames a second is prepared; the calls and lines of that are dropped.
struct Bench
{
    ConsoleLines console;
    FakePreferences preferences;
    std::unique_ptr<FakeAudioEngine> made = std::make_unique<FakeAudioEngine>();
    FakeAudioEngine &engine = *made;
    EqualizerService service{preferences, std::move(made)};

    void prepare()
    {
        service.prepareToPlay(url());
        drop();
    }
    void drop()
    {
        engine.calls.clear();
        console.take();
    }
    static QUrl url() { return QUrl::fromLocalFile(u"/music/歌.flac"_s); }
};

/// The exception's text; empty when there is none.
template <typename Call>
QString failureOf(Call call)
{
    try {
        call();
    } catch (const std::runtime_error &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

} // namespace

class EqualizerServiceEngineTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void prepareOpensConnectsStartsAndSchedules();
    void prepareTakesTheShapeOfEachFile();
    void prepareStartsARunningEngineNoSecondTime();
    void fileThatCannotBeOpenedThrows();
    void deviceThatCannotBeOpenedThrows();
    void failureLeavesNoFileBehind();
    void nameInTheLogStaysOneLine();
    void playStartsTheEngineAndTheNode();
    void playThrowsWithoutADevice();
    void pauseKeepsThePlace();
    void stopStopsTheNode();
    void timeIsThatOfTheNode();
    void durationIsThatOfTheFile();
    void seekWhilePlayingPlaysOnFromThere();
    void seekWhilePausedStaysPaused();
    void seekTruncatesToAFrame();
    void seekPastTheEndSchedulesNothing_data();
    void seekPastTheEndSchedulesNothing();
    void seekPastTheEndWhilePausedStaysPaused();
    void seekBackFromPastTheEndPlaysAgain();
    void seekBeforeTheStartIsTheStart_data();
    void seekBeforeTheStartIsTheStart();
    void seekWithoutAFileDoesNothing();
    void volumeIsTheNodes();
    void lostDeviceIsNotPlaying();
    void settingsReachTheEngineWithTheFile();
};

void EqualizerServiceEngineTest::prepareOpensConnectsStartsAndSchedules()
{
    Bench bench;
    bench.drop();
    bench.service.prepareToPlay(Bench::url());
    QCOMPARE(bench.engine.calls, (QStringList{u"node stop"_s, u"open 歌.flac"_s, u"connect 44100 2"_s,
                                              u"gain 0"_s, u"start"_s, u"schedule 0+8820000"_s}));
    QCOMPARE(bench.console.take(), (QStringList{u"🎛️ 均衡器更新: 关闭, 预设: 平坦, 前级: 0.0dB"_s,
                                                u"🎛️ 均衡器: 准备播放 歌.flac"_s}));
    QVERIFY(!bench.service.isPlaying());
    QVERIFY(bench.service.isEngineRunning());
    QCOMPARE(bench.service.currentTime(), 0.0);
    QCOMPARE(bench.service.duration(), 200.0);
}

void EqualizerServiceEngineTest::prepareTakesTheShapeOfEachFile()
{
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.service.seek(50);
    bench.engine.format = {.sampleRate = 96000, .channelCount = 1};
    bench.engine.length = 10;
    bench.drop();
    bench.service.prepareToPlay(Bench::url());
    QVERIFY(bench.engine.calls.contains(u"connect 96000 1"_s));
    QCOMPARE(bench.engine.segments(), (QList<FakeAudioEngine::Segment>{
                                          {.file = Bench::url(), .startFrame = 0, .frameCount = 960000}}));
    QCOMPARE(bench.service.duration(), 10.0);
    QCOMPARE(bench.service.currentTime(), 0.0);
    QVERIFY(!bench.service.isPlaying());
}

void EqualizerServiceEngineTest::prepareStartsARunningEngineNoSecondTime()
{
    Bench bench;
    bench.prepare();
    bench.service.prepareToPlay(Bench::url());
    QVERIFY(!bench.engine.calls.contains(u"start"_s));
}

void EqualizerServiceEngineTest::fileThatCannotBeOpenedThrows()
{
    Bench bench;
    bench.engine.openFailure = "打不开";
    QCOMPARE(failureOf([&] { bench.service.prepareToPlay(Bench::url()); }), u"打不开"_s);
    QCOMPARE(bench.engine.calls.constLast(), u"open 歌.flac"_s);
    QVERIFY(!bench.console.take().contains(u"🎛️ 均衡器: 准备播放 歌.flac"_s));
}

void EqualizerServiceEngineTest::deviceThatCannotBeOpenedThrows()
{
    Bench bench;
    bench.engine.startFailure = "没有可用的音频设备";
    QCOMPARE(failureOf([&] { bench.service.prepareToPlay(Bench::url()); }), u"没有可用的音频设备"_s);
    QCOMPARE(bench.engine.calls.constLast(), u"start"_s);
    QVERIFY(bench.engine.segments().isEmpty());
}

void EqualizerServiceEngineTest::failureLeavesNoFileBehind()
{
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.service.seek(30);
    bench.engine.openFailure = "打不开";
    QVERIFY(!failureOf([&] { bench.service.prepareToPlay(Bench::url()); }).isEmpty());
    QCOMPARE(bench.service.duration(), 0.0);
    QCOMPARE(bench.service.currentTime(), 0.0);
    QVERIFY(!bench.service.isPlaying());
    bench.drop();
    bench.service.seek(10);
    QCOMPARE(bench.engine.calls, QStringList());
}

void EqualizerServiceEngineTest::nameInTheLogStaysOneLine()
{
    Bench bench;
    bench.service.prepareToPlay(QUrl::fromLocalFile(u"/music/a\n✅ b.mp3"_s));
    QVERIFY(!bench.console.take().constLast().contains(u'\n'));
}

void EqualizerServiceEngineTest::playStartsTheEngineAndTheNode()
{
    Bench bench;
    bench.prepare();
    bench.service.play();
    QCOMPARE(bench.engine.calls, QStringList{u"node play"_s});
    QVERIFY(bench.service.isPlaying());
    bench.engine.loseDevice();
    bench.drop();
    bench.service.play();
    QCOMPARE(bench.engine.calls, (QStringList{u"start"_s, u"node play"_s}));
    QVERIFY(bench.service.isPlaying());
}

void EqualizerServiceEngineTest::playThrowsWithoutADevice()
{
    Bench bench;
    bench.prepare();
    bench.engine.loseDevice();
    bench.engine.startFailure = "没有可用的音频设备";
    QCOMPARE(failureOf([&] { bench.service.play(); }), u"没有可用的音频设备"_s);
    QCOMPARE(bench.engine.calls, QStringList{u"start"_s});
    QVERIFY(!bench.service.isPlaying());
}

void EqualizerServiceEngineTest::pauseKeepsThePlace()
{
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.engine.advance(3);
    bench.service.pause();
    bench.engine.advance(3);
    QVERIFY(!bench.service.isPlaying());
    QCOMPARE(bench.service.currentTime(), 3.0);
    bench.service.play();
    bench.engine.advance(1);
    QCOMPARE(bench.service.currentTime(), 4.0);
    QCOMPARE(bench.engine.calls, (QStringList{u"node play"_s, u"node pause"_s, u"node play"_s}));
}

void EqualizerServiceEngineTest::stopStopsTheNode()
{
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.service.stop();
    QCOMPARE(bench.engine.calls.constLast(), u"node stop"_s);
    QVERIFY(!bench.service.isPlaying());
}

void EqualizerServiceEngineTest::timeIsThatOfTheNode()
{
    Bench bench;
    bench.prepare();
    QCOMPARE(bench.service.currentTime(), 0.0);
    bench.service.seek(12.5);
    // The node has no time before it plays.
    QCOMPARE(bench.service.currentTime(), 12.5);
    bench.service.play();
    bench.engine.advance(2.25);
    QCOMPARE(bench.service.currentTime(), 14.75);
    bench.service.seek(100);
    QCOMPARE(bench.service.currentTime(), 100.0);
    bench.engine.advance(0.5);
    QCOMPARE(bench.service.currentTime(), 100.5);
}

void EqualizerServiceEngineTest::durationIsThatOfTheFile()
{
    Bench bench;
    bench.engine.format.sampleRate = 48000;
    bench.engine.length = 61.0 / 3;
    bench.prepare();
    QVERIFY(std::abs(bench.service.duration() - 61.0 / 3) < 1.0 / 48000);
}

void EqualizerServiceEngineTest::seekWhilePlayingPlaysOnFromThere()
{
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.drop();
    bench.service.seek(60);
    QCOMPARE(bench.engine.calls,
             (QStringList{u"node stop"_s, u"schedule 2646000+6174000"_s, u"node play"_s}));
    QVERIFY(bench.service.isPlaying());
}

void EqualizerServiceEngineTest::seekWhilePausedStaysPaused()
{
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.service.pause();
    bench.drop();
    bench.service.seek(60);
    QCOMPARE(bench.engine.calls, (QStringList{u"node stop"_s, u"schedule 2646000+6174000"_s}));
    QVERIFY(!bench.service.isPlaying());
    QCOMPARE(bench.service.currentTime(), 60.0);
}

void EqualizerServiceEngineTest::seekTruncatesToAFrame()
{
    Bench bench;
    bench.prepare();
    bench.service.seek(1.99999 / 44100);
    QCOMPARE(bench.engine.calls.constLast(), u"schedule 1+8819999"_s);
}

void EqualizerServiceEngineTest::seekPastTheEndSchedulesNothing_data()
{
    QTest::addColumn<double>("time");
    QTest::newRow("at the end") << 200.0;
    QTest::newRow("past it") << 250.0;
    QTest::newRow("far past it") << 1e300;
    QTest::newRow("endless") << qInf();
}

void EqualizerServiceEngineTest::seekPastTheEndSchedulesNothing()
{
    QFETCH(double, time);
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.drop();
    bench.service.seek(time);
    QCOMPARE(bench.engine.segments(), QList<FakeAudioEngine::Segment>());
    // It plays silence, and the clock tells that the end is over.
    QVERIFY(bench.service.isPlaying());
    QVERIFY(bench.service.currentTime() >= bench.service.duration());
    QVERIFY(std::isfinite(bench.service.currentTime()));
}

void EqualizerServiceEngineTest::seekPastTheEndWhilePausedStaysPaused()
{
    Bench bench;
    bench.prepare();
    bench.service.seek(250);
    QVERIFY(!bench.service.isPlaying());
    QCOMPARE(bench.service.currentTime(), 250.0);
    QVERIFY(bench.engine.segments().isEmpty());
}

void EqualizerServiceEngineTest::seekBackFromPastTheEndPlaysAgain()
{
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.service.seek(250);
    bench.service.seek(199);
    QVERIFY(bench.service.isPlaying());
    QCOMPARE(bench.engine.segments(),
             (QList<FakeAudioEngine::Segment>{
                 {.file = Bench::url(), .startFrame = 199 * 44100, .frameCount = 44100}}));
}

void EqualizerServiceEngineTest::seekBeforeTheStartIsTheStart_data()
{
    QTest::addColumn<double>("time");
    QTest::newRow("start") << 0.0;
    QTest::newRow("before") << -3.0;
    QTest::newRow("far before") << -qInf();
    QTest::newRow("no number") << qQNaN();
}

void EqualizerServiceEngineTest::seekBeforeTheStartIsTheStart()
{
    QFETCH(double, time);
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.engine.advance(10);
    bench.service.seek(time);
    QCOMPARE(bench.service.currentTime(), 0.0);
    QVERIFY(bench.service.isPlaying());
    QVERIFY(bench.engine.calls.contains(u"schedule 0+8820000"_s));
}

void EqualizerServiceEngineTest::seekWithoutAFileDoesNothing()
{
    Bench bench;
    bench.drop();
    bench.service.seek(10);
    QCOMPARE(bench.engine.calls, QStringList());
    QCOMPARE(bench.service.currentTime(), 0.0);
}

void EqualizerServiceEngineTest::volumeIsTheNodes()
{
    Bench bench;
    bench.service.setVolume(0.25F);
    QCOMPARE(bench.engine.volume, 0.25F);
}

void EqualizerServiceEngineTest::lostDeviceIsNotPlaying()
{
    Bench bench;
    bench.prepare();
    bench.service.play();
    bench.engine.loseDevice();
    QVERIFY(!bench.service.isPlaying());
    QVERIFY(!bench.service.isEngineRunning());
}

void EqualizerServiceEngineTest::settingsReachTheEngineWithTheFile()
{
    Bench bench;
    bench.preferences.setBool(u"equalizer_enabled"_s, true);
    bench.preferences.setString(u"equalizer_preset"_s, u"bass"_s);
    auto made = std::make_unique<FakeAudioEngine>();
    FakeAudioEngine &engine = *made;
    EqualizerService service(bench.preferences, std::move(made));
    service.prepareToPlay(Bench::url());
    QCOMPARE(engine.equalizer().band(0).gain, 6.0);
    QVERIFY(!engine.equalizer().band(0).bypass);
}

QTEST_GUILESS_MAIN(EqualizerServiceEngineTest)
#include "tst_equalizer_service_engine.moc"
