// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace cadorel {

/// A PulseAudio server of a test's own, whose one device plays to nobody but can be recorded. While it
/// exists, this process and its children find no other sound server; it can be started and stopped at will.
class SoundServer
{
public:
    SoundServer();
    ~SoundServer();
    Q_DISABLE_COPY_MOVE(SoundServer)

    /// Whether the machine has the programs.
    static bool available();

    /// Ready to take sound without a delay when it returns true.
    bool start();
    /// As if it had crashed.
    void stop();
    /// Makes it answer nothing while true.
    void setHanging(bool hanging);

    /// The device that is there from the start.
    static constexpr QLatin1StringView firstDevice{"out"};
    /// What records a device, on one channel, to its standard output or to a file.
    std::unique_ptr<QProcess> recording(const QString &format, int sampleRate, const QString &file = {},
                                        const QString &device = firstDevice) const;
    /// A device hands over two seconds at a time until somebody asks for less, and heeds who does only after
    /// that. Makes one on which nothing plays heed its first listener at once. @return false when there is
    /// none
    bool heedListener(const QString &device) const;
    /// What the server tells of the streams that play.
    QByteArray streams() const;
    /// Asks the server as its user would; what pactl answers, empty when it is refused.
    QByteArray ask(const QStringList &arguments) const;
    /// Adds a device that new streams go to. @return its module, for unload(); empty on failure
    QByteArray plugIn(const QString &name) const;
    /// Adds a device that only who chooses it plays on. @return its module, for unload(); empty on failure
    QByteArray addDevice(const QString &name, const QString &description) const;
    /// Takes away what a module brought: a device, or the server's manners.
    bool unload(const QByteArray &module) const
    {
        return !ask({QStringLiteral("unload-module"), QString::fromLatin1(module)}).isNull();
    }
    /// Something else that plays, silence, with that role in the eyes of the server.
    std::unique_ptr<QProcess> other(const QString &role) const;

private:
    QString socket() const { return m_directory.filePath(QStringLiteral("native")); }

    QTemporaryDir m_directory;
    QByteArray m_oldServer;
    QByteArray m_oldRuntimeDirectory;
    QProcessEnvironment m_environment;
    std::unique_ptr<QProcess> m_server;
    std::unique_ptr<QProcess> m_listener;
};

} // namespace cadorel
