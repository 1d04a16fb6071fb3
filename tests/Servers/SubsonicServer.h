// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

namespace cadorel {

/// A real server of the Subsonic API on loopback: the program tests/Servers/subsonic-server in a directory of
/// its own. It ends with the object, or with the test, however that ends. Waits for the program without an
/// event loop.
class SubsonicServer
{
public:
    struct Options
    {
        /// Otherwise it wants the password itself and says so.
        bool knowsTokens = true;
        /// The path below which it stands, as behind a proxy: begins with "/", ends without.
        QString prefix = {};
    };

    SubsonicServer() = default;
    ~SubsonicServer();
    Q_DISABLE_COPY_MOVE(SubsonicServer)

    /// Scans a folder of music and serves it to this user, which takes seconds: let tests share a server.
    /// @return whether it answers; otherwise the reason is on standard error
    bool start(const QString &music, const QString &user, const QString &password);
    bool start(const QString &music, const QString &user, const QString &password, const Options &options);
    /// Every connection breaks, and new ones are refused.
    void stop();
    /// After stop(): at the same address, with what the folder holds now and the same ids of songs.
    bool startAgain();

    /// "http://127.0.0.1:port" and the prefix.
    QUrl address() const { return m_address; }
    /// What the program has said.
    QByteArray log() const;
    /// Method, path and query of each request so far, the query as it was sent, in the order of arrival.
    QList<QByteArray> requests() const;

private:
    bool launch(quint16 port);

    QTemporaryDir m_directory;
    QProcess m_process;
    QStringList m_arguments;
    QString m_music;
    QString m_password;
    QUrl m_address;
};

} // namespace cadorel
