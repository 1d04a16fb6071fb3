// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/SingleInstance.h"

#include "Platform/Linux/FileLock.h"
#include "Platform/Linux/LinuxLog.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QSysInfo>
#include <QThread>
#include <QTimer>

#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

// The conversation: the second sends one line, the command and the token, and the first answers.
constexpr QByteArrayView raiseCommand{"raise "};
constexpr QByteArrayView acknowledgement{"ok\n"};
// Far above any token; a longer line is not from a player.
constexpr qint64 longestLine = 4096;
constexpr std::chrono::milliseconds conversationLimit{5000};
constexpr std::chrono::milliseconds retryInterval{20};

/// What the holder of the lock leaves in its file: where it listens, and who it is for the log.
struct Holder
{
    QString socket;
    QString description;

    static Holder parse(const QByteArray &text)
    {
        const QList<QByteArray> lines = text.split('\n');
        return {.socket = QFile::decodeName(lines.value(0)),
                .description = QString::fromUtf8(lines.value(1))};
    }
    QByteArray text() const { return QFile::encodeName(socket) + '\n' + description.toUtf8() + '\n'; }
};

QString socketPath(const QString &dataDirectory)
{
    // Players of different homes share the run-time directory.
    const QByteArray hash =
        QCryptographicHash::hash(QFile::encodeName(dataDirectory), QCryptographicHash::Sha256).toHex();
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString directory =
        QDir::isAbsolutePath(runtime) && QFileInfo(runtime).isDir() ? runtime : dataDirectory;
    return u"%1/cadorel-%2.socket"_s.arg(directory, QString::fromLatin1(hash.first(16)));
}

/// Tells the player that listens at @p path; false when it does not confirm in time or goes away.
bool askToRaise(const QString &path, const QByteArray &token, const QDeadlineTimer &deadline)
{
    if (path.isEmpty())
        return false;
    const auto remaining = [&deadline] { return static_cast<int>(deadline.remainingTime()); };
    QLocalSocket socket;
    socket.connectToServer(path);
    if (!socket.waitForConnected(remaining()))
        return false;
    socket.write(raiseCommand.toByteArray() + token.split('\n').constFirst().left(longestLine / 2) + '\n');
    while (socket.bytesAvailable() < acknowledgement.size()) {
        if (!socket.waitForReadyRead(remaining()))
            return false;
    }
    return socket.readAll() == acknowledgement;
}

} // namespace

QByteArray SingleInstance::activationToken()
{
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

std::expected<std::unique_ptr<SingleInstance>, SingleInstance::Refusal>
SingleInstance::acquire(const QString &dataDirectory, const QByteArray &token,
                        std::chrono::milliseconds limit)
{
    auto lock = std::make_unique<FileLock>(dataDirectory + u"/cadorel.lock"_s);
    const QDeadlineTimer deadline(limit);
    do {
        switch (lock->tryLock()) {
        case FileLock::Outcome::taken: {
            std::unique_ptr<SingleInstance> instance(new SingleInstance(std::move(lock)));
            instance->listen(dataDirectory);
            return instance;
        }
        case FileLock::Outcome::unavailable:
            qCWarning(linuxLog).noquote() << "cannot lock" << dataDirectory << "against a second player";
            return std::unique_ptr<SingleInstance>(new SingleInstance(nullptr));
        case FileLock::Outcome::heldByAnother:
            break;
        }
        if (askToRaise(Holder::parse(lock->text()).socket, token, deadline))
            return std::unexpected(Refusal::raised);
        QThread::msleep(static_cast<unsigned long>(retryInterval.count()));
    } while (!deadline.hasExpired());
    qCWarning(linuxLog).noquote() << "another player," << Holder::parse(lock->text()).description + u','
                                  << "uses" << dataDirectory << "and does not answer";
    return std::unexpected(Refusal::silent);
}

SingleInstance::SingleInstance(std::unique_ptr<FileLock> lock)
    : m_lock(std::move(lock))
    , m_server(new QLocalServer(this))
{
    connect(m_server, &QLocalServer::newConnection, this, &SingleInstance::acceptConnections);
}

SingleInstance::~SingleInstance()
{
    // The socket goes before the lock: whoever gets the lock next makes its own.
    m_server->close();
}

void SingleInstance::listen(const QString &dataDirectory)
{
    const QString path = socketPath(dataDirectory);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    // A killed player leaves its socket behind; the lock says that nobody listens there any more.
    QLocalServer::removeServer(path);
    if (!m_server->listen(path))
        qCWarning(linuxLog).noquote() << "cannot listen for a second player:" << m_server->errorString();
    m_lock->setText(Holder{
        .socket = m_server->isListening() ? path : QString(),
        .description =
            u"process %1 on %2"_s.arg(QCoreApplication::applicationPid()).arg(QSysInfo::machineHostName())}
                        .text());
}

void SingleInstance::acceptConnections()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { answer(socket); });
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        QTimer::singleShot(conversationLimit, socket, [socket] { socket->abort(); });
        answer(socket);
    }
}

void SingleInstance::answer(QLocalSocket *socket)
{
    if (!socket->canReadLine()) {
        if (socket->bytesAvailable() > longestLine)
            socket->abort();
        return;
    }
    const QByteArray line = socket->readLine(longestLine).trimmed() + ' ';
    if (!line.startsWith(raiseCommand)) {
        socket->abort();
        return;
    }
    socket->write(acknowledgement.toByteArray());
    socket->flush();
    socket->disconnectFromServer();
    Q_EMIT raiseRequested(line.sliced(raiseCommand.size()).trimmed());
}

} // namespace cadorel
