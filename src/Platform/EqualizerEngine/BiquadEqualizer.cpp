// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/BiquadEqualizer.h"

#include <algorithm>
#include <cmath>

namespace cadorel {

namespace {

constexpr double gainPerFrame = 0.25 / 64; // decibels
// 36 dB above full scale: no recording, so a damaged file. It must not sound on for seconds in the low bands.
constexpr float loudestSample = 64;
// 200 dB below full scale: far below what a float of audible sound resolves, far above where numbers get
// slow.
constexpr double emptyMemory = 1e-10;

double soundSample(float sample)
{
    return std::isfinite(sample) ? double{std::clamp(sample, -loudestSample, loudestSample)} : 0;
}

double usableGain(double decibels)
{
    return std::isnan(decibels)
               ? 0
               : std::clamp(decibels, BiquadEqualizer::lowestGain, BiquadEqualizer::highestGain);
}

double amplitudeOf(double decibels)
{
    return std::pow(10.0, decibels / 20);
}

/// The way from @p from to @p target in so many frames.
double moved(double from, double target, int frames)
{
    const double reach = gainPerFrame * frames;
    return from + std::clamp(target - from, -reach, reach);
}

/// What is added to the factors with every frame of a piece.
BiquadCoefficients stepOf(const BiquadCoefficients &now, const BiquadCoefficients &next, int frames)
{
    return {(next.b0 - now.b0) / frames, (next.c1 - now.c1) / frames, (next.c2 - now.c2) / frames,
            (next.a1 - now.a1) / frames, (next.a2 - now.a2) / frames};
}

void advance(BiquadCoefficients &now, const BiquadCoefficients &step)
{
    now.b0 += step.b0;
    now.c1 += step.c1;
    now.c2 += step.c2;
    now.a1 += step.a1;
    now.a2 += step.a2;
}

} // namespace

BiquadEqualizer::BiquadEqualizer()
{
    for (int index = 0; index < bands; ++index)
        setBand(index, EqualizerBand());
}

EqualizerBand BiquadEqualizer::band(int index) const
{
    Q_ASSERT(index >= 0 && index < bands);
    return m_bands[static_cast<std::size_t>(index)];
}

void BiquadEqualizer::setBand(int index, const EqualizerBand &band)
{
    Q_ASSERT(index >= 0 && index < bands);
    const auto place = static_cast<std::size_t>(index);
    m_bands[place] = band;
    Wanted &wanted = m_wanted[place];
    wanted.frequency.store(band.frequency, std::memory_order_relaxed);
    wanted.bandwidth.store(band.bandwidth, std::memory_order_relaxed);
    wanted.gain.store(band.bypass ? 0 : usableGain(band.gain), std::memory_order_relaxed);
}

void BiquadEqualizer::setGlobalGain(double decibels)
{
    m_globalGain = decibels;
    m_wantedGlobalGain.store(usableGain(decibels), std::memory_order_relaxed);
}

void BiquadEqualizer::prepare(const AudioFormat &format)
{
    m_sampleRate = std::max(format.sampleRate, 1);
    m_channels = std::max(format.channelCount, 0);
    m_memories.resize(static_cast<std::size_t>(m_channels + 1) / 2);
    m_piece.resize(static_cast<std::size_t>(m_channels * pieceFrames));
    m_limiter.prepare(m_sampleRate);
    reset();
}

void BiquadEqualizer::begin()
{
    m_begins = false;
    for (std::size_t band = 0; band < m_sections.size(); ++band) {
        Section &section = m_sections[band];
        takeShape(section, wantedShape(band));
        section.gain = section.filter.passesThrough() ? 0 : wantedGain(band);
        section.now = section.filter.coefficients(section.gain);
        section.moves = false;
        section.rings = false;
    }
    std::ranges::fill(m_memories, std::array<Memory, bands>());
    m_movedGlobalGain = m_wantedGlobalGain.load(std::memory_order_relaxed);
    m_amplitude = amplitudeOf(m_movedGlobalGain);
    m_nextAmplitude = m_amplitude;
    m_limiter.reset();
}

void BiquadEqualizer::process(float *interleaved, qint64 frames)
{
    if (m_channels == 0)
        return;
    if (m_begins)
        begin();
    while (frames > 0) {
        const int piece = static_cast<int>(std::min<qint64>(frames, pieceFrames));
        moveSections(piece);
        moveGlobalGain(piece);
        processPiece(interleaved, piece);
        settle();
        interleaved += std::ptrdiff_t{piece} * m_channels;
        frames -= piece;
    }
}

PeakingShape BiquadEqualizer::wantedShape(std::size_t band) const
{
    return {m_wanted[band].frequency.load(std::memory_order_relaxed),
            m_wanted[band].bandwidth.load(std::memory_order_relaxed)};
}

double BiquadEqualizer::wantedGain(std::size_t band) const
{
    return m_wanted[band].gain.load(std::memory_order_relaxed);
}

void BiquadEqualizer::takeShape(Section &section, const PeakingShape &shape) const
{
    section.shape = shape;
    section.filter = PeakingFilter(shape, m_sampleRate);
}

void BiquadEqualizer::moveSections(int frames)
{
    for (std::size_t band = 0; band < m_sections.size(); ++band) {
        Section &section = m_sections[band];
        const PeakingShape shape = wantedShape(band);
        if (shape != section.shape && section.gain == 0) {
            takeShape(section, shape);
            // Another filter, but like the last one it changes nothing at 0 dB.
            section.now = section.filter.coefficients(0);
        }
        const bool atRest = shape != section.shape || section.filter.passesThrough();
        const double target = atRest ? 0 : wantedGain(band);
        section.moves = target != section.gain;
        if (!section.moves)
            continue;
        section.gain = moved(section.gain, target, frames);
        section.next = section.filter.coefficients(section.gain);
    }
}

void BiquadEqualizer::moveGlobalGain(int frames)
{
    const double target = m_wantedGlobalGain.load(std::memory_order_relaxed);
    if (target == m_movedGlobalGain)
        return;
    m_movedGlobalGain = moved(m_movedGlobalGain, target, frames);
    m_nextAmplitude = amplitudeOf(m_movedGlobalGain);
}

void BiquadEqualizer::processPiece(float *interleaved, int frames)
{
    const double amplitudeStep = (m_nextAmplitude - m_amplitude) / frames;
    for (int channel = 0; channel < m_channels; channel += 2) {
        const int second = std::min(channel + 1, m_channels - 1); // a channel without a partner is its own
        double amplitude = m_amplitude;
        for (int frame = 0; frame < frames; ++frame) {
            const float *sound = interleaved + std::ptrdiff_t{frame} * m_channels;
            amplitude += amplitudeStep;
            m_pair[static_cast<std::size_t>(frame)] = {soundSample(sound[channel]) * amplitude,
                                                       soundSample(sound[second]) * amplitude};
        }
        auto &memories = m_memories[static_cast<std::size_t>(channel / 2)];
        for (std::size_t band = 0; band < m_sections.size(); ++band) {
            const Section &section = m_sections[band];
            if (section.moves)
                filterMoving(section, memories[band], m_pair.data(), frames);
            else if (section.gain != 0 || section.rings)
                filter(section, memories[band], m_pair.data(), frames);
            // Else it has nothing in it, and at 0 dB gives what it takes.
        }
        for (int frame = 0; frame < frames; ++frame) {
            double *piece = m_piece.data() + std::ptrdiff_t{frame} * m_channels;
            const Pair &pair = m_pair[static_cast<std::size_t>(frame)];
            piece[channel] = pair[0];
            piece[second] = pair[second == channel ? 0 : 1];
        }
    }
    m_limiter.process(m_piece.data(), interleaved, frames, m_channels);
}

void BiquadEqualizer::filter(const Section &section, Memory &memory, Pair *sound, int frames)
{
    const BiquadCoefficients factors = section.now;
    Memory kept = memory;
    for (int frame = 0; frame < frames; ++frame) {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            const double in = sound[frame][channel];
            const double first = kept.first[channel];
            sound[frame][channel] = factors.b0 * in + first;
            kept.first[channel] = (factors.c1 * in + kept.second[channel]) - factors.a1 * first;
            kept.second[channel] = factors.c2 * in - factors.a2 * first;
        }
    }
    memory = kept;
}

void BiquadEqualizer::filterMoving(const Section &section, Memory &memory, Pair *sound, int frames)
{
    // Between two stable filters every one on the straight line is stable too.
    const BiquadCoefficients step = stepOf(section.now, section.next, frames);
    Section moving = section;
    for (int frame = 0; frame < frames; ++frame) {
        advance(moving.now, step);
        filter(moving, memory, sound + frame, 1);
    }
}

void BiquadEqualizer::settle()
{
    m_amplitude = m_nextAmplitude;
    for (std::size_t band = 0; band < m_sections.size(); ++band) {
        Section &section = m_sections[band];
        const bool worked = section.moves || section.gain != 0 || section.rings;
        if (section.moves)
            section.now = section.next;
        section.moves = false;
        section.rings = false;
        if (!worked)
            continue;
        for (auto &memories : m_memories) {
            Memory &memory = memories[band];
            for (std::size_t channel = 0; channel < 2; ++channel) {
                if (std::abs(memory.first[channel]) < emptyMemory &&
                    std::abs(memory.second[channel]) < emptyMemory) {
                    memory.first[channel] = 0;
                    memory.second[channel] = 0;
                } else {
                    section.rings = true;
                }
            }
        }
    }
}

} // namespace cadorel
