// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/Decoding/FramePackets.h"

#include "Platform/EqualizerEngine/Decoding/XingHeader.h"

#include <algorithm>
#include <cmath>

namespace cadorel {

namespace {

/// How many samples a decoder of layer III is behind: its filter bank's 528 and one.
constexpr int decoderDelay = 529;
constexpr int framesBetweenPlaces = 16;
/// A frame may lean on 255 or 511 bytes of sound before it (ISO 11172-3, main_data_begin); frames of 8 kbit/s
/// have 11 each.
constexpr int framesLeantOn = 32;
/// How far an encoder's byte count may be from the file's before the file counts as cut or joined.
constexpr qint64 byteTolerance = 4096;

AVCodecID codecOf(FrameKind kind, quint32 streamBits)
{
    if (kind == FrameKind::adts)
        return AV_CODEC_ID_AAC;
    switch (streamBits >> 17 & 3) {
    case 3:
        return AV_CODEC_ID_MP1;
    case 2:
        return AV_CODEC_ID_MP2;
    default:
        return AV_CODEC_ID_MP3;
    }
}

} // namespace

FramePackets::FramePackets(std::shared_ptr<FileBytes> file, const AudioSignature &signature)
    : m_file(std::move(file))
    , m_frames(*m_file, signature.container == AudioContainer::adts ? FrameKind::adts : FrameKind::mpegAudio,
               signature.audioEnd)
    , m_parameters(avcodec_parameters_alloc())
{
    const bool adts = signature.container == AudioContainer::adts;
    m_next.offset = signature.audioStart;
    m_first = m_frames.next(m_next.offset, std::nullopt).value_or(FrameHeader());
    m_parameters->codec_type = AVMEDIA_TYPE_AUDIO;
    m_parameters->codec_id = codecOf(adts ? FrameKind::adts : FrameKind::mpegAudio, m_first.streamBits);
    m_parameters->sample_rate = m_first.sampleRate;
    if (m_parameters->codec_id == AV_CODEC_ID_MP3)
        readHeader(signature);
    m_places.push_back(m_next);
    if (m_end == 0 && m_first.sampleRate > 0)
        m_end = std::llround(m_frames.count(m_next.offset) * m_first.sampleRate);
}

void FramePackets::readHeader(const AudioSignature &signature)
{
    const auto header = XingHeader::of(*m_file, m_next.offset, m_first);
    if (!header)
        return;
    const qint64 told = m_next.offset + header->bytes;
    m_next.offset += m_first.bytes;
    if (header->gaps)
        m_begin = header->gaps->delay + decoderDelay;
    // Of a file that was cut, or joined from several, the header tells another's length.
    const bool whole = header->bytes > 0 && std::abs(told - signature.audioEnd) <= byteTolerance;
    if (!whole)
        return;
    m_end = header->frames * m_first.samples;
    if (header->gaps && m_end > 0)
        m_end -= std::max(0, header->gaps->padding - decoderDelay);
}

bool FramePackets::read(AVPacket &packet)
{
    const auto frame = m_frames.next(m_next.offset, m_first.streamBits);
    if (!frame || av_new_packet(&packet, frame->bytes) < 0)
        return false;
    if (m_file->read(m_next.offset, reinterpret_cast<char *>(packet.data), frame->bytes) < frame->bytes)
        return false;
    packet.pts = packet.dts = m_next.sample;
    packet.duration = frame->samples;
    m_next.offset += frame->bytes;
    m_next.sample += frame->samples;
    return true;
}

void FramePackets::seek(qint64 time)
{
    time -= qint64(framesLeantOn) * m_first.samples;
    while (m_places.back().sample < time) {
        Place place = m_places.back();
        std::optional<FrameHeader> frame;
        for (int i = 0; i < framesBetweenPlaces; ++i) {
            frame = m_frames.next(place.offset, m_first.streamBits);
            if (!frame)
                break;
            place.offset += frame->bytes;
            place.sample += frame->samples;
        }
        if (!frame)
            break;
        m_places.push_back(place);
    }
    const auto after = std::ranges::upper_bound(m_places, time, {}, &Place::sample);
    m_next = after == m_places.begin() ? m_places.front() : *std::prev(after);
}

void FramePackets::rewind()
{
    m_next = m_places.front();
}

qint64 FramePackets::end(qint64) const
{
    return m_end;
}

} // namespace cadorel
