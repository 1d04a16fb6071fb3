// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace cadorel {

/// The text of bytes from outside, without a byte order mark; nothing when any of them is no UTF-8, half a
/// character at the end included. Any thread.
std::optional<QString> utf8Text(const QByteArray &bytes);

} // namespace cadorel
