// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Import of a folder: what is copied, listed, counted, said and shown.
class TestLocalMusicImportFolder : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ImportFixture> m_fixture;

    bool importFolder()
    {
        return await(m_fixture->service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside())))
            .has_value();
    }
    QStringList storedFiles() const
    {
        return QDir(m_fixture->documents()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ImportFixture>();
        m_fixture->start();
    }
    void cleanup() { m_fixture.reset(); }

    void initialState()
    {
        const LocalMusicImportService &service = m_fixture->service();
        QVERIFY(service.importedSongs().isEmpty());
        QVERIFY(!service.isImporting());
        QVERIFY(!service.isScanning());
        QVERIFY(!service.importError());
        QVERIFY(!service.lastScanDate());
        QCOMPARE(service.newSongsFound(), 0);
        QCOMPARE(service.importProgress(), 0.0);
        QCOMPARE(service.importProgressText(), QString());
        QCOMPARE(service.musicDirectory(), m_fixture->documents());
        QCOMPARE(service.metadataDirectory(), m_fixture->metadata());
    }

    void whatLiesInTheStoreIsNotImportedAgain()
    {
        LocalMusicImportService &service = m_fixture->service();
        ImportFixture::write(m_fixture->documents(u"专辑/手放的.mp3"_s));
        ImportFixture::write(m_fixture->outside(u"外面.mp3"_s));
        QVERIFY(importFolder());
        QVERIFY(await(service.scanSandbox()).has_value());
        QCOMPARE(service.importedSongs().size(), 2);
        const QStringList before = storedFiles();
        m_fixture->console().take();

        // The store itself, a folder that holds it, and a link to it.
        const QString link = m_fixture->outside(u"link"_s);
        QVERIFY(QFile::link(m_fixture->documents(), link));
        for (const QString &folder :
             {m_fixture->documents(), QFileInfo(m_fixture->documents()).path(), link}) {
            QVERIFY(await(service.importFromFolder(QUrl::fromLocalFile(folder))).has_value());
            QVERIFY(m_fixture->console().take().join(u'\n').contains(u"导入完成: 新增 0 首"_s));
        }
        const auto song =
            await(service.importFile(QUrl::fromLocalFile(m_fixture->documents(u"专辑/手放的.mp3"_s))));
        QVERIFY(song.has_value() && song->has_value());
        QCOMPARE(storedFiles(), before);
        QCOMPARE(service.importedSongs().size(), 2);
    }

    void startMakesTheMetadataDirectoryAndTellsTheNumberOfSongs()
    {
        m_fixture->stop();
        QVERIFY(QDir(m_fixture->metadata()).removeRecursively());
        m_fixture->start(true);
        QVERIFY(QFileInfo(m_fixture->metadata()).isDir());
        QCOMPARE(m_fixture->console().take(), QStringList{u"📂 本地音乐: 从缓存加载 0 首歌曲"_s});
    }

    void everythingThatIsSaidAndShown()
    {
        m_fixture->describe(u"a.mp3"_s, tagged(u"甲"_s));
        ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        ImportFixture::write(m_fixture->outside(u"b.mp3"_s));
        ImportFixture::write(m_fixture->outside(u"sub/a.mp3"_s), "another recording");
        const QStringList events = recorded(*m_fixture, [this] { QVERIFY(importFolder()); });
        const QStringList expected = QStringList{u"importing true"_s,
                                                 u"text 正在扫描..."_s,
                                                 u"📂 开始从文件夹导入: elsewhere"_s,
                                                 u"📁 找到 3 个音频文件"_s,
                                                 u"text 正在导入 1/3: a.mp3"_s,
                                                 u"📥 复制: a.mp3"_s,
                                                 u"Common metadata items: 3"_s,
                                                 u"Common key: title"_s,
                                                 u"✓ Title from common: 甲"_s,
                                                 u"Common key: artist"_s,
                                                 u"✓ Artist from common: 歌手"_s,
                                                 u"Common key: albumName"_s,
                                                 u"✓ Album from common: 专辑"_s,
                                                 u"All metadata items: 0"_s,
                                                 u"=== Final Extracted Metadata ==="_s,
                                                 u"Title: 甲"_s,
                                                 u"Artist: 歌手"_s,
                                                 u"Album: 专辑"_s,
                                                 u"Artwork: none"_s,
                                                 u"Lyrics: none"_s,
                                                 u"songs 1"_s,
                                                 u"found 1"_s,
                                                 u"progress 0.333333"_s,
                                                 u"text 正在导入 2/3: b.mp3"_s,
                                                 u"📥 复制: b.mp3"_s} +
                                     unreadableLines(u"b"_s) +
                                     QStringList{u"songs 2"_s,
                                                 u"found 2"_s,
                                                 u"progress 0.666667"_s,
                                                 u"text 正在导入 3/3: a.mp3"_s,
                                                 u"⏭️ 文件已存在: a.mp3"_s,
                                                 u"✅ 导入完成: 新增 2 首，跳过 1 首"_s,
                                                 u"text 导入完成: 新增 2 首"_s,
                                                 u"importing false"_s,
                                                 u"date"_s,
                                                 u"progress 1"_s,
                                                 u"text "_s};
        QCOMPARE(events, expected);
        QCOMPARE(m_fixture->service().lastScanDate(), m_fixture->clock().now());
        QCOMPARE(m_fixture->titles(), (QStringList{u"甲"_s, u"b"_s}));
    }

    void storedFileAndSongOfAnImportedFile()
    {
        m_fixture->describe(u"song.mp3"_s, tagged(u"歌"_s, 12.25));
        ImportFixture::write(m_fixture->outside(u"song.mp3"_s), "the sound");
        QVERIFY(importFolder());
        // 204F3BD8187BC5A7 starts the SHA-256 of "song.mp3" as another implementation gives it.
        QCOMPARE(storedFiles(), QStringList{u"204F3BD8187BC5A7_song.mp3"_s});
        const QString stored = m_fixture->documents(u"204F3BD8187BC5A7_song.mp3"_s);
        QCOMPARE(ImportFixture::bytesOf(stored), "the sound"_ba);
        const Song song = m_fixture->service().importedSongs().constFirst();
        // The id is of the stored name, hash prefix included.
        QCOMPARE(song.id(), u"AC55128095BEF35F"_s);
        QCOMPARE(song.assetURL(), QUrl::fromLocalFile(stored));
        QCOMPARE(song.duration(), 12.25);
        QCOMPARE(song.dateAdded(), m_fixture->clock().now());
        QVERIFY(song.isImported());
        QVERIFY(QFileInfo::exists(m_fixture->outside(u"song.mp3"_s)));
    }

    void emptyFolderEndsWithNothingFoundAndNoIndex()
    {
        m_fixture->write(m_fixture->outside(u"readme.txt"_s));
        const QStringList events = recorded(*m_fixture, [this] { QVERIFY(importFolder()); });
        QCOMPARE(events,
                 (QStringList{u"importing true"_s, u"text 正在扫描..."_s, u"📂 开始从文件夹导入: elsewhere"_s,
                              u"📁 找到 0 个音频文件"_s, u"text 未找到音频文件"_s, u"importing false"_s,
                              u"date"_s, u"progress 1"_s, u"text "_s}));
        QCOMPARE(m_fixture->service().newSongsFound(), 0);
        QCOMPARE(m_fixture->service().importProgress(), 1.0);
        QVERIFY(!QFileInfo::exists(m_fixture->metadata(u"index.json"_s)));
    }

    void folderThatIsNotThereEndsLikeAnEmptyOne()
    {
        QVERIFY(await(m_fixture->service().importFromFolder(
                          QUrl::fromLocalFile(m_fixture->outside(u"missing"_s))))
                    .has_value());
        QCOMPARE(m_fixture->console().take(),
                 (QStringList{u"📂 开始从文件夹导入: missing"_s, u"📁 找到 0 个音频文件"_s}));
        QVERIFY(!m_fixture->service().isImporting());
    }

    void sameNameInTwoFoldersIsImportedOnceAndSkippedOnce()
    {
        ImportFixture::write(m_fixture->outside(u"one/a.mp3"_s), "first");
        ImportFixture::write(m_fixture->outside(u"two/a.mp3"_s), "second, longer");
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->service().newSongsFound(), 1);
        QCOMPARE(ImportFixture::bytesOf(ImportFixture::storedPath(*m_fixture, u"a.mp3"_s)), "first"_ba);
        QVERIFY(m_fixture->console().take().contains(u"✅ 导入完成: 新增 1 首，跳过 1 首"_s));
    }

    void fileWhoseNamesakeCouldNotBeCopiedIsImported()
    {
        // The first of the two cannot be read at all; its name is free for the second.
        QVERIFY(QDir().mkpath(m_fixture->outside(u"one"_s)));
        QVERIFY(QFile::link(m_fixture->outside(u"nowhere"_s), m_fixture->outside(u"one/a.mp3"_s)));
        ImportFixture::write(m_fixture->outside(u"two/a.mp3"_s), "readable");
        QVERIFY(importFolder());
        QCOMPARE(ImportFixture::bytesOf(ImportFixture::storedPath(*m_fixture, u"a.mp3"_s)), "readable"_ba);
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        const QStringList log = m_fixture->console().take();
        QVERIFY(log.contains(u"❌ 复制失败: a.mp3 - 文件不存在"_s));
        QVERIFY(log.contains(u"✅ 导入完成: 新增 1 首，跳过 0 首"_s));
    }

    void importingAFolderAgainSkipsEverything()
    {
        for (const QString &name : {u"a.mp3"_s, u"b.flac"_s, u"c.ogg"_s})
            ImportFixture::write(m_fixture->outside(name));
        QVERIFY(importFolder());
        const QByteArray index = m_fixture->indexBytes();
        m_fixture->console().take();
        const int reads = m_fixture->reader().valueReads;
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->service().importedSongs().size(), 3);
        QCOMPARE(m_fixture->service().newSongsFound(), 0);
        QCOMPARE(m_fixture->console().take(),
                 (QStringList{u"📂 开始从文件夹导入: elsewhere"_s, u"📁 找到 3 个音频文件"_s,
                              u"⏭️ 文件已存在: a.mp3"_s, u"⏭️ 文件已存在: b.flac"_s, u"⏭️ 文件已存在: c.ogg"_s,
                              u"✅ 导入完成: 新增 0 首，跳过 3 首"_s}));
        QCOMPARE(m_fixture->indexBytes(), index);
        QCOMPARE(m_fixture->reader().valueReads.load(), reads);
    }

    void skippedFileIsNotListedEvenWhenTheListLacksIt()
    {
        ImportFixture::write(ImportFixture::storedPath(*m_fixture, u"a.mp3"_s));
        ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        QVERIFY(importFolder());
        QVERIFY(m_fixture->service().importedSongs().isEmpty());
        QVERIFY(m_fixture->console().take().contains(u"⏭️ 文件已存在: a.mp3"_s));
    }

    void copyThatFailsIsToldAndNotCountedAsSkipped()
    {
        QVERIFY(QFile::link(m_fixture->outside(u"nowhere"_s), m_fixture->outside(u"broken.mp3"_s)));
        ImportFixture::write(m_fixture->outside(u"whole.mp3"_s));
        QVERIFY(importFolder());
        const QStringList log = m_fixture->console().take();
        QCOMPARE(log.filter(u"❌"_s), QStringList{u"❌ 复制失败: broken.mp3 - 文件不存在"_s});
        QVERIFY(log.contains(u"✅ 导入完成: 新增 1 首，跳过 0 首"_s));
        QCOMPARE(m_fixture->titles(), QStringList{u"whole"_s});
        QVERIFY(!m_fixture->service().importError());
    }

    void onlyAudioFilesAreTakenHiddenOnesAreNot()
    {
        for (const QString &name :
             {u"a.MP3"_s, u"b.Flac"_s, u"c.rmvb"_s, u"d.txt"_s, u"e"_s, u"mp3"_s, u".hidden.mp3"_s,
              u".folder/f.mp3"_s, u"deep/er/g.opus"_s, u"h.mp3.part"_s})
            ImportFixture::write(m_fixture->outside(name));
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->titles(), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"g"_s}));
    }

    void newSongsAreAppendedBehindTheOldOnes()
    {
        ImportFixture::write(m_fixture->outside(u"z.mp3"_s));
        QVERIFY(importFolder());
        ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->titles(), (QStringList{u"z"_s, u"a"_s}));
        QCOMPARE(m_fixture->indexedTitles(), (QStringList{u"z"_s, u"a"_s}));
        QCOMPARE(m_fixture->service().newSongsFound(), 1);
    }

    void indexIsOnTheDiskWhenTheImportEnds()
    {
        for (int i = 0; i < 20; ++i)
            ImportFixture::write(m_fixture->outside(u"%1x.mp3"_s.arg(i, 3, 10, QChar(u'0'))));
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->indexedTitles(), m_fixture->titles());
        QCOMPARE(m_fixture->indexedTitles().size(), 20);
    }

    void secondFolderImportWhileOneRunsDoesNothing()
    {
        ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        const QString other = m_fixture->outside() + u"2"_s;
        ImportFixture::write(other + u"/b.mp3"_s);
        LocalMusicImportService &service = m_fixture->service();
        QSemaphore mayRead;
        m_fixture->reader().onOpen = [&mayRead](const QString &) { mayRead.acquire(); };
        auto first = service.importFromFolder(QUrl::fromLocalFile(m_fixture->outside()));
        QVERIFY(service.isImporting());
        auto second = service.importFromFolder(QUrl::fromLocalFile(other));
        QVERIFY(second.isReady());
        QCOMPARE(m_fixture->console().take().filter(u"📂"_s),
                 QStringList{u"📂 开始从文件夹导入: elsewhere"_s});
        QVERIFY(service.isImporting());
        mayRead.release(2);
        QVERIFY(await(std::move(first)).has_value());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        QVERIFY(await(service.importFromFolder(QUrl::fromLocalFile(other))).has_value());
        QCOMPARE(m_fixture->titles(), (QStringList{u"a"_s, u"b"_s}));
    }

    void folderWithASlashAtTheEndAndOddCharacters()
    {
        const QString odd = m_fixture->outside(u"100% #1? 音乐 [a]"_s);
        ImportFixture::write(odd + u"/5% #2? “歌” & 'x'.mp3"_s);
        QVERIFY(await(m_fixture->service().importFromFolder(QUrl::fromLocalFile(odd + u'/'))).has_value());
        QCOMPARE(m_fixture->titles(), QStringList{u"% #2? “歌” & 'x'"_s});
        QVERIFY(m_fixture->console().take().contains(u"📂 开始从文件夹导入: 100% #1? 音乐 [a]"_s));
        QVERIFY(QFileInfo::exists(m_fixture->service().importedSongs().constFirst().assetPath()));
    }

    void thousandFilesWithFewWritesOfTheIndexAndAScreenThatFollows()
    {
        constexpr int count = 1000;
        for (int i = 0; i < count; ++i)
            ImportFixture::write(m_fixture->outside(u"n%1.mp3"_s.arg(i, 4, 10, QChar(u'0'))));
        QSignalSpy progress(&m_fixture->service(), &LocalMusicImportService::importProgressTextChanged);
        int turns = 0;
        QTimer ticker;
        connect(&ticker, &QTimer::timeout, this, [&turns] { ++turns; });
        ticker.start(0);
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->service().importedSongs().size(), count);
        QCOMPARE(m_fixture->service().newSongsFound(), count);
        QCOMPARE(m_fixture->indexedTitles(), m_fixture->titles());
        QCOMPARE(m_fixture->titles().constFirst(), u"n0000"_s);
        QCOMPARE(m_fixture->titles().constLast(), u"n0999"_s);
        // "正在扫描", one for each file, the end, and its disappearance.
        QCOMPARE(progress.count(), count + 3);
        QVERIFY2(turns > 10, "the screens could not redraw during the import");
    }
};

QTEST_GUILESS_MAIN(TestLocalMusicImportFolder)
#include "tst_local_music_import_folder.moc"
