// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/TestPlatform.h"
#include "Services/LyricsOffsetService.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

} // namespace

class TestLyricsOffsetService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void absentIsNone();
    void isKeptUnderTheSongsId();
    void nothingIsStoredForZeroOnlyAfterReset();
    void adjustingAddsToWhatIsStored();
    void everyChangeIsTold();
    void readingChangesNothing();
    void positionsAreTurnedBothWays();
    void hasNoLimitOfItsOwn();
    void storedValuesBeyondTheRangeStopAtItsEnds();
    void otherTypesReadAsNone();
    void format_data();
    void format();
    void status_data();
    void status();

private:
    std::unique_ptr<TestPlatform> m_home;
    std::unique_ptr<LyricsOffsetService> m_service;
};

void TestLyricsOffsetService::init()
{
    m_service.reset();
    m_home = std::make_unique<TestPlatform>();
    m_service = std::make_unique<LyricsOffsetService>(m_home->platform);
}

void TestLyricsOffsetService::absentIsNone()
{
    QCOMPARE(m_service->getOffset(u"song"_s), 0);
    QCOMPARE(m_service->applyOffset(1000, u"song"_s), 1000);
    QCOMPARE(m_service->reverseOffset(1000, u"song"_s), 1000);
}

void TestLyricsOffsetService::isKeptUnderTheSongsId()
{
    m_service->setOffset(-700, u"晨光_1"_s);
    QCOMPARE(m_home->preferences().intValue(u"lyricsOffset_晨光_1"_s), -700);
    QCOMPARE(m_service->getOffset(u"晨光_1"_s), -700);
    QCOMPARE(m_service->getOffset(u"晨光_2"_s), 0);
    QCOMPARE(LyricsOffsetService(m_home->platform).getOffset(u"晨光_1"_s), -700);
}

void TestLyricsOffsetService::nothingIsStoredForZeroOnlyAfterReset()
{
    m_service->setOffset(300, u"song"_s);
    m_service->setOffset(0, u"song"_s);
    QCOMPARE(m_home->preferences().intValue(u"lyricsOffset_song"_s), 0);
    QCOMPARE(m_service->getOffset(u"song"_s), 0);
    m_service->resetOffset(u"song"_s);
    QVERIFY(!m_home->preferences().contains(u"lyricsOffset_song"_s));
    QCOMPARE(m_service->getOffset(u"song"_s), 0);
}

void TestLyricsOffsetService::adjustingAddsToWhatIsStored()
{
    m_service->adjustOffset(500, u"song"_s);
    m_service->adjustOffset(-100, u"song"_s);
    QCOMPARE(m_service->getOffset(u"song"_s), 400);
    m_service->adjustOffset(-400, u"song"_s);
    QCOMPARE(m_home->preferences().intValue(u"lyricsOffset_song"_s), 0);
}

void TestLyricsOffsetService::everyChangeIsTold()
{
    const QSignalSpy changes(m_service.get(), &LyricsOffsetService::offsetChanged);
    m_service->setOffset(500, u"song"_s);
    QCOMPARE(changes.count(), 1);
    m_service->setOffset(500, u"song"_s);
    QCOMPARE(changes.count(), 2);
    m_service->adjustOffset(0, u"song"_s);
    QCOMPARE(changes.count(), 3);
    m_service->resetOffset(u"song"_s);
    QCOMPARE(changes.count(), 4);
    m_service->resetOffset(u"song"_s);
    QCOMPARE(changes.count(), 5);
}

void TestLyricsOffsetService::readingChangesNothing()
{
    const QSignalSpy changes(m_service.get(), &LyricsOffsetService::offsetChanged);
    m_service->getOffset(u"song"_s);
    m_service->applyOffset(1, u"song"_s);
    m_service->reverseOffset(1, u"song"_s);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(m_home->preferences().writes(), 0);
}

void TestLyricsOffsetService::positionsAreTurnedBothWays()
{
    m_service->setOffset(500, u"early"_s);
    QCOMPARE(m_service->applyOffset(1000, u"early"_s), 1500);
    QCOMPARE(m_service->reverseOffset(1500, u"early"_s), 1000);
    m_service->setOffset(-2000, u"late"_s);
    QCOMPARE(m_service->applyOffset(1000, u"late"_s), -1000);
    QCOMPARE(m_service->reverseOffset(-1000, u"late"_s), 1000);
}

void TestLyricsOffsetService::hasNoLimitOfItsOwn()
{
    m_service->setOffset(90'000, u"song"_s);
    m_service->adjustOffset(90'000, u"song"_s);
    QCOMPARE(m_service->getOffset(u"song"_s), 180'000);
    m_service->setOffset(most, u"song"_s);
    QCOMPARE(m_service->getOffset(u"song"_s), most);
    QCOMPARE(m_service->applyOffset(1, u"song"_s), most);
    m_service->adjustOffset(1, u"song"_s);
    QCOMPARE(m_service->getOffset(u"song"_s), most);
    m_service->setOffset(least, u"song"_s);
    QCOMPARE(m_service->applyOffset(-1, u"song"_s), least);
    QCOMPARE(m_service->reverseOffset(1, u"song"_s), most);
    m_service->adjustOffset(-1, u"song"_s);
    QCOMPARE(m_service->getOffset(u"song"_s), least);
}

void TestLyricsOffsetService::storedValuesBeyondTheRangeStopAtItsEnds()
{
    m_home->preferences().setInt(u"lyricsOffset_song"_s, std::numeric_limits<qint64>::max());
    QCOMPARE(m_service->getOffset(u"song"_s), most);
    m_home->preferences().setInt(u"lyricsOffset_song"_s, std::numeric_limits<qint64>::min());
    QCOMPARE(m_service->getOffset(u"song"_s), least);
}

void TestLyricsOffsetService::otherTypesReadAsNone()
{
    m_home->preferences().setString(u"lyricsOffset_song"_s, u"500"_s);
    QCOMPARE(m_service->getOffset(u"song"_s), 0);
    m_service->adjustOffset(100, u"song"_s);
    QCOMPARE(m_home->preferences().intValue(u"lyricsOffset_song"_s), 100);
}

void TestLyricsOffsetService::format_data()
{
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("text");
    const QList<QPair<int, QString>> rows = {
        {0, u"+0.0s"_s},          {500, u"+0.5s"_s},         {-1500, u"-1.5s"_s},
        {5000, u"+5.0s"_s},       {-5000, u"-5.0s"_s},       {40, u"+0.0s"_s},
        {-40, u"-0.0s"_s},        {60, u"+0.1s"_s},          {250, u"+0.2s"_s},
        {750, u"+0.8s"_s},        {-250, u"-0.2s"_s},        {12'345'678, u"+12345.7s"_s},
        {most, u"+2147483.6s"_s}, {least, u"-2147483.6s"_s},
    };
    for (const auto &[ms, text] : rows)
        QTest::addRow("%d", ms) << ms << text;
}

void TestLyricsOffsetService::format()
{
    QFETCH(const int, ms);
    QFETCH(const QString, text);
    QCOMPARE(LyricsOffsetService::formatOffset(ms), text);
}

void TestLyricsOffsetService::status_data()
{
    QTest::addColumn<int>("ms");
    QTest::addColumn<QString>("text");
    const QList<QPair<int, QString>> rows = {
        {0, u"歌词与音乐同步"_s},
        {500, u"歌词提前 0.5 秒"_s},
        {-1500, u"歌词延后 1.5 秒"_s},
        {1000, u"歌词提前 1.0 秒"_s},
        {-40, u"歌词延后 0.0 秒"_s},
        {40, u"歌词提前 0.0 秒"_s},
        {least, u"歌词延后 2147483.6 秒"_s},
    };
    for (const auto &[ms, text] : rows)
        QTest::addRow("%d", ms) << ms << text;
}

void TestLyricsOffsetService::status()
{
    QFETCH(const int, ms);
    QFETCH(const QString, text);
    QCOMPARE(LyricsOffsetService::statusText(ms), text);
}

QTEST_GUILESS_MAIN(TestLyricsOffsetService)
#include "tst_lyrics_offset_service.moc"
