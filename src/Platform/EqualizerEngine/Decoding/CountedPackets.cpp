// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/Decoding/CountedPackets.h"

#include "Platform/EqualizerEngine/Decoding/FrameDecoder.h"

#include <QByteArrayView>
#include <QHashFunctions>
#include <QtEndian>

#include <algorithm>
#include <cmath>

extern "C" {
#include <libavformat/avformat.h>
}

namespace cadorel {

namespace {

/// So many packets are decoded to learn what a packet holds and what a decoder keeps to itself.
constexpr size_t trialPackets = 8;
/// How far counting and the container's times may be apart, in seconds.
constexpr double timeTolerance = 0.02;
/// From here on, 1/10 s, a gap in the times of Ogg is no mistake.
constexpr int holesPerSecond = 10;

bool isLossless(AVCodecID id)
{
    const AVCodecDescriptor *descriptor = avcodec_descriptor_get(id);
    return descriptor && (descriptor->props & AV_CODEC_PROP_LOSSLESS) &&
           !(descriptor->props & AV_CODEC_PROP_LOSSY);
}

/// Samples behind the song's end in the last packet.
int samplesBehindSong(const AVPacket &packet)
{
    size_t size = 0;
    const uint8_t *data = av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, &size);
    return data && size >= 8 ? int(qFromLittleEndian<quint32>(data + 4)) : 0;
}

quint32 markOf(const AVPacket &packet)
{
    return quint32(qHashBits(packet.data, size_t(packet.size)));
}

} // namespace

/// What decoding a few packets from the beginning shows.
struct CountedPackets::Trial
{
    AvPointer<AVFrame> frame{av_frame_alloc()};
    FrameDecoder decoder;
    size_t packets = 0;
    qint64 samples = 0;
    /// Samples in each frame; 0 before the first, -1 when they differ.
    int frameSamples = 0;
    int sampleRate = 0;
    int frames = 0;
    /// The packet, counted from 0, that the first frame is told to be of.
    qint64 firstPacket = 0;
    int beforeSong = 0;

    /// 0 when that differs.
    int samplesInPacket() const
    {
        const auto framesInPacket = packets > 0 ? std::lround(double(frames) / double(packets)) : 1;
        return std::max(0, frameSamples) * int(std::max(1L, framesInPacket));
    }
    void send(const AVPacket *packet)
    {
        decoder.send(packet);
        while (decoder.receive(*frame))
            take();
    }
    void take()
    {
        if (samples == 0) {
            firstPacket = std::max<qint64>(0, frame->pts);
            sampleRate = frame->sample_rate;
            beforeSong = samplesBeforeSong(*frame);
        }
        samples += frame->nb_samples;
        ++frames;
        const bool same = frameSamples == 0 || frameSamples == frame->nb_samples;
        frameSamples = same ? frame->nb_samples : -1;
    }
};

CountedPackets::CountedPackets(MediaInput::Request request, std::unique_ptr<MediaInput> input)
    : m_request(std::move(request))
    , m_input(std::move(input))
    , m_parameters(avcodec_parameters_alloc())
    , m_containerUnit(m_input->audio()->time_base)
    , m_measure(*m_input->audio()->codecpar)
    , m_waiting(av_packet_alloc())
{
    avcodec_parameters_copy(m_parameters.get(), m_input->audio()->codecpar);
    const std::optional<qint64> length = toldLength();
    Trial trial;
    tryDecoding(trial);
    m_isLengthTold = length.has_value();
    m_sampleRate = std::max(1, trial.sampleRate);
    m_usualSamples = trial.samplesInPacket();
    for (Entry &entry : m_entries)
        entry.samples = entry.samples == 0 ? m_usualSamples : entry.samples;
    for (size_t i = 1; i < m_entries.size(); ++i)
        m_entries[i].sample = m_entries[i - 1].sample + m_entries[i - 1].samples;
    if (!length)
        countAll();
    // Some decoders give nothing for the first packet, and some are a packet late.
    const qint64 first = startOf(size_t(trial.firstPacket));
    const qint64 kept = startOf(trial.packets) - trial.samples;
    m_begin = first + trial.beforeSong;
    m_end = length ? m_begin + *length : first + startOf(m_entries.size()) - kept - m_behindSong;
    rewind();
}

std::optional<qint64> CountedPackets::toldLength() const
{
    const AVStream *stream = m_input->audio();
    const bool ogg = QByteArrayView(m_input->context()->iformat->name) == "ogg";
    if (!ogg || stream->duration == AV_NOPTS_VALUE || m_parameters->sample_rate <= 0)
        return std::nullopt;
    switch (m_parameters->codec_id) {
    case AV_CODEC_ID_OPUS:
        // The last page counts what comes before the song, too (RFC 7845, section 4).
        return stream->duration - m_parameters->initial_padding;
    case AV_CODEC_ID_FLAC:
    case AV_CODEC_ID_VORBIS:
        return stream->duration;
    default:
        return std::nullopt;
    }
}

bool CountedPackets::readNext(AVPacket &packet)
{
    return m_input && m_input->readSound(packet);
}

qint64 CountedPackets::startOf(size_t i) const
{
    if (m_entries.empty())
        return 0;
    return i < m_entries.size() ? m_entries[i].sample : m_entries.back().sample + m_entries.back().samples;
}

void CountedPackets::add(const AVPacket &packet)
{
    const int told = m_measure.samples(packet);
    qint64 sample = startOf(m_entries.size());
    if (m_isLengthTold && !m_entries.empty() && packet.pts != AV_NOPTS_VALUE &&
        m_entries.front().containerTime != AV_NOPTS_VALUE) {
        // A page is missing or damaged.
        const qint64 since = packet.pts - m_entries.front().containerTime;
        const qint64 place = m_entries.front().sample + av_rescale_q(since, m_containerUnit, timeBase());
        if (place - sample > m_sampleRate / holesPerSecond)
            sample = place;
    }
    m_entries.push_back({.position = packet.pos,
                         .containerTime = packet.pts,
                         .sample = sample,
                         .samples = told > 0 ? told : m_usualSamples,
                         .mark = markOf(packet)});
    m_behindSong = samplesBehindSong(packet);
}

void CountedPackets::tryDecoding(Trial &trial)
{
    // Frames are asked which packet they are of: in the trial a packet's time is its number.
    if (!trial.decoder.start(*m_parameters, {1, 1}))
        return;
    const AvPointer<AVPacket> packet(av_packet_alloc());
    while (trial.packets < trialPackets && readNext(*packet)) {
        add(*packet);
        packet->pts = packet->dts = qint64(trial.packets++);
        trial.send(packet.get());
        av_packet_unref(packet.get());
    }
    trial.send(nullptr);
}

void CountedPackets::countAll()
{
    rewind();
    m_complete = true;
    const AvPointer<AVPacket> packet(av_packet_alloc());
    const AvPointer<AVPacket> last(av_packet_alloc());
    for (size_t i = 0; readNext(*packet); ++i) {
        if (i >= m_entries.size())
            add(*packet);
        av_packet_unref(last.get());
        av_packet_move_ref(last.get(), packet.get());
    }
    if (m_entries.empty())
        return;
    FrameDecoder alone;
    if (isLossless(m_parameters->codec_id) && alone.start(*m_parameters, {1, 1})) {
        const AvPointer<AVFrame> frame(av_frame_alloc());
        int samples = 0;
        alone.send(last.get());
        while (alone.receive(*frame))
            samples += frame->nb_samples;
        if (samples > 0)
            m_entries.back().samples = samples;
    }
    if (!agreesWithTimes())
        countByTimes();
}

bool CountedPackets::agreesWithTimes() const
{
    const Entry &first = m_entries.front();
    const auto last = std::ranges::find_if(m_entries.rbegin(), m_entries.rend(), [](const Entry &entry) {
        return entry.containerTime != AV_NOPTS_VALUE;
    });
    if (last == m_entries.rend() || first.containerTime == AV_NOPTS_VALUE)
        return true;
    const double told = double(last->containerTime - first.containerTime) * av_q2d(m_containerUnit);
    const double counted = double(last->sample - first.sample) / m_sampleRate;
    return std::abs(told - counted) < timeTolerance;
}

void CountedPackets::countByTimes()
{
    const qint64 begin = m_entries.front().containerTime;
    qint64 sample = 0;
    for (Entry &entry : m_entries) {
        if (entry.containerTime != AV_NOPTS_VALUE)
            sample = std::max<qint64>(sample,
                                      av_rescale_q(entry.containerTime - begin, m_containerUnit, timeBase()));
        entry.sample = sample;
    }
    for (size_t i = 0; i + 1 < m_entries.size(); ++i)
        m_entries[i].samples = int(m_entries[i + 1].sample - m_entries[i].sample);
}

std::optional<size_t> CountedPackets::find(const AVPacket &packet) const
{
    const auto same = [&packet, mark = markOf(packet)](const Entry &entry) {
        return entry.mark == mark && entry.position == packet.pos;
    };
    const auto found = std::ranges::find_if(m_entries, same);
    // Of silence two packets may be alike.
    if (found == m_entries.end() || std::find_if(std::next(found), m_entries.end(), same) != m_entries.end())
        return std::nullopt;
    return size_t(found - m_entries.begin());
}

bool CountedPackets::read(AVPacket &packet)
{
    for (;;) {
        if (m_hasWaiting)
            av_packet_move_ref(&packet, m_waiting.get());
        else if (!readNext(packet))
            return false;
        m_hasWaiting = false;
        const size_t i = m_next++;
        if (i == m_entries.size() && !m_complete)
            add(packet);
        if (i >= m_entries.size())
            return false;
        packet.pts = packet.dts = m_entries[i].sample;
        packet.duration = m_entries[i].samples;
        if (i >= m_wanted)
            return true;
        av_packet_unref(&packet);
    }
}

void CountedPackets::seek(qint64 time)
{
    if (!m_complete)
        countAll();
    const auto after = std::ranges::upper_bound(m_entries, time, {}, &Entry::sample);
    if (after == m_entries.begin()) {
        rewind();
        return;
    }
    const Entry &entry = *std::prev(after);
    const auto wanted = size_t(&entry - m_entries.data());
    av_packet_unref(m_waiting.get());
    m_hasWaiting = m_input && entry.containerTime != AV_NOPTS_VALUE &&
                   av_seek_frame(m_input->context(), m_input->audio()->index, entry.containerTime,
                                 AVSEEK_FLAG_BACKWARD) >= 0 &&
                   readNext(*m_waiting);
    const auto reached = m_hasWaiting ? find(*m_waiting) : std::nullopt;
    // A container that cannot search is read from the beginning; to pass over packets is quick.
    if (reached && *reached <= wanted)
        m_next = *reached;
    else
        rewind();
    m_wanted = wanted;
}

void CountedPackets::rewind()
{
    m_hasWaiting = false;
    m_next = 0;
    m_wanted = 0;
    auto input = MediaInput::open(m_request);
    m_input = input ? *std::move(input) : nullptr;
}

qint64 CountedPackets::end(qint64) const
{
    return m_end;
}

} // namespace cadorel
