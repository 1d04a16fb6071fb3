// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/Decoding/XingHeader.h"

#include <QtEndian>

namespace cadorel {

namespace {

constexpr int frameHeaderBytes = 4;
/// "VBRI" stands behind the longest side information, whatever the frame's own is.
constexpr int vbriOffset = frameHeaderBytes + 32;
constexpr int vbriBytes = 18;
constexpr int tableBytes = 100;
/// From the encoder's name to the twelve bits of delay and of padding (LAME's "mp3 info tag" revision 1).
constexpr int gapsOffset = 21;

/// Reads numbers one after the other; zeros behind the end.
class Fields
{
public:
    Fields(const QByteArray &bytes, qsizetype position)
        : m_bytes(bytes)
        , m_position(position)
    {
    }
    quint32 number(int size)
    {
        quint32 value = 0;
        for (int i = 0; i < size; ++i, ++m_position)
            value = value << 8 | (m_position < m_bytes.size() ? uchar(m_bytes[m_position]) : 0U);
        return value;
    }
    void skip(qsizetype count) { m_position += count; }
    bool atEnd() const { return m_position >= m_bytes.size(); }

private:
    const QByteArray &m_bytes;
    qsizetype m_position;
};

XingHeader xing(Fields fields)
{
    XingHeader header;
    const quint32 flags = fields.number(4);
    if (flags & 1)
        header.frames = fields.number(4);
    if (flags & 2)
        header.bytes = fields.number(4);
    if (flags & 4)
        fields.skip(tableBytes);
    if (flags & 8)
        fields.skip(4);
    fields.skip(gapsOffset);
    const quint32 gaps = fields.number(3);
    if (gaps != 0)
        header.gaps = XingHeader::Gaps{.delay = int(gaps >> 12), .padding = int(gaps & 0xfff)};
    return header;
}

XingHeader vbri(Fields fields)
{
    XingHeader header;
    fields.skip(6); // version, delay, quality
    header.bytes = fields.number(4);
    header.frames = fields.number(4);
    return header;
}

} // namespace

std::optional<XingHeader> XingHeader::of(FileBytes &file, qint64 offset, const FrameHeader &frame)
{
    const QByteArray bytes = file.read(offset, frame.bytes);
    if (bytes.size() < vbriOffset + vbriBytes)
        return std::nullopt;
    // ISO 11172-3 and 13818-3: how long the side information is.
    const bool firstVersion = (bytes[1] & 0x08) != 0;
    const bool mono = (bytes[3] & 0xc0) == 0xc0;
    const int sideBytes = firstVersion ? (mono ? 17 : 32) : (mono ? 9 : 17);
    const QByteArrayView name = QByteArrayView(bytes).sliced(frameHeaderBytes + sideBytes, 4);
    if (name == "Xing" || name == "Info")
        return xing(Fields(bytes, frameHeaderBytes + sideBytes + 4));
    if (QByteArrayView(bytes).sliced(vbriOffset, 4) == "VBRI")
        return vbri(Fields(bytes, vbriOffset + 4));
    return std::nullopt;
}

} // namespace cadorel
