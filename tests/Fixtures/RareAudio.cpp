// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/RareAudio.h"

#include <QtEndian>

#include <array>
#include <cmath>
#include <numbers>

namespace cadorel {

namespace {

constexpr int dsdRate = 2822400;
constexpr int cdRate = 44100;
constexpr qsizetype dsfBlock = 4096;
constexpr qsizetype dsfMetadataPointer = 20;
constexpr qsizetype dsfTotalSize = 12;

template <typename T>
QByteArray little(T value)
{
    QByteArray bytes(sizeof(T), '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

template <typename T>
QByteArray big(T value)
{
    QByteArray bytes(sizeof(T), '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

/// One-bit sound by a modulator of second order, the first bit in the highest bit of the first byte.
QByteArray modulated(double seconds, int frequency)
{
    const auto count = qsizetype(seconds * dsdRate) / 8;
    QByteArray bits(count, '\0');
    double first = 0;
    double second = 0;
    for (qsizetype i = 0; i < count * 8; ++i) {
        const double in = 0.1 * std::sin(2 * std::numbers::pi * frequency * double(i) / dsdRate);
        const double out = second >= 0 ? 1 : -1;
        first += in - out;
        second += first - 2 * out;
        if (out > 0)
            bits[i / 8] = char(bits[i / 8] | 0x80 >> i % 8);
    }
    return bits;
}

char reversed(char byte)
{
    unsigned in = uchar(byte);
    unsigned out = 0;
    for (int i = 0; i < 8; ++i, in >>= 1)
        out = out << 1 | (in & 1);
    return char(out);
}

QByteArray dffChunk(const char *id, const QByteArray &content)
{
    return QByteArray(id) + big(quint64(content.size())) + content + QByteArray(content.size() % 2, '\0');
}

/// CRC-24 of RFC 4880, which TAK stores lowest byte first.
QByteArray crc24(const QByteArray &bytes)
{
    quint32 crc = 0xb704ce;
    for (const char byte : bytes) {
        crc ^= quint32(uchar(byte)) << 16;
        for (int i = 0; i < 8; ++i)
            crc = crc << 1 ^ (crc & 0x800000 ? 0x1864cfb : 0);
    }
    return little(crc & 0xffffff).first(3);
}

/// Bits from the lowest of each byte up.
class LittleBits
{
public:
    void put(quint64 value, int count)
    {
        for (int i = 0; i < count; ++i, ++m_used) {
            if (m_used % 8 == 0)
                m_bytes.append('\0');
            if (value >> i & 1)
                m_bytes.back() = char(m_bytes.back() | 1 << m_used % 8);
        }
    }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
    int m_used = 0;
};

constexpr int takFrameType = 3; // a quarter of a second
constexpr quint64 takFrameSamples = cdRate * 8 / 32;

void putTakStreamInfo(LittleBits &bits, quint64 samples)
{
    bits.put(2, 6); // codec: integer 24 bit, mono or stereo
    bits.put(0, 4);
    bits.put(takFrameType, 4);
    bits.put(samples, 35);
    bits.put(0, 3); // PCM
    bits.put(cdRate - 6000, 18);
    bits.put(16 - 8, 5);
    bits.put(1 - 1, 4);
    bits.put(0, 1);
}

QByteArray takBlock(char type, const QByteArray &content)
{
    return QByteArray(1, type) + little(quint32(content.size())).first(3) + content;
}

/// A frame whose first sample and residues are zero.
QByteArray takFrame(quint64 number, quint64 samples, quint64 all)
{
    const bool last = samples != takFrameSamples;
    LittleBits bits;
    bits.put(0xa0ff, 16);
    bits.put(last ? 3 : 2, 3); // stream information follows
    bits.put(number, 21);
    if (last) {
        bits.put(samples - 1, 14);
        bits.put(0, 2);
    }
    putTakStreamInfo(bits, all);
    bits.put(0, 6);
    const QByteArray header = bits.bytes();
    const QByteArray silence(4, '\0');
    return header + crc24(header) + silence + crc24(silence);
}

} // namespace

QByteArray makeDsf(double seconds, int frequency)
{
    QByteArray channel = modulated(seconds, frequency);
    const auto samples = quint64(channel.size()) * 8;
    for (char &byte : channel)
        byte = reversed(byte);
    channel.append((dsfBlock - channel.size() % dsfBlock) % dsfBlock, '\x69');
    QByteArray sound;
    for (qsizetype i = 0; i < channel.size(); i += dsfBlock)
        sound += channel.sliced(i, dsfBlock) + channel.sliced(i, dsfBlock);

    constexpr quint64 headerBytes = 28 + 52 + 12;
    return "DSD " + little(quint64(28)) + little(quint64(sound.size()) + headerBytes) + little(quint64(0)) +
           "fmt " + little(quint64(52)) + little(quint32(1)) + little(quint32(0)) + little(quint32(2)) +
           little(quint32(2)) + little(quint32(dsdRate)) + little(quint32(1)) + little(samples) +
           little(quint32(dsfBlock)) + little(quint32(0)) + "data" + little(quint64(sound.size()) + 12) +
           sound;
}

QByteArray makeDff(double seconds, int frequency)
{
    const QByteArray channel = modulated(seconds, frequency);
    QByteArray sound;
    sound.reserve(channel.size() * 2);
    for (const char byte : channel)
        sound.append(2, byte);
    const QByteArray compression = QByteArray("DSD ") + '\x0e' + "not compressed";
    const QByteArray properties = "SND " + dffChunk("FS  ", big(quint32(dsdRate))) +
                                  dffChunk("CHNL", big(quint16(2)) + "SLFTSRGT") +
                                  dffChunk("CMPR", compression);
    return dffChunk("FRM8", "DSD " + dffChunk("FVER", big(quint32(0x01050000))) +
                                dffChunk("PROP", properties) + dffChunk("DSD ", sound));
}

QByteArray withId3(const QByteArray &dsfOrDff, const QByteArray &id3)
{
    constexpr qsizetype dffHeader = 12;
    if (dsfOrDff.startsWith("FRM8"))
        return dffChunk("FRM8", dsfOrDff.sliced(dffHeader) + dffChunk("ID3 ", id3));
    QByteArray file = dsfOrDff + id3;
    file.replace(dsfTotalSize, 8, little(quint64(file.size())));
    file.replace(dsfMetadataPointer, 8, little(quint64(dsfOrDff.size())));
    return file;
}

QByteArray makeApe(double seconds)
{
    constexpr quint32 blocksPerFrame = 73728 * 4;
    const auto samples = quint32(seconds * cdRate);
    const quint32 frames = (samples + blocksPerFrame - 1) / blocksPerFrame;
    // Checksum with the flag "special codes follow", the code for silence in both channels, then nothing to
    // decode.
    const QByteArray frame =
        little(quint32(0x80000000)) + little(quint32(3)) + little(quint32(0)) + little(quint32(0));
    constexpr quint32 descriptorBytes = 52;
    constexpr quint32 headerBytes = 24;
    const quint32 seekBytes = frames * 4;
    QByteArray seekTable;
    QByteArray sound;
    for (quint32 i = 0; i < frames; ++i) {
        seekTable += little(descriptorBytes + headerBytes + seekBytes + quint32(sound.size()));
        sound += frame;
    }
    return "MAC " + little(quint16(3990)) + little(quint16(0)) + little(descriptorBytes) +
           little(headerBytes) + little(seekBytes) + little(quint32(0)) + little(quint32(sound.size())) +
           little(quint32(0)) + little(quint32(0)) + QByteArray(16, '\0') + little(quint16(2000)) +
           little(quint16(0x20)) + little(blocksPerFrame) + little(samples - (frames - 1) * blocksPerFrame) +
           little(frames) + little(quint16(16)) + little(quint16(2)) + little(quint32(cdRate)) + seekTable +
           sound;
}

QByteArray makeTak(double seconds)
{
    const auto samples = quint64(seconds * cdRate);
    LittleBits info;
    putTakStreamInfo(info, samples);
    QByteArray file = "tBaK" + takBlock(1, info.bytes() + crc24(info.bytes())) + takBlock(0, {});
    for (quint64 done = 0, number = 0; done < samples; done += takFrameSamples, ++number)
        file += takFrame(number, std::min(takFrameSamples, samples - done), samples);
    return file;
}

} // namespace cadorel
