// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/DurationScanner.h"

#include "Platform/Mpv/FailureText.h"
#include "Platform/Mpv/MpvLog.h"

#include <QFile>
#include <QtConcurrent>

#include <sys/mman.h>

#include <exception>
#include <mutex>
#include <shared_mutex>

namespace cadorel {

using namespace Qt::StringLiterals;

struct DurationScanner::Gate
{
    std::shared_mutex mutex;
    const AssetReader *reader = nullptr;

    std::expected<double, QString> scan(const QString &path)
    {
        const std::shared_lock lock(mutex);
        if (!reader)
            return std::unexpected(abandonedItemText());
        try {
            return reader->open(path)->duration(true);
        } catch (const std::exception &error) {
            qCWarning(mpvLog) << "duration scan threw:" << error.what();
            return std::unexpected(unknownDurationText());
        }
    }
};

DurationScanner::DurationScanner(const AssetReader &reader)
    : m_gate(std::make_shared<Gate>())
{
    m_gate->reader = &reader;
}

QFuture<std::expected<double, QString>> DurationScanner::scan(const QString &path) const
{
    return QtConcurrent::run([gate = m_gate, path] { return gate->scan(path); });
}

QFuture<std::expected<double, QString>> DurationScanner::scan(const QByteArray &bytes) const
{
    return QtConcurrent::run([gate = m_gate, bytes]() -> std::expected<double, QString> {
        // A file without a name, for readers that want a path; never on a disk.
        const int descriptor = memfd_create("duration scan", MFD_CLOEXEC);
        QFile file;
        if (descriptor < 0 || !file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle) ||
            file.write(bytes) != bytes.size() || !file.flush())
            return std::unexpected(unknownDurationText());
        return gate->scan(u"/proc/self/fd/%1"_s.arg(descriptor));
    });
}

void DurationScanner::close()
{
    const std::unique_lock lock(m_gate->mutex);
    m_gate->reader = nullptr;
}

} // namespace cadorel
