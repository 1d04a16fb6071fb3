// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/RunningPlayer.h"
#include "EndToEnd/VirtualDisplay.h"

#include <QDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int limitMs = 30000;

} // namespace

/// The icon that a desktop with X11 shows the windows with.
class TestWindowIcon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aChoiceChangesTheWindowAtOnceAndSurvivesARestart();
    void aChoiceThatCannotBeKeptChangesNothing();
    void thePlayerStartsWithTheChosenIcon();
    void aDesktopOfAnotherKindIsToldOf();

private:
    QString data() const { return m_home->filePath(u".local/share/cadorel"_s); }
    /// Starts the program and waits for its window. @return what it says first
    QString startProgram(const QString &platform = u"xcb"_s);
    /// @return what the program says of it
    QString choose(const QString &name);
    void stopProgram();
    QString nextLine();
    /// What a tool for this display prints.
    QByteArray ask(const QString &tool, const QStringList &arguments) const;
    /// The pixels of the icon that the X server knows of that process' window; empty without one.
    QByteArray icon(qint64 processId) const;
    QByteArray icon() const { return icon(m_program->processId()); }
    bool writeChoice(const QByteArray &content) const;

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<VirtualDisplay> m_display;
    std::unique_ptr<QProcess> m_program;
};

void TestWindowIcon::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_display = std::make_unique<VirtualDisplay>();
    QVERIFY(m_display->start());
    QVERIFY(QDir().mkpath(data()));
}

void TestWindowIcon::cleanup()
{
    stopProgram();
    m_display.reset();
    m_home.reset();
}

QString TestWindowIcon::startProgram(const QString &platform)
{
    m_program = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, m_display->name());
    environment.insert(u"QT_QPA_PLATFORM"_s, platform);
    environment.insert(u"HOME"_s, m_home->path());
    m_program->setProcessEnvironment(environment);
    m_program->start(QStringLiteral(CADOREL_BUILD_DIR "/tests/AppIconProgram"), {data()});
    return nextLine();
}

void TestWindowIcon::stopProgram()
{
    if (!m_program)
        return;
    m_program->closeWriteChannel();
    if (!m_program->waitForFinished(limitMs)) {
        m_program->kill();
        m_program->waitForFinished();
    }
    m_program.reset();
}

QString TestWindowIcon::nextLine()
{
    if (!QTest::qWaitFor([this] { return m_program->canReadLine(); }, limitMs))
        return {};
    return QString::fromUtf8(m_program->readLine()).trimmed();
}

QString TestWindowIcon::choose(const QString &name)
{
    m_program->write(name.toUtf8() + '\n');
    return nextLine();
}

QByteArray TestWindowIcon::ask(const QString &tool, const QStringList &arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, m_display->name());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(tool, arguments);
    return process.waitForFinished(limitMs) && process.exitCode() == 0 ? process.readAllStandardOutput()
                                                                       : QByteArray();
}

QByteArray TestWindowIcon::icon(qint64 processId) const
{
    const QByteArray window =
        ask(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--pid"_s, QString::number(processId)})
            .split('\n')
            .constFirst();
    if (window.isEmpty())
        return {};
    const QByteArray answer =
        ask(u"xprop"_s, {u"-id"_s, QString::fromLatin1(window), u"-notype"_s, u"-len"_s, u"1000000"_s,
                         u"-f"_s, u"_NET_WM_ICON"_s, u"32c"_s, u"=$0+"_s, u"_NET_WM_ICON"_s});
    return answer.startsWith("_NET_WM_ICON=") ? answer : QByteArray();
}

bool TestWindowIcon::writeChoice(const QByteArray &content) const
{
    QFile file(data() + u"/alternate-icon"_s);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

void TestWindowIcon::aChoiceChangesTheWindowAtOnceAndSurvivesARestart()
{
    QCOMPARE(startProgram(), u"icon default"_s);
    QTRY_VERIFY(!icon().isEmpty());
    const QByteArray usual = icon();
    QCOMPARE(choose(u"AppIcon33"_s), u"icon AppIcon33"_s);
    QTRY_VERIFY(icon() != usual);
    const QByteArray night = icon();
    QVERIFY(!night.isEmpty());
    QCOMPARE(choose(u"AppIcon22"_s), u"icon AppIcon22"_s);
    QTRY_VERIFY(icon() != night);
    QVERIFY(icon() != usual);
    QCOMPARE(choose(u"AppIcon33"_s), u"icon AppIcon33"_s);
    stopProgram();

    QCOMPARE(startProgram(), u"icon AppIcon33"_s);
    QTRY_COMPARE(icon(), night);
    QCOMPARE(choose(QString()), u"icon default"_s);
    QTRY_COMPARE(icon(), usual);
    stopProgram();

    QCOMPARE(startProgram(), u"icon default"_s);
    QTRY_COMPARE(icon(), usual);
}

void TestWindowIcon::aChoiceThatCannotBeKeptChangesNothing()
{
    // Whoever asks, a directory with something in it is not replaced by a file.
    QVERIFY(QDir().mkpath(data() + u"/alternate-icon/full"_s));
    QCOMPARE(startProgram(), u"icon default"_s);
    QTRY_VERIFY(!icon().isEmpty());
    const QByteArray usual = icon();
    QVERIFY(choose(u"AppIcon22"_s).startsWith(u"Error setting alternate icon: "_s));
    QCOMPARE(nextLine(), u"icon default"_s);
    QVERIFY(choose(u"AppIcon99"_s).startsWith(u"Error setting alternate icon: "_s));
    QCOMPARE(nextLine(), u"icon default"_s);
    QCOMPARE(icon(), usual);
}

void TestWindowIcon::thePlayerStartsWithTheChosenIcon()
{
    const auto iconOfPlayer = [this] {
        RunningPlayer player(m_display->name(), m_home->path());
        QByteArray shown;
        if (player.start()) {
            const bool isShown = QTest::qWaitFor(
                [&] {
                    shown = icon(player.processId());
                    return !shown.isEmpty();
                },
                limitMs);
            if (!isShown)
                qWarning("the player's window has no icon");
            player.stop();
        }
        return shown;
    };
    QVERIFY(QDir().mkpath(RunningPlayer::musicFolder(m_home->path())));
    const QByteArray usual = iconOfPlayer();
    QVERIFY(!usual.isEmpty());
    QVERIFY(writeChoice("AppIcon44\n"));
    const QByteArray chosen = iconOfPlayer();
    QVERIFY(!chosen.isEmpty());
    QVERIFY(chosen != usual);
    QVERIFY(writeChoice("no icon at all"));
    QCOMPARE(iconOfPlayer(), usual);
}

void TestWindowIcon::aDesktopOfAnotherKindIsToldOf()
{
    QVERIFY(writeChoice("AppIcon44\n"));
    QCOMPARE(startProgram(u"offscreen"_s), u"icon default"_s);
    QCOMPARE(choose(u"AppIcon22"_s), u"Alternate icons not supported"_s);
    QCOMPARE(nextLine(), u"icon default"_s);
}

QTEST_GUILESS_MAIN(TestWindowIcon)
#include "tst_window_icon.moc"
