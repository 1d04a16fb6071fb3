// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Platform/Mpv/MpvStreamPlayer.h"

#include <QSemaphore>
#include <QTest>

#include <memory>
#include <tuple>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace cadorel {

using Status = PlayerItem::Status;

/// The player over libmpv and its items come, go and are replaced in the middle of everything.
class TestMpvLifetime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_player.reset(); }

    void mayBeDestroyedWhileAScanRuns();
    void mayBeDestroyedAtAnyMoment();
    void callbacksMayLoadTheNextItem_data();
    void callbacksMayLoadTheNextItem();
    void takesAnItemTwice();

private:
    std::unique_ptr<MpvStreamPlayer> makePlayer() const;
    std::shared_ptr<PlayerItem> load(const QString &path, bool precise = false);
    static bool becomesReady(const std::shared_ptr<PlayerItem> &item);

    SoundFiles m_files;
    FakeAssetReader m_reader;
    std::unique_ptr<MpvStreamPlayer> m_player;
    QString m_song;
    QString m_moment;
};

void TestMpvLifetime::initTestCase()
{
    m_song = m_files.make(u"song.flac"_s, {{440, 20}});
    m_moment = m_files.make(u"moment.flac"_s, {{440, 0.6}});
    QVERIFY(!m_song.isEmpty() && !m_moment.isEmpty());
}

std::unique_ptr<MpvStreamPlayer> TestMpvLifetime::makePlayer() const
{
    return std::make_unique<MpvStreamPlayer>(m_reader, QList<MpvHandle::Option>{{"ao", "null"}});
}

void TestMpvLifetime::init()
{
    m_reader.onOpen = {};
    m_player = makePlayer();
}

std::shared_ptr<PlayerItem> TestMpvLifetime::load(const QString &path, bool precise)
{
    auto item = m_player->makeItem({.url = QUrl::fromLocalFile(path), .prefersPreciseDuration = precise});
    m_player->replaceCurrentItem(item);
    return item;
}

bool TestMpvLifetime::becomesReady(const std::shared_ptr<PlayerItem> &item)
{
    return QTest::qWaitFor([&] { return item->status() == Status::readyToPlay; });
}

void TestMpvLifetime::mayBeDestroyedWhileAScanRuns()
{
    QSemaphore entered;
    QSemaphore mayLeave;
    m_reader.onOpen = [&](const QString &) {
        entered.release();
        mayLeave.acquire();
    };
    auto item = load(m_song, true);
    auto task = item->loadDuration();
    QVERIFY(entered.tryAcquire(1, 5000));
    item.reset();
    mayLeave.release();
    m_player.reset();
    QVERIFY(!QCoro::waitFor(std::move(task)));
}

void TestMpvLifetime::mayBeDestroyedAtAnyMoment()
{
    for (int i = 0; i < 40; ++i) {
        auto player = makePlayer();
        player->addPeriodicTimeObserver(1ms, [](double) {});
        const auto item = player->makeItem({.url = QUrl::fromLocalFile(i % 4 == 3 ? m_moment : m_song)});
        auto task = item->loadDuration();
        player->replaceCurrentItem(item);
        player->play();
        for (int turn = 0; turn < i; ++turn)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        player->seek(15, 0, 0, {});
        for (int turn = 0; turn < i / 2; ++turn)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        player.reset();
        std::ignore = QCoro::waitFor(std::move(task));
    }
}

void TestMpvLifetime::callbacksMayLoadTheNextItem_data()
{
    QTest::addColumn<QString>("place");
    for (const char *place : {"status", "rate", "control", "completion", "observer", "end", "failure"})
        QTest::newRow(place) << QString::fromLatin1(place);
}

void TestMpvLifetime::callbacksMayLoadTheNextItem()
{
    QFETCH(const QString, place);
    std::shared_ptr<PlayerItem> next;
    auto first = load(place == "failure"_L1 ? m_files.path(u"nowhere.flac"_s) : m_moment);
    const auto loadNext = [&] {
        if (!next)
            next = load(m_song);
    };
    if (place == "status"_L1 || place == "failure"_L1)
        connect(first.get(), &PlayerItem::statusChanged, this, loadNext);
    else if (place == "rate"_L1)
        connect(m_player.get(), &StreamPlayer::rateChanged, this, loadNext);
    else if (place == "control"_L1)
        connect(m_player.get(), &StreamPlayer::timeControlStatusChanged, this, loadNext);
    else if (place == "completion"_L1)
        m_player->seek(0.1, 0, 0, [&](bool) { loadNext(); });
    else if (place == "observer"_L1)
        m_player->addPeriodicTimeObserver(10ms, [&](double) { loadNext(); });
    else
        connect(first.get(), &PlayerItem::didPlayToEnd, this, loadNext);
    first.reset();
    m_player->play();
    QTRY_VERIFY(next);
    QVERIFY(becomesReady(next));
    QCOMPARE(m_player->currentItem(), next);
    m_player->disconnect(this);
}

void TestMpvLifetime::takesAnItemTwice()
{
    const auto item = load(m_song);
    QVERIFY(becomesReady(item));
    std::optional<bool> finished;
    m_player->seek(3, 0, 0, [&](bool done) { finished = done; });
    QTRY_VERIFY(finished.has_value());
    m_player->replaceCurrentItem(nullptr);
    QCoreApplication::processEvents();
    QVERIFY(!m_player->currentItem());
    m_player->replaceCurrentItem(item);
    QCOMPARE(item->status(), Status::unknown);
    QVERIFY(becomesReady(item));
    QCOMPARE(item->currentTime(), 0.0);
    QVERIFY(QCoro::waitFor(item->loadDuration()));
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestMpvLifetime)
#include "TestMpvLifetime.moc"
