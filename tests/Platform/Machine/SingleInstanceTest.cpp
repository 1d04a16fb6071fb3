// SPDX-License-Identifier: GPL-3.0-or-later
// Real processes that want to be the one player of a home.
#include "Platform/Linux/SingleInstance.h"

#include <QElapsedTimer>
#include <QLocalSocket>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

// Exit codes of SingleInstanceProgram.
constexpr int toldTheFirst = 10;
constexpr int gaveUp = 11;

/// A run of SingleInstanceProgram, killed with the object.
class Player
{
public:
    explicit Player(const QProcessEnvironment &environment) { m_process.setProcessEnvironment(environment); }
    ~Player()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Player)

    void start(const QString &dataDirectory, int limit = 20'000, const QStringList &more = {})
    {
        m_process.start(QCoreApplication::applicationDirPath() + u"/SingleInstanceProgram"_s,
                        QStringList{dataDirectory, QString::number(limit)} + more);
    }
    void go() { m_process.write("\n"); }
    bool says(const QByteArray &line)
    {
        return QTest::qWaitFor(
            [&] {
                m_output += m_process.readAllStandardOutput();
                return m_output.split('\n').contains(line);
            },
            20'000);
    }
    /// Exit code, -1 for a run that goes on or was killed.
    int exitCode()
    {
        if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(20'000))
            return -1;
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    void signal(int number) { ::kill(static_cast<pid_t>(m_process.processId()), number); }
    void killAndWait()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    QByteArray errors() { return m_process.readAllStandardError(); }
    qint64 processId() const { return m_process.processId(); }

private:
    QProcess m_process;
    QByteArray m_output;
};

} // namespace

class SingleInstanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theSecondAsksTheFirst_data();
    void theSecondAsksTheFirst();
    void findsAFirstWithAnotherEnvironment();
    void ofTwoAtOnceExactlyOneStays();
    void aKilledFirstIsSucceeded();
    void afterAnOrderlyEndTheNextIsFirst();
    void aSilentFirstIsLeftAlone();
    void waitsForAFirstThatIsJustEnding();
    void homesDoNotDisturbEachOther();
    void theSocketIsForThisUserAlone();
    void strangersOnTheSocketDoNoHarm();
    void goesOnWhereNothingCanBeLocked();

private:
    QString data() const { return m_directory->filePath(u"data"_s); }
    QString runtime() const { return m_directory->filePath(u"run"_s); }

    std::unique_ptr<QTemporaryDir> m_directory;
    QProcessEnvironment m_environment;
};

void SingleInstanceTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(data()));
    QVERIFY(QDir().mkpath(runtime()));
    m_environment = QProcessEnvironment::systemEnvironment();
    m_environment.insert(u"XDG_RUNTIME_DIR"_s, runtime());
    m_environment.remove(u"XDG_ACTIVATION_TOKEN"_s);
    m_environment.remove(u"DESKTOP_STARTUP_ID"_s);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime()));
}

void SingleInstanceTest::theSecondAsksTheFirst_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<bool>("hasRuntimeDirectory");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no token") << QStringList() << true << QByteArray("raise ");
    QTest::newRow("wayland") << QStringList{u"XDG_ACTIVATION_TOKEN=abc-1"_s} << true
                             << QByteArray("raise abc-1");
    QTest::newRow("x11") << QStringList{u"DESKTOP_STARTUP_ID=host/x 1_TIME5"_s} << true
                         << QByteArray("raise host/x 1_TIME5");
    QTest::newRow("both") << QStringList{u"XDG_ACTIVATION_TOKEN=a"_s, u"DESKTOP_STARTUP_ID=b"_s} << true
                          << QByteArray("raise a");
    QTest::newRow("two lines") << QStringList{u"XDG_ACTIVATION_TOKEN=a\nb"_s} << true
                               << QByteArray("raise a");
    QTest::newRow("no runtime directory")
        << QStringList{u"XDG_ACTIVATION_TOKEN=abc"_s} << false << QByteArray("raise abc");
}

void SingleInstanceTest::theSecondAsksTheFirst()
{
    QFETCH(QStringList, variables);
    QFETCH(bool, hasRuntimeDirectory);
    QFETCH(QByteArray, line);
    if (!hasRuntimeDirectory)
        m_environment.remove(u"XDG_RUNTIME_DIR"_s);
    Player first(m_environment);
    first.start(data());
    QVERIFY(first.says("first"));
    for (const QString &variable : variables)
        m_environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    Player second(m_environment);
    second.start(data());
    QCOMPARE(second.exitCode(), toldTheFirst);
    QVERIFY(first.says(line));
    QVERIFY(first.isRunning());
}

void SingleInstanceTest::findsAFirstWithAnotherEnvironment()
{
    Player first(m_environment);
    first.start(data());
    QVERIFY(first.says("first"));
    m_environment.remove(u"XDG_RUNTIME_DIR"_s);
    Player second(m_environment);
    second.start(data());
    QCOMPARE(second.exitCode(), toldTheFirst);
}

void SingleInstanceTest::ofTwoAtOnceExactlyOneStays()
{
    for (int round = 0; round < 30; ++round) {
        Player one(m_environment);
        Player two(m_environment);
        for (Player *player : {&one, &two})
            player->start(data(), 20'000, {u"wait"_s});
        for (Player *player : {&one, &two})
            QVERIFY(player->says("ready"));
        for (Player *player : {&one, &two})
            player->go();
        QVERIFY(QTest::qWaitFor([&] { return !one.isRunning() || !two.isRunning(); }, 20'000));
        Player &stays = one.isRunning() ? one : two;
        Player &goes = one.isRunning() ? two : one;
        QCOMPARE(goes.exitCode(), toldTheFirst);
        QVERIFY(stays.says("first"));
        QVERIFY(stays.says("raise "));
        QVERIFY(stays.isRunning());
    }
}

void SingleInstanceTest::aKilledFirstIsSucceeded()
{
    Player first(m_environment);
    first.start(data());
    QVERIFY(first.says("first"));
    first.killAndWait();
    // Its socket and its lock file are still there.
    QCOMPARE(QDir(runtime()).entryList(QDir::System | QDir::Files).size(), 1);
    Player second(m_environment);
    second.start(data());
    QVERIFY(second.says("first"));
    Player third(m_environment);
    third.start(data());
    QCOMPARE(third.exitCode(), toldTheFirst);
    QVERIFY(second.says("raise "));
}

void SingleInstanceTest::afterAnOrderlyEndTheNextIsFirst()
{
    for (int round = 0; round < 3; ++round) {
        auto instance = SingleInstance::acquire(data(), {});
        QVERIFY(instance.has_value());
        QCOMPARE(QDir(runtime()).entryList(QDir::System | QDir::Files).size(), 1);
        instance->reset();
        QVERIFY(QDir(runtime()).isEmpty());
    }
}

void SingleInstanceTest::aSilentFirstIsLeftAlone()
{
    Player first(m_environment);
    first.start(data());
    QVERIFY(first.says("first"));
    first.signal(SIGSTOP);
    Player second(m_environment);
    QElapsedTimer timer;
    timer.start();
    second.start(data(), 300);
    QCOMPARE(second.exitCode(), gaveUp);
    QVERIFY(timer.elapsed() >= 300);
    const QByteArray errors = second.errors();
    QVERIFY2(errors.contains("another player, process " + QByteArray::number(first.processId()) + " on "),
             errors.constData());
    QCOMPARE(errors.count('\n'), 1);
    // It was only busy, and still does as it was asked.
    first.signal(SIGCONT);
    QVERIFY(first.says("raise "));
}

void SingleInstanceTest::waitsForAFirstThatIsJustEnding()
{
    Player first(m_environment);
    first.start(data());
    QVERIFY(first.says("first"));
    first.signal(SIGSTOP);
    Player second(m_environment);
    second.start(data(), 20'000, {u"wait"_s});
    QVERIFY(second.says("ready"));
    second.go();
    // The second has connected once the stopped one's socket has something to read; its end must be enough.
    first.killAndWait();
    QVERIFY(second.says("first"));
}

void SingleInstanceTest::homesDoNotDisturbEachOther()
{
    const QString other = m_directory->filePath(u"other"_s);
    QVERIFY(QDir().mkpath(other));
    Player first(m_environment);
    first.start(data());
    QVERIFY(first.says("first"));
    Player second(m_environment);
    second.start(other);
    QVERIFY(second.says("first"));
    QVERIFY(first.isRunning());
}

void SingleInstanceTest::theSocketIsForThisUserAlone()
{
    const auto instance = SingleInstance::acquire(data(), {});
    QVERIFY(instance.has_value());
    const QFileInfoList sockets = QDir(runtime()).entryInfoList(QDir::System | QDir::Files);
    QCOMPARE(sockets.size(), 1);
    const QFileDevice::Permissions everybodyElse =
        QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
    QCOMPARE(sockets.first().permissions() & everybodyElse, QFileDevice::Permissions());
    QCOMPARE(QFile::permissions(data() + u"/cadorel.lock"_s) & everybodyElse, QFileDevice::Permissions());
}

void SingleInstanceTest::strangersOnTheSocketDoNoHarm()
{
    const auto instance = SingleInstance::acquire(data(), {});
    QVERIFY(instance.has_value());
    QSignalSpy raised(instance->get(), &SingleInstance::raiseRequested);
    const QString path = QDir(runtime()).entryInfoList(QDir::System | QDir::Files).first().filePath();
    for (const QByteArray &text : {QByteArray("delete everything\n"), QByteArray(100'000, 'x'),
                                   QByteArray("raised up\n"), QByteArray("\n")}) {
        QLocalSocket socket;
        socket.connectToServer(path);
        socket.write(text);
        QTRY_COMPARE(socket.state(), QLocalSocket::UnconnectedState);
    }
    QLocalSocket silent;
    silent.connectToServer(path);
    QLocalSocket slow;
    slow.connectToServer(path);
    slow.write("raise to");
    slow.flush();
    QVERIFY(raised.isEmpty());
    slow.write("ken\n");
    QTRY_COMPARE(raised.count(), 1);
    QCOMPARE(raised.first().first().toByteArray(), "token");
}

void SingleInstanceTest::goesOnWhereNothingCanBeLocked()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot lock .*/missing"_s));
    const auto instance = SingleInstance::acquire(m_directory->filePath(u"missing"_s), {});
    QVERIFY(instance.has_value());
    QVERIFY(*instance);
}

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "SingleInstanceTest.moc"
