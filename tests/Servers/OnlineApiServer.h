// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>

namespace cadorel {

/// tests/Servers/online-api as a process of its own: an online music API on loopback, whose songs are tones
/// of known frequencies. It ends with the object, or with the test. Waits without an event loop.
class OnlineApiServer
{
public:
    /// A song as the data files tell it.
    struct Song
    {
        QString platform = {};
        QString id = {};
        QString name = {};
        QString artist = {};
        QString album = {};
        /// Hertz of the tone that is heard.
        int frequency = 0;
        /// How the server answers for its sound: "redirect", "json", "text", "audio" or "none".
        QString address = {};
        /// For its cover: "jpeg", "png", "redirect" or "error".
        QString picture = {};
        /// For its lyrics: "lrc", "plain" or "none".
        QString lyrics = {};
        QStringList verse = {};
        /// What it can be had in, the best last.
        QStringList qualities = {};
    };

    OnlineApiServer() = default;
    ~OnlineApiServer();
    Q_DISABLE_COPY_MOVE(OnlineApiServer)

    /// @param arguments of the program besides the port, for instance {"--seconds", "4"}
    /// @return whether it answers; otherwise the reason is on standard error
    bool start(const QStringList &arguments = {});
    /// Every connection breaks, and new ones are refused.
    void stop();

    /// The API's base address, which ends in "/".
    QUrl address() const;
    /// Each request so far as "GET /path?query", in their order.
    QStringList requests() const;

    /// Every song of a platform: "netease", "kuwo" or "qq". Needs no server.
    static QList<Song> songs(const QString &platform);
    /// The first of its songs whose sound the server answers for in this form.
    static Song songWithAddress(const QString &platform, const QString &form);

private:
    /// What the program has written to standard output, line by line.
    QStringList lines() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_process;
    quint16 m_port = 0;
};

} // namespace cadorel
