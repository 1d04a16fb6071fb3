// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/DsdChunks.h"

#include <QtEndian>

#include <algorithm>

namespace cadorel {

namespace {

constexpr int dffSizeBytes = 8;
constexpr int dffFormHeader = 16; // "FRM8", size, "DSD "
constexpr qint64 maximalText = 4096;

/// A text with its length before it, as in the chunks DITI and DIAR.
QByteArray countedText(FileBytes &file, const IffChunk &chunk)
{
    const QByteArray bytes = file.read(chunk.offset, std::min(chunk.length, maximalText));
    if (bytes.size() < 4)
        return {};
    const auto length = qsizetype(qFromBigEndian<quint32>(bytes.constData()));
    return bytes.mid(4, length);
}

/// What the sound chunks of a DSDIFF file tell of its length.
struct DffSound
{
    quint32 sampleRate = 0;
    quint16 channels = 0;
    qint64 plainBytes = 0;
    quint32 compressedFrames = 0;
    quint16 framesPerSecond = 0;

    double duration() const
    {
        if (compressedFrames > 0 && framesPerSecond > 0)
            return double(compressedFrames) / framesPerSecond;
        return sampleRate > 0 && channels > 0 ? double(plainBytes) * 8 / channels / sampleRate : 0;
    }
};

void readProperties(FileBytes &file, const IffChunk &properties, DffSound &sound)
{
    forEachIffChunk(file, properties.offset + 4, properties.offset + properties.length, dffSizeBytes,
                    [&](const IffChunk &chunk) {
                        const QByteArray bytes = file.read(chunk.offset, 4);
                        if (chunk.id == "FS  " && bytes.size() == 4)
                            sound.sampleRate = qFromBigEndian<quint32>(bytes.constData());
                        else if (chunk.id == "CHNL" && bytes.size() >= 2)
                            sound.channels = qFromBigEndian<quint16>(bytes.constData());
                    });
}

void readFrameCount(FileBytes &file, const IffChunk &compressed, DffSound &sound)
{
    const QByteArray bytes = file.read(compressed.offset, 18); // "FRTE", size, frames, frames per second
    if (bytes.size() < 18 || !bytes.startsWith("FRTE"))
        return;
    sound.compressedFrames = qFromBigEndian<quint32>(bytes.constData() + 12);
    sound.framesPerSecond = qFromBigEndian<quint16>(bytes.constData() + 16);
}

} // namespace

std::optional<DsdChunks> DsdChunks::ofDsf(FileBytes &file)
{
    const QByteArray header = file.read(0, 80); // chunks "DSD " (28 bytes) and "fmt " (52 bytes)
    if (header.size() < 80 || header.sliced(28, 4) != "fmt ")
        return std::nullopt;
    DsdChunks chunks;
    const auto tag = qFromLittleEndian<qint64>(header.constData() + 20);
    const auto sampleRate = qFromLittleEndian<quint32>(header.constData() + 56);
    const auto samples = qFromLittleEndian<quint64>(header.constData() + 64);
    if (sampleRate == 0)
        return std::nullopt;
    chunks.duration = double(samples) / sampleRate;
    if (tag > 0 && file.read(tag, 3) == "ID3")
        chunks.id3 = ByteRange{.offset = tag, .length = file.size() - tag};
    return chunks;
}

std::optional<DsdChunks> DsdChunks::ofDff(FileBytes &file)
{
    if (file.read(12, 4) != "DSD ")
        return std::nullopt;
    DsdChunks chunks;
    DffSound sound;
    forEachIffChunk(file, dffFormHeader, file.size(), dffSizeBytes, [&](const IffChunk &chunk) {
        if (chunk.id == "PROP") {
            readProperties(file, chunk, sound);
        } else if (chunk.id == "DSD ") {
            sound.plainBytes = chunk.length;
        } else if (chunk.id == "DST ") {
            readFrameCount(file, chunk, sound);
        } else if (chunk.id == "ID3 " && file.read(chunk.offset, 3) == "ID3") {
            chunks.id3 = ByteRange{.offset = chunk.offset, .length = chunk.length};
        } else if (chunk.id == "DIIN") {
            forEachIffChunk(
                file, chunk.offset, chunk.offset + chunk.length, dffSizeBytes, [&](const IffChunk &inner) {
                    if (inner.id == "DITI" || inner.id == "DIAR")
                        chunks.texts.append({QString::fromLatin1(inner.id), countedText(file, inner)});
                });
        }
    });
    if (sound.sampleRate == 0)
        return std::nullopt;
    chunks.duration = sound.duration();
    return chunks;
}

} // namespace cadorel
