// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// Key of a stored file or an album title that stays the same in every run, on every machine: the first 16
/// hexadecimal digits, upper-cased, of the SHA-256 of the text's UTF-8 bytes. Any thread.
QString stableHash(const QString &text);

} // namespace cadorel
