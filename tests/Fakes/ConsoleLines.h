// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utils/Console.h"

#include <QStringList>

#include <mutex>

namespace cadorel {

/// Collects the lines that print() gives while it lives.
class ConsoleLines
{
public:
    ConsoleLines()
    {
        setConsoleSink([this](const QString &line) {
            const std::scoped_lock lock(m_mutex);
            m_lines.append(line);
        });
    }
    ~ConsoleLines() { setConsoleSink({}); }
    Q_DISABLE_COPY_MOVE(ConsoleLines)

    /// The lines since the last call.
    QStringList take()
    {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_lines, {});
    }

private:
    std::mutex m_mutex;
    QStringList m_lines;
};

} // namespace cadorel
