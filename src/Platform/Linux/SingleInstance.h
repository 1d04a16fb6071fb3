// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <chrono>
#include <expected>
#include <memory>

class QLocalServer;
class QLocalSocket;

namespace cadorel {

class FileLock;

/// Sees to it that one player uses a data directory at a time. The first holds a lock on a file in it and
/// listens on a socket for this user alone; a second asks the first to raise its window and goes. Main
/// thread.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    /// What became of the wish to be the first.
    enum class Refusal {
        /// Another player runs and has been asked to raise its window: end with success.
        raised,
        /// Another player holds the directory and does not answer, which has been logged: end with failure.
        silent,
    };

    static constexpr std::chrono::milliseconds defaultLimit{3000};

    /// Becomes the first, or tells the first to raise its window with the desktop's @p token. Waits for
    /// another that is just starting or just ending, @p limit at most. Where the directory cannot be locked,
    /// it says so in the log and goes on. Needs the application object; requests arrive once its loop runs.
    static std::expected<std::unique_ptr<SingleInstance>, Refusal>
    acquire(const QString &dataDirectory, const QByteArray &token = activationToken(),
            std::chrono::milliseconds limit = defaultLimit);
    /// The token that the desktop started this process with, for raising a window in its name; empty when
    /// there is none. Read it before the QGuiApplication is made, which takes it out of the environment.
    static QByteArray activationToken();

    ~SingleInstance() override;
    Q_DISABLE_COPY_MOVE(SingleInstance)

Q_SIGNALS:
    /// Another player was started and has gone: show the window. @p token may be empty.
    void raiseRequested(const QByteArray &token);

private:
    explicit SingleInstance(std::unique_ptr<FileLock> lock);
    void listen(const QString &dataDirectory);
    void acceptConnections();
    void answer(QLocalSocket *socket);

    std::unique_ptr<FileLock> m_lock;
    QLocalServer *m_server;
};

} // namespace cadorel
