// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Import of single files and of several picked ones, and the taking up of a file that lies in the store.
class TestLocalMusicImportFiles : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ImportFixture> m_fixture;

    /// Ends, and gives what the import gave.
    std::optional<Song> importFile(const QString &path)
    {
        const auto ended = await(m_fixture->service().importFile(QUrl::fromLocalFile(path)));
        if (!ended)
            qFatal("the import did not end");
        return *ended;
    }
    QList<Song> importFiles(const QStringList &paths)
    {
        QList<QUrl> urls;
        for (const QString &path : paths)
            urls.append(QUrl::fromLocalFile(path));
        const auto ended = await(m_fixture->service().importFiles(urls));
        if (!ended)
            qFatal("the import did not end");
        return *ended;
    }
    std::optional<Song> takeUp(const QString &path, const QString &originalName)
    {
        const auto ended =
            await(m_fixture->service().extractMetadataAndSave(QUrl::fromLocalFile(path), originalName));
        if (!ended)
            qFatal("the operation did not end");
        return *ended;
    }

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ImportFixture>();
        m_fixture->start();
    }
    void cleanup() { m_fixture.reset(); }

    void newFileIsCopiedListedAndIndexed()
    {
        const QString source = ImportFixture::write(m_fixture->outside(u"01. 歌.mp3"_s), "the sound");
        const QString target = ImportFixture::storedPath(*m_fixture, u"01. 歌.mp3"_s);
        std::optional<Song> song;
        const QStringList events = recorded(*m_fixture, [&] { song = importFile(source); });
        QCOMPARE(events, QStringList({u"📥 开始导入文件: 01. 歌.mp3"_s, u"📍 源路径: "_s + source,
                                      u"📍 目标路径: "_s + target, u"✅ 文件已复制到沙盒"_s}) +
                             unreadableLines(u"歌"_s) +
                             QStringList({u"songs 1"_s, u"✅ 歌曲导入成功: 歌"_s}));
        QVERIFY(song);
        QCOMPARE(song->title(), u"歌"_s);
        QCOMPARE(ImportFixture::bytesOf(target), "the sound"_ba);
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"歌"_s});
        QCOMPARE(m_fixture->service().newSongsFound(), 0);
        QVERIFY(!m_fixture->service().lastScanDate());
        QVERIFY(!m_fixture->service().isImporting());
    }

    void sourceThatIsNotThere()
    {
        const QString source = m_fixture->outside(u"gone.mp3"_s);
        std::optional<Song> song;
        const QStringList events = recorded(*m_fixture, [&] { song = importFile(source); });
        QCOMPARE(events, (QStringList{u"📥 开始导入文件: gone.mp3"_s, u"📍 源路径: "_s + source,
                                      u"❌ 源文件不存在"_s, u"error 文件不存在"_s}));
        QVERIFY(!song);
        QCOMPARE(m_fixture->service().importError(), u"文件不存在"_s);
        QVERIFY(!QFileInfo::exists(m_fixture->metadata(u"index.json"_s)));
    }

    void addressThatIsNoFile()
    {
        const auto song = await(m_fixture->service().importFile(QUrl(u"https://example.org/a.mp3"_s)));
        QVERIFY(song.has_value() && !song->has_value());
        QCOMPARE(m_fixture->service().importError(), u"文件不存在"_s);
    }

    void fileThatIsInTheStoreButNotListedIsListed()
    {
        const QString source = ImportFixture::write(m_fixture->outside(u"a.mp3"_s), "new");
        const QString target = ImportFixture::write(ImportFixture::storedPath(*m_fixture, u"a.mp3"_s), "old");
        std::optional<Song> song;
        const QStringList events = recorded(*m_fixture, [&] { song = importFile(source); });
        QCOMPARE(events, QStringList({u"📥 开始导入文件: a.mp3"_s, u"📍 源路径: "_s + source,
                                      u"📍 目标路径: "_s + target, u"⏭️ 文件已存在，跳过"_s}) +
                             unreadableLines(u"a"_s) + QStringList{u"songs 1"_s});
        QVERIFY(song);
        QCOMPARE(ImportFixture::bytesOf(target), "old"_ba);
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"a"_s});
    }

    void fileThatIsListedIsGivenBackAndNotListedTwice()
    {
        const QString source = ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        const std::optional<Song> first = importFile(source);
        const std::optional<Song> second = importFile(source);
        QVERIFY(first && second);
        QCOMPARE(second->id(), first->id());
        QCOMPARE(m_fixture->service().importedSongs().size(), 1);
        QVERIFY(!m_fixture->service().importError());
    }

    void newCopyIsListedWhateverTheListHolds()
    {
        // The stored file went without the list noticing; its row is cleaned away by the next scan only.
        const QString source = ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        importFile(source);
        QVERIFY(QFile::remove(ImportFixture::storedPath(*m_fixture, u"a.mp3"_s)));
        importFile(source);
        QCOMPARE(m_fixture->service().importedSongs().size(), 2);
    }

    void copyThatFails()
    {
        const QString source = m_fixture->outside(u"folder.mp3"_s);
        QVERIFY(QDir().mkpath(source));
        std::optional<Song> song;
        const QStringList events = recorded(*m_fixture, [&] { song = importFile(source); });
        QVERIFY(!song);
        QCOMPARE(events.last(2),
                 (QStringList{u"error 导入失败: 不是普通文件"_s, u"❌ 导入失败: 不是普通文件"_s}));
        QCOMPARE(m_fixture->service().importError(), u"导入失败: 不是普通文件"_s);
        QVERIFY(QDir(m_fixture->documents()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    void errorStaysUntilItIsCleared()
    {
        importFile(m_fixture->outside(u"gone.mp3"_s));
        importFile(ImportFixture::write(m_fixture->outside(u"a.mp3"_s)));
        QVERIFY(m_fixture->service().importError());
        m_fixture->service().clearImportError();
        QVERIFY(!m_fixture->service().importError());
    }

    void anyFileThatIsPickedIsTakenWhateverItsEnding()
    {
        QVERIFY(importFile(ImportFixture::write(m_fixture->outside(u"voice.amr"_s))));
    }

    void severalFilesAndEverythingThatIsSaidAndShown()
    {
        const QString a = ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        const QString gone = m_fixture->outside(u"gone.mp3"_s);
        QList<Song> songs;
        const QStringList events = recorded(*m_fixture, [&] { songs = importFiles({a, gone, a}); });
        const QString target = ImportFixture::storedPath(*m_fixture, u"a.mp3"_s);
        const QStringList expected =
            QStringList({u"📥 批量导入 3 个文件"_s, u"importing true"_s, u"text 正在导入..."_s,
                         u"text 正在导入 1/3"_s, u"📥 开始导入文件: a.mp3"_s, u"📍 源路径: "_s + a,
                         u"📍 目标路径: "_s + target, u"✅ 文件已复制到沙盒"_s}) +
            unreadableLines(u"a"_s) +
            QStringList{u"songs 1"_s,
                        u"✅ 歌曲导入成功: a"_s,
                        u"progress 0.333333"_s,
                        u"text 正在导入 2/3"_s,
                        u"📥 开始导入文件: gone.mp3"_s,
                        u"📍 源路径: "_s + gone,
                        u"❌ 源文件不存在"_s,
                        u"error 文件不存在"_s,
                        u"progress 0.666667"_s,
                        u"text 正在导入 3/3"_s,
                        u"📥 开始导入文件: a.mp3"_s,
                        u"📍 源路径: "_s + a,
                        u"📍 目标路径: "_s + target,
                        u"⏭️ 文件已存在，跳过"_s} +
            unreadableLines(u"a"_s) +
            QStringList{u"found 2"_s, u"✅ 批量导入完成: 2 首"_s, u"importing false"_s, u"progress 1"_s,
                        u"text 导入完成: 2 首"_s};
        QCOMPARE(events, expected);
        // A file that was there already is collected as well.
        QCOMPARE(songs.size(), 2);
        QCOMPARE(m_fixture->service().importedSongs().size(), 1);
        QVERIFY(!m_fixture->service().lastScanDate());
    }

    void noFilesAtAll()
    {
        const QStringList events = recorded(*m_fixture, [&] { QVERIFY(importFiles({}).isEmpty()); });
        QCOMPARE(events, (QStringList{u"📥 批量导入 0 个文件"_s, u"importing true"_s, u"text 正在导入..."_s,
                                      u"✅ 批量导入完成: 0 首"_s, u"importing false"_s, u"progress 1"_s,
                                      u"text 导入完成: 0 首"_s}));
    }

    void severalFilesAreImportedEvenWhileAFolderIs()
    {
        ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        const QString b = ImportFixture::write(m_fixture->outside() + u"2/b.mp3"_s);
        auto folder = m_fixture->service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()));
        QCOMPARE(importFiles({b}).size(), 1);
        QVERIFY(await(std::move(folder)).has_value());
        QStringList titles = m_fixture->titles();
        titles.sort();
        QCOMPARE(titles, (QStringList{u"a"_s, u"b"_s}));
        QStringList indexed = m_fixture->indexedTitles();
        indexed.sort();
        QCOMPARE(indexed, titles);
    }

    void thousandFilesOneAfterTheOtherWithTheIndexInTheEnd()
    {
        constexpr int count = 1000;
        QStringList paths;
        for (int i = 0; i < count; ++i)
            paths.append(ImportFixture::write(m_fixture->outside(u"n%1.mp3"_s.arg(i, 4, 10, QChar(u'0')))));
        QCOMPARE(importFiles(paths).size(), count);
        QCOMPARE(m_fixture->service().newSongsFound(), count);
        QCOMPARE(m_fixture->indexedTitles(), m_fixture->titles());
        QCOMPARE(m_fixture->titles().constLast(), u"n0999"_s);
    }

    void takingUpAFileOfTheStore()
    {
        const QString path = ImportFixture::write(m_fixture->documents(u"x_download.mp3"_s));
        std::optional<Song> song;
        const QStringList events = recorded(*m_fixture, [&] { song = takeUp(path, u"02 歌.mp3"_s); });
        QCOMPARE(events, QStringList{u"📝 提取元数据: 02 歌.mp3"_s} + unreadableLines(u"歌"_s) +
                             QStringList({u"songs 1"_s, u"found 1"_s, u"✅ 歌曲已保存: 歌"_s}));
        QVERIFY(song);
        QCOMPARE(song->assetURL(), QUrl::fromLocalFile(path));
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"歌"_s});
    }

    void takingUpAFileThatIsListed()
    {
        const QString path = ImportFixture::write(m_fixture->documents(u"x.mp3"_s));
        takeUp(path, u"x.mp3"_s);
        std::optional<Song> song;
        const QStringList events = recorded(*m_fixture, [&] { song = takeUp(path, u"x.mp3"_s); });
        QCOMPARE(events, QStringList{u"📝 提取元数据: x.mp3"_s} + unreadableLines(u"x"_s) +
                             QStringList{u"⏭️ 歌曲已存在: x"_s});
        QVERIFY(song);
        QCOMPARE(m_fixture->service().importedSongs().size(), 1);
    }

    void takingUpAFileThatIsGone()
    {
        const QString path = m_fixture->documents(u"gone.mp3"_s);
        std::optional<Song> song;
        const QStringList events = recorded(*m_fixture, [&] { song = takeUp(path, u"gone.mp3"_s); });
        QCOMPARE(events, (QStringList{u"📝 提取元数据: gone.mp3"_s, u"❌ 文件不存在: "_s + path}));
        QVERIFY(!song);
    }

    void storedNameIsHashLineAndName()
    {
        QCOMPARE(LocalMusicImportService::storedName(u"song.mp3"_s), u"204F3BD8187BC5A7_song.mp3"_s);
        QCOMPARE(LocalMusicImportService::storedName(u"🎵.flac"_s), u"2B013779E79A10D5_🎵.flac"_s);
    }

    void originalNameOfAStoredOne_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("original");
        QTest::newRow("upper case") << u"204F3BD8187BC5A7_song.mp3"_s << u"song.mp3"_s;
        QTest::newRow("lower case") << u"204f3bd8187bc5a7_song.mp3"_s << u"song.mp3"_s;
        QTest::newRow("another line later") << u"204F3BD8187BC5A7_a_b.mp3"_s << u"a_b.mp3"_s;
        QTest::newRow("twice: one goes")
            << u"0123456789ABCDEF_0123456789ABCDEF_a.mp3"_s << u"0123456789ABCDEF_a.mp3"_s;
        QTest::newRow("nothing behind") << u"0123456789abcdef_"_s << QString(u""_s);
        QTest::newRow("15 digits") << u"04F3BD8187BC5A7_song.mp3"_s << u"04F3BD8187BC5A7_song.mp3"_s;
        QTest::newRow("17 digits") << u"0204F3BD8187BC5A7_a.mp3"_s << u"0204F3BD8187BC5A7_a.mp3"_s;
        QTest::newRow("16, not all digits") << u"G04F3BD8187BC5A7_a.mp3"_s << u"G04F3BD8187BC5A7_a.mp3"_s;
        QTest::newRow("full-width digits") << u"０04F3BD8187BC5A7_a.mp3"_s << u"０04F3BD8187BC5A7_a.mp3"_s;
        QTest::newRow("no line") << u"204F3BD8187BC5A7.mp3"_s << u"204F3BD8187BC5A7.mp3"_s;
        QTest::newRow("line first") << u"_204F3BD8187BC5A7_a.mp3"_s << u"_204F3BD8187BC5A7_a.mp3"_s;
        QTest::newRow("uuid is not touched") << u"0a1b2c3d-0000-1111-2222-0123456789ab_a.mp3"_s
                                             << u"0a1b2c3d-0000-1111-2222-0123456789ab_a.mp3"_s;
        QTest::newRow("empty") << QString() << QString();
    }
    void originalNameOfAStoredOne()
    {
        QFETCH(const QString, stored);
        QFETCH(const QString, original);
        QCOMPARE(LocalMusicImportService::originalName(stored), original);
    }
};

QTEST_GUILESS_MAIN(TestLocalMusicImportFiles)
#include "tst_local_music_import_files.moc"
