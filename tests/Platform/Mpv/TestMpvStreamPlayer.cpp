// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fixtures/Sound/NumberLocale.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Platform/Mpv/MpvStreamPlayer.h"

#include <QDeadlineTimer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>

#include <unistd.h>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace cadorel {

using Status = PlayerItem::Status;

/// What the player over libmpv does beyond the contract, with files and without a sound device.
class TestMpvStreamPlayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_player.reset(); }

    void knowsTheFileOnceItIsReady();
    void beginsWhereItWasSoughtToBeforeTheLoad();
    void beginsWhereItWasSoughtToDuringTheLoad();
    void seeksOntoTheSample_data();
    void seeksOntoTheSample();
    void loadsOnlyTheLastOfManyItems();
    void survivesManyItemsOneAfterTheOther();
    void endedItemPlaysFromWhereItWasSoughtTo();
    void seekToTheEndWhilePausedEndsWhenPlayed_data();
    void seekToTheEndWhilePausedEndsWhenPlayed();
    void seekBeyondTheEndWhilePlayingEnds();
    void observersHearTimePassAndNoMoreThanTheDuration();
    void observersHearStartStopAndJump();
    void positionGoesOnBetweenTicks();
    void positionDoesNotPassTheEnd();
    void noTimerRunsWhileNothingPlays();
    void keepsPlayingADeletedFile();
    void tellsWhyAFileFails_data();
    void tellsWhyAFileFails();
    void failsWithoutACore();
    void countsTheExactDuration();
    void fallsBackToTheEstimate();

private:
    std::unique_ptr<MpvStreamPlayer> makePlayer() const;
    std::shared_ptr<PlayerItem> load(const QString &path, bool precise = false);
    bool becomesReady(const std::shared_ptr<PlayerItem> &item);
    /// The result of a seek; false also when it never completes.
    bool seekFinishes(double time);

    SoundFiles m_files;
    FakeAssetReader m_reader;
    std::unique_ptr<MpvStreamPlayer> m_player;
    QString m_song;
    QString m_moment;
};

void TestMpvStreamPlayer::initTestCase()
{
    m_song = m_files.make(u"song.flac"_s, {{440, 20}});
    m_moment = m_files.make(u"moment.flac"_s, {{440, 0.6}});
    QVERIFY(!m_song.isEmpty() && !m_moment.isEmpty());
}

std::unique_ptr<MpvStreamPlayer> TestMpvStreamPlayer::makePlayer() const
{
    return std::make_unique<MpvStreamPlayer>(m_reader, QList<MpvHandle::Option>{{"ao", "null"}});
}

void TestMpvStreamPlayer::init()
{
    m_reader.onOpen = {};
    m_reader.assets.clear();
    m_player = makePlayer();
}

std::shared_ptr<PlayerItem> TestMpvStreamPlayer::load(const QString &path, bool precise)
{
    auto item = m_player->makeItem({.url = QUrl::fromLocalFile(path), .prefersPreciseDuration = precise});
    m_player->replaceCurrentItem(item);
    return item;
}

bool TestMpvStreamPlayer::becomesReady(const std::shared_ptr<PlayerItem> &item)
{
    return QTest::qWaitFor([&] { return item->status() == Status::readyToPlay; });
}

bool TestMpvStreamPlayer::seekFinishes(double time)
{
    std::optional<bool> finished;
    m_player->seek(time, 0, 0, [&](bool done) { finished = done; });
    return QTest::qWaitFor([&] { return finished.has_value(); }) && finished == true;
}

void TestMpvStreamPlayer::knowsTheFileOnceItIsReady()
{
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    QCOMPARE(item->currentTime(), 0.0);
    QVERIFY(std::abs(item->duration() - 20) < 0.001);
    QCOMPARE(item->timescale(), 48'000);
    const SeekableRange range = item->seekableRange().value_or(SeekableRange{.start = -1});
    QCOMPARE(range.start, 0.0);
    QCOMPARE(range.duration, item->duration());
    QCOMPARE(m_player->timeControlStatus(), StreamPlayer::TimeControlStatus::paused);
}

void TestMpvStreamPlayer::beginsWhereItWasSoughtToBeforeTheLoad()
{
    const auto item = load(m_song);
    QList<double> heard;
    m_player->addPeriodicTimeObserver(50ms, [&](double seconds) { heard << seconds; });
    QVERIFY(seekFinishes(10));
    QCOMPARE(item->status(), Status::readyToPlay);
    QVERIFY(std::abs(item->currentTime() - 10) < 0.001);
    m_player->play();
    QTRY_VERIFY(heard.size() > 3);
    QVERIFY(std::ranges::all_of(heard, [](double seconds) { return seconds > 9.99; }));
}

void TestMpvStreamPlayer::beginsWhereItWasSoughtToDuringTheLoad()
{
    const auto item = load(m_song);
    // The load has been sent by then.
    QCoreApplication::sendPostedEvents();
    QVERIFY(seekFinishes(12));
    QVERIFY(std::abs(item->currentTime() - 12) < 0.001);
    QVERIFY(becomesReady(item));
}

void TestMpvStreamPlayer::seeksOntoTheSample_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"seek.flac", "seek.mp3", "seek.m4a", "seek.opus", "seek.mka"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestMpvStreamPlayer::seeksOntoTheSample()
{
    QFETCH(const QString, name);
    const auto item = load(m_files.make(name, {{440, 20}}));
    QVERIFY(becomesReady(item));
    for (const double target : {13.37, 2.5, 19.0}) {
        QVERIFY(seekFinishes(target));
        QVERIFY2(std::abs(item->currentTime() - target) < 0.001,
                 qPrintable(QString::number(item->currentTime())));
    }
}

void TestMpvStreamPlayer::loadsOnlyTheLastOfManyItems()
{
    QList<std::shared_ptr<PlayerItem>> items;
    QStringList told;
    for (int i = 0; i < 10; ++i) {
        items << load(i % 2 == 0 ? m_song : m_files.path(u"nowhere.flac"_s));
        if (i == 4)
            QCoreApplication::processEvents();
        connect(items.constLast().get(), &PlayerItem::statusChanged, this,
                [&told, i] { told << QString::number(i); });
    }
    items << load(m_song);
    QVERIFY(becomesReady(items.constLast()));
    QVERIFY2(told.isEmpty(), qPrintable(told.join(u' ')));
}

void TestMpvStreamPlayer::survivesManyItemsOneAfterTheOther()
{
    m_player->play();
    std::shared_ptr<PlayerItem> last;
    for (int i = 0; i < 60; ++i) {
        last = load(i % 3 == 0 ? m_moment : m_song);
        m_player->seek(i % 5, 0, 0, {});
        for (int turn = 0; turn < i % 4; ++turn)
            QCoreApplication::processEvents();
    }
    QVERIFY(becomesReady(last));
    QCOMPARE(m_player->rate(), 1.0);
    QVERIFY(std::abs(last->duration() - 20) < 0.001);
}

void TestMpvStreamPlayer::endedItemPlaysFromWhereItWasSoughtTo()
{
    const auto item = load(m_song);
    QVERIFY(seekFinishes(19.7));
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    m_player->play();
    QTRY_COMPARE(ends.size(), 1);
    QCOMPARE(item->currentTime(), item->duration());

    QVERIFY(seekFinishes(5));
    QCOMPARE(item->currentTime(), 5.0);
    QList<double> heard;
    m_player->addPeriodicTimeObserver(20ms, [&](double seconds) { heard << seconds; });
    m_player->play();
    QTRY_VERIFY(heard.size() > 2);
    QVERIFY(heard.constFirst() >= 4.99 && heard.constLast() < 15);
    QCOMPARE(ends.size(), 1);
}

void TestMpvStreamPlayer::seekToTheEndWhilePausedEndsWhenPlayed_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"end.flac", "end.mp3", "end.m4a"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestMpvStreamPlayer::seekToTheEndWhilePausedEndsWhenPlayed()
{
    QFETCH(const QString, name);
    const auto item = load(m_files.make(name, {{440, 3}}));
    QVERIFY(becomesReady(item));
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    QVERIFY(seekFinishes(item->duration()));
    // The last sample may lie a packet's padding before the duration.
    QVERIFY2(std::abs(item->currentTime() - item->duration()) < 0.1,
             qPrintable(QString::number(item->currentTime())));
    QCOMPARE(ends.size(), 0);
    m_player->play();
    QTRY_COMPARE(ends.size(), 1);
    QCOMPARE(m_player->rate(), 0.0);
}

void TestMpvStreamPlayer::seekBeyondTheEndWhilePlayingEnds()
{
    const auto item = load(m_song);
    m_player->play();
    QVERIFY(becomesReady(item));
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    QVERIFY(seekFinishes(50));
    QTRY_COMPARE(ends.size(), 1);
    QCOMPARE(item->currentTime(), item->duration());
}

void TestMpvStreamPlayer::observersHearTimePassAndNoMoreThanTheDuration()
{
    const auto item = load(m_files.make(u"seconds.flac"_s, {{440, 2}}));
    QList<double> often;
    QList<double> seldom;
    m_player->addPeriodicTimeObserver(50ms, [&](double seconds) { often << seconds; });
    m_player->addPeriodicTimeObserver(200ms, [&](double seconds) { seldom << seconds; });
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    qsizetype heardAtEnd = 0;
    connect(item.get(), &PlayerItem::didPlayToEnd, this, [&] { heardAtEnd = often.size(); });
    m_player->play();
    QTRY_COMPARE(ends.size(), 1);
    QVERIFY(std::ranges::is_sorted(often));
    QVERIFY(often.size() > seldom.size());
    QVERIFY(often.size() >= 4);
    QCOMPARE(often.constLast(), item->duration());
    QCOMPARE(seldom.constLast(), item->duration());
    // Nothing comes after the end: a screen that has been reset must not jump back.
    QCOMPARE(often.size(), heardAtEnd);
    QVERIFY(!m_player->timerActive());
}

void TestMpvStreamPlayer::observersHearStartStopAndJump()
{
    QList<double> heard;
    m_player->addPeriodicTimeObserver(1h, [&](double seconds) { heard << seconds; });
    const auto item = load(m_song);
    QTRY_COMPARE(heard.size(), 1);
    QCOMPARE(heard.takeFirst(), 0.0);
    m_player->seek(7, 0, 0, {});
    QTRY_COMPARE(heard.size(), 1);
    QVERIFY(std::abs(heard.takeFirst() - 7) < 0.001);
    m_player->play();
    QTRY_COMPARE(heard.size(), 1);
    m_player->pause();
    QTRY_COMPARE(heard.size(), 2);
    QVERIFY(heard.constLast() >= heard.constFirst());
}

void TestMpvStreamPlayer::positionGoesOnBetweenTicks()
{
    using Clock = std::chrono::steady_clock;
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    int ticks = 0;
    double told = 0;
    Clock::time_point earliest;
    Clock::time_point latest;
    m_player->addPeriodicTimeObserver(250ms, [&](double) {
        ++ticks;
        earliest = Clock::now();
        told = item->currentTime();
        latest = Clock::now();
    });
    m_player->play();
    QTRY_VERIFY(ticks > 1);
    for (int reads = 0; reads < 40; ++reads) {
        const QDeadlineTimer next(10ms);
        QTRY_VERIFY_WITH_TIMEOUT(next.hasExpired(), 10000);
        const std::chrono::duration<double> atLeast = Clock::now() - latest;
        const double position = item->currentTime();
        const std::chrono::duration<double> atMost = Clock::now() - earliest;
        QVERIFY(position >= told + atLeast.count() - 0.001);
        QVERIFY(position <= told + atMost.count() + 0.001);
    }
}

void TestMpvStreamPlayer::positionDoesNotPassTheEnd()
{
    const auto item = load(m_moment);
    QVERIFY(becomesReady(item));
    const double length = item->duration();
    QVERIFY(length > 0.5);
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    m_player->play();
    double last = 0;
    while (ends.isEmpty()) {
        QTRY_VERIFY(item->currentTime() > last || !ends.isEmpty());
        last = item->currentTime();
        QVERIFY(last <= length);
    }
    QCOMPARE(item->currentTime(), length);
    const QDeadlineTimer later(50ms);
    QTRY_VERIFY(later.hasExpired());
    QCOMPARE(item->currentTime(), length);
}

void TestMpvStreamPlayer::noTimerRunsWhileNothingPlays()
{
    m_player->addPeriodicTimeObserver(250ms, [](double) {});
    QVERIFY(!m_player->timerActive());
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    QVERIFY(!m_player->timerActive());
    m_player->play();
    QVERIFY(m_player->timerActive());
    m_player->pause();
    QVERIFY(!m_player->timerActive());
    m_player->play();
    m_player->replaceCurrentItem(nullptr);
    QVERIFY(!m_player->timerActive());
}

void TestMpvStreamPlayer::keepsPlayingADeletedFile()
{
    const QString path = m_files.make(u"doomed.flac"_s, {{440, 3}});
    const auto item = load(path);
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    QVERIFY(becomesReady(item));
    QVERIFY(QFile::remove(path));
    QVERIFY(seekFinishes(1));
    QVERIFY(seekFinishes(2.5));
    m_player->play();
    QTRY_COMPARE(ends.size(), 1);
    // Its end closed it.
    m_player->play();
    QTRY_COMPARE(item->status(), Status::failed);
    QCOMPARE(item->errorDescription(), u"文件不存在"_s);
}

void TestMpvStreamPlayer::tellsWhyAFileFails_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QString>("text");
    QTest::newRow("missing") << QUrl::fromLocalFile(m_files.path(u"nowhere.mp3"_s)) << u"文件不存在"_s;
    QFile words(m_files.path(u"words.mp3"_s));
    QVERIFY(words.open(QIODevice::WriteOnly));
    words.write(QByteArray("These are only words.\n").repeated(2000));
    QTest::newRow("text") << QUrl::fromLocalFile(words.fileName()) << u"无法播放此文件：格式无法识别"_s;
    QFile empty(m_files.path(u"empty.mp3"_s));
    QVERIFY(empty.open(QIODevice::WriteOnly));
    QTest::newRow("empty") << QUrl::fromLocalFile(empty.fileName()) << u"无法播放此文件：格式无法识别"_s;
    QFile playlist(m_files.path(u"list.m3u"_s));
    QVERIFY(playlist.open(QIODevice::WriteOnly));
    playlist.write("#EXTM3U\nsong.flac\n");
    QTest::newRow("playlist") << QUrl::fromLocalFile(playlist.fileName())
                              << u"无法播放此文件：格式无法识别"_s;
    QFile picture(m_files.path(u"picture.png"_s));
    QVERIFY(picture.open(QIODevice::WriteOnly));
    picture.write(QByteArray::fromBase64(
        "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDwAChwGA60e6kgAA"
        "AABJRU5ErkJggg=="));
    QTest::newRow("picture") << QUrl::fromLocalFile(picture.fileName())
                             << u"无法播放此文件：其中没有可播放的声音"_s;
    QVERIFY(QDir().mkpath(m_files.path(u"folder/inner"_s)));
    QTest::newRow("folder") << QUrl::fromLocalFile(m_files.path(u"folder"_s))
                            << u"无法播放此文件：格式无法识别"_s;
    if (geteuid() != 0) {
        QFile locked(m_files.path(u"locked.mp3"_s));
        QVERIFY(locked.open(QIODevice::WriteOnly));
        QVERIFY(locked.setPermissions({}));
        QTest::newRow("locked") << QUrl::fromLocalFile(locked.fileName()) << u"没有读取此文件的权限"_s;
    }
    QTest::newRow("no address") << QUrl() << u"无法播放：不支持的地址"_s;
    QTest::newRow("made of others") << QUrl(u"edl:///etc/passwd"_s) << u"无法播放：不支持的地址"_s;
    QTest::newRow("device") << QUrl(u"av://lavfi:sine"_s) << u"无法播放：不支持的地址"_s;
}

void TestMpvStreamPlayer::tellsWhyAFileFails()
{
    QFETCH(const QUrl, url);
    QFETCH(const QString, text);
    const auto item = m_player->makeItem({.url = url});
    m_player->replaceCurrentItem(item);
    m_player->play();
    QTRY_COMPARE(item->status(), Status::failed);
    QCOMPARE(item->errorDescription(), text);
    QCOMPARE(m_player->rate(), 0.0);
}

void TestMpvStreamPlayer::failsWithoutACore()
{
    m_player.reset();
    const NumberLocale locale;
    QVERIFY2(locale.active(), "no locale sources: scripts/setup installs them");
    m_player = makePlayer();
    const auto item = load(m_song);
    m_player->setVolume(0.5F);
    m_player->play();
    m_player->seek(1, 0, 0, {});
    QTRY_COMPARE(item->status(), Status::failed);
    QCOMPARE(item->errorDescription(), u"播放引擎无法启动"_s);
}

void TestMpvStreamPlayer::countsTheExactDuration()
{
    FakeAsset counted;
    counted.duration = 19.5;
    m_reader.assets.insert(u"song.flac"_s, counted);
    const auto item = load(m_song, true);
    const auto seconds = QCoro::waitFor(item->loadDuration());
    QVERIFY(seconds);
    QCOMPARE(*seconds, 19.5);
    QCOMPARE(item->duration(), 19.5);
    QVERIFY(becomesReady(item));
    QCOMPARE(item->seekableRange().value_or(SeekableRange()).duration, 19.5);
    const auto again = QCoro::waitFor(item->loadDuration());
    QCOMPARE(*again, 19.5);
}

void TestMpvStreamPlayer::fallsBackToTheEstimate()
{
    const auto item = load(m_song, true);
    const auto seconds = QCoro::waitFor(item->loadDuration());
    QVERIFY(seconds);
    QVERIFY(std::abs(*seconds - 20) < 0.001);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestMpvStreamPlayer)
#include "TestMpvStreamPlayer.moc"
