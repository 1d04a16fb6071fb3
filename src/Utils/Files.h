// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <expected>

namespace cadorel {

/// Writes a file complete or not at all, in place of an earlier one. It is not forced to the disk: a power
/// cut may lose the newest files, which suits covers and lyrics that can be read again from the song.
/// @return the system's description of what went wrong. Any thread.
std::expected<void, QString> writeFileAtomically(const QString &path, const QByteArray &bytes);

/// The same for what must last and is nobody else's: readable by this user alone from its first moment on,
/// and on the disk when the call returns.
std::expected<void, QString> writePrivateFileAtomically(const QString &path, const QByteArray &bytes);

/// A name beside @p path that is still free, "<path>.damaged-<yyyyMMdd-HHmmss>", for a file that cannot be
/// read. Any thread.
QString freeDamagedName(const QString &path);

} // namespace cadorel
