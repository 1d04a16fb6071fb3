// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AssetReader.h"

#include <QByteArray>
#include <QFuture>
#include <QString>

#include <expected>
#include <memory>

namespace cadorel {

/// Counts the exact lengths of files on the global thread pool. Scans may outlast the scanner's owner, but
/// not the reader: close() ends the use of it.
class DurationScanner
{
public:
    /// @param reader lives until close()
    explicit DurationScanner(const AssetReader &reader);

    /// Length of a file in seconds. Never throws and never stays without a result.
    QFuture<std::expected<double, QString>> scan(const QString &path) const;
    /// The same of a file that is in memory.
    QFuture<std::expected<double, QString>> scan(const QByteArray &bytes) const;
    /// Waits for the scans under way, which read one file each; every other scan fails from now on.
    void close();

private:
    struct Gate;
    std::shared_ptr<Gate> m_gate;
};

} // namespace cadorel
