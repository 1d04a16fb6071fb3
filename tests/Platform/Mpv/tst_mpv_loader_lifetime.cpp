// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoaderBench.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <tuple>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

/// Far more than a cancelled wait takes, far less than one that is not cancelled.
constexpr int promptly = 2'000;

} // namespace

/// Nobody waits for a loader that does not answer, and players, items and loaders go in any order.
class MpvLoaderLifetimeTest : public LoaderBench
{
    Q_OBJECT

private Q_SLOTS:
    void anotherItemDoesNotWaitForThis();
    void unloadingTakesTheRequestBack();
    void skippingThroughManyWaitsForNone();
    void endOfThePlayerDoesNotWait();
    void endOfThePlayerMayComeAtAnyMoment();
    void endOfTheLoaderFailsWhatComesLater();
    void endOfTheLoaderBeforeThePlayer();
};

void MpvLoaderLifetimeTest::anotherItemDoesNotWaitForThis()
{
    m_player->play();
    const auto hanging = load(u"a.flac"_s);
    QTRY_COMPARE(m_loader->requests.size(), 1);
    QElapsedTimer timer;
    timer.start();
    const auto next = load(u"b.flac"_s);
    m_loader->answerAll(m_song);
    QVERIFY(becomes(next, Status::readyToPlay));
    QVERIFY2(timer.elapsed() < promptly, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(m_player->timeControlStatus(), Control::playing);
    QTRY_COMPARE(m_loader->cancelled.size(), 1);
    QCOMPARE(m_loader->cancelled.constFirst(), m_loader->requests.constFirst());
    QCOMPARE(hanging->status(), Status::unknown);
    // The answer comes when nobody waits any more.
    FakeResourceLoader::answer(*m_loader->requests.constFirst(), m_song);
    QCOMPARE(m_player->currentItem(), next);
}

void MpvLoaderLifetimeTest::unloadingTakesTheRequestBack()
{
    load(u"a.flac"_s);
    QTRY_COMPARE(m_loader->requests.size(), 1);
    m_player->replaceCurrentItem(nullptr);
    QTRY_COMPARE(m_loader->cancelled.size(), 1);
    QVERIFY(m_loader->requests.constFirst()->isCancelled());
}

void MpvLoaderLifetimeTest::skippingThroughManyWaitsForNone()
{
    m_player->play();
    QElapsedTimer timer;
    timer.start();
    constexpr int songs = 20;
    for (int i = 1; i <= songs; ++i) {
        load(u"%1.flac"_s.arg(i));
        QTRY_COMPARE(m_loader->requests.size(), i);
    }
    QVERIFY2(timer.elapsed() < songs * promptly, qPrintable(QString::number(timer.elapsed())));
    m_loader->answerAll(m_song);
    QVERIFY(becomes(load(u"last.flac"_s), Status::readyToPlay));
    QTRY_COMPARE(m_loader->cancelled.size(), songs);
}

void MpvLoaderLifetimeTest::endOfThePlayerDoesNotWait()
{
    const auto item = load(u"a.flac"_s);
    auto task = item->loadDuration();
    QTRY_COMPARE(m_loader->requests.size(), 1);
    QElapsedTimer timer;
    timer.start();
    m_player.reset();
    QVERIFY2(timer.elapsed() < promptly, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(m_loader->cancelled.size(), 1);
    QVERIFY(!QCoro::waitFor(std::move(task)));
    FakeResourceLoader::answer(*m_loader->requests.constFirst(), m_song);
}

void MpvLoaderLifetimeTest::endOfThePlayerMayComeAtAnyMoment()
{
    for (int i = 0; i < 40; ++i) {
        init();
        m_player->play();
        std::shared_ptr<PlayerItem> item = load(u"a.flac"_s, i % 2 == 1);
        auto task = item->loadDuration();
        const auto turn = [](int turns) {
            for (int done = 0; done < turns; ++done)
                QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        };
        turn(i);
        for (const auto &request : std::as_const(m_loader->requests))
            FakeResourceLoader::answer(*request, i % 3 == 2 ? m_moment : m_song);
        turn(i / 2);
        if (i % 4 == 3)
            item = load(u"b.flac"_s);
        turn(i / 4);
        cleanup();
        std::ignore = QCoro::waitFor(std::move(task));
    }
}

void MpvLoaderLifetimeTest::endOfTheLoaderFailsWhatComesLater()
{
    m_loader->answerAll(m_moment);
    const auto item = load(u"a.flac"_s);
    const auto unloaded = m_player->makeItem({.url = address(u"b.flac"_s), .resourceLoader = m_loader.get()});
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    m_player->play();
    QVERIFY(becomes(item, Status::readyToPlay));
    m_loader.reset();
    // What it has given already plays on.
    QTRY_COMPARE(ends.size(), 1);
    m_player->play();
    QVERIFY(becomes(item, Status::failed));
    QVERIFY(!item->errorDescription().isEmpty());
    m_player->replaceCurrentItem(unloaded);
    QVERIFY(becomes(unloaded, Status::failed));
}

void MpvLoaderLifetimeTest::endOfTheLoaderBeforeThePlayer()
{
    load(u"a.flac"_s);
    QTRY_COMPARE(m_loader->requests.size(), 1);
    m_loader.reset();
    m_player->replaceCurrentItem(nullptr);
    QCoreApplication::processEvents();
    m_player.reset();
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::MpvLoaderLifetimeTest)
#include "tst_mpv_loader_lifetime.moc"
