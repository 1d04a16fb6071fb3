// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/TestPlatform.h"
#include "Services/LyricsOffsetService.h"
#include "ViewModels/LyricsOffsetViewModel.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The sheet that moves lyrics, over the real service.
class TestLyricsOffsetViewModel : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<TestPlatform> m_home;
    std::unique_ptr<LyricsOffsetService> m_service;
    std::unique_ptr<LyricsOffsetViewModel> m_offset;

    std::optional<int> stored() const { return m_home->platform.preferences->intValue(u"lyricsOffset_a"_s); }

private Q_SLOTS:
    void init()
    {
        m_home = std::make_unique<TestPlatform>();
        m_service = std::make_unique<LyricsOffsetService>(m_home->platform);
        m_offset = std::make_unique<LyricsOffsetViewModel>(*m_service);
        m_offset->setSong(u"a"_s, u"歌"_s);
    }
    void cleanup()
    {
        m_offset.reset();
        m_service.reset();
        m_home.reset();
    }

    void eachAmountIsAddedAndStored_data()
    {
        QTest::addColumn<int>("amount");
        QTest::addColumn<QString>("status");
        QTest::newRow("-1s") << -1000 << u"歌词延后 1.0 秒"_s;
        QTest::newRow("-0.5s") << -500 << u"歌词延后 0.5 秒"_s;
        QTest::newRow("-0.1s") << -100 << u"歌词延后 0.1 秒"_s;
        QTest::newRow("+0.1s") << 100 << u"歌词提前 0.1 秒"_s;
        QTest::newRow("+0.5s") << 500 << u"歌词提前 0.5 秒"_s;
        QTest::newRow("+1s") << 1000 << u"歌词提前 1.0 秒"_s;
        QTest::newRow("-5s") << -5000 << u"歌词延后 5.0 秒"_s;
        QTest::newRow("+5s") << 5000 << u"歌词提前 5.0 秒"_s;
    }
    void eachAmountIsAddedAndStored()
    {
        QFETCH(int, amount);
        m_offset->adjust(amount);
        QCOMPARE(m_offset->currentOffset(), amount);
        QCOMPARE(stored(), amount);
        QTEST(m_offset->statusText(), "status");
    }
    void atFirstLyricsAndMusicAreInStep()
    {
        QCOMPARE(m_offset->currentOffset(), 0);
        QCOMPARE(m_offset->statusText(), u"歌词与音乐同步"_s);
        QCOMPARE(m_offset->songTitle(), u"歌"_s);
    }
    void buttonsGoNoFartherThanTheSlider()
    {
        m_offset->adjust(4800);
        m_offset->adjust(1000);
        QCOMPARE(stored(), 5000);
        m_offset->adjust(5000);
        QCOMPARE(stored(), 5000);
        m_offset->adjust(-5000);
        QCOMPARE(stored(), 0);
        m_offset->adjust(std::numeric_limits<int>::min());
        QCOMPARE(stored(), -5000);
    }
    void anOffsetBeyondTheSliderNeitherGrowsNorJumpsBack()
    {
        m_service->setOffset(8000, u"a"_s);
        m_offset->adjust(100);
        QCOMPARE(stored(), 8000);
        m_offset->adjust(-100);
        QCOMPARE(stored(), 7900);
    }
    void theSliderStandsOnItsStepsWithinItsEnds_data()
    {
        QTest::addColumn<double>("place");
        QTest::addColumn<int>("offset");
        QTest::newRow("a step") << 1200.0 << 1200;
        QTest::newRow("between two") << 1240.0 << 1200;
        QTest::newRow("nearer to the next") << -1260.0 << -1300;
        QTest::newRow("beyond the end") << 9000.0 << 5000;
        QTest::newRow("below the beginning") << -5001.0 << -5000;
    }
    void theSliderStandsOnItsStepsWithinItsEnds()
    {
        QFETCH(double, place);
        m_offset->setOffset(place);
        QTEST(m_offset->currentOffset(), "offset");
    }
    void whatIsNoNumberChangesNothing()
    {
        m_offset->setOffset(700);
        m_offset->setOffset(std::numeric_limits<double>::quiet_NaN());
        QCOMPARE(stored(), 700);
    }
    void zeroOfTheSliderStaysStoredAndResetForgetsIt()
    {
        m_offset->setOffset(300);
        m_offset->setOffset(0);
        QCOMPARE(stored(), 0);
        QCOMPARE(m_offset->currentOffset(), 0);
        m_offset->reset();
        QCOMPARE(stored(), std::nullopt);
        QCOMPARE(m_offset->currentOffset(), 0);
    }
    void anotherSongHasItsOwn()
    {
        QSignalSpy changes(m_offset.get(), &LyricsOffsetViewModel::currentOffsetChanged);
        m_offset->adjust(500);
        m_offset->setSong(u"b"_s, u"别的"_s);
        QCOMPARE(m_offset->currentOffset(), 0);
        m_offset->setSong(u"a"_s, u"歌"_s);
        QCOMPARE(m_offset->currentOffset(), 500);
        QCOMPARE(changes.count(), 3);
    }
    void aChangeByOthersIsShown()
    {
        m_service->setOffset(-700, u"a"_s);
        QCOMPARE(m_offset->currentOffset(), -700);
        m_service->setOffset(900, u"b"_s);
        QCOMPARE(m_offset->currentOffset(), -700);
    }
    void withoutASongNothingIsStored()
    {
        m_offset->setSong({}, {});
        m_offset->adjust(500);
        m_offset->setOffset(500);
        m_offset->reset();
        QVERIFY(!m_home->platform.preferences->contains(u"lyricsOffset_"_s));
        QCOMPARE(m_offset->currentOffset(), 0);
    }
};

QTEST_GUILESS_MAIN(TestLyricsOffsetViewModel)
#include "tst_lyrics_offset_view_model.moc"
