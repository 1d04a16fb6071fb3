// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/SoundServer.h"

#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTest>

#include <algorithm>

#include <csignal>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto serverVariable = "PULSE_SERVER";
constexpr auto runtimeVariable = "XDG_RUNTIME_DIR";

void restore(const char *variable, const QByteArray &value)
{
    if (value.isNull())
        qunsetenv(variable);
    else
        qputenv(variable, value);
}

void end(std::unique_ptr<QProcess> &process)
{
    if (!process)
        return;
    process->kill();
    process->waitForFinished();
    process.reset();
}

} // namespace

SoundServer::SoundServer()
    : m_oldServer(qgetenv(serverVariable))
    , m_oldRuntimeDirectory(qgetenv(runtimeVariable))
{
    qputenv(serverVariable, "unix:" + QFile::encodeName(socket()));
    qputenv(runtimeVariable, QFile::encodeName(m_directory.path()));
    m_environment = QProcessEnvironment::systemEnvironment();
    m_environment.insert(u"HOME"_s, m_directory.path());
    m_environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
    // What this process says of its own sound.
    m_environment.remove(u"PULSE_PROP"_s);
}

SoundServer::~SoundServer()
{
    stop();
    restore(serverVariable, m_oldServer);
    restore(runtimeVariable, m_oldRuntimeDirectory);
}

bool SoundServer::available()
{
    const QStringList programs{u"pulseaudio"_s, u"parec"_s, u"pactl"_s};
    return std::ranges::none_of(
        programs, [](const QString &name) { return QStandardPaths::findExecutable(name).isEmpty(); });
}

bool SoundServer::start()
{
    m_server = std::make_unique<QProcess>();
    QProcessEnvironment environment = m_environment;
    // A server does not ask for another one.
    environment.remove(QString::fromLatin1(serverVariable));
    m_server->setProcessEnvironment(environment);
    m_server->setStandardErrorFile(m_directory.filePath(u"server.log"_s));
    m_server->start(u"pulseaudio"_s,
                    {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s,
                     u"--load=module-null-sink sink_name=out rate=48000"_s,
                     u"--load=module-native-protocol-unix auth-anonymous=1 socket=%1"_s.arg(socket())});
    const bool listens = QTest::qWaitFor(
        [this] {
            QLocalSocket probe;
            probe.connectToServer(socket());
            return probe.waitForConnected(100);
        },
        20'000);
    if (!listens)
        return false;
    // The device hands over two seconds at a time until somebody asks for less: the listener does.
    const QString heard = m_directory.filePath(u"heard"_s);
    QFile::remove(heard);
    m_listener = recording(u"u8"_s, 8000, heard);
    return heedListener(firstDevice) &&
           QTest::qWaitFor([&heard] { return QFileInfo(heard).size() > 0; }, 20'000);
}

void SoundServer::stop()
{
    end(m_listener);
    end(m_server);
    QFile::remove(socket());
}

void SoundServer::setHanging(bool hanging)
{
    ::kill(static_cast<pid_t>(m_server->processId()), hanging ? SIGSTOP : SIGCONT);
}

std::unique_ptr<QProcess> SoundServer::recording(const QString &format, int sampleRate, const QString &file,
                                                 const QString &device) const
{
    auto process = std::make_unique<QProcess>();
    if (!file.isEmpty())
        process->setStandardOutputFile(file);
    process->setProcessEnvironment(m_environment);
    process->start(u"parec"_s,
                   {u"--device=%1.monitor"_s.arg(device), u"--raw"_s, u"--channels=1"_s,
                    u"--format="_s + format, u"--rate=%1"_s.arg(sampleRate), u"--latency-msec=10"_s});
    return process;
}

bool SoundServer::heedListener(const QString &device) const
{
    const QByteArray monitor = device.toUtf8() + ".monitor";
    const auto isHeard = [&] {
        const QList<QByteArray> sources = ask({u"list"_s, u"short"_s, u"sources"_s}).split('\n');
        const auto source = std::ranges::find_if(
            sources, [&](const QByteArray &line) { return line.split('\t').value(1) == monitor; });
        if (source == sources.end())
            return false;
        const QByteArray number = source->split('\t').constFirst();
        const QList<QByteArray> listeners = ask({u"list"_s, u"short"_s, u"source-outputs"_s}).split('\n');
        return std::ranges::any_of(
            listeners, [&](const QByteArray &line) { return line.split('\t').value(1) == number; });
    };
    // What it is at it finishes first, were it not stopped.
    return QTest::qWaitFor(isHeard, 20'000) && !ask({u"suspend-sink"_s, device, u"1"_s}).isNull() &&
           !ask({u"suspend-sink"_s, device, u"0"_s}).isNull();
}

QByteArray SoundServer::streams() const
{
    return ask({u"list"_s, u"sink-inputs"_s});
}

QByteArray SoundServer::ask(const QStringList &arguments) const
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(u"pactl"_s, arguments);
    const bool isDone = process.waitForFinished() && process.exitCode() == 0;
    return isDone ? "" + process.readAllStandardOutput().trimmed() : QByteArray();
}

QByteArray SoundServer::plugIn(const QString &name) const
{
    const QByteArray module =
        ask({u"load-module"_s, u"module-null-sink"_s, u"sink_name="_s + name, u"rate=48000"_s});
    return ask({u"set-default-sink"_s, name}).isNull() ? QByteArray() : module;
}

QByteArray SoundServer::addDevice(const QString &name, const QString &description) const
{
    return ask({u"load-module"_s, u"module-null-sink"_s, u"sink_name="_s + name, u"rate=48000"_s,
                u"sink_properties='device.description=\"%1\"'"_s.arg(description)});
}

std::unique_ptr<QProcess> SoundServer::other(const QString &role) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(m_environment);
    process->start(u"pacat"_s, {u"--raw"_s, u"--property=media.role="_s + role, u"/dev/zero"_s});
    return process;
}

} // namespace cadorel
