// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QSemaphore>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The scan of the music directory, alone and beside imports.
class TestLocalMusicImportScan : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ImportFixture> m_fixture;

    LocalMusicImportService &service() { return m_fixture->service(); }
    bool scan() { return await(service().scanSandbox()).has_value(); }
    QStringList sortedTitles() const
    {
        QStringList titles = m_fixture->titles();
        titles.sort();
        return titles;
    }

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ImportFixture>();
        m_fixture->start();
    }
    void cleanup() { m_fixture.reset(); }

    void everythingThatIsSaidAndShown()
    {
        ImportFixture::write(m_fixture->documents(u"b.mp3"_s));
        ImportFixture::write(m_fixture->documents(u"a/c.flac"_s));
        ImportFixture::write(m_fixture->documents(u"notes.txt"_s));
        const QStringList events = recorded(*m_fixture, [this] { QVERIFY(scan()); });
        const QStringList lines = m_fixture->console().take();
        QCOMPARE(lines, QStringList({u"🔍 扫描沙盒目录..."_s, u"📁 沙盒中有 2 个音频文件"_s,
                                     u"🆕 发现 2 个新文件"_s}) +
                            unreadableLines(u"b"_s) + QStringList{u"✅ 添加: b"_s} + unreadableLines(u"c"_s) +
                            QStringList({u"✅ 添加: c"_s, u"💾 已更新歌曲索引"_s}));
        QStringList shown;
        for (const QString &event : events) {
            if (!lines.contains(event))
                shown.append(event);
        }
        QCOMPARE(shown, (QStringList{u"scanning true"_s, u"songs 1"_s, u"found 1"_s, u"songs 2"_s,
                                     u"found 2"_s, u"scanning false"_s, u"date"_s}));
        QVERIFY(events.indexOf(u"found 1"_s) < events.indexOf(u"✅ 添加: b"_s));
        QVERIFY(events.indexOf(u"💾 已更新歌曲索引"_s) < events.indexOf(u"scanning false"_s));
        QCOMPARE(service().lastScanDate(), m_fixture->clock().now());
        QCOMPARE(m_fixture->indexedTitles(), (QStringList{u"b"_s, u"c"_s}));
        QCOMPARE(service().importProgress(), 0.0);
    }

    void secondScanFindsNothingAndWritesNothing()
    {
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        QVERIFY(scan());
        QVERIFY(QFile::remove(m_fixture->metadata(u"index.json"_s)));
        m_fixture->clock().advance(std::chrono::minutes(1));
        m_fixture->console().take();
        QVERIFY(scan());
        QCOMPARE(
            m_fixture->console().take(),
            (QStringList{u"🔍 扫描沙盒目录..."_s, u"📁 沙盒中有 1 个音频文件"_s, u"🆕 发现 0 个新文件"_s}));
        QCOMPARE(service().newSongsFound(), 0);
        QCOMPARE(service().lastScanDate(), m_fixture->clock().now());
        QVERIFY(!QFileInfo::exists(m_fixture->metadata(u"index.json"_s)));
    }

    void emptyDirectory()
    {
        QVERIFY(scan());
        QCOMPARE(
            m_fixture->console().take(),
            (QStringList{u"🔍 扫描沙盒目录..."_s, u"📁 沙盒中有 0 个音频文件"_s, u"🆕 发现 0 个新文件"_s}));
    }

    void fileThatCameSomeOtherWayKeepsItsNameAndLosesItsHashInTheTitle()
    {
        ImportFixture::write(m_fixture->documents(u"0123456789abcdef_歌.mp3"_s));
        QVERIFY(scan());
        QCOMPARE(m_fixture->titles(), QStringList{u"歌"_s});
        QVERIFY(QFileInfo::exists(m_fixture->documents(u"0123456789abcdef_歌.mp3"_s)));
    }

    void fileWithAnEarlyPrefixLosesItInTheTitle()
    {
        ImportFixture::write(m_fixture->documents(u"0a1b2c3d-0000-1111-2222-0123456789ab_歌.mp3"_s));
        QVERIFY(scan());
        QCOMPARE(m_fixture->titles(), QStringList{u"歌"_s});
    }

    void lostIndexGivesEveryFileItsIdBack()
    {
        ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        QVERIFY(await(service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()))).has_value());
        const Song before = service().importedSongs().constFirst();
        m_fixture->stop();
        QVERIFY(QFile::remove(m_fixture->metadata(u"index.json"_s)));
        m_fixture->start();
        QVERIFY(service().importedSongs().isEmpty());
        QVERIFY(scan());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        QCOMPARE(service().importedSongs().constFirst().id(), before.id());
        QCOMPARE(service().importedSongs().constFirst().albumId(), before.albumId());
    }

    void deletedFileIsCleanedAwayAndSaidSo()
    {
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        ImportFixture::write(m_fixture->documents(u"b.mp3"_s));
        QVERIFY(scan());
        QVERIFY(QFile::remove(m_fixture->documents(u"a.mp3"_s)));
        const QStringList events = recorded(*m_fixture, [this] { QVERIFY(scan()); });
        QCOMPARE(events,
                 (QStringList{u"scanning true"_s, u"found 0"_s, u"🔍 扫描沙盒目录..."_s,
                              u"📁 沙盒中有 1 个音频文件"_s, u"🆕 发现 0 个新文件"_s, u"songs 1"_s,
                              u"🗑️ 清理了 1 首已删除的歌曲"_s, u"💾 已更新歌曲索引"_s, u"scanning false"_s}));
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"b"_s});
    }

    void lastCopyDeletedOutside()
    {
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        QVERIFY(scan());
        QVERIFY(QFile::remove(m_fixture->documents(u"a.mp3"_s)));
        QVERIFY(scan());
        QVERIFY(service().importedSongs().isEmpty());
        QVERIFY(m_fixture->console().take().contains(u"🗑️ 清理了 1 首已删除的歌曲"_s));
        QCOMPARE(m_fixture->indexBytes(), "[]"_ba);
    }

    void songWithoutAFileIsCleanedAway()
    {
        ImportFixture::write(m_fixture->metadata(u"index.json"_s),
                             '[' + ImportFixture::record(QString(), u"无文件"_s) + ']');
        m_fixture->start();
        QCOMPARE(m_fixture->titles(), QStringList{u"无文件"_s});
        QVERIFY(scan());
        QVERIFY(service().importedSongs().isEmpty());
    }

    void songOutsideOfTheDirectoryStaysWhileItsFileExists()
    {
        const QString elsewhere = ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        const QString hidden = ImportFixture::write(m_fixture->documents(u".hidden/b.mp3"_s));
        ImportFixture::write(m_fixture->metadata(u"index.json"_s),
                             '[' + ImportFixture::record(elsewhere, u"别处"_s) + ',' +
                                 ImportFixture::record(hidden, u"隐藏"_s) + ']');
        m_fixture->start();
        QVERIFY(scan());
        QCOMPARE(m_fixture->titles(), (QStringList{u"别处"_s, u"隐藏"_s}));
    }

    void movedFileIsTheSameSongInItsNewPlace()
    {
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        QVERIFY(scan());
        const QString id = service().importedSongs().constFirst().id();
        QVERIFY(QDir(m_fixture->documents()).mkdir(u"sub"_s));
        QVERIFY(QFile::rename(m_fixture->documents(u"a.mp3"_s), m_fixture->documents(u"sub/a.mp3"_s)));
        QVERIFY(scan());
        QCOMPARE(service().importedSongs().size(), 1);
        QCOMPARE(service().importedSongs().constFirst().id(), id);
        QCOMPARE(service().importedSongs().constFirst().assetPath(), m_fixture->documents(u"sub/a.mp3"_s));
    }

    void secondScanWhileOneRunsDoesNothing()
    {
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        QSemaphore mayRead;
        m_fixture->reader().onOpen = [&mayRead](const QString &) { mayRead.acquire(); };
        auto first = service().scanSandbox();
        QVERIFY(service().isScanning());
        auto second = service().scanSandbox();
        QVERIFY(second.isReady());
        mayRead.release(1);
        QVERIFY(await(std::move(first)).has_value());
        QCOMPARE(m_fixture->console().take().filter(u"🔍"_s).size(), 1);
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
    }

    void rescanStartsAndReturnsAtOnce()
    {
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        QSemaphore mayRead;
        m_fixture->reader().onOpen = [&mayRead](const QString &) { mayRead.acquire(); };
        service().rescan();
        QVERIFY(service().isScanning());
        mayRead.release(1);
        QTRY_VERIFY_WITH_TIMEOUT(!service().isScanning(), patienceMs);
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
    }

    void orderOfTheWalkForThousandsOfFiles()
    {
        constexpr int count = 1000;
        for (int i = 0; i < count; ++i)
            ImportFixture::write(
                m_fixture->documents(u"f%1/n%2.mp3"_s.arg(i % 7).arg(i, 4, 10, QChar(u'0'))));
        QVERIFY(scan());
        QCOMPARE(service().newSongsFound(), count);
        QStringList paths;
        for (const Song &song : service().importedSongs())
            paths.append(song.assetPath());
        QStringList sorted = paths;
        sorted.sort();
        QCOMPARE(paths, sorted);
        QCOMPARE(m_fixture->indexedTitles(), m_fixture->titles());
    }

    void fileThatAnImportIsFillingIsLeftToTheImport()
    {
        // The copy lies in the store, its tags are being read: the scan that looks now must not list it.
        const QString source = ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        QSemaphore reads;
        QSemaphore mayRead;
        m_fixture->reader().onOpen = [&](const QString &) {
            reads.release();
            mayRead.acquire();
        };
        auto import = service().importFile(QUrl::fromLocalFile(source));
        QTRY_VERIFY_WITH_TIMEOUT(reads.available() == 1, patienceMs);
        QVERIFY(scan());
        QVERIFY(service().importedSongs().isEmpty());
        QVERIFY(m_fixture->console().take().contains(u"🆕 发现 0 个新文件"_s));
        mayRead.release(10);
        QVERIFY(await(std::move(import)).has_value());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
    }

    void fileThatIsListedWhileTheScanReadsItIsNotListedTwice()
    {
        const QString path = ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        QSemaphore reads;
        QSemaphore mayRead;
        m_fixture->reader().onOpen = [&](const QString &) {
            reads.release();
            mayRead.acquire();
        };
        auto running = service().scanSandbox();
        QTRY_VERIFY_WITH_TIMEOUT(reads.available() == 1, patienceMs);
        m_fixture->reader().onOpen = {};
        QVERIFY(await(service().extractMetadataAndSave(QUrl::fromLocalFile(path), u"a.mp3"_s)).has_value());
        mayRead.release(1);
        QVERIFY(await(std::move(running)).has_value());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"a"_s});
    }

    void scanBesideAFolderImportListsEveryFileOnce()
    {
        for (int i = 0; i < 200; ++i) {
            ImportFixture::write(m_fixture->outside(u"new%1.mp3"_s.arg(i)));
            ImportFixture::write(m_fixture->documents(u"old%1.mp3"_s.arg(i)));
        }
        auto import = service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()));
        auto running = service().scanSandbox();
        QVERIFY(await(std::move(import)).has_value());
        QVERIFY(await(std::move(running)).has_value());
        QVERIFY(scan());
        QStringList titles = sortedTitles();
        QCOMPARE(titles.size(), 400);
        QCOMPARE(titles.removeDuplicates(), 0);
        QStringList indexed = m_fixture->indexedTitles();
        indexed.sort();
        QCOMPARE(indexed, sortedTitles());
    }

    void filesThatLieInTheStoreAreListedByTheScanEvenWhileAFolderSkipsThem()
    {
        // The index was lost and the listener imports the same folder again while the first scan runs.
        for (int i = 0; i < 50; ++i) {
            const QString name = u"s%1.mp3"_s.arg(i);
            ImportFixture::write(m_fixture->outside(name));
            ImportFixture::write(ImportFixture::storedPath(*m_fixture, name));
        }
        auto running = service().scanSandbox();
        auto import = service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()));
        QVERIFY(await(std::move(running)).has_value());
        QVERIFY(await(std::move(import)).has_value());
        QStringList titles = sortedTitles();
        QCOMPARE(titles.size(), 50);
        QCOMPARE(titles.removeDuplicates(), 0);
    }

    void sameFileImportedTwiceAtOnceIsListedOnceAndGivenToBoth()
    {
        const QUrl source = QUrl::fromLocalFile(ImportFixture::write(m_fixture->outside(u"a.mp3"_s)));
        auto first = service().importFiles({source});
        auto second = service().importFile(source);
        auto third = service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()));
        const auto firstSongs = await(std::move(first));
        const auto secondSong = await(std::move(second));
        QVERIFY(await(std::move(third)).has_value());
        QVERIFY(firstSongs && firstSongs->size() == 1);
        QVERIFY(secondSong && secondSong->has_value());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        QVERIFY(!service().importError());
    }

    void importIntoTheListDuringAScanIsCountedByBoth()
    {
        ImportFixture::write(m_fixture->documents(u"old.mp3"_s));
        QSemaphore mayRead;
        m_fixture->reader().onOpen = [&mayRead](const QString &path) {
            if (path.endsWith(u"/old.mp3"_s))
                mayRead.acquire();
        };
        auto running = service().scanSandbox();
        ImportFixture::write(m_fixture->outside(u"new.mp3"_s));
        QVERIFY(await(service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()))).has_value());
        QVERIFY(service().isScanning());
        QVERIFY(!service().isImporting());
        mayRead.release();
        QVERIFY(await(std::move(running)).has_value());
        QCOMPARE(m_fixture->titles(), (QStringList{u"new"_s, u"old"_s}));
        QCOMPARE(service().newSongsFound(), 2);
    }
};

QTEST_GUILESS_MAIN(TestLocalMusicImportScan)
#include "tst_local_music_import_scan.moc"
