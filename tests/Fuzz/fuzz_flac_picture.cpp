// SPDX-License-Identifier: GPL-3.0-or-later
// Reads any bytes as a picture block:
//   build/fuzz/fuzz_flac_picture -max_len=4096
#include "Services/Cloud/FlacPicture.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView block(data, static_cast<qsizetype>(size));
    const std::optional<QByteArray> picture = cadorel::flacPicture(block);
    // The picture is a piece of the block, behind the eight numbers.
    constexpr qsizetype numbers = 32;
    if (picture && (picture->size() > block.size() - numbers || !block.contains(*picture)))
        std::abort();
    return 0;
}
