// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Random.h"

#include <QString>
#include <QStringList>

namespace cadorel {

/// The stickers of the pink look: names of picture assets. Any thread.
class KawaiiCartoon
{
public:
    KawaiiCartoon() = delete;

    /// All of them in their order. The series has no number 2.
    static const QStringList &allImages();
    /// Any of them.
    static QString random(Random &random);
    /// The one at that index, whatever its sign, counted round and round.
    static QString at(int index) { return at(index, allImages()); }
    /// The same in a list of the caller's; the first sticker where that is empty.
    static QString at(int index, const QStringList &images);
};

} // namespace cadorel
