// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/ServerSocketWatch.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace cadorel {

/// Where a sound server's socket lies, and how its coming is noticed.
class TestServerSocketWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void the_environment_says_where_data();
    void the_environment_says_where();
    void a_socket_that_comes_is_noticed();
    void a_directory_that_comes_first_is_followed();
    void a_directory_that_goes_and_comes_again_is_followed();
    void what_else_comes_is_nothing();
    void nothing_is_noticed_after_the_stop();
    void may_be_stopped_by_its_own_notice();

private:
    static void make(const QString &path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
};

void TestServerSocketWatch::the_environment_says_where_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("pulse");
    QTest::addColumn<QString>("runtime");
    QTest::addColumn<QStringList>("sockets");
    const QString none;
    QTest::newRow("nothing") << none << none << none << QStringList();
    QTest::newRow("the user's") << none << none << u"/run/user/1"_s
                                << QStringList{u"/run/user/1/pulse/native"_s};
    QTest::newRow("a directory of its own")
        << none << u"/tmp/p"_s << u"/run/user/1"_s << QStringList{u"/tmp/p/native"_s};
    QTest::newRow("a path") << u"/a/b"_s << none << u"/run/user/1"_s << QStringList{u"/a/b"_s};
    QTest::newRow("a socket") << u"unix:/a/b"_s << u"/tmp/p"_s << none << QStringList{u"/a/b"_s};
    QTest::newRow("a socket of one machine")
        << u"{0123}unix:/a/b"_s << none << none << QStringList{u"/a/b"_s};
    QTest::newRow("several") << u" tcp:host  unix:/a /b\n"_s << none << none << QStringList{u"/a"_s, u"/b"_s};
    QTest::newRow("another machine") << u"host"_s << none << u"/run/user/1"_s << QStringList();
}

void TestServerSocketWatch::the_environment_says_where()
{
    QFETCH(QString, server);
    QFETCH(QString, pulse);
    QFETCH(QString, runtime);
    QProcessEnvironment environment;
    const auto set = [&environment](const QString &name, const QString &value) {
        if (!value.isNull())
            environment.insert(name, value);
    };
    set(u"PULSE_SERVER"_s, server);
    set(u"PULSE_RUNTIME_PATH"_s, pulse);
    set(u"XDG_RUNTIME_DIR"_s, runtime);
    QTEST(ServerSocketWatch::socketsIn(environment), "sockets");
}

void TestServerSocketWatch::a_socket_that_comes_is_noticed()
{
    const QTemporaryDir home;
    const QString socket = home.filePath(u"native"_s);
    ServerSocketWatch watch({socket});
    QVERIFY(watch.canNotice());
    QVERIFY(!watch.anyExists());
    QSignalSpy appeared(&watch, &ServerSocketWatch::appeared);
    watch.start();
    make(socket);
    QTRY_VERIFY(!appeared.isEmpty());
    QVERIFY(watch.anyExists());
    // A server that starts anew makes its socket anew.
    QVERIFY(QFile::remove(socket));
    QTRY_VERIFY(!watch.anyExists());
    appeared.clear();
    make(socket);
    QTRY_VERIFY(!appeared.isEmpty());
}

void TestServerSocketWatch::a_directory_that_comes_first_is_followed()
{
    const QTemporaryDir home;
    const QString socket = home.filePath(u"a/b/native"_s);
    ServerSocketWatch watch({home.filePath(u"elsewhere"_s), socket});
    QSignalSpy appeared(&watch, &ServerSocketWatch::appeared);
    watch.start();
    QVERIFY(QDir(home.path()).mkpath(u"a/b"_s));
    make(socket);
    QTRY_VERIFY(!appeared.isEmpty());
}

void TestServerSocketWatch::a_directory_that_goes_and_comes_again_is_followed()
{
    const QTemporaryDir home;
    const QString socket = home.filePath(u"pulse/native"_s);
    QVERIFY(QDir(home.path()).mkdir(u"pulse"_s));
    make(socket);
    ServerSocketWatch watch({socket});
    QSignalSpy appeared(&watch, &ServerSocketWatch::appeared);
    watch.start();
    for (int i = 0; i < 3; ++i) {
        QVERIFY(QDir(home.filePath(u"pulse"_s)).removeRecursively());
        QCoreApplication::processEvents();
        appeared.clear();
        QVERIFY(QDir(home.path()).mkdir(u"pulse"_s));
        make(socket);
        QTRY_VERIFY(!appeared.isEmpty());
    }
}

void TestServerSocketWatch::what_else_comes_is_nothing()
{
    const QTemporaryDir home;
    const QString socket = home.filePath(u"native"_s);
    ServerSocketWatch watch({socket});
    QSignalSpy appeared(&watch, &ServerSocketWatch::appeared);
    watch.start();
    make(home.filePath(u"pid"_s));
    // The notice of that has come when that of a second watch has.
    QFileSystemWatcher other({home.path()});
    QSignalSpy seen(&other, &QFileSystemWatcher::directoryChanged);
    make(home.filePath(u"cookie"_s));
    QTRY_VERIFY(!seen.isEmpty());
    QVERIFY(appeared.isEmpty());
}

void TestServerSocketWatch::nothing_is_noticed_after_the_stop()
{
    const QTemporaryDir home;
    const QString socket = home.filePath(u"native"_s);
    ServerSocketWatch watch({socket});
    QSignalSpy appeared(&watch, &ServerSocketWatch::appeared);
    watch.stop();
    watch.start();
    watch.stop();
    QFileSystemWatcher other({home.path()});
    QSignalSpy seen(&other, &QFileSystemWatcher::directoryChanged);
    make(socket);
    QTRY_VERIFY(!seen.isEmpty());
    QVERIFY(appeared.isEmpty());
}

void TestServerSocketWatch::may_be_stopped_by_its_own_notice()
{
    const QTemporaryDir home;
    ServerSocketWatch watch({home.filePath(u"a/native"_s), home.filePath(u"b/native"_s)});
    QVERIFY(QDir(home.path()).mkdir(u"a"_s) && QDir(home.path()).mkdir(u"b"_s));
    int notices = 0;
    connect(&watch, &ServerSocketWatch::appeared, this, [&] {
        ++notices;
        watch.stop();
    });
    watch.start();
    make(home.filePath(u"a/native"_s));
    make(home.filePath(u"b/native"_s));
    QTRY_COMPARE(notices, 1);
    QCoreApplication::processEvents();
    QCOMPARE(notices, 1);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestServerSocketWatch)
#include "tst_server_socket_watch.moc"
