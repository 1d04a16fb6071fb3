// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestFiles : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;

    QString path(const QString &name) const { return m_directory->filePath(name); }
    QByteArray bytesOf(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList entries() const
    {
        return QDir(m_directory->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private Q_SLOTS:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }

    void newFile()
    {
        const QByteArray bytes(3'000'000, 'x');
        QVERIFY(writeFileAtomically(path(u"文件"_s), bytes).has_value());
        QCOMPARE(bytesOf(u"文件"_s), bytes);
        QCOMPARE(entries(), QStringList{u"文件"_s});
        QVERIFY(QFileInfo(path(u"文件"_s)).permission(QFile::ReadOther));
    }

    void privateFileIsOfThisUserAlone()
    {
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        // Even in place of one that everybody could read.
        QVERIFY(writeFileAtomically(path(u"a"_s), "public").has_value());
        QVERIFY(writePrivateFileAtomically(path(u"a"_s), "secret").has_value());
        QCOMPARE(bytesOf(u"a"_s), "secret"_ba);
        QCOMPARE(entries(), QStringList{u"a"_s});
        QVERIFY(!(QFileInfo(path(u"a"_s)).permissions() & others));
        QVERIFY(QFileInfo(path(u"a"_s)).permission(QFile::ReadOwner | QFile::WriteOwner));
    }

    void privateFileThatCannotBeWrittenLeavesNothing()
    {
        QVERIFY(!writePrivateFileAtomically(path(u"none/a"_s), "secret").has_value());
        QVERIFY(QDir().mkdir(path(u"a"_s)));
        QVERIFY(!writePrivateFileAtomically(path(u"a"_s), "secret").has_value());
        QCOMPARE(entries(), QStringList{u"a"_s});
    }

    void damagedNamesAreFree()
    {
        const QString first = freeDamagedName(path(u"a"_s));
        QVERIFY(first.startsWith(path(u"a.damaged-"_s)));
        QVERIFY(writeFileAtomically(first, "x").has_value());
        QVERIFY(!QFileInfo::exists(freeDamagedName(path(u"a"_s))));
    }

    void emptyFile()
    {
        QVERIFY(writeFileAtomically(path(u"a"_s), QByteArray()).has_value());
        QVERIFY(QFileInfo::exists(path(u"a"_s)));
        QCOMPARE(QFileInfo(path(u"a"_s)).size(), 0);
    }

    void earlierFileIsReplaced()
    {
        QVERIFY(writeFileAtomically(path(u"a"_s), "a longer text").has_value());
        QVERIFY(writeFileAtomically(path(u"a"_s), "short").has_value());
        QCOMPARE(bytesOf(u"a"_s), "short"_ba);
        QCOMPARE(entries(), QStringList{u"a"_s});
    }

    void folderThatIsNotThere()
    {
        const auto written = writeFileAtomically(path(u"missing/a"_s), "x");
        QVERIFY(!written.has_value());
        QVERIFY(!written.error().isEmpty());
        QVERIFY(entries().isEmpty());
    }

    void directoryInTheWay()
    {
        QVERIFY(QDir().mkpath(path(u"a/b"_s)));
        QVERIFY(!writeFileAtomically(path(u"a"_s), "x").has_value());
        QCOMPARE(entries(), QStringList{u"a"_s});
    }

    void diskThatFillsUpLeavesTheEarlierFile()
    {
        QVERIFY(writeFileAtomically(path(u"a"_s), "old").has_value());
        rlimit before{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{.rlim_cur = 4096, .rlim_max = before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
        const auto written = writeFileAtomically(path(u"a"_s), QByteArray(10'000, 'x'));
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
        QVERIFY(!written.has_value());
        QVERIFY(!written.error().isEmpty());
        QCOMPARE(bytesOf(u"a"_s), "old"_ba);
        QCOMPARE(entries(), QStringList{u"a"_s});
    }
};

QTEST_GUILESS_MAIN(TestFiles)
#include "tst_files.moc"
