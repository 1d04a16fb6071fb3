// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/BeatDetector.h"

#include "Fakes/FakeClock.h"
#include "Fakes/FakeRandom.h"
#include "Services/AudioLevels.h"

#include <QTest>

namespace cadorel {

using namespace std::chrono_literals;

namespace {

QList<qreal> flat(double level)
{
    return QList<qreal>(7, level);
}

} // namespace

/// Beats in level bars.
class TestBeatDetector : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aRiseOfTheLowTonesIsABeat()
    {
        BeatDetector beat;
        for (int i = 0; i < 50; ++i)
            beat.take(flat(0.4));
        QVERIFY(!beat.take(flat(0.45)));
        QVERIFY(beat.take(flat(0.8)));
    }

    void aRiseOfTheHighTonesIsNone()
    {
        BeatDetector beat;
        for (int i = 0; i < 50; ++i)
            beat.take(flat(0.4));
        QVERIFY(!beat.take({0.4, 0.4, 0.4, 1, 1, 1, 1}));
    }

    void beatsAreApart()
    {
        BeatDetector beat;
        for (int i = 0; i < 50; ++i)
            beat.take(flat(0.2));
        QVERIFY(beat.take(flat(0.9)));
        for (int i = 0; i < BeatDetector::fewestTicks; ++i)
            QVERIFY(!beat.take(flat(1)));
        QVERIFY(beat.take(flat(1)));
    }

    void whatStaysLoudIsNoBeat()
    {
        BeatDetector beat;
        for (int i = 0; i < 100; ++i)
            beat.take(flat(0.9));
        for (int i = 0; i < 50; ++i)
            QVERIFY(!beat.take(flat(0.9)));
    }

    void withoutLevelsThereIsNoBeat()
    {
        BeatDetector beat;
        QVERIFY(!beat.take({}));
        QVERIFY(beat.take({0.9}));
    }

    void thePlayersBarsBeatLikeMusic()
    {
        FakeClock clock;
        FakeRandom random;
        AudioLevels levels(clock, random, [] { return true; });
        BeatDetector beat;
        int beats = 0;
        QObject::connect(&levels, &AudioLevels::audioLevelsChanged, &levels,
                         [&] { beats += beat.take(levels.audioLevels()) ? 1 : 0; });
        levels.startAudioLevelSimulation();
        clock.advance(120s);
        QVERIFY2(beats > 60 && beats < 240, qPrintable(QString::number(beats)));
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestBeatDetector)
#include "tst_beat_detector.moc"
