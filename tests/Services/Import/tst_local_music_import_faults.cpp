// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Files and folders that are not what their names say, names that fit nowhere, missing rights.
class TestLocalMusicImportFaults : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ImportFixture> m_fixture;

    LocalMusicImportService &service() { return m_fixture->service(); }
    bool importFolder()
    {
        return await(service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()))).has_value();
    }
    bool scan() { return await(service().scanSandbox()).has_value(); }
    std::optional<Song> importFile(const QString &path)
    {
        const auto ended = await(service().importFile(QUrl::fromLocalFile(path)));
        if (!ended)
            qFatal("the import did not end");
        return *ended;
    }
    QStringList stored() const
    {
        return QDir(m_fixture->documents())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    static QByteArray writeNative(const QString &folder, const QByteArray &name)
    {
        const QByteArray path = QFile::encodeName(folder) + '/' + name;
        const int descriptor = ::open(path.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        if (descriptor < 0 || ::write(descriptor, "sound", 5) != 5 || ::close(descriptor) != 0)
            qFatal("cannot write the file");
        return path;
    }
    static void setMode(const QString &path, mode_t mode)
    {
        if (::chmod(QFile::encodeName(path).constData(), mode) != 0)
            qFatal("cannot change rights");
    }

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ImportFixture>();
        m_fixture->start();
    }
    void cleanup() { m_fixture.reset(); }

    void emptyFileAndTextNamedLikeAudioBecomeSongsWithDefaults()
    {
        ImportFixture::write(m_fixture->outside(u"empty.mp3"_s), QByteArray());
        ImportFixture::write(m_fixture->outside(u"text.mp3"_s), "not a sound");
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->titles(), (QStringList{u"empty"_s, u"text"_s}));
        for (const Song &song : service().importedSongs()) {
            QCOMPARE(song.duration(), 0.0);
            QCOMPARE(song.artist(), u"未知艺术家"_s);
        }
        QCOMPARE(QFileInfo(ImportFixture::storedPath(*m_fixture, u"empty.mp3"_s)).size(), 0);
    }

    void nameTooLongForTheStore_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("255 bytes") << u"n"_s.repeated(251) + u".mp3"_s;
        QTest::newRow("255 bytes of Chinese") << u"歌"_s.repeated(83) + u"xx.mp3"_s;
        QTest::newRow("the shortest that does not fit") << u"n"_s.repeated(235) + u".mp3"_s;
    }
    void nameTooLongForTheStore()
    {
        QFETCH(const QString, name);
        const QString source = ImportFixture::write(m_fixture->outside(name), "precious");
        ImportFixture::write(m_fixture->outside(u"short.mp3"_s));
        QVERIFY(importFolder());
        const QStringList log = m_fixture->console().take();
        QVERIFY(log.contains(u"❌ 复制失败: "_s + name + u" - 文件名过长"_s));
        QVERIFY(log.contains(u"✅ 导入完成: 新增 1 首，跳过 0 首"_s));
        QVERIFY(!importFile(source));
        QCOMPARE(service().importError(), u"导入失败: 文件名过长"_s);
        QCOMPARE(ImportFixture::bytesOf(source), "precious"_ba);
        QCOMPARE(stored(), QStringList{LocalMusicImportService::storedName(u"short.mp3"_s)});
    }

    void longestNameThatFits()
    {
        const QString name = u"n"_s.repeated(234) + u".mp3"_s;
        ImportFixture::write(m_fixture->outside(name));
        QVERIFY(importFolder());
        QCOMPARE(stored(), QStringList{LocalMusicImportService::storedName(name)});
    }

    void nameThatIsNotUtf8IsImportedUnderARepairedOne()
    {
        writeNative(m_fixture->outside(), "\xC4\xE3.mp3");
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->titles(), QStringList{u"\uFFFD\uFFFD"_s});
        QCOMPARE(stored(), QStringList{LocalMusicImportService::storedName(u"\uFFFD\uFFFD.mp3"_s)});
        m_fixture->start();
        QCOMPARE(m_fixture->titles(), QStringList{u"\uFFFD\uFFFD"_s});
        QVERIFY(scan());
        QCOMPARE(service().importedSongs().size(), 1);
    }

    void folderWhoseNameIsNotUtf8IsWalked()
    {
        const QByteArray folder = QFile::encodeName(m_fixture->outside()) + "/\xFF";
        QCOMPARE(::mkdir(folder.constData(), 0755), 0);
        const int descriptor = ::open((folder + "/a.mp3").constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        QVERIFY(descriptor >= 0);
        ::close(descriptor);
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
    }

    void scanLeavesANameThatIsNotUtf8Alone()
    {
        const QByteArray path = writeNative(m_fixture->documents(), "\xC4\xE3.mp3");
        QVERIFY(scan());
        QVERIFY(scan());
        QVERIFY(service().importedSongs().isEmpty());
        QCOMPARE(::access(path.constData(), F_OK), 0);
        QVERIFY(m_fixture->console().take().contains(u"🆕 发现 0 个新文件"_s));
        QVERIFY(await(service().clearAllImportedMusic()).has_value());
        QVERIFY(::access(path.constData(), F_OK) != 0);
    }

    void loopOfLinksEndsTheWalk()
    {
        ImportFixture::write(m_fixture->outside(u"a/b/song.mp3"_s));
        QVERIFY(QFile::link(m_fixture->outside(), m_fixture->outside(u"a/b/up"_s)));
        QVERIFY(QFile::link(m_fixture->outside(u"a"_s), m_fixture->outside(u"a/b/loop.mp3"_s)));
        QVERIFY(QFile::link(m_fixture->outside(u"self.mp3"_s), m_fixture->outside(u"self.mp3"_s)));
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->titles(), QStringList{u"song"_s});
        QCOMPARE(m_fixture->console().take().filter(u"❌ 复制失败: self.mp3 - "_s).size(), 1);
    }

    void brokenLinkFailsWithAMessageAndTheScanListsNoSuch()
    {
        QVERIFY(QFile::link(m_fixture->outside(u"gone"_s), m_fixture->outside(u"broken.mp3"_s)));
        QVERIFY(importFolder());
        QVERIFY(m_fixture->console().take().contains(u"❌ 复制失败: broken.mp3 - 文件不存在"_s));
        QVERIFY(QFile::link(m_fixture->outside(u"gone"_s), m_fixture->documents(u"broken.mp3"_s)));
        QVERIFY(scan());
        QVERIFY(service().importedSongs().isEmpty());
    }

    void songWhoseFileBecameABrokenLinkIsCleanedAway()
    {
        const QString target = ImportFixture::write(m_fixture->outside(u"real.bin"_s));
        QVERIFY(QFile::link(target, m_fixture->documents(u"a.mp3"_s)));
        QVERIFY(scan());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        QVERIFY(QFile::remove(target));
        QVERIFY(scan());
        QVERIFY(service().importedSongs().isEmpty());
    }

    void linkToAFileIsImportedAsTheFile()
    {
        const QString target = ImportFixture::write(m_fixture->outside() + u"2/real.mp3"_s, "real");
        QVERIFY(QFile::link(target, m_fixture->outside(u"link.mp3"_s)));
        QVERIFY(importFolder());
        const QString copy = ImportFixture::storedPath(*m_fixture, u"link.mp3"_s);
        QVERIFY(!QFileInfo(copy).isSymLink());
        QCOMPARE(ImportFixture::bytesOf(copy), "real"_ba);
    }

    void namedPipeNeverHoldsAnythingUp()
    {
        const QString pipe = m_fixture->outside(u"x.mp3"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0644), 0);
        QCOMPARE(::mkfifo(QFile::encodeName(m_fixture->documents(u"y.mp3"_s)).constData(), 0644), 0);
        QVERIFY(importFolder());
        QVERIFY(scan());
        QVERIFY(service().importedSongs().isEmpty());
        QVERIFY(!importFile(pipe));
        QCOMPARE(service().importError(), u"导入失败: 不是普通文件"_s);
    }

    void folderNamedLikeAFileIsWalkedNotImported()
    {
        ImportFixture::write(m_fixture->outside(u"x.mp3/inner.mp3"_s));
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->titles(), QStringList{u"inner"_s});
        ImportFixture::write(m_fixture->documents(u"y.mp3/own.mp3"_s));
        QVERIFY(scan());
        QCOMPARE(m_fixture->titles(), (QStringList{u"inner"_s, u"own"_s}));
    }

    void folderThatCannotBeReadIsPassedOver()
    {
        ImportFixture::write(m_fixture->outside(u"a/a.mp3"_s));
        ImportFixture::write(m_fixture->outside(u"locked/b.mp3"_s));
        ImportFixture::write(m_fixture->outside(u"z/c.mp3"_s));
        m_fixture->giveTo(UnprivilegedScope::nobody);
        setMode(m_fixture->outside(u"locked"_s), 0);
        {
            const UnprivilegedScope scope;
            QVERIFY(scope.isActive());
            QVERIFY(importFolder());
        }
        setMode(m_fixture->outside(u"locked"_s), 0755);
        QCOMPARE(m_fixture->titles(), (QStringList{u"a"_s, u"c"_s}));
        QVERIFY(m_fixture->console().take().contains(u"📁 找到 2 个音频文件"_s));
    }

    void fileThatCannotBeReadFailsWithAMessage()
    {
        const QString locked = ImportFixture::write(m_fixture->outside(u"locked.mp3"_s));
        ImportFixture::write(m_fixture->outside(u"open.mp3"_s));
        m_fixture->giveTo(UnprivilegedScope::nobody);
        setMode(locked, 0);
        {
            const UnprivilegedScope scope;
            QVERIFY(scope.isActive());
            QVERIFY(importFolder());
            QVERIFY(!importFile(locked));
        }
        QCOMPARE(service().importError(), u"导入失败: 没有权限"_s);
        QVERIFY(m_fixture->console().take().contains(u"❌ 复制失败: locked.mp3 - 没有权限"_s));
        QCOMPARE(m_fixture->titles(), QStringList{u"open"_s});
        QCOMPARE(stored().size(), 1);
    }

    void storeThatCannotBeWrittenFailsWithAMessage()
    {
        ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        m_fixture->giveTo(UnprivilegedScope::nobody);
        setMode(m_fixture->documents(), 0555);
        {
            const UnprivilegedScope scope;
            QVERIFY(scope.isActive());
            QVERIFY(importFolder());
        }
        setMode(m_fixture->documents(), 0755);
        QVERIFY(m_fixture->console().take().contains(u"❌ 复制失败: a.mp3 - 没有权限"_s));
        QVERIFY(service().importedSongs().isEmpty());
        QVERIFY(stored().isEmpty());
    }

    void metadataDirectoryThatCannotBeWrittenStillGivesTheSong()
    {
        FakeAsset asset = tagged(u"歌"_s);
        asset.common->append(dataTag(u"id3/APIC"_s, "cover", CommonKey::artwork));
        asset.all = QList<FakeTag>{textTag(u"id3/USLT"_s, u"词"_s)};
        m_fixture->describe(u"a.mp3"_s, asset);
        ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        m_fixture->giveTo(UnprivilegedScope::nobody);
        setMode(m_fixture->metadata(), 0555);
        {
            const UnprivilegedScope scope;
            QVERIFY(scope.isActive());
            QVERIFY(importFolder());
        }
        setMode(m_fixture->metadata(), 0755);
        QCOMPARE(m_fixture->titles(), QStringList{u"歌"_s});
        const Song song = service().importedSongs().constFirst();
        QVERIFY(!song.artworkURL());
        QCOMPARE(song.artworkData().bytes(), "cover"_ba);
        QCOMPARE(song.embeddedLyrics(), u"词"_s);
        const QStringList log = m_fixture->console().take();
        QCOMPARE(log.filter(u"Failed to save artwork: "_s).size(), 1);
        QCOMPARE(log.filter(u"Failed to save lyrics: "_s).size(), 1);
        QVERIFY(log.contains(u"✅ 导入完成: 新增 1 首，跳过 0 首"_s));
        // The index could not be written and nothing says so; the next save succeeds.
        QVERIFY(m_fixture->indexBytes().isEmpty());
        service().saveImportedSongsIndex();
        QVERIFY(await(service().indexIdle()).has_value());
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"歌"_s});
    }

    void metadataDirectoryThatIsLostIsNoHarm()
    {
        QVERIFY(QDir(m_fixture->metadata()).removeRecursively());
        ImportFixture::write(m_fixture->outside(u"a.mp3"_s));
        QVERIFY(importFolder());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
    }

    void fileThatVanishesBeforeItsTurn()
    {
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        m_fixture->reader().onOpen = [](const QString &path) { QFile::remove(path); };
        QVERIFY(scan());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        m_fixture->reader().onOpen = {};
        QVERIFY(scan());
        QVERIFY(service().importedSongs().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestLocalMusicImportFaults)
#include "tst_local_music_import_faults.moc"
