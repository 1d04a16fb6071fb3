// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>

namespace cadorel {

/// The picture that encoded bytes from outside hold; a null image when they are none. A picture of more than
/// 32 million pixels counts as none: a few bytes could ask for any amount of memory. Takes as long as
/// decoding takes: not for the main thread.
QImage decodedCover(const QByteArray &bytes);

} // namespace cadorel
