// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportClaims.h"
#include "Services/Import/ImportFixture.h"
#include "Services/Import/JobGate.h"

#include <QSemaphore>
#include <QTest>

#include <atomic>
#include <thread>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The service ends while its operations are under way: nothing touches what is gone, every operation ends,
/// and what was asked to be saved is saved.
class TestLocalMusicImportEnd : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ImportFixture> m_fixture;

    LocalMusicImportService &service() { return m_fixture->service(); }
    QList<QUrl> makeFiles(int count)
    {
        QList<QUrl> urls;
        for (int i = 0; i < count; ++i)
            urls.append(QUrl::fromLocalFile(ImportFixture::write(m_fixture->outside(u"n%1.mp3"_s.arg(i)))));
        return urls;
    }
    void describeEverything()
    {
        FakeAsset asset = tagged(u"歌"_s);
        asset.common->append(dataTag(u"id3/APIC"_s, QByteArray(20'000, 'x'), CommonKey::artwork));
        asset.all = QList<FakeTag>{textTag(u"id3/USLT"_s, u"词"_s.repeated(1000))};
        m_fixture->reader().otherwise = asset;
    }

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ImportFixture>();
        m_fixture->start();
    }
    void cleanup() { m_fixture.reset(); }

    void endInTheMiddleOf_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<int>("after");
        for (const QString &operation :
             {u"folder"_s, u"files"_s, u"file"_s, u"scan"_s, u"take up"_s, u"clear"_s, u"size"_s}) {
            for (const int after : {0, 1, 2, 5, 9})
                QTest::newRow(qPrintable(u"%1, %2 files read"_s.arg(operation).arg(after)))
                    << operation << after;
        }
    }
    void endInTheMiddleOf()
    {
        QFETCH(const QString, operation);
        QFETCH(const int, after);
        describeEverything();
        const QList<QUrl> urls = makeFiles(20);
        for (int i = 0; i < 20; ++i)
            ImportFixture::write(m_fixture->documents(u"s%1.mp3"_s.arg(i)));
        QSemaphore mayRead(after);
        std::atomic<bool> isEnding = false;
        m_fixture->reader().onOpen = [&](const QString &) {
            while (!isEnding && !mayRead.tryAcquire(1, 1)) {
            }
        };
        const auto run = [&]() -> QCoro::Task<void> {
            // The service is gone when these go on: nothing but their arguments is theirs.
            if (operation == u"folder"_s)
                co_await service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()));
            else if (operation == u"files"_s)
                co_await service().importFiles(urls);
            else if (operation == u"file"_s)
                co_await service().importFile(urls.constFirst());
            else if (operation == u"scan"_s)
                co_await service().scanSandbox();
            else if (operation == u"take up"_s)
                co_await service().extractMetadataAndSave(
                    QUrl::fromLocalFile(m_fixture->documents(u"s0.mp3"_s)), u"s0.mp3"_s);
            else if (operation == u"clear"_s)
                co_await service().clearAllImportedMusic();
            else
                co_await service().getImportedMusicSize();
        };
        auto running = run();
        // As far as the reads that are allowed lead, then the end comes while the pool is at work.
        QTRY_VERIFY_WITH_TIMEOUT(mayRead.available() == 0 || running.isReady(), patienceMs);
        std::jthread releases([&isEnding] { isEnding = true; });
        m_fixture->stop();
        QVERIFY(await(std::move(running)).has_value());
        // The store is whole: a new start and a scan find every file that was copied.
        m_fixture->reader().onOpen = {};
        m_fixture->start();
        QVERIFY(await(service().scanSandbox()).has_value());
        const int own = operation == u"clear"_s ? 0 : 20;
        QVERIFY(service().importedSongs().size() >= own);
        QCOMPARE(m_fixture->indexedTitles().size(), service().importedSongs().size());
    }

    void indexThatWasAskedForLandsBeforeTheEnd()
    {
        makeFiles(3);
        QVERIFY(await(service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()))).has_value());
        service().deleteSong(service().importedSongs().at(1));
        m_fixture->stop();
        QCOMPARE(m_fixture->indexedTitles(), (QStringList{u"n0"_s, u"n2"_s}));
    }

    void indexLandsWhenTheEndComesDuringAWriteWithAnotherWaiting()
    {
        makeFiles(20);
        QVERIFY(await(service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()))).has_value());
        service().deleteSong(service().importedSongs().constFirst());
        QCoreApplication::sendPostedEvents(); // the write is under way
        service().deleteSong(service().importedSongs().constFirst());
        auto waiting = service().indexIdle();
        m_fixture->stop();
        QCOMPARE(m_fixture->indexedTitles().size(), 18);
        QVERIFY(await(std::move(waiting)).has_value());
    }

    void waitsForClaimsEndWithTheirOwner()
    {
        QFuture<void> waiting;
        {
            ImportClaims claims;
            QVERIFY(claims.claim("a"));
            QVERIFY(!claims.claim("a"));
            QVERIFY(claims.claim("b"));
            QVERIFY(claims.released("c").isFinished());
            const QFuture<void> ofB = claims.released("b");
            claims.release("b");
            QVERIFY(ofB.isFinished());
            QVERIFY(!claims.contains("b"));
            waiting = claims.released("a");
            QVERIFY(!waiting.isFinished());
        }
        QVERIFY(waiting.isFinished());
    }

    void jobsAfterTheEndDoNothingAndThoseBeforeAreWaitedFor()
    {
        QSemaphore entered;
        std::atomic<bool> left = false;
        auto gate = std::make_unique<JobGate>();
        const auto slow = gate->through([&] {
            entered.release();
            std::this_thread::yield();
            left = true;
            return 1;
        });
        const auto late = gate->through([] { return 1; });
        std::jthread job([&slow] { slow(); });
        QVERIFY(entered.tryAcquire(1, patienceMs));
        gate.reset();
        QVERIFY(left);
        QCOMPARE(late(), 0);
    }
};

QTEST_GUILESS_MAIN(TestLocalMusicImportEnd)
#include "tst_local_music_import_end.moc"
