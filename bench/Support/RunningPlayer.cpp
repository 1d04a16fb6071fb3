// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/RunningPlayer.h"

#include <QTest>

namespace cadorel {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto limit = 60s;

} // namespace

bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds longest)
{
    return QTest::qWaitFor(condition, static_cast<int>(longest.count()));
}

void letPass(std::chrono::milliseconds length)
{
    QTest::qWait(static_cast<int>(length.count()));
}

RunningPlayer::RunningPlayer(const MadeHome &home, const VirtualDisplay &display,
                             const std::function<void(QProcessEnvironment &)> &adjust)
    : m_display(display)
{
    QProcessEnvironment environment = home.environment();
    display.enter(environment);
    environment.insert(u"QT_LOGGING_RULES"_s, u"cadorel.app.info=true"_s);
    if (adjust)
        adjust(environment);
    m_process.setProcessEnvironment(environment);
    m_process.setReadChannel(QProcess::StandardError);
    QElapsedTimer timer;
    timer.start();
    m_process.start(builtProgram(u"cadorel"_s), QStringList());
    QByteArray messages;
    while (!messages.contains("first frame")) {
        if (m_process.state() == QProcess::NotRunning || !m_process.waitForReadyRead(-1))
            qFatal("the player does not show a window: %s", messages.constData());
        messages += m_process.readAllStandardError();
    }
    constexpr double nsPerSecond = 1e9;
    m_firstFrameSeconds = static_cast<double>(timer.nsecsElapsed()) / nsPerSecond;
}

RunningPlayer::~RunningPlayer()
{
    m_process.terminate();
    if (!m_process.waitForFinished()) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

const QByteArray &RunningPlayer::output()
{
    m_output += m_process.readAllStandardOutput();
    return m_output;
}

QByteArray RunningPlayer::takeMessages()
{
    return m_process.readAllStandardError();
}

void RunningPlayer::waitForScan()
{
    if (!waitFor([this] { return output().contains("🆕"); }, limit))
        qFatal("the player does not scan its folder");
    waitUntilIdle();
}

void RunningPlayer::waitUntilIdle() const
{
    constexpr qint64 quietMs = 500;
    QElapsedTimer since;
    since.start();
    double last = -1;
    const bool isIdle = waitFor(
        [&] {
            const double now = usage().processorSeconds();
            constexpr double next = 0.005; // less is the odd wake-up
            if (now - last > next) {
                last = now;
                since.restart();
            }
            return since.elapsed() >= quietMs;
        },
        limit);
    if (!isIdle)
        qFatal("the player does not come to rest");
}

void RunningPlayer::typeKey(const QString &key) const
{
    const QString window = m_display.xdotool(
        {u"search"_s, u"--onlyvisible"_s, u"--pid"_s, QString::number(m_process.processId())});
    if (window.isEmpty())
        qFatal("the player's window is not to be found");
    const QString first = window.section(u'\n', 0, 0);
    m_display.xdotool({u"windowfocus"_s, u"--sync"_s, first});
    m_display.xdotool({u"key"_s, u"--window"_s, first, key});
}

} // namespace cadorel
