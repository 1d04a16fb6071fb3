// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/ServerSocketWatch.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

/// The directory itself, or what is there of the way to it.
QString nearestDirectory(QString path)
{
    while (!QFileInfo(path).isDir()) {
        const QString parent = QFileInfo(path).path();
        if (parent == path)
            break;
        path = parent;
    }
    return path;
}

/// The path in one entry of a list of servers; empty when it is not of this machine.
QString socketIn(QString server)
{
    // "{machine}unix:/path" is one for this machine alone.
    static const QRegularExpression machine(u"^\\{[^}]*\\}"_s);
    server.remove(machine);
    if (server.startsWith(u"unix:"_s))
        server.remove(0, 5);
    return server.startsWith(u'/') ? server : QString();
}

} // namespace

ServerSocketWatch::ServerSocketWatch(QStringList sockets)
    : m_sockets(std::move(sockets))
{
}

ServerSocketWatch::~ServerSocketWatch() = default;

QStringList ServerSocketWatch::socketsIn(const QProcessEnvironment &environment)
{
    QStringList sockets;
    if (const QString servers = environment.value(u"PULSE_SERVER"_s).simplified(); !servers.isEmpty()) {
        for (const QString &server : servers.split(u' ')) {
            if (const QString socket = socketIn(server); !socket.isEmpty())
                sockets.append(socket);
        }
        return sockets;
    }
    if (const QString runtime = environment.value(u"PULSE_RUNTIME_PATH"_s); !runtime.isEmpty())
        return {runtime + u"/native"_s};
    if (const QString runtime = environment.value(u"XDG_RUNTIME_DIR"_s); !runtime.isEmpty())
        return {runtime + u"/pulse/native"_s};
    return {};
}

bool ServerSocketWatch::anyExists() const
{
    return std::ranges::any_of(m_sockets, [](const QString &path) { return QFileInfo::exists(path); });
}

void ServerSocketWatch::start()
{
    if (m_watcher || m_sockets.isEmpty())
        return;
    m_watcher = std::make_unique<QFileSystemWatcher>();
    connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, this, &ServerSocketWatch::look);
    watchNearest();
}

void ServerSocketWatch::stop()
{
    if (!m_watcher)
        return;
    // It may be the one that called, and may have more to tell.
    m_watcher->disconnect(this);
    m_watcher.release()->deleteLater();
}

void ServerSocketWatch::watchNearest()
{
    for (const QString &socket : m_sockets) {
        // A directory that comes while the one above it begins to be watched tells nobody.
        QString directory;
        while (directory != nearestDirectory(QFileInfo(socket).path())) {
            directory = nearestDirectory(QFileInfo(socket).path());
            m_watcher->addPath(directory);
        }
    }
}

void ServerSocketWatch::look()
{
    watchNearest();
    if (anyExists())
        Q_EMIT appeared();
}

} // namespace cadorel
