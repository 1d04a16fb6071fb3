// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/SoundServerWatch.h"

#include "Platform/Pulse/PulseLog.h"
#include "Platform/Pulse/StreamMemory.h"

#include <chrono>
#include <exception>
#include <mutex>
#include <utility>

using namespace std::chrono_literals;

namespace cadorel {

namespace {

/// A socket can be there some time before its server listens. After as many attempts, each waiting twice as
/// long as the one before, only a change of the socket is a reason for another.
constexpr int mostRetries = 6;
constexpr std::chrono::milliseconds firstDelay = 100ms;

constexpr std::chrono::milliseconds forgettingLimit = 300ms;

} // namespace

SoundServerWatch::SoundServerWatch()
    : m_socket(ServerSocketWatch::socketsIn(QProcessEnvironment::systemEnvironment()))
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &SoundServerWatch::connectToServer);
    connect(&m_socket, &ServerSocketWatch::appeared, this, [this] {
        m_retries = 0;
        // One that is being asked already answers soon enough; whether it does is seen then.
        if (!m_connection)
            connectToServer();
    });
}

SoundServerWatch::~SoundServerWatch()
{
    m_reader.reset();
    m_connection.reset();
}

void SoundServerWatch::start()
{
    if (!m_thread)
        m_thread = std::make_unique<PulseThread>("pulse-watch");
    m_retries = 0;
    if (!m_connection)
        connectToServer();
}

void SoundServerWatch::connectToServer()
{
    m_retry.stop();
    const quint64 attempt = ++m_attempt;
    auto told = [this, attempt](pa_context_state_t state) {
        const auto tell = [this, attempt, state] { stateChanged(attempt, state); };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    };
    try {
        m_connection = std::make_unique<PulseConnection>(*m_thread, std::move(told));
    } catch (const std::exception &error) {
        qCWarning(pulseLog) << error.what();
    }
}

void SoundServerWatch::stateChanged(quint64 attempt, pa_context_state_t state)
{
    if (attempt != m_attempt)
        return;
    if (state == PA_CONTEXT_READY)
        follow();
    else if (!PA_CONTEXT_IS_GOOD(state))
        failed();
}

void SoundServerWatch::follow()
{
    m_retries = 0;
    m_socket.stop();
    m_isFollowing = true;
    const quint64 attempt = m_attempt;
    m_reader = std::make_unique<SoundSceneReader>(*m_connection, [this, attempt](const SoundScene &scene) {
        const auto tell = [this, attempt, scene] {
            if (attempt == m_attempt && m_isFollowing)
                Q_EMIT sceneChanged(scene);
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    });
}

void SoundServerWatch::move(std::uint32_t stream, const QByteArray &sink)
{
    if (!m_isFollowing)
        return;
    const std::scoped_lock guard(*m_thread);
    const PulsePtr<pa_operation> asked(pa_context_move_sink_input_by_name(
        m_connection->context(), stream, sink.constData(), nullptr, nullptr));
    if (!asked)
        qCInfo(pulseLog) << "a stream cannot be moved:" << m_connection->errorText();
}

void SoundServerWatch::forgetDeviceOf(const char *group)
{
    if (m_isFollowing)
        forgetDevice(*m_connection, group, forgettingLimit);
}

void SoundServerWatch::failed()
{
    qCInfo(pulseLog) << "the sound server does not answer:" << m_connection->errorText();
    m_reader.reset();
    m_connection.reset();
    ++m_attempt;
    m_socket.start();
    if ((m_socket.anyExists() || !m_socket.canNotice()) && m_retries < mostRetries)
        m_retry.start(firstDelay * (1 << m_retries++));
    if (std::exchange(m_isFollowing, false))
        Q_EMIT lost();
}

} // namespace cadorel
