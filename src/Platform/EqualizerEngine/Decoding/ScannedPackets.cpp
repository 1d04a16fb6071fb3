// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/Decoding/ScannedPackets.h"

#include "Platform/EqualizerEngine/Decoding/FrameDecoder.h"

#include <QtEndian>

#include <algorithm>

extern "C" {
#include <libavcodec/vorbis_parser.h>
#include <libavformat/avformat.h>
}

namespace cadorel {

namespace {

/// So many packets are decoded to learn what a packet holds and what a decoder keeps to itself.
constexpr size_t trialPackets = 8;

struct VorbisParserDeleter
{
    void operator()(AVVorbisParseContext *context) const { av_vorbis_parse_free(&context); }
};

/// How many samples a packet holds, as far as its codec tells that without decoding.
class PacketMeasure
{
public:
    explicit PacketMeasure(const AVCodecParameters &parameters)
        : m_parameters(avcodec_parameters_alloc())
    {
        avcodec_parameters_copy(m_parameters.get(), &parameters);
        if (parameters.codec_id == AV_CODEC_ID_VORBIS)
            m_vorbis.reset(av_vorbis_parse_init(parameters.extradata, parameters.extradata_size));
    }
    /// 0 when it does not tell.
    int samples(const AVPacket &packet)
    {
        if (m_vorbis)
            return std::max(0, av_vorbis_parse_frame(m_vorbis.get(), packet.data, packet.size));
        // Of others the library guesses from their bit rate.
        const bool linear =
            m_parameters->codec_id >= AV_CODEC_ID_PCM_S16LE && m_parameters->codec_id < AV_CODEC_ID_AMR_NB;
        return linear ? std::max(0, av_get_audio_frame_duration2(m_parameters.get(), packet.size)) : 0;
    }

private:
    AvPointer<AVCodecParameters> m_parameters;
    std::unique_ptr<AVVorbisParseContext, VorbisParserDeleter> m_vorbis;
};

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

} // namespace

/// What decoding a few packets from the beginning shows.
struct ScannedPackets::Trial
{
    AvPointer<AVFrame> frame{av_frame_alloc()};
    FrameDecoder decoder;
    bool decodes = false;
    size_t packets = 0;
    qint64 samples = 0;
    /// Samples in each frame; 0 before the first, -1 when they differ.
    int frameSamples = 0;
    int sampleRate = 0;
    /// The packet, counted from 0, that the first frame is told to be of.
    qint64 firstPacket = 0;
    int beforeSong = 0;
    /// What the last packet holds, decoded alone.
    int lastSamples = 0;
    int behindSong = 0;

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
        const bool same = frameSamples == 0 || frameSamples == frame->nb_samples;
        frameSamples = same ? frame->nb_samples : -1;
    }
};

ScannedPackets::ScannedPackets(MediaInput::Request request, std::unique_ptr<MediaInput> input)
    : m_request(std::move(request))
    , m_input(std::move(input))
    , m_parameters(avcodec_parameters_alloc())
    , m_containerUnit(m_input->audio()->time_base)
    , m_waiting(av_packet_alloc())
{
    avcodec_parameters_copy(m_parameters.get(), m_input->audio()->codecpar);
    Trial trial;
    scan(trial);
    count(trial);
    rewind();
}

bool ScannedPackets::readNext(AVPacket &packet)
{
    while (m_input && av_read_frame(m_input->context(), &packet) >= 0) {
        if (packet.stream_index == m_input->audio()->index && packet.size > 0)
            return true;
        av_packet_unref(&packet);
    }
    return false;
}

void ScannedPackets::scan(Trial &trial)
{
    PacketMeasure measure(*m_parameters);
    const AvPointer<AVPacket> packet(av_packet_alloc());
    const AvPointer<AVPacket> last(av_packet_alloc());
    // Frames are asked which packet they are of: in the trial a packet's time is its number.
    trial.decodes = trial.decoder.start(*m_parameters, {1, 1});
    while (readNext(*packet)) {
        m_entries.push_back(
            {.position = packet->pos, .containerTime = packet->pts, .samples = measure.samples(*packet)});
        if (trial.decodes && trial.packets < trialPackets) {
            packet->pts = packet->dts = qint64(trial.packets++);
            trial.send(packet.get());
        }
        trial.behindSong = samplesBehindSong(*packet);
        av_packet_unref(last.get());
        av_packet_move_ref(last.get(), packet.get());
    }
    if (!trial.decodes)
        return;
    trial.send(nullptr);
    FrameDecoder alone;
    if (m_entries.size() > trialPackets && isLossless(m_parameters->codec_id) &&
        alone.start(*m_parameters, {1, 1})) {
        alone.send(last.get());
        while (alone.receive(*trial.frame))
            trial.lastSamples += trial.frame->nb_samples;
    }
}

void ScannedPackets::count(const Trial &trial)
{
    m_sampleRate = std::max(1, trial.sampleRate);
    const int usual = std::max(0, trial.frameSamples);
    qint64 sample = 0;
    for (Entry &entry : m_entries) {
        if (entry.samples == 0)
            entry.samples = usual;
        if (trial.lastSamples > 0 && &entry == &m_entries.back())
            entry.samples = trial.lastSamples;
        entry.sample = sample;
        sample += entry.samples;
    }
    if (m_entries.empty())
        return;
    if (!agreesWithTimes())
        countByTimes();
    const auto startOf = [this](size_t i) {
        return i < m_entries.size() ? m_entries[i].sample
                                    : m_entries.back().sample + m_entries.back().samples;
    };
    // Some decoders give nothing for the first packet, and some are a packet late.
    const qint64 first = startOf(size_t(trial.firstPacket));
    const qint64 kept = startOf(trial.packets) - trial.samples;
    m_begin = first + trial.beforeSong;
    m_end = first + startOf(m_entries.size()) - kept - trial.behindSong;
}

bool ScannedPackets::agreesWithTimes() const
{
    const Entry &first = m_entries.front();
    const auto last = std::ranges::find_if(m_entries.rbegin(), m_entries.rend(), [](const Entry &entry) {
        return entry.containerTime != AV_NOPTS_VALUE;
    });
    if (last == m_entries.rend() || first.containerTime == AV_NOPTS_VALUE)
        return true;
    const double told = double(last->containerTime - first.containerTime) * av_q2d(m_containerUnit);
    const double counted = double(last->sample - first.sample) / m_sampleRate;
    constexpr double tolerance = 0.02;
    return std::abs(told - counted) < tolerance;
}

void ScannedPackets::countByTimes()
{
    const qint64 begin = m_entries.front().containerTime;
    qint64 sample = 0;
    for (Entry &entry : m_entries) {
        if (entry.containerTime != AV_NOPTS_VALUE)
            sample = std::max<qint64>(sample, av_rescale_q(entry.containerTime - begin, m_containerUnit, timeBase()));
        entry.sample = sample;
    }
    for (size_t i = 0; i + 1 < m_entries.size(); ++i)
        m_entries[i].samples = int(m_entries[i + 1].sample - m_entries[i].sample);
}

std::optional<size_t> ScannedPackets::find(const AVPacket &packet) const
{
    const auto found = std::ranges::find_if(m_entries, [&packet](const Entry &entry) {
        return entry.position == packet.pos && entry.containerTime == packet.pts;
    });
    return found == m_entries.end() ? std::nullopt : std::optional(size_t(found - m_entries.begin()));
}

bool ScannedPackets::read(AVPacket &packet)
{
    for (;;) {
        if (m_hasWaiting)
            av_packet_move_ref(&packet, m_waiting.get());
        else if (!readNext(packet))
            return false;
        m_hasWaiting = false;
        const size_t i = m_next++;
        if (i >= m_entries.size())
            return false;
        packet.pts = packet.dts = m_entries[i].sample;
        packet.duration = m_entries[i].samples;
        if (i >= m_wanted)
            return true;
        av_packet_unref(&packet);
    }
}

void ScannedPackets::seek(qint64 time)
{
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
    if (reached && *reached <= wanted)
        m_next = *reached;
    else
        rewind();
    m_wanted = wanted;
}

void ScannedPackets::rewind()
{
    m_hasWaiting = false;
    m_next = 0;
    m_wanted = 0;
    auto input = MediaInput::open(m_request);
    m_input = input ? *std::move(input) : nullptr;
}

qint64 ScannedPackets::end(qint64) const
{
    return m_end;
}

} // namespace cadorel
