// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/DurationScanner.h"

#include "Platform/Mpv/FailureText.h"
#include "Platform/Mpv/MpvLog.h"

#include <QtConcurrent>

#include <exception>
#include <mutex>
#include <shared_mutex>

namespace cadorel {

struct DurationScanner::Gate
{
    std::shared_mutex mutex;
    const AssetReader *reader = nullptr;
};

DurationScanner::DurationScanner(const AssetReader &reader)
    : m_gate(std::make_shared<Gate>())
{
    m_gate->reader = &reader;
}

QFuture<std::expected<double, QString>> DurationScanner::scan(const QString &path) const
{
    return QtConcurrent::run([gate = m_gate, path]() -> std::expected<double, QString> {
        const std::shared_lock lock(gate->mutex);
        if (!gate->reader)
            return std::unexpected(abandonedItemText());
        try {
            return gate->reader->open(path)->duration(true);
        } catch (const std::exception &error) {
            qCWarning(mpvLog) << "duration scan threw:" << error.what();
            return std::unexpected(unknownDurationText());
        }
    });
}

void DurationScanner::close()
{
    const std::unique_lock lock(m_gate->mutex);
    m_gate->reader = nullptr;
}

} // namespace cadorel
