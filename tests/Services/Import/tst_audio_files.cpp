// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/AudioFiles.h"
#include "Utils/SystemErrorText.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestAudioFiles : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;

    QString path(const QString &name = {}) const { return m_directory->filePath(name); }
    QByteArray native(const QString &name = {}) const { return QFile::encodeName(path(name)); }
    QString write(const QString &name, const QByteArray &bytes = "sound")
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write");
        return path(name);
    }
    QByteArray bytesOf(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private Q_SLOTS:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }

    void endingsInTheirOrder()
    {
        QCOMPARE(supportedExtensions().join(u' '),
                 u"mp3 m4a wav aiff aac flac ogg wma ape dff dsf wv tta tak mka opus spx ra rm rmvb"_s);
    }

    void ending_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<bool>("isAudio");
        QTest::newRow("lower") << "a.mp3"_ba << true;
        QTest::newRow("upper") << "a.MP3"_ba << true;
        QTest::newRow("mixed") << "a.RmVb"_ba << true;
        QTest::newRow("last one counts") << "a.txt.flac"_ba << true;
        QTest::newRow("last one does not") << "a.flac.txt"_ba << false;
        QTest::newRow("longer") << "a.mp34"_ba << false;
        QTest::newRow("shorter") << "a.mp"_ba << false;
        QTest::newRow("none") << "mp3"_ba << false;
        QTest::newRow("empty") << "a."_ba << false;
        QTest::newRow("of the folder") << "/x.mp3/a"_ba << false;
        QTest::newRow("with a folder") << "/x.txt/a.ogg"_ba << true;
        QTest::newRow("not UTF-8") << "\xC4\xE3.mp3"_ba << true;
        QTest::newRow("aif is none") << "a.aif"_ba << false;
    }
    void ending()
    {
        QFETCH(const QByteArray, name);
        QFETCH(const bool, isAudio);
        QCOMPARE(hasSupportedExtension(name), isAudio);
    }

    void typesOfTheFileDialog()
    {
        const QStringList types = supportedTypes();
        QCOMPARE(types.first(5), (QStringList{u"audio/mpeg"_s, u"audio/mp4"_s, u"audio/x-wav"_s,
                                              u"audio/x-aiff"_s, u"audio/*"_s}));
        QVERIFY(!types.contains(u"application/octet-stream"_s));
        // The rest follows the order of the endings.
        QVERIFY(types.indexOf(u"audio/flac"_s) > 4);
        QVERIFY(types.indexOf(u"audio/flac"_s) < types.indexOf(u"audio/aac"_s));
    }

    void walkIsDeepInTheOrderOfNamesWithoutHiddenEntries()
    {
        for (const QString &name : {u"b.mp3"_s, u"a.mp3"_s, u"c/d.mp3"_s, u"a/z.mp3"_s, u"a/b/y.mp3"_s,
                                    u"a/notes.txt"_s, u".hidden.mp3"_s, u".folder/x.mp3"_s, u"a/.x.mp3"_s})
            write(name);
        QList<QByteArray> expected;
        for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s, u"a/z.mp3"_s, u"a/b/y.mp3"_s, u"c/d.mp3"_s})
            expected.append(native(name));
        QCOMPARE(findAudioFiles(native()), expected);
        QCOMPARE(findAudioFiles(native() + '/'), expected);
    }

    void directoryThatIsNoneGivesNothing()
    {
        QVERIFY(findAudioFiles(native(u"missing"_s)).isEmpty());
        write(u"file.mp3"_s);
        QVERIFY(findAudioFiles(native(u"file.mp3"_s)).isEmpty());
    }

    void brokenLinksAreFoundOnlyWhenAskedFor()
    {
        QVERIFY(QFile::link(path(u"gone"_s), path(u"a.mp3"_s)));
        QCOMPARE(findAudioFiles(native()).size(), 1);
        int found = 0;
        visitAudioFiles(native(), BrokenLinks::leaveOut, [&found](const QByteArray &) { ++found; });
        QCOMPARE(found, 0);
    }

    void veryDeepFolders()
    {
        QString deep;
        for (int i = 0; i < 300; ++i)
            deep += u"d/"_s;
        write(deep + u"a.mp3"_s);
        QCOMPARE(findAudioFiles(native()).size(), 1);
    }

    void displayNameOfAPath()
    {
        QCOMPARE(displayName("/x/歌.mp3"), u"歌.mp3"_s);
        QCOMPARE(displayName("歌.mp3"), u"歌.mp3"_s);
        QCOMPARE(displayName("/x/"), QString(u""_s));
        QCOMPARE(displayName("/x/\xFF.mp3"), u"\uFFFD.mp3"_s);
    }

    void copyHasTheBytesAndTheTimeOfTheSource()
    {
        QByteArray bytes(3'000'000, Qt::Uninitialized);
        for (qsizetype i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<char>((i * 7919) >> 3);
        const QString source = write(u"a.mp3"_s, bytes);
        const QDateTime changed(QDate(2020, 2, 3), QTime(4, 5, 6), Qt::UTC);
        QFile file(source);
        QVERIFY(file.open(QIODevice::ReadWrite) &&
                file.setFileTime(changed, QFileDevice::FileModificationTime));
        file.close();
        QVERIFY(QFile::setPermissions(source, QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY(copyAudioFile(native(u"a.mp3"_s), native(u"b.mp3"_s)).has_value());
        QCOMPARE(bytesOf(u"b.mp3"_s), bytes);
        const QFileInfo copy(path(u"b.mp3"_s));
        QCOMPARE(copy.lastModified().toUTC(), changed);
        // Readable by all, writable by the owner, whatever the source's rights.
        QCOMPARE(copy.permissions() &
                     (QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                      QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
                 QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
        QCOMPARE(QDir(path()).entryList(QDir::Files | QDir::Hidden), (QStringList{u"a.mp3"_s, u"b.mp3"_s}));
    }

    void copyNeverReplacesAFile()
    {
        write(u"a.mp3"_s, "new");
        write(u"b.mp3"_s, "old");
        const auto copied = copyAudioFile(native(u"a.mp3"_s), native(u"b.mp3"_s));
        QVERIFY(!copied.has_value());
        QVERIFY(copied.error().targetExists);
        QCOMPARE(copied.error().description, u"文件已存在"_s);
        QCOMPARE(bytesOf(u"b.mp3"_s), "old"_ba);
        QCOMPARE(QDir(path()).entryList(QDir::Files | QDir::Hidden).size(), 2);
    }

    void copyIntoAFolderThatIsNotThere()
    {
        write(u"a.mp3"_s);
        const auto copied = copyAudioFile(native(u"a.mp3"_s), native(u"missing/b.mp3"_s));
        QVERIFY(!copied.has_value());
        QVERIFY(!copied.error().targetExists);
        QCOMPARE(copied.error().description, u"文件不存在"_s);
    }

    void copyBetweenFileSystems()
    {
        const QTemporaryDir memory(u"/dev/shm/tst_audio_files-XXXXXX"_s);
        QVERIFY(memory.isValid());
        const QByteArray bytes(700'000, 'x');
        write(u"a.mp3"_s, bytes);
        const QString target = memory.filePath(u"b.mp3"_s);
        QVERIFY(copyAudioFile(native(u"a.mp3"_s), QFile::encodeName(target)).has_value());
        QFile copy(target);
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), bytes);
    }

    void textsOfErrors()
    {
        QCOMPARE(systemErrorText(ENOSPC), u"磁盘空间不足"_s);
        QCOMPARE(systemErrorText(EACCES), u"没有权限"_s);
        QCOMPARE(systemErrorText(ENAMETOOLONG), u"文件名过长"_s);
        QVERIFY(!systemErrorText(EMFILE).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestAudioFiles)
#include "tst_audio_files.moc"
