// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/RunningPlayer.h"

#include <QDir>
#include <QTest>

namespace cadorel {

using namespace Qt::StringLiterals;

RunningPlayer::RunningPlayer(QString display, QString home)
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    QDir().mkpath(home + u"/run"_s);
    QFile::setPermissions(home + u"/run"_s, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_environment.insert(u"HOME"_s, home);
    m_environment.insert(u"DISPLAY"_s, display);
    m_environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    m_environment.insert(u"XDG_RUNTIME_DIR"_s, home + u"/run"_s);
    m_environment.insert(u"QT_LOGGING_RULES"_s, u"cadorel.app.info=true"_s);
    // No session bus: the player must do without one, and no desktop of this machine is to answer.
    m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path="_s + home + u"/no-bus"_s);
    for (const QString &name : {u"XDG_DATA_HOME"_s, u"XDG_CACHE_HOME"_s, u"XDG_CONFIG_HOME"_s,
                                u"WAYLAND_DISPLAY"_s, u"QT_QUICK_BACKEND"_s})
        m_environment.remove(name);
    m_process.setProcessEnvironment(m_environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

RunningPlayer::~RunningPlayer()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void RunningPlayer::setVariable(const QString &name, const QString &value)
{
    m_environment.insert(name, value);
    m_process.setProcessEnvironment(m_environment);
}

bool RunningPlayer::start()
{
    m_process.start(QStringLiteral(CADOREL_BUILD_DIR "/cadorel"), QStringList());
    // The display has no window manager that would give the window its keys.
    return says(u"first frame"_s) && says(u"🆕 发现"_s) &&
           control({u"search"_s, u"--onlyvisible"_s, u"--pid"_s, QString::number(processId()), u"--name"_s,
                    u"."_s, u"windowfocus"_s, u"--sync"_s});
}

bool RunningPlayer::stop()
{
    m_process.terminate();
    const bool ended = QTest::qWaitFor([this] { return !isRunning(); }, 20000);
    output();
    return ended && m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}

const QString &RunningPlayer::output()
{
    m_output += QString::fromUtf8(m_process.readAll());
    return m_output;
}

bool RunningPlayer::says(const QString &text, std::chrono::milliseconds limit)
{
    qsizetype found = -1;
    const bool said = QTest::qWaitFor(
        [&] {
            found = output().indexOf(text, m_matchedTo);
            return found >= 0;
        },
        static_cast<int>(limit.count()));
    if (said)
        m_matchedTo = found + text.size();
    else
        qWarning().noquote() << "the player did not say" << text << "but:\n" << m_output;
    return said;
}

bool RunningPlayer::control(const QStringList &arguments, QString *answer)
{
    QProcess tool;
    tool.setProcessEnvironment(m_environment);
    tool.start(u"xdotool"_s, arguments);
    const bool done = tool.waitForFinished() && tool.exitCode() == 0;
    if (answer)
        *answer = QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
    return done;
}

void RunningPlayer::click(int x, int y)
{
    press(u"1"_s, x, y);
}

void RunningPlayer::rightClick(int x, int y)
{
    press(u"3"_s, x, y);
}

void RunningPlayer::press(const QString &button, int x, int y)
{
    QVERIFY(control({u"mousemove"_s, QString::number(x), QString::number(y), u"click"_s, button}));
}

void RunningPlayer::key(const QString &name)
{
    QVERIFY(control({u"key"_s, name}));
}

void RunningPlayer::type(const QString &text)
{
    QVERIFY(control({u"type"_s, u"--delay"_s, u"20"_s, u"--"_s, text}));
}

QString RunningPlayer::windowTitle()
{
    QString title;
    control({u"search"_s, u"--onlyvisible"_s, u"--pid"_s, QString::number(processId()), u"--name"_s, u"."_s,
             u"getwindowname"_s},
            &title);
    return title;
}

QByteArray RunningPlayer::picture() const
{
    QProcess tool;
    tool.setProcessEnvironment(m_environment);
    tool.start(u"import"_s, {u"-window"_s, u"root"_s, u"-depth"_s, u"8"_s, u"rgb:-"_s});
    return tool.waitForFinished() && tool.exitCode() == 0 ? tool.readAllStandardOutput() : QByteArray();
}

bool RunningPlayer::standsStill()
{
    // A cursor that blinks is no movement that lasts: a few equal pictures in a row are enough.
    constexpr int enough = 3;
    int equal = 0;
    QByteArray last;
    return QTest::qWaitFor(
        [&] {
            const QByteArray now = picture();
            equal = !now.isEmpty() && now == last ? equal + 1 : 0;
            last = now;
            return equal >= enough;
        },
        20000);
}

} // namespace cadorel
