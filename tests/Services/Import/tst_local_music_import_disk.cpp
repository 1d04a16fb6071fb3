// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTest>

#include <csignal>
#include <sys/mount.h>
#include <sys/resource.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// A file system of its own on a directory, with room for so many bytes.
class SmallDisk
{
public:
    SmallDisk(const QString &directory, int bytes)
        : m_directory(QFile::encodeName(directory))
    {
        const QByteArray options = "size=" + QByteArray::number(bytes);
        m_isMounted = ::mount("tmpfs", m_directory.constData(), "tmpfs", MS_NOSUID | MS_NODEV,
                              options.constData()) == 0;
    }
    ~SmallDisk()
    {
        if (m_isMounted)
            ::umount2(m_directory.constData(), MNT_DETACH);
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    bool isMounted() const { return m_isMounted; }

    /// Takes all the room that is left; removing the file gives it back.
    QString fill() const
    {
        const QString path = QString::fromUtf8(m_directory) + u"/filler"_s;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            qFatal("cannot fill the disk");
        for (const int step : {4096, 1}) {
            while (file.write(QByteArray(step, 'x')) == step) {
            }
        }
        return path;
    }

private:
    QByteArray m_directory;
    bool m_isMounted = false;
};

/// No file of this process may grow beyond so many bytes: what a full disk looks like without the right to
/// mount one.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = m_before.rlim_max};
        m_isActive = ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

    bool isActive() const { return m_isActive; }

private:
    void (*m_handler)(int);
    rlimit m_before{};
    bool m_isActive = false;
};

constexpr int diskSize = 256 * 1024;

} // namespace

/// A disk that is full while songs are copied or the index is written. Each case runs on a small disk, where
/// one can be mounted, and under a limit of file size, which always can be had.
class TestLocalMusicImportDisk : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ImportFixture> m_fixture;

    LocalMusicImportService &service() { return m_fixture->service(); }
    bool importFolder()
    {
        return await(service().importFromFolder(QUrl::fromLocalFile(m_fixture->outside()))).has_value();
    }
    bool import(const QString &name)
    {
        const QString path = ImportFixture::write(m_fixture->outside(name));
        const auto ended = await(service().importFile(QUrl::fromLocalFile(path)));
        return ended && ended->has_value();
    }
    bool saved()
    {
        service().saveImportedSongsIndex();
        return await(service().indexIdle()).has_value();
    }
    /// Lyrics make the record of this file longer than the room that is left.
    void describeLarge(const QString &name)
    {
        FakeAsset asset = tagged(name.chopped(4));
        asset.all = QList<FakeTag>{textTag(u"id3/USLT"_s, u"词"_s.repeated(30'000))};
        m_fixture->describe(name, asset);
    }
    bool indexIsWhole() const { return QJsonDocument::fromJson(m_fixture->indexBytes()).isArray(); }
    static void ways()
    {
        QTest::addColumn<bool>("mounts");
        QTest::newRow("small disk") << true;
        QTest::newRow("limit of file size") << false;
    }

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<ImportFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void fullWhileCopying_data() { ways(); }
    void fullWhileCopying()
    {
        QFETCH(const bool, mounts);
        m_fixture->start();
        const QString big =
            ImportFixture::write(m_fixture->outside(u"big.mp3"_s), QByteArray(qsizetype{2} * diskSize, 'x'));
        ImportFixture::write(m_fixture->outside(u"small.mp3"_s));
        {
            std::optional<SmallDisk> disk;
            std::optional<FileSizeLimit> limit;
            if (mounts) {
                disk.emplace(m_fixture->documents(), diskSize);
                if (!disk->isMounted())
                    QSKIP("no right to mount a disk");
            } else {
                limit.emplace(diskSize);
                QVERIFY(limit->isActive());
            }
            QVERIFY(importFolder());
            const auto alone = await(service().importFile(QUrl::fromLocalFile(big)));
            QVERIFY(alone.has_value() && !alone->has_value());
            // Nothing half-copied is left, not even under a hidden name.
            QCOMPARE(QDir(m_fixture->documents())
                         .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                     QStringList{LocalMusicImportService::storedName(u"small.mp3"_s)});
        }
        const QString text = mounts ? u"磁盘空间不足"_s : service().importErrorText().section(u": "_s, 1);
        QVERIFY(!text.isEmpty());
        QCOMPARE(service().importError(), u"导入失败: "_s + text);
        QVERIFY(m_fixture->console().take().contains(u"❌ 复制失败: big.mp3 - "_s + text));
        QCOMPARE(m_fixture->titles(), QStringList{u"small"_s});
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"small"_s});
        QVERIFY(QFileInfo::exists(big));
    }

    void fullWhileARecordIsAddedToTheIndex_data() { ways(); }
    void fullWhileARecordIsAddedToTheIndex()
    {
        QFETCH(const bool, mounts);
        std::optional<SmallDisk> disk;
        if (mounts) {
            disk.emplace(m_fixture->metadata(), diskSize);
            if (!disk->isMounted())
                QSKIP("no right to mount a disk");
        }
        m_fixture->start();
        QVERIFY(import(u"a.mp3"_s) && import(u"b.mp3"_s));
        const QByteArray before = m_fixture->indexBytes();
        describeLarge(u"large.mp3"_s);
        {
            const QString filler = mounts ? disk->fill() : QString();
            std::optional<FileSizeLimit> limit;
            if (!mounts)
                limit.emplace(static_cast<rlim_t>(before.size()) + 1000);
            QVERIFY(import(u"large.mp3"_s));
            QCOMPARE(m_fixture->indexBytes(), before);
            // The list is right in memory, and a song that fits is still not written out of its order.
            QCOMPARE(m_fixture->titles(), (QStringList{u"a"_s, u"b"_s, u"large"_s}));
            QVERIFY(import(u"c.mp3"_s));
            QCOMPARE(m_fixture->indexBytes(), before);
            if (mounts)
                QVERIFY(QFile::remove(filler));
        }
        QVERIFY(saved());
        QCOMPARE(m_fixture->indexedTitles(), (QStringList{u"a"_s, u"b"_s, u"large"_s, u"c"_s}));
        m_fixture->stop();
    }

    void recordThatDoesNotFitByAFewBytes()
    {
        m_fixture->start();
        QVERIFY(import(u"a.mp3"_s));
        const QByteArray before = m_fixture->indexBytes();
        for (const int room : {0, 1, 2, 100}) {
            const FileSizeLimit limit(static_cast<rlim_t>(before.size() + room));
            QVERIFY(limit.isActive());
            QVERIFY(import(u"b%1.mp3"_s.arg(room)));
            QCOMPARE(m_fixture->indexBytes(), before);
        }
        QVERIFY(saved());
        QCOMPARE(m_fixture->indexedTitles(), m_fixture->titles());
        QCOMPARE(m_fixture->indexedTitles().size(), 5);
    }

    void fullWhileTheIndexIsWrittenWhole_data() { ways(); }
    void fullWhileTheIndexIsWrittenWhole()
    {
        QFETCH(const bool, mounts);
        std::optional<SmallDisk> disk;
        if (mounts) {
            disk.emplace(m_fixture->metadata(), diskSize);
            if (!disk->isMounted())
                QSKIP("no right to mount a disk");
        }
        m_fixture->start();
        QVERIFY(import(u"a.mp3"_s) && import(u"b.mp3"_s));
        const QByteArray before = m_fixture->indexBytes();
        // A service that has not written the file yet writes it whole.
        m_fixture->start();
        describeLarge(u"large.mp3"_s);
        {
            const QString filler = mounts ? disk->fill() : QString();
            std::optional<FileSizeLimit> limit;
            if (!mounts)
                limit.emplace(static_cast<rlim_t>(before.size()) + 1000);
            QVERIFY(import(u"large.mp3"_s));
            QCOMPARE(m_fixture->indexBytes(), before);
            // A shorter list needs no room.
            service().deleteSong(service().importedSongs().at(2));
            service().deleteSong(service().importedSongs().at(0));
            QVERIFY(await(service().indexIdle()).has_value());
            QCOMPARE(m_fixture->indexedTitles(), QStringList{u"b"_s});
            QVERIFY(indexIsWhole());
            if (mounts)
                QVERIFY(QFile::remove(filler));
        }
        QVERIFY(import(u"d.mp3"_s));
        QCOMPARE(m_fixture->indexedTitles(), (QStringList{u"b"_s, u"d"_s}));
        m_fixture->stop();
    }

    void fullWhileTheFirstIndexIsWritten_data() { ways(); }
    void fullWhileTheFirstIndexIsWritten()
    {
        QFETCH(const bool, mounts);
        std::optional<SmallDisk> disk;
        if (mounts) {
            disk.emplace(m_fixture->metadata(), diskSize);
            if (!disk->isMounted())
                QSKIP("no right to mount a disk");
        }
        m_fixture->start();
        describeLarge(u"large.mp3"_s);
        {
            const QString filler = mounts ? disk->fill() : QString();
            std::optional<FileSizeLimit> limit;
            if (!mounts)
                limit.emplace(1000);
            QVERIFY(import(u"large.mp3"_s));
            QCOMPARE(m_fixture->titles(), QStringList{u"large"_s});
            const QStringList log = m_fixture->console().take();
            QCOMPARE(log.filter(u"Failed to save lyrics: "_s).size(), 1);
            QVERIFY(log.contains(u"✅ 歌曲导入成功: large"_s));
            if (mounts)
                QVERIFY(QFile::remove(filler));
        }
        QVERIFY(saved());
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"large"_s});
        // No half-written side file and no temporary one.
        const QStringList left = QDir(m_fixture->metadata()).entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(left, QStringList{u"index.json"_s});
        m_fixture->stop();
    }

    void indexLandsWhenTheServiceEndsWithAFullDiskMeanwhile()
    {
        m_fixture->start();
        QVERIFY(import(u"a.mp3"_s));
        const QByteArray before = m_fixture->indexBytes();
        describeLarge(u"large.mp3"_s);
        {
            const FileSizeLimit limit(static_cast<rlim_t>(before.size()) + 1000);
            QVERIFY(limit.isActive());
            QVERIFY(import(u"large.mp3"_s));
        }
        service().saveImportedSongsIndex();
        m_fixture->stop();
        m_fixture->start();
        QCOMPARE(m_fixture->titles(), (QStringList{u"a"_s, u"large"_s}));
    }
};

QTEST_GUILESS_MAIN(TestLocalMusicImportDisk)
#include "tst_local_music_import_disk.moc"
