// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/Decoding/TimedPackets.h"

#include <QByteArrayView>
#include <QList>

#include <algorithm>

extern "C" {
#include <libavformat/avformat.h>
}

namespace cadorel {

namespace {

/// The list of edits counts in the unit of the whole film, 1/600 s or so.
constexpr qint64 editsPerSecond = 500;

bool isPcm(const AVCodecParameters &parameters)
{
    return av_get_exact_bits_per_sample(parameters.codec_id) > 0 && parameters.block_align > 0 &&
           parameters.codec_id < AV_CODEC_ID_ADPCM_IMA_QT;
}

bool isNamed(const MediaInput &input, const char *name)
{
    const QByteArrayView names(input.context()->iformat->name);
    return names.toByteArray().split(',').contains(name);
}

/// How many samples a song from iTunes has: the fourth of the numbers that its encoder notes.
std::optional<qint64> notedLength(const MediaInput &input)
{
    const AVDictionaryEntry *note = av_dict_get(input.context()->metadata, "iTunSMPB", nullptr, 0);
    const QList<QByteArray> numbers = QByteArray(note ? note->value : "").simplified().split(' ');
    bool ok = false;
    const qint64 length = numbers.value(3).toLongLong(&ok, 16);
    return ok && length > 0 ? std::optional(length) : std::nullopt;
}

} // namespace

bool TimedPackets::suits(const MediaInput &input)
{
    const AVStream *stream = input.audio();
    if (stream->duration == AV_NOPTS_VALUE || stream->duration <= 0 || stream->time_base.num <= 0)
        return false;
    for (const char *name : {"flac", "mov", "wv", "tta", "tak", "ape", "dsf", "iff"}) {
        if (isNamed(input, name))
            return true;
    }
    return isPcm(*stream->codecpar) &&
           std::ranges::any_of(std::initializer_list{"wav", "w64", "aiff", "caf", "au"},
                               [&](const char *name) { return isNamed(input, name); });
}

TimedPackets::TimedPackets(MediaInput::Request request, std::unique_ptr<MediaInput> input)
    : m_request(std::move(request))
    , m_input(std::move(input))
    , m_parameters(avcodec_parameters_alloc())
    , m_timeBase(m_input->audio()->time_base)
    , m_gaplessLength(notedLength(*m_input))
    , m_waiting(av_packet_alloc())
{
    const AVStream *stream = m_input->audio();
    avcodec_parameters_copy(m_parameters.get(), stream->codecpar);
    m_end = stream->duration + (stream->start_time == AV_NOPTS_VALUE ? 0 : stream->start_time);
    if (!isNamed(*m_input, "mov"))
        return;
    MediaInput::Request unedited = m_request;
    unedited.unedited = true;
    if (const auto recorded = MediaInput::open(unedited))
        m_recordedLength = (*recorded)->audio()->duration;
}

bool TimedPackets::readNext(AVPacket &packet)
{
    if (!m_input || !m_input->readSound(packet))
        return false;
    if (m_soundOffset < 0) {
        m_soundOffset = packet.pos;
        m_firstTime = packet.pts == AV_NOPTS_VALUE ? 0 : packet.pts;
    }
    return true;
}

bool TimedPackets::read(AVPacket &packet)
{
    if (!m_hasWaiting)
        return readNext(packet);
    m_hasWaiting = false;
    av_packet_move_ref(&packet, m_waiting.get());
    return true;
}

void TimedPackets::seek(qint64 time)
{
    const auto readWaiting = [this] {
        av_packet_unref(m_waiting.get());
        m_hasWaiting = readNext(*m_waiting);
        return m_hasWaiting;
    };
    const auto begins = [this](qint64 atMost) {
        return m_waiting->pts != AV_NOPTS_VALUE && m_waiting->pts <= atMost;
    };
    const bool found =
        m_input &&
        av_seek_frame(m_input->context(), m_input->audio()->index, time, AVSEEK_FLAG_BACKWARD) >= 0 &&
        readWaiting() && begins(time);
    if (!found) {
        rewind();
        readWaiting();
    }
    while (m_hasWaiting && begins(time - m_waiting->duration))
        readWaiting();
}

void TimedPackets::rewind()
{
    m_hasWaiting = false;
    auto input = MediaInput::open(m_request);
    m_input = input ? *std::move(input) : nullptr;
}

qint64 TimedPackets::end(qint64 songBegin) const
{
    if (m_gaplessLength)
        return std::min(songBegin + *m_gaplessLength, m_end + songBegin);
    if (isPcm(*m_parameters) && m_soundOffset >= 0) {
        // A recording that was cut off still announces its whole length.
        const qint64 there = (m_request.file->size() - m_soundOffset) / m_parameters->block_align;
        return std::min(m_end, songBegin + there);
    }
    if (m_recordedLength) {
        const qint64 recordedEnd = m_firstTime + *m_recordedLength;
        if (std::abs(recordedEnd - m_end) <= av_rescale_q(1, {1, editsPerSecond}, m_timeBase))
            return recordedEnd;
    }
    return m_end;
}

} // namespace cadorel
