// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/WebDAVServer.h"

#include "Fixtures/EndProcess.h"
#include "Fixtures/UnprivilegedScope.h"
#include "Servers/ApacheServer.h"
#include "Servers/LighttpdServer.h"
#include "Servers/NginxServer.h"
#include "Servers/PlainRequest.h"
#include "Servers/RcloneServer.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QStandardPaths>
#include <QTcpServer>
#include <QUuid>

#include <csignal>
#include <cstdio>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int startAttempts = 10;
constexpr int startMs = 20'000;
constexpr int betweenProbesMs = 20;

const QString &logName()
{
    static const QString name = u"output.log"_s;
    return name;
}

/// Also where an ordinary user's PATH does not lead.
QString executable(const QString &name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {u"/usr/sbin"_s, u"/usr/local/sbin"_s})
                           : found;
}

/// A port that was free a moment ago.
quint16 freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

/// Runs in the new process before the program. The bare calls, because those of the library would change the
/// threads of the test too while the two share their memory.
void becomeServer(bool dropPrivileges)
{
    constexpr long nobody = UnprivilegedScope::nobody;
    if (dropPrivileges && (::syscall(SYS_setgroups, 0L, nullptr) != 0 || ::syscall(SYS_setgid, nobody) != 0 ||
                           ::syscall(SYS_setuid, nobody) != 0))
        ::_exit(1);
    // A change of user forgets this wish: after it.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace

WebDAVServer::~WebDAVServer()
{
    stop();
}

const QStringList &WebDAVServer::kinds()
{
    static const QStringList kinds{u"apache"_s, u"rclone"_s, u"lighttpd"_s, u"nginx"_s};
    return kinds;
}

std::unique_ptr<WebDAVServer> WebDAVServer::make(const QString &kind)
{
    if (kind == "apache"_L1)
        return std::make_unique<ApacheServer>();
    if (kind == "rclone"_L1)
        return std::make_unique<RcloneServer>();
    if (kind == "lighttpd"_L1)
        return std::make_unique<LighttpdServer>();
    if (kind == "nginx"_L1)
        return std::make_unique<NginxServer>();
    qFatal("there is no server of the kind %s", qPrintable(kind));
}

bool WebDAVServer::start(const QString &documentRoot, const QString &user, const QString &password)
{
    stop();
    Task task{.documentRoot = documentRoot, .user = user, .password = password};
    // Another program can take the port before the server does.
    for (int attempt = 0; attempt < startAttempts; ++attempt) {
        m_directory = std::make_unique<QTemporaryDir>();
        task.directory = m_directory->path();
        task.realm = QUuid::createUuid().toString(QUuid::WithoutBraces);
        task.port = freePort();
        if (startOnce(task))
            return true;
        const QByteArray said = log();
        std::fprintf(stderr, "the server did not start: %s\n%s\n",
                     qPrintable(m_process ? m_process->errorString() : QString()), said.constData());
        const bool mayHelp = said.contains("in use"_ba);
        stop();
        if (!mayHelp)
            return false;
    }
    return false;
}

bool WebDAVServer::startOnce(const Task &task)
{
    const bool dropPrivileges = ::geteuid() == 0;
    if (dropPrivileges) {
        constexpr uint nobody = UnprivilegedScope::nobody;
        if (::chown(QFile::encodeName(task.directory).constData(), nobody, nobody) != 0)
            return false;
    }
    Program program = prepare(task);
    program.environment.insert(u"HOME"_s, task.directory);
    program.environment.insert(u"TMPDIR"_s, task.directory);
    program.environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    m_process = std::make_unique<QProcess>();
    m_process->setWorkingDirectory(task.directory);
    m_process->setProcessEnvironment(program.environment);
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->setStandardOutputFile(m_directory->filePath(logName()));
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setChildProcessModifier([dropPrivileges] { becomeServer(dropPrivileges); });
    m_process->start(executable(program.name), program.arguments);
    m_port = task.port;

    const QDeadlineTimer limit(startMs);
    while (!limit.hasExpired()) {
        if (isReady(task.realm))
            return true;
        if (m_process->waitForFinished(betweenProbesMs) || m_process->state() == QProcess::NotRunning)
            return false;
    }
    return false;
}

bool WebDAVServer::isReady(const QString &realm) const
{
    // The realm tells that it is this server and not one that was quicker to take the port.
    constexpr int unauthorized = 401;
    const std::optional<PlainAnswer> answer = plainRequest(address(), "PROPFIND"_ba, "/"_ba, {});
    return answer && answer->status == unauthorized && answer->head.contains(realm.toUtf8());
}

void WebDAVServer::stop()
{
    if (!m_process)
        return;
    endProcess(*m_process);
    m_process.reset();
}

QUrl WebDAVServer::address() const
{
    return QUrl(u"http://127.0.0.1:%1"_s.arg(m_port));
}

QByteArray WebDAVServer::log() const
{
    QByteArray text;
    if (!m_directory)
        return text;
    // One of them insists on a file of its own.
    for (const QString &name : {logName(), u"error.log"_s}) {
        QFile file(m_directory->filePath(name));
        if (file.open(QIODevice::ReadOnly))
            text += file.readAll();
    }
    return text;
}

} // namespace cadorel
