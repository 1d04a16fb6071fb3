// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/PulseLink.h"

#include "Platform/EqualizerEngine/NoDevice.h"

namespace cadorel {

std::shared_ptr<PulseConnection> PulseLink::connection(std::chrono::milliseconds limit)
{
    if (m_connection && m_connection->isReady())
        return m_connection;
    m_connection.reset();
    if (!m_thread)
        m_thread.emplace("sound-output");
    auto connection = std::make_shared<PulseConnection>(*m_thread);
    if (!connection->waitUntilReady(limit))
        throwNoDevice();
    m_connection = std::move(connection);
    return m_connection;
}

} // namespace cadorel
