// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LinuxDirectories.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr QFileDevice::Permissions everybodyElse = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                                   QFileDevice::ExeGroup | QFileDevice::ReadOther |
                                                   QFileDevice::WriteOther | QFileDevice::ExeOther;

} // namespace

class LinuxDirectoriesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theDefaultsAreInTheHome();
    void followsTheEnvironment();
    void relativePathsInTheEnvironmentDoNotCount();
    void doesNotDependOnTheApplicationName();
    void honoursTheUsersMusicDirectory();
    void aSwitchedOffMusicDirectoryIsNotTheHome();
    void dataAndCacheAreForThisUserAlone();
    void leavesTheMusicDirectoryAsItIs();
    void withoutAMusicDirectoryTheMusicIsWithTheData();
    void aDirectoryThatCannotBeMadeIsTold();

private:
    QString path(const QString &relative) const { return m_home->filePath(relative); }
    void writeUserDirectories(const QByteArray &music) const;

    std::unique_ptr<QTemporaryDir> m_home;
};

void LinuxDirectoriesTest::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", QFile::encodeName(m_home->path()));
    for (const char *name : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        qunsetenv(name);
}

void LinuxDirectoriesTest::writeUserDirectories(const QByteArray &music) const
{
    QVERIFY(QDir(m_home->path()).mkpath(u".config"_s));
    QFile file(path(u".config/user-dirs.dirs"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("XDG_MUSIC_DIR=\"" + music + "\"\n");
}

void LinuxDirectoriesTest::theDefaultsAreInTheHome()
{
    const Directories directories = makeDirectories();
    QCOMPARE(directories.documents, path(u"Music/Cadorel"_s));
    QCOMPARE(directories.applicationSupport, path(u".local/share/cadorel"_s));
    QCOMPARE(directories.caches, path(u".cache/cadorel"_s));
    for (const QString &directory :
         {directories.documents, directories.applicationSupport, directories.caches})
        QVERIFY(QFileInfo(directory).isDir());
    // Again, now that all is there.
    QCOMPARE(makeDirectories().documents, directories.documents);
}

void LinuxDirectoriesTest::followsTheEnvironment()
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(u"data/"_s)));
    qputenv("XDG_CACHE_HOME", QFile::encodeName(path(u"cache"_s)));
    const Directories directories = makeDirectories();
    QCOMPARE(directories.applicationSupport, path(u"data/cadorel"_s));
    QCOMPARE(directories.caches, path(u"cache/cadorel"_s));
}

void LinuxDirectoriesTest::relativePathsInTheEnvironmentDoNotCount()
{
    qputenv("XDG_DATA_HOME", "data");
    qputenv("XDG_CACHE_HOME", "cache");
    const Directories directories = makeDirectories();
    QCOMPARE(directories.applicationSupport, path(u".local/share/cadorel"_s));
    QCOMPARE(directories.caches, path(u".cache/cadorel"_s));
}

void LinuxDirectoriesTest::doesNotDependOnTheApplicationName()
{
    const QString before = makeDirectories().applicationSupport;
    const QString name = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName(u"other"_s);
    QCoreApplication::setOrganizationName(u"somebody"_s);
    const QString after = makeDirectories().applicationSupport;
    QCoreApplication::setApplicationName(name);
    QCoreApplication::setOrganizationName({});
    QCOMPARE(after, before);
}

void LinuxDirectoriesTest::honoursTheUsersMusicDirectory()
{
    writeUserDirectories("$HOME/音乐");
    QCOMPARE(makeDirectories().documents, path(u"音乐/Cadorel"_s));
}

void LinuxDirectoriesTest::aSwitchedOffMusicDirectoryIsNotTheHome()
{
    writeUserDirectories("$HOME/");
    QCOMPARE(makeDirectories().documents, path(u"Music/Cadorel"_s));
}

void LinuxDirectoriesTest::dataAndCacheAreForThisUserAlone()
{
    const Directories directories = makeDirectories();
    for (const QString &directory : {directories.applicationSupport, directories.caches})
        QCOMPARE(QFile::permissions(directory) & everybodyElse, QFileDevice::Permissions());
}

void LinuxDirectoriesTest::leavesTheMusicDirectoryAsItIs()
{
    const QFileDevice::Permissions open = QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                          QFileDevice::ExeOwner | QFileDevice::ReadOther |
                                          QFileDevice::ExeOther;
    QVERIFY(QDir().mkpath(path(u"Music"_s)));
    QVERIFY(QFile::setPermissions(path(u"Music"_s), open));
    makeDirectories();
    QCOMPARE(QFile::permissions(path(u"Music"_s)) & everybodyElse, open & everybodyElse);
    QCOMPARE(QDir(path(u"Music"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
             QStringList{u"Cadorel"_s});
}

void LinuxDirectoriesTest::withoutAMusicDirectoryTheMusicIsWithTheData()
{
    QFile blocker(path(u"Music"_s));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot make the directory .*/Music/Cadorel "
                                                          "and keeps the music in .*/cadorel/Music"_s));
    const Directories directories = makeDirectories();
    QCOMPARE(directories.documents, path(u".local/share/cadorel/Music"_s));
    QVERIFY(QFileInfo(directories.documents).isDir());
}

void LinuxDirectoriesTest::aDirectoryThatCannotBeMadeIsTold()
{
    QFile blocker(path(u"blocker"_s));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    qputenv("XDG_CACHE_HOME", QFile::encodeName(blocker.fileName()));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot make the directory .*/blocker/cadorel"_s));
    const Directories directories = makeDirectories();
    QCOMPARE(directories.caches, path(u"blocker/cadorel"_s));
    QVERIFY(QFileInfo(directories.applicationSupport).isDir());
}

QTEST_GUILESS_MAIN(LinuxDirectoriesTest)
#include "LinuxDirectoriesTest.moc"
