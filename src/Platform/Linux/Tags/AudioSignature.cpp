// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/AudioSignature.h"

#include "Platform/Linux/Tags/MpegFrames.h"

#include <QtEndian>

#include <algorithm>
#include <span>

namespace cadorel {

namespace {

constexpr int signatureBytes = 64;
constexpr int id3v2HeaderBytes = 10;
constexpr int id3v1Bytes = 128;
constexpr int apeFooterBytes = 32;
constexpr int maximalId3Tags = 8;

struct Magic
{
    int offset;
    QByteArrayView bytes;
    AudioContainer container;
};

constexpr Magic magics[] = {
    {0, "fLaC", AudioContainer::flac},
    {4, "ftyp", AudioContainer::mp4},
    {4, "moov", AudioContainer::mp4},
    {4, "mdat", AudioContainer::mp4},
    {4, "wide", AudioContainer::mp4},
    {4, "free", AudioContainer::mp4},
    {8, "WAVE", AudioContainer::wav},
    {8, "AIFF", AudioContainer::aiff},
    {8, "AIFC", AudioContainer::aiff},
    {0, "\x30\x26\xb2\x75\x8e\x66\xcf\x11", AudioContainer::asf},
    {0, "MAC ", AudioContainer::monkeysAudio},
    {0, "wvpk", AudioContainer::wavPack},
    {0, "TTA1", AudioContainer::trueAudio},
    {0, "tBaK", AudioContainer::tak},
    {0, "DSD ", AudioContainer::dsf},
    {0, "FRM8", AudioContainer::dff},
    {0, "\x1a\x45\xdf\xa3", AudioContainer::matroska},
    {0, ".RMF", AudioContainer::realMedia},
    {0, ".ra\xfd", AudioContainer::realMedia},
};

/// The first packet of an Ogg stream lies behind the page header of 27 bytes and one segment size.
constexpr int oggPacket = 28;
constexpr Magic oggMagics[] = {
    {oggPacket, "\x01vorbis", AudioContainer::oggVorbis},
    {oggPacket,
     "\x7f"
     "FLAC",
     AudioContainer::oggFlac},
    {oggPacket, "OpusHead", AudioContainer::opus},
    {oggPacket, "Speex   ", AudioContainer::speex},
};

AudioContainer match(std::span<const Magic> list, QByteArrayView head)
{
    const auto found = std::ranges::find_if(list, [head](const Magic &magic) {
        return head.size() >= magic.offset + magic.bytes.size() &&
               head.sliced(magic.offset, magic.bytes.size()) == magic.bytes;
    });
    return found == list.end() ? AudioContainer::unknown : found->container;
}

AudioContainer containerOf(QByteArrayView head)
{
    if (head.startsWith("OggS"))
        return match(oggMagics, head);
    const AudioContainer container = match(magics, head);
    if ((container == AudioContainer::wav && !head.startsWith("RIFF")) ||
        (container == AudioContainer::aiff && !head.startsWith("FORM")))
        return AudioContainer::unknown;
    return container;
}

/// Length of the ID3v2 tag at @p offset with header and footer; 0 when there is none.
qint64 id3v2Length(FileBytes &file, qint64 offset)
{
    const QByteArray header = file.read(offset, id3v2HeaderBytes);
    if (header.size() < id3v2HeaderBytes || !header.startsWith("ID3"))
        return 0;
    qint64 length = 0;
    for (int i = 6; i < id3v2HeaderBytes; ++i)
        length = length << 7 | (header[i] & 0x7f);
    const bool footer = (header[5] & 0x10) != 0;
    return id3v2HeaderBytes + length + (footer ? id3v2HeaderBytes : 0);
}

void findTagsAtEnd(FileBytes &file, AudioSignature &signature)
{
    if (file.read(signature.audioEnd - id3v1Bytes, 3) == "TAG") {
        signature.audioEnd -= id3v1Bytes;
        signature.id3v1 = signature.audioEnd;
    }
    const QByteArray footer = file.read(signature.audioEnd - apeFooterBytes, apeFooterBytes);
    if (footer.size() < apeFooterBytes || !footer.startsWith("APETAGEX"))
        return;
    signature.apeFooter = signature.audioEnd - apeFooterBytes;
    const qint64 length = qFromLittleEndian<quint32>(footer.constData() + 12);
    const bool header = (qFromLittleEndian<quint32>(footer.constData() + 20) & 0x80000000) != 0;
    signature.audioEnd -= std::min(length + (header ? apeFooterBytes : 0), signature.audioEnd);
}

} // namespace

AudioSignature AudioSignature::of(FileBytes &file)
{
    AudioSignature signature;
    signature.audioEnd = file.size();
    for (int i = 0; i < maximalId3Tags; ++i) {
        const qint64 length = id3v2Length(file, signature.audioStart);
        if (length == 0)
            break;
        signature.audioStart += length;
        signature.hasId3v2 = true;
    }
    signature.container = containerOf(file.read(signature.audioStart, signatureBytes));
    if (signature.container != AudioContainer::unknown && signature.container != AudioContainer::tak)
        return signature;

    findTagsAtEnd(file, signature);
    if (signature.container == AudioContainer::tak)
        return signature;
    MpegFrames mpegAudio(file, FrameKind::mpegAudio, signature.audioEnd);
    MpegFrames adts(file, FrameKind::adts, signature.audioEnd);
    std::optional<qint64> first;
    if (!adts.startsAt(signature.audioStart))
        first = mpegAudio.first(signature.audioStart);
    if (first) {
        signature.container = AudioContainer::mpegAudio;
    } else {
        first = adts.first(signature.audioStart);
        signature.container = first ? AudioContainer::adts : AudioContainer::unknown;
    }
    signature.audioStart = first.value_or(signature.audioStart);
    return signature;
}

} // namespace cadorel
