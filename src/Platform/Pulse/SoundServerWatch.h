// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Pulse/PulseConnection.h"
#include "Platform/Pulse/ServerSocketWatch.h"
#include "Platform/Pulse/SoundScene.h"
#include "Platform/Pulse/SoundSceneReader.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace cadorel {

/// Follows the sound server through its comings and goings. Main thread, which it never holds up.
class SoundServerWatch : public QObject
{
    Q_OBJECT
public:
    SoundServerWatch();
    ~SoundServerWatch() override;
    Q_DISABLE_COPY_MOVE(SoundServerWatch)

    /// Begins, or tries again at once when there was no server. @throws std::runtime_error when the machine
    /// gives no thread for it
    void start();
    /// Lets a stream go on at the sink of that name, without a gap where the server can. Nothing happens
    /// without a server, or when either has gone.
    void move(std::uint32_t stream, const QByteArray &sink);
    /// See forgetDevice(); nothing happens without a server. Waits for it, for the blink of an eye.
    void forgetDeviceOf(const char *group);

Q_SIGNALS:
    /// What plays, for the first time since a server is there, or differently.
    void sceneChanged(const SoundScene &scene);
    /// The server has gone.
    void lost();

private:
    void connectToServer();
    void stateChanged(quint64 attempt, pa_context_state_t state);
    void follow();
    void failed();

    ServerSocketWatch m_socket;
    QTimer m_retry;
    int m_retries = 0;
    quint64 m_attempt = 0; ///< which connection is the present one
    bool m_isFollowing = false;
    std::unique_ptr<PulseThread> m_thread;
    std::unique_ptr<PulseConnection> m_connection;
    std::unique_ptr<SoundSceneReader> m_reader;
};

} // namespace cadorel
