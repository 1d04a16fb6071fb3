// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace cadorel {

/// The picture inside of a picture block as FLAC files and Vorbis comments carry it, without the header of a
/// metadata block. All its numbers are 32 bits, most significant byte first. Nothing when the block has 32
/// bytes or fewer, or when one of its lengths leads past its end. Whether the bytes are an image is not
/// looked at. Any thread.
std::optional<QByteArray> flacPicture(QByteArrayView block);

} // namespace cadorel
