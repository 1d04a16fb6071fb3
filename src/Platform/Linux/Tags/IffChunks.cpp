// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/IffChunks.h"

#include <QtEndian>

#include <algorithm>

namespace cadorel {

namespace {

constexpr int idBytes = 4;
constexpr int maximalChunks = 1000;

} // namespace

void forEachIffChunk(FileBytes &file, qint64 from, qint64 to, int sizeBytes,
                     const std::function<void(const IffChunk &)> &each)
{
    const int headerBytes = idBytes + sizeBytes;
    to = std::min(to, file.size());
    for (int count = 0; count < maximalChunks && from + headerBytes <= to; ++count) {
        const QByteArray header = file.read(from, headerBytes);
        if (header.size() < headerBytes)
            return;
        const char *size = header.constData() + idBytes;
        const quint64 declared =
            sizeBytes == 8 ? qFromBigEndian<quint64>(size) : quint64(qFromBigEndian<quint32>(size));
        const qint64 content = from + headerBytes;
        const auto length = qint64(std::min(declared, quint64(to - content)));
        each({.id = header.first(idBytes), .offset = content, .length = length});
        from = content + length + length % 2;
    }
}

ChunkTexts aiffTexts(FileBytes &file)
{
    constexpr qint64 formHeader = 12; // "FORM", size, "AIFF"
    constexpr qint64 maximalText = 4096;
    ChunkTexts texts;
    forEachIffChunk(file, formHeader, file.size(), 4, [&](const IffChunk &chunk) {
        if (chunk.id == "NAME" || chunk.id == "AUTH")
            texts.append({QString::fromLatin1(chunk.id),
                          file.read(chunk.offset, std::min(chunk.length, maximalText))});
    });
    return texts;
}

} // namespace cadorel
