// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/SubsonicServer.h"

#include "Fixtures/EndProcess.h"
#include "Fixtures/EndWithParent.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QProcessEnvironment>

#include <cstdio>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int startMs = 60'000;
constexpr int betweenAttemptsMs = 100;

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

SubsonicServer::~SubsonicServer()
{
    stop();
}

bool SubsonicServer::start(const QString &music, const QString &user, const QString &password)
{
    return start(music, user, password, {});
}

bool SubsonicServer::start(const QString &music, const QString &user, const QString &password,
                           const Options &options)
{
    stop();
    m_arguments = {u"--data"_s, m_directory.filePath(u"data"_s), u"--requests"_s,
                   m_directory.filePath(u"requests"_s), u"--user=%1"_s.arg(user)};
    if (!options.knowsTokens)
        m_arguments.append(u"--plain"_s);
    if (!options.prefix.isEmpty())
        m_arguments.append(u"--prefix=%1"_s.arg(options.prefix));
    m_music = music;
    m_password = password;
    return launch(0);
}

bool SubsonicServer::startAgain()
{
    stop();
    return launch(static_cast<quint16>(m_address.port()));
}

bool SubsonicServer::launch(quint16 port)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, m_directory.path());
    environment.insert(u"TMPDIR"_s, m_directory.path());
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    environment.insert(u"SUBSONIC_PASSWORD"_s, m_password);
    endWithParent(m_process);
    m_process.setProcessEnvironment(environment);
    m_process.setStandardErrorFile(m_directory.filePath(u"errors"_s), QIODevice::Append);
    m_process.setStandardInputFile(QProcess::nullDevice());
    const QStringList where{u"--port=%1"_s.arg(port), u"--"_s, m_music};

    const QDeadlineTimer limit(startMs);
    while (!limit.hasExpired()) {
        m_process.start(QStringLiteral(CADOREL_SOURCE_DIR "/tests/Servers/subsonic-server"),
                        m_arguments + where);
        while (m_process.waitForReadyRead(static_cast<int>(limit.remainingTime()))) {
            const QByteArray line = m_process.readLine().trimmed();
            if (!line.startsWith("ready "))
                continue;
            m_address = QUrl(QString::fromUtf8(line.sliced(line.indexOf(' ') + 1)));
            return true;
        }
        stop();
        // A connection of another program can hold the port for a while.
        if (port == 0 || !log().contains("already in use"))
            break;
        m_process.waitForFinished(betweenAttemptsMs);
    }
    std::fprintf(stderr, "the server did not start: %s\n%s\n", qPrintable(m_process.errorString()),
                 log().constData());
    return false;
}

void SubsonicServer::stop()
{
    if (m_process.state() != QProcess::NotRunning)
        endProcess(m_process);
}

QByteArray SubsonicServer::log() const
{
    return contents(m_directory.filePath(u"errors"_s));
}

QList<QByteArray> SubsonicServer::requests() const
{
    QList<QByteArray> lines = contents(m_directory.filePath(u"requests"_s)).split('\n');
    lines.removeLast();
    return lines;
}

} // namespace cadorel
