// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fakes/FakeResourceLoader.h"
#include "Fakes/FakeStreamPlayer.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Platform/Mpv/MpvStreamPlayer.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace cadorel {

/// What every StreamPlayer does, asked of the fake and of the real one alike.
class TestStreamPlayerContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void initTestCase();
    void init();
    void cleanup() { m_player.reset(); }

    void beginsPausedAndEmpty();
    void anItemWaitsUntilItIsCurrent();
    void playAndPauseMoveTheRateOnce();
    void aNewItemKeepsTheRate();
    void aSeekCompletesOnceAndNotInside();
    void aNewerSeekOvertakes();
    void anotherItemEndsASeek();
    void aSeekWithoutAnItemFails();
    void anEndedItemStaysAndPlaysAgain();
    void aFailureEndsEverything();
    void tellsTheDuration();
    void aReplacedItemTellsNoDuration();
    void aDestroyedItemTellsNoDuration();
    void aRemovedObserverHearsNothing();
    void aPlayingItemKnowsItsPositionAndAPausedOneKeepsIt();
    void aLoadedItemPlaysAndSeeks();
    void aLoadersFailureIsTheItems();

private:
    FakeStreamPlayer *fake() const { return qobject_cast<FakeStreamPlayer *>(m_player.get()); }
    std::shared_ptr<PlayerItem> load(const QString &path);
    /// Loads an item whose bytes come from @p loader.
    std::shared_ptr<PlayerItem> load(ResourceLoader &loader);
    /// Lets the item become ready, and waits for it.
    bool becomesReady(const std::shared_ptr<PlayerItem> &item);
    void letSeekArrive();
    void letItemEnd();

    SoundFiles m_files;
    FakeAssetReader m_reader;
    std::unique_ptr<StreamPlayer> m_player;
    QString m_song;
    QString m_moment;
};

void TestStreamPlayerContract::initTestCase_data()
{
    QTest::addColumn<bool>("real");
    QTest::newRow("fake") << false;
    QTest::newRow("libmpv") << true;
}

void TestStreamPlayerContract::initTestCase()
{
    m_song = m_files.make(u"song.flac"_s, {{440, 20}});
    m_moment = m_files.make(u"moment.flac"_s, {{440, 0.4}});
    QVERIFY(!m_song.isEmpty() && !m_moment.isEmpty());
}

void TestStreamPlayerContract::init()
{
    QFETCH_GLOBAL(const bool, real);
    if (real)
        m_player = std::make_unique<MpvStreamPlayer>(m_reader, QList<MpvHandle::Option>{{"ao", "null"}});
    else
        m_player = std::make_unique<FakeStreamPlayer>();
}

std::shared_ptr<PlayerItem> TestStreamPlayerContract::load(const QString &path)
{
    auto item = m_player->makeItem({.url = QUrl::fromLocalFile(path)});
    m_player->replaceCurrentItem(item);
    return item;
}

std::shared_ptr<PlayerItem> TestStreamPlayerContract::load(ResourceLoader &loader)
{
    auto item = m_player->makeItem(
        {.url = QUrl(u"webdavstream://host/https/song.flac"_s), .resourceLoader = &loader});
    m_player->replaceCurrentItem(item);
    return item;
}

bool TestStreamPlayerContract::becomesReady(const std::shared_ptr<PlayerItem> &item)
{
    if (fake())
        fake()->lastItem()->becomeReady();
    return QTest::qWaitFor([&] { return item->status() == PlayerItem::Status::readyToPlay; });
}

void TestStreamPlayerContract::letSeekArrive()
{
    if (fake())
        fake()->finishSeek();
}

void TestStreamPlayerContract::letItemEnd()
{
    if (fake())
        fake()->reachEnd();
}

void TestStreamPlayerContract::beginsPausedAndEmpty()
{
    QCOMPARE(m_player->rate(), 0.0);
    QCOMPARE(m_player->timeControlStatus(), StreamPlayer::TimeControlStatus::paused);
    QVERIFY(!m_player->currentItem());
}

void TestStreamPlayerContract::anItemWaitsUntilItIsCurrent()
{
    const auto item = m_player->makeItem({.url = QUrl::fromLocalFile(m_song)});
    QCOMPARE(item->asset().url, QUrl::fromLocalFile(m_song));
    QCOMPARE(item->status(), PlayerItem::Status::unknown);
    QVERIFY(std::isnan(item->duration()));
    QVERIFY(!item->seekableRange());
    QCOMPARE(item->timescale(), 0);
    m_player->replaceCurrentItem(item);
    QCOMPARE(m_player->currentItem(), item);
    QSignalSpy statuses(item.get(), &PlayerItem::statusChanged);
    QVERIFY(becomesReady(item));
    QCOMPARE(statuses.size(), 1);
}

void TestStreamPlayerContract::playAndPauseMoveTheRateOnce()
{
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    QSignalSpy rates(m_player.get(), &StreamPlayer::rateChanged);
    QSignalSpy statuses(m_player.get(), &StreamPlayer::timeControlStatusChanged);
    m_player->play();
    m_player->play();
    QCOMPARE(m_player->rate(), 1.0);
    QCOMPARE(m_player->timeControlStatus(), StreamPlayer::TimeControlStatus::playing);
    QCOMPARE(rates.size(), 1);
    QCOMPARE(statuses.size(), 1);
    m_player->pause();
    m_player->pause();
    QCOMPARE(m_player->rate(), 0.0);
    QCOMPARE(m_player->timeControlStatus(), StreamPlayer::TimeControlStatus::paused);
    QCOMPARE(rates.size(), 2);
    QCOMPARE(statuses.size(), 2);
}

void TestStreamPlayerContract::aNewItemKeepsTheRate()
{
    const auto first = load(m_song);
    m_player->play();
    QVERIFY(becomesReady(first));
    QSignalSpy rates(m_player.get(), &StreamPlayer::rateChanged);
    const auto second = load(m_song);
    QVERIFY(becomesReady(second));
    QCOMPARE(m_player->rate(), 1.0);
    QCOMPARE(m_player->timeControlStatus(), StreamPlayer::TimeControlStatus::playing);
    QCOMPARE(rates.size(), 0);
    m_player->replaceCurrentItem(nullptr);
    QVERIFY(!m_player->currentItem());
}

void TestStreamPlayerContract::aSeekCompletesOnceAndNotInside()
{
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    int completions = 0;
    bool finished = false;
    m_player->seek(10, 0, 0, [&](bool done) {
        ++completions;
        finished = done;
    });
    QCOMPARE(completions, 0);
    letSeekArrive();
    QTRY_COMPARE(completions, 1);
    QVERIFY(finished);
    QVERIFY(std::abs(item->currentTime() - 10) < 0.001);
    m_player->seek(3, 0, 0, {});
    m_player->seek(4, 0, 0, [&](bool) { ++completions; });
    letSeekArrive();
    QTRY_COMPARE(completions, 2);
}

void TestStreamPlayerContract::aNewerSeekOvertakes()
{
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    QStringList told;
    m_player->seek(5, 0, 0, [&](bool done) { told << u"first %1"_s.arg(done); });
    m_player->seek(15, 0, 0, [&](bool done) { told << u"second %1"_s.arg(done); });
    QVERIFY(told.isEmpty());
    QTRY_VERIFY(!told.isEmpty());
    letSeekArrive();
    QTRY_COMPARE(told, QStringList({u"first 0"_s, u"second 1"_s}));
    QVERIFY(std::abs(item->currentTime() - 15) < 0.001);
}

void TestStreamPlayerContract::anotherItemEndsASeek()
{
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    QStringList told;
    m_player->seek(5, 0, 0, [&](bool done) { told << u"seek %1"_s.arg(done); });
    const auto other = load(m_song);
    QVERIFY(told.isEmpty());
    QVERIFY(becomesReady(other));
    QTRY_COMPARE(told, QStringList{u"seek 0"_s});
}

void TestStreamPlayerContract::aSeekWithoutAnItemFails()
{
    std::optional<bool> finished;
    m_player->seek(5, 0, 0, [&](bool done) { finished = done; });
    QVERIFY(!finished);
    QTRY_VERIFY(finished.has_value());
    QVERIFY(finished == false);
}

void TestStreamPlayerContract::anEndedItemStaysAndPlaysAgain()
{
    const auto item = load(m_moment);
    QVERIFY(becomesReady(item));
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    double rateAtEnd = -1;
    connect(item.get(), &PlayerItem::didPlayToEnd, this, [&] { rateAtEnd = m_player->rate(); });
    m_player->play();
    letItemEnd();
    QTRY_COMPARE(ends.size(), 1);
    QCOMPARE(rateAtEnd, 0.0);
    QCOMPARE(m_player->timeControlStatus(), StreamPlayer::TimeControlStatus::paused);
    QCOMPARE(m_player->currentItem(), item);
    m_player->play();
    QCOMPARE(m_player->rate(), 1.0);
    letItemEnd();
    QTRY_COMPARE(ends.size(), 2);
    QCOMPARE(item->status(), PlayerItem::Status::readyToPlay);
}

void TestStreamPlayerContract::aFailureEndsEverything()
{
    const auto item = load(m_files.path(u"nowhere.flac"_s));
    m_player->play();
    QStringList told;
    m_player->seek(5, 0, 0, [&](bool done) { told << u"seek %1"_s.arg(done); });
    QSignalSpy statuses(item.get(), &PlayerItem::statusChanged);
    if (fake())
        fake()->lastItem()->fail(u"文件不存在"_s);
    QTRY_COMPARE(item->status(), PlayerItem::Status::failed);
    QCOMPARE(statuses.size(), 1);
    QCOMPARE(item->errorDescription(), u"文件不存在"_s);
    QCOMPARE(m_player->rate(), 0.0);
    QCOMPARE(m_player->timeControlStatus(), StreamPlayer::TimeControlStatus::paused);
    QTRY_COMPARE(told, QStringList{u"seek 0"_s});
    m_player->play();
    QCOMPARE(m_player->rate(), 0.0);
    QVERIFY(!QCoro::waitFor(item->loadDuration()));
    const auto next = load(m_song);
    QVERIFY(becomesReady(next));
}

void TestStreamPlayerContract::tellsTheDuration()
{
    const auto item = load(m_song);
    if (fake())
        fake()->lastItem()->answerDuration(20.0);
    const auto seconds = QCoro::waitFor(item->loadDuration());
    QVERIFY(seconds);
    QVERIFY(std::abs(*seconds - 20) < 0.001);
    QCOMPARE(item->duration(), *seconds);
}

void TestStreamPlayerContract::aReplacedItemTellsNoDuration()
{
    const auto item = load(m_song);
    auto task = item->loadDuration();
    load(m_song);
    QVERIFY(!QCoro::waitFor(std::move(task)));
}

void TestStreamPlayerContract::aDestroyedItemTellsNoDuration()
{
    auto item = m_player->makeItem({.url = QUrl::fromLocalFile(m_song)});
    auto task = item->loadDuration();
    if (fake())
        fake()->items.clear();
    item.reset();
    QVERIFY(!QCoro::waitFor(std::move(task)));
}

void TestStreamPlayerContract::aRemovedObserverHearsNothing()
{
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    int heard = 0;
    int heardByOther = 0;
    const int observer = m_player->addPeriodicTimeObserver(20ms, [&](double) { ++heard; });
    QVERIFY(observer != m_player->addPeriodicTimeObserver(20ms, [&](double) { ++heardByOther; }));
    m_player->removeTimeObserver(observer);
    m_player->play();
    if (fake())
        fake()->tick(0.1);
    QTRY_VERIFY(heardByOther > 0);
    QCOMPARE(heard, 0);
}

void TestStreamPlayerContract::aPlayingItemKnowsItsPositionAndAPausedOneKeepsIt()
{
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    // Nobody observes the time.
    m_player->play();
    if (fake())
        fake()->tick(0.5);
    QTRY_VERIFY(item->currentTime() >= 0.5);
    int told = 0;
    m_player->addPeriodicTimeObserver(1h, [&](double) { ++told; });
    m_player->pause();
    if (fake())
        fake()->tick(0.5);
    QTRY_VERIFY(told > 0);
    const double position = item->currentTime();
    const QDeadlineTimer later(50ms);
    QTRY_VERIFY(later.hasExpired());
    QCOMPARE(item->currentTime(), position);
}

void TestStreamPlayerContract::aLoadedItemPlaysAndSeeks()
{
    QFile file(m_song);
    QVERIFY(file.open(QIODevice::ReadOnly));
    FakeResourceLoader loader;
    loader.answerAll(file.readAll());
    const auto item = load(loader);
    QCOMPARE(item->asset().resourceLoader, &loader);
    QCOMPARE(item->asset().url.scheme(), u"webdavstream"_s);
    m_player->play();
    QVERIFY(becomesReady(item));
    QTRY_COMPARE(m_player->timeControlStatus(), StreamPlayer::TimeControlStatus::playing);
    m_player->pause();
    bool finished = false;
    m_player->seek(10, 0.5, 0.5, [&](bool done) { finished = done; });
    letSeekArrive();
    QTRY_VERIFY(finished);
    QVERIFY(std::abs(item->currentTime() - 10) <= 0.5);
    m_player.reset();
}

void TestStreamPlayerContract::aLoadersFailureIsTheItems()
{
    FakeResourceLoader loader;
    loader.onRequest = [](const FakeResourceLoader::Request &request) {
        request->finishLoading({.domain = u"test"_s, .code = 404, .description = u"HTTP 404"_s});
        return true;
    };
    const auto item = load(loader);
    m_player->play();
    if (fake())
        fake()->lastItem()->fail(u"HTTP 404"_s);
    QTRY_COMPARE(item->status(), PlayerItem::Status::failed);
    QCOMPARE(item->errorDescription(), u"HTTP 404"_s);
    QCOMPARE(m_player->rate(), 0.0);
    m_player.reset();
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestStreamPlayerContract)
#include "TestStreamPlayerContract.moc"
