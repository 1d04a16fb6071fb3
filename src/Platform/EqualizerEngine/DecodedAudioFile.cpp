// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/DecodedAudioFile.h"

#include "Platform/EqualizerEngine/Decoding/CountedPackets.h"
#include "Platform/EqualizerEngine/Decoding/FramePackets.h"
#include "Platform/EqualizerEngine/Decoding/TimedPackets.h"
#include "Platform/UnplayableFile.h"

#include <algorithm>
#include <stdexcept>

namespace cadorel {

namespace {

/// Before the place of a seek, so that every codec has found its way there: the bit reservoir of an MP3 of
/// few bits reaches 0.3 s back, Opus wants 80 ms, a spectral band replication a header that comes twice a
/// second.
constexpr double prerollSeconds = 0.5;
/// Frames decoded at the opening. A decoder may know no sooner that there is twice the rate, or a second
/// channel.
constexpr size_t firstPieces = 3;
constexpr int mostChannels = 8;
/// Beyond it a song's rate is brought down: no device plays it, and the filters would work for nothing.
constexpr int highestRate = 192'000;
/// One-bit sound is noise above the audible, which is left behind.
constexpr int highestOneBitRate = 96'000;
/// A hole in the packets' times from here on is a piece of the song that is missing, 1/100 s.
constexpr int holesPerSecond = 100;
/// What a song may lack at its end, where its container counts in milliseconds or blocks: 1/10 s.
constexpr int roundingsPerSecond = 10;

[[noreturn]] void fail(const QString &text)
{
    throw std::runtime_error(text.toStdString());
}

std::unique_ptr<PacketSource> openSource(const std::shared_ptr<FileBytes> &file)
{
    const AudioSignature signature = AudioSignature::of(*file);
    if (signature.container == AudioContainer::mpegAudio || signature.container == AudioContainer::adts)
        return std::make_unique<FramePackets>(file, signature);
    const MediaInput::Request request{.file = file, .soundOnly = true};
    auto input = MediaInput::open(request);
    if (!input)
        fail(input.error().reason == MediaInput::Failure::silent ? silentFileText() : unrecognisedFileText());
    if (TimedPackets::suits(**input))
        return std::make_unique<TimedPackets>(request, *std::move(input));
    return std::make_unique<CountedPackets>(request, *std::move(input));
}

bool isOneBit(AVCodecID id)
{
    return id == AV_CODEC_ID_DSD_LSBF || id == AV_CODEC_ID_DSD_MSBF || id == AV_CODEC_ID_DSD_LSBF_PLANAR ||
           id == AV_CODEC_ID_DSD_MSBF_PLANAR || id == AV_CODEC_ID_DST;
}

int reduction(int sampleRate, AVCodecID id)
{
    const int highest = isOneBit(id) ? highestOneBitRate : highestRate;
    int factor = 1;
    while (sampleRate / factor > highest && sampleRate % (factor * 2) == 0)
        factor *= 2;
    return factor;
}

} // namespace

std::shared_ptr<AudioFile> DecodedAudioFile::open(const QUrl &url)
{
    const QString path = url.isLocalFile() ? url.toLocalFile() : QString();
    const auto file = FileBytes::open(path);
    if (!file)
        fail(unreadableFileText(path));
    std::shared_ptr<DecodedAudioFile> opened(new DecodedAudioFile(url, openSource(*file)));
    opened->start();
    return opened;
}

DecodedAudioFile::DecodedAudioFile(const QUrl &url, std::unique_ptr<PacketSource> source)
    : m_url(url)
    , m_source(std::move(source))
    , m_packet(av_packet_alloc())
{
}

DecodedAudioFile::~DecodedAudioFile() = default;

void DecodedAudioFile::start()
{
    if (!m_decoder.start(m_source->parameters(), m_source->timeBase()))
        fail(unsupportedFileText());
    while (m_pieces.size() < firstPieces && decode()) {
    }
    if (m_pieces.empty())
        fail(unrecognisedFileText());
    const AVFrame &shape = *m_pieces.back().frame;
    const int channels = shape.ch_layout.nb_channels;
    m_sampleRate = shape.sample_rate;
    m_factor = reduction(m_sampleRate, m_source->parameters().codec_id);
    if (channels > mostChannels || m_sampleRate / m_factor > highestRate)
        fail(unsupportedFileText());
    m_converter = std::make_unique<SampleConverter>(
        shape, AudioFormat{.sampleRate = m_sampleRate / m_factor, .channelCount = channels});

    // Now that the rate is known their places are, too.
    std::deque<Piece> pieces = std::exchange(m_pieces, {});
    m_nextPosition = 0;
    for (Piece &piece : pieces)
        add(std::move(piece.frame));
    const auto isSong = [](const Piece &piece) { return !(piece.frame->flags & AV_FRAME_FLAG_DISCARD); };
    const auto first = std::ranges::find_if(m_pieces, isSong);
    const Piece &begin = first == m_pieces.end() ? m_pieces.front() : *first;
    const AVRational unit{1, m_sampleRate};
    const AVRational packetUnit = m_source->timeBase();
    m_begin = begin.position + samplesBeforeSong(*begin.frame);
    if (const auto told = m_source->begin())
        m_begin = av_rescale_q(*told, packetUnit, unit);
    const qint64 end = av_rescale_q(m_source->end(av_rescale_q(m_begin, unit, packetUnit)), packetUnit, unit);
    m_length = (end - m_begin + m_factor - 1) / m_factor;
    if (m_length <= 0)
        fail(unrecognisedFileText());
}

bool DecodedAudioFile::decode()
{
    AvPointer<AVFrame> frame(av_frame_alloc());
    while (!m_decoder.receive(*frame)) {
        if (m_drained)
            return false;
        m_drained = !m_source->read(*m_packet);
        m_decoder.send(m_drained ? nullptr : m_packet.get());
        av_packet_unref(m_packet.get());
    }
    add(std::move(frame));
    return true;
}

void DecodedAudioFile::add(AvPointer<AVFrame> frame)
{
    const AVRational unit{1, std::max(1, m_sampleRate)};
    if (frame->pts != AV_NOPTS_VALUE)
        m_nextPosition = av_rescale_q(frame->pts, m_source->timeBase(), unit);
    const qint64 position = m_nextPosition;
    if (m_nextPosition != unknownPosition)
        m_nextPosition += av_rescale_q(frame->nb_samples, {1, frame->sample_rate}, unit);
    m_pieces.push_back({.frame = std::move(frame), .position = position});
}

void DecodedAudioFile::decodeFrom(qint64 position)
{
    m_pieces.clear();
    m_drained = false;
    if (position > m_begin) {
        m_source->seek(av_rescale_q_rnd(position, {1, m_sampleRate}, m_source->timeBase(), AV_ROUND_DOWN));
        m_nextPosition = unknownPosition;
    } else {
        m_source->rewind();
        m_nextPosition = 0;
    }
    m_decoder.start(m_source->parameters(), m_source->timeBase());
}

void DecodedAudioFile::seek(qint64 frame)
{
    frame = std::clamp<qint64>(frame, 0, m_length);
    if (frame == m_position)
        return;
    m_position = frame;
    m_samples.clear();
    m_aligned = false;
    m_finished = false;
    m_converter->reset();
    if (m_position == m_length)
        return;
    const qint64 wanted = m_begin + m_position * m_factor;
    decodeFrom(wanted - qint64(prerollSeconds * m_sampleRate));
    if (decode() && m_pieces.front().position != unknownPosition && m_pieces.front().position <= wanted)
        return;
    // The container's own search was of no use.
    decodeFrom(m_begin);
}

qint64 DecodedAudioFile::read(float *interleaved, qint64 frameCount)
{
    const auto channels = size_t(m_converter->format().channelCount);
    frameCount = std::min(frameCount, m_length - m_position);
    qint64 done = 0;
    while (done < frameCount) {
        const auto available = qint64(m_samples.size() / channels);
        const qint64 offset = m_position - m_samplesBegin;
        if (!m_aligned || offset >= available) {
            m_samplesBegin += available;
            m_samples.clear();
            if (!fill())
                break;
            continue;
        }
        float *to = interleaved + size_t(done) * channels;
        qint64 count = 0;
        if (offset < 0) {
            count = std::min(frameCount - done, -offset);
            std::fill_n(to, size_t(count) * channels, 0.0F);
        } else {
            count = std::min(frameCount - done, available - offset);
            std::copy_n(m_samples.data() + size_t(offset) * channels, size_t(count) * channels, to);
        }
        done += count;
        m_position += count;
    }
    return done;
}

bool DecodedAudioFile::fill()
{
    if (!m_pieces.empty() || decode()) {
        const Piece piece = std::move(m_pieces.front());
        m_pieces.pop_front();
        take(piece);
        return true;
    }
    if (m_finished || !m_aligned)
        return false;
    m_finished = true;
    m_converter->finish(m_samples);
    const auto channels = size_t(m_converter->format().channelCount);
    const qint64 missing = m_length - m_samplesBegin - qint64(m_samples.size() / channels);
    if (missing > 0 && missing <= m_converter->format().sampleRate / roundingsPerSecond)
        addSilence(missing);
    return !m_samples.empty();
}

void DecodedAudioFile::take(const Piece &piece)
{
    const auto channels = size_t(m_converter->format().channelCount);
    const qint64 position = piece.position - m_begin;
    int skipped = 0;
    if (!m_aligned) {
        m_aligned = true;
        // The first frame that is given stands for a whole group of decoded ones.
        skipped = int((m_factor - position % m_factor) % m_factor);
        m_samplesBegin = (position + skipped) / m_factor;
    } else if (m_factor == 1) {
        const qint64 hole = position - m_samplesBegin - qint64(m_samples.size() / channels);
        // What could not be decoded leaves silence of its length: the song's clock stays right.
        if (hole > m_sampleRate / holesPerSecond)
            addSilence(std::min(hole, m_length - m_samplesBegin));
    }
    m_converter->convert(*piece.frame, skipped, m_samples);
}

void DecodedAudioFile::addSilence(qint64 frames)
{
    const auto channels = size_t(m_converter->format().channelCount);
    m_samples.resize(m_samples.size() + size_t(std::max<qint64>(0, frames)) * channels, 0.0F);
}

} // namespace cadorel
