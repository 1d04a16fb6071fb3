// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/RemoteCommandCenter.h"

#include <QStringList>

namespace cadorel {

/// Writes down the desktop's commands: "play", "position 12.5", "mode shuffle"…
class CommandLog : public QObject
{
    Q_OBJECT
public:
    explicit CommandLog(const RemoteCommandCenter &center);

    /// The commands since the last call.
    QStringList take() { return std::exchange(m_commands, {}); }
    /// The commands so far.
    const QStringList &commands() const { return m_commands; }

private:
    QStringList m_commands;
};

} // namespace cadorel
