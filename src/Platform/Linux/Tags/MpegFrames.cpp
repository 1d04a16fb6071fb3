// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/MpegFrames.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace cadorel {

namespace {

constexpr qint64 searchLimit = qint64(1024) * 1024;
constexpr qint64 estimatedBytes = qint64(256) * 1024;
constexpr qint64 damagedBlock = 4096;
constexpr int chainLength = 3;

/// kbit/s by bitrate index. ISO 11172-3 table 2.4.2.3 and ISO 13818-3 table 2.4.2.3.
constexpr std::array<std::array<int, 15>, 5> bitrates{{
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448}, // version 1 layer I
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},    // version 1 layer II
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},     // version 1 layer III
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},    // version 2 layer I
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},         // version 2 layers II and III
}};
constexpr std::array<int, 3> mpegRates{44100, 48000, 32000};
constexpr std::array<int, 13> adtsRates{96000, 88200, 64000, 48000, 44100, 32000, 24000,
                                        22050, 16000, 12000, 11025, 8000,  7350};

quint32 bits(const char *at, int count)
{
    quint32 value = 0;
    for (int i = 0; i < count; ++i)
        value = value << 8 | uchar(at[i]);
    return value;
}

std::optional<FrameHeader> parseMpeg(const char *at)
{
    const quint32 header = bits(at, 4);
    const quint32 version = header >> 19 & 3; // 0: 2.5, 2: 2, 3: 1
    const quint32 layerBits = header >> 17 & 3;
    const quint32 bitrateIndex = header >> 12 & 15;
    const quint32 rateIndex = header >> 10 & 3;
    if (header >> 21 != 0x7ff || version == 1 || layerBits == 0 || bitrateIndex == 0 || bitrateIndex == 15 ||
        rateIndex == 3)
        return std::nullopt;
    const int layer = 4 - int(layerBits);
    const bool first = version == 3;
    const size_t row = first ? size_t(layer - 1) : layer == 1 ? 3 : 4;
    const int bitrate = bitrates[row][bitrateIndex] * 1000;
    const int rate = mpegRates[rateIndex] / (first ? 1 : version == 2 ? 2 : 4);
    const int padding = int(header >> 9 & 1);
    FrameHeader frame;
    frame.sampleRate = rate;
    frame.samples = layer == 1 ? 384 : layer == 2 || first ? 1152 : 576;
    frame.bytes =
        layer == 1 ? (12 * bitrate / rate + padding) * 4 : frame.samples / 8 * bitrate / rate + padding;
    frame.streamBits = header & 0xfffe0c00; // sync, version, layer, sample rate
    return frame;
}

std::optional<FrameHeader> parseAdts(const char *at)
{
    const quint32 header = bits(at, 4);
    const quint32 rateIndex = header >> 10 & 15;
    const int bytes = int((header & 3) << 11 | bits(at + 4, 2) >> 5);
    if (header >> 20 != 0xfff || (header >> 17 & 3) != 0 || rateIndex >= adtsRates.size() ||
        bytes < MpegFrames::headerBytes)
        return std::nullopt;
    FrameHeader frame;
    frame.bytes = bytes;
    frame.sampleRate = adtsRates[rateIndex];
    frame.samples = 1024 * (1 + (at[6] & 3));
    frame.streamBits = header & 0xfffffdc0; // sync, version, profile, sample rate, channels
    return frame;
}

} // namespace

std::optional<FrameHeader> MpegFrames::parse(FrameKind kind, const char *at)
{
    return kind == FrameKind::mpegAudio ? parseMpeg(at) : parseAdts(at);
}

MpegFrames::MpegFrames(FileBytes &file, FrameKind kind, qint64 end)
    : m_file(file)
    , m_kind(kind)
    , m_end(end)
{
}

std::optional<FrameHeader> MpegFrames::at(qint64 offset)
{
    std::array<char, headerBytes> header;
    if (offset + headerBytes > m_end || m_file.read(offset, header.data(), headerBytes) < headerBytes)
        return std::nullopt;
    return parse(m_kind, header.data());
}

bool MpegFrames::isChain(qint64 offset, bool certain)
{
    std::optional<FrameHeader> previous;
    for (int i = 0; i < chainLength; ++i) {
        // The very short file: all of its frames are there, or the only one is where it must be.
        if (previous && offset >= m_end)
            return certain || (i > 1 && offset == m_end);
        const std::optional<FrameHeader> frame = at(offset);
        if (!frame || (previous && frame->streamBits != previous->streamBits))
            return false;
        offset += frame->bytes;
        previous = frame;
    }
    return true;
}

std::optional<qint64> MpegFrames::first(qint64 from)
{
    if (isChain(from, true))
        return from;
    const QByteArray searched = m_file.read(from, std::min(searchLimit, m_end - from));
    for (qsizetype i = 1; i < searched.size(); ++i) {
        i = searched.indexOf('\xff', i);
        if (i < 0)
            break;
        if (isChain(from + i, false))
            return from + i;
    }
    return std::nullopt;
}

std::optional<FrameHeader> MpegFrames::next(qint64 &offset, std::optional<quint32> streamBits)
{
    const auto fits = [&](const std::optional<FrameHeader> &frame, qint64 place) {
        return frame && (!streamBits || frame->streamBits == *streamBits) && place + frame->bytes <= m_end;
    };
    while (offset + headerBytes <= m_end) {
        if (const auto frame = at(offset); fits(frame, offset))
            return frame;
        const qint64 blockStart = offset + 1;
        const QByteArray damaged = m_file.read(blockStart, std::min(damagedBlock, m_end - blockStart));
        if (damaged.isEmpty())
            break;
        offset = blockStart + damaged.size();
        for (qsizetype i = damaged.indexOf('\xff'); i >= 0; i = damaged.indexOf('\xff', i + 1)) {
            // What reaches over the block's end is looked at again from there.
            const bool whole = i + headerBytes <= damaged.size();
            if (!whole || fits(parse(m_kind, damaged.constData() + i), blockStart + i)) {
                offset = blockStart + i;
                break;
            }
        }
    }
    return std::nullopt;
}

MpegFrames::Walk MpegFrames::walk(qint64 from, qint64 end)
{
    Walk walk;
    std::optional<quint32> streamBits;
    for (qint64 offset = from; offset < end;) {
        const std::optional<FrameHeader> frame = next(offset, streamBits);
        if (!frame)
            break;
        streamBits = frame->streamBits;
        walk.seconds += double(frame->samples) / frame->sampleRate;
        walk.bytes += frame->bytes;
        ++walk.frames;
        offset += frame->bytes;
    }
    return walk;
}

double MpegFrames::count(qint64 from)
{
    return walk(from, m_end).seconds;
}

double MpegFrames::estimate(qint64 from)
{
    const Walk sample = walk(from, std::min(m_end, from + estimatedBytes));
    return sample.bytes > 0 ? sample.seconds * double(m_end - from) / double(sample.bytes) : 0;
}

} // namespace cadorel
