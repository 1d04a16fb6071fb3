// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/FileBytes.h"

#include <QList>

#include <functional>
#include <utility>

namespace cadorel {

/// One chunk of a file in the manner of IFF: big-endian, padded to even lengths.
struct IffChunk
{
    QByteArray id;
    /// Of the content, behind id and size.
    qint64 offset = 0;
    qint64 length = 0;
};

/// Texts by the names of their chunks.
using ChunkTexts = QList<std::pair<QString, QByteArray>>;

/// Calls @p each for the chunks between @p from and @p to, at most a thousand; a chunk that would reach
/// beyond is cut. @param sizeBytes 4 for AIFF, 8 for DSDIFF
void forEachIffChunk(FileBytes &file, qint64 from, qint64 to, int sizeBytes,
                     const std::function<void(const IffChunk &)> &each);

/// The text chunks NAME and AUTH of an AIFF file (Apple, AIFF 1.3).
ChunkTexts aiffTexts(FileBytes &file);

} // namespace cadorel
