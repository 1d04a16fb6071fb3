// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>

namespace cadorel {

/// A WebDAV server program on loopback that asks for a user and a password, with a directory and a port of
/// its own. It runs without privileges, also when the test has them, and ends with the test, however that
/// ends. Waits for the program without an event loop.
class WebDAVServer
{
public:
    virtual ~WebDAVServer();
    Q_DISABLE_COPY_MOVE(WebDAVServer)

    /// "apache", "rclone", "lighttpd", "nginx".
    static const QStringList &kinds();
    /// @param kind one of kinds()
    static std::unique_ptr<WebDAVServer> make(const QString &kind);

    /// Serves a directory, which anybody may read. @param user without ":"
    /// @return whether it answers; otherwise the reason is on standard error
    bool start(const QString &documentRoot, const QString &user, const QString &password);
    /// Every connection breaks, and new ones are refused.
    void stop();

    /// "http://127.0.0.1:port", without a path.
    QUrl address() const;
    quint16 port() const { return m_port; }
    /// What the program has said.
    QByteArray log() const;
    /// Whether files and folders that begin with a dot are listed.
    virtual bool listsHiddenFiles() const { return true; }

protected:
    WebDAVServer() = default;

    /// What the server is to do.
    struct Task
    {
        /// Its own directory, where it may write.
        QString directory = {};
        QString documentRoot = {};
        QString user = {};
        QString password = {};
        QString realm = {};
        quint16 port = 0;
    };
    struct Program
    {
        QString name;
        QStringList arguments;
        QProcessEnvironment environment;
    };
    /// Writes the configuration. @return the program, which must stay one process in the foreground
    virtual Program prepare(const Task &task) = 0;

private:
    bool startOnce(const Task &task);
    bool isReady(const QString &realm) const;

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_process;
    quint16 m_port = 0;
};

} // namespace cadorel
