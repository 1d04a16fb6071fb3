// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace cadorel::webdav {

/// Bytes that a song on a server may have: several hours of lossless sound. An answer without an end, as of a
/// broadcast, would fill memory or disk otherwise.
inline constexpr qint64 largestSong = qint64{2} * 1024 * 1024 * 1024;

} // namespace cadorel::webdav
