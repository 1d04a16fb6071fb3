// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// A count of bytes as people write the size of a file, in steps of 1000: "Zero KB", "512 bytes", "12 KB",
/// "3.4 MB", "1.25 GB".
QString fileSizeText(qint64 bytes);

} // namespace cadorel
