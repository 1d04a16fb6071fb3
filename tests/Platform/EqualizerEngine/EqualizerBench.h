// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Sound/MadeWaves.h"
#include "Platform/EqualizerEngine/BiquadEqualizer.h"

#include <array>
#include <random>

namespace cadorel {

inline constexpr std::array<double, 10> centres{32, 64, 125, 250, 500, 1000, 2000, 4000, 8000, 16000};
inline constexpr int cdRate = 44'100;

inline void setGains(BiquadEqualizer &equalizer, double gain)
{
    for (int band = 0; band < equalizer.bandCount(); ++band)
        equalizer.setBand(band, {centres[static_cast<std::size_t>(band)], 1, gain, false});
}

inline void setGain(BiquadEqualizer &equalizer, int band, double gain)
{
    equalizer.setBand(band, {centres[static_cast<std::size_t>(band)], 1, gain, false});
}

/// One channel through the equalizer, in pieces as a sound device asks for them.
inline Wave played(BiquadEqualizer &equalizer, Wave wave, std::size_t piece = 1024)
{
    for (std::size_t at = 0; at < wave.size(); at += piece) {
        const std::size_t frames = std::min(piece, wave.size() - at);
        equalizer.process(wave.data() + at, static_cast<qint64>(frames));
    }
    return wave;
}

/// Decibels that a steady tone of one channel is changed by, after half a second for the filters.
inline double gainAt(BiquadEqualizer &equalizer, double hertz, int sampleRate)
{
    equalizer.prepare({sampleRate, 1});
    const Wave sound = played(equalizer, sine(hertz, sampleRate, 0.1, 1));
    const auto settled = std::span(sound).subspan(static_cast<std::size_t>(sampleRate / 2));
    return decibelsOf(fitTone(settled, hertz, sampleRate).amplitude / 0.1);
}

inline Wave noise(std::size_t samples, float amplitude)
{
    std::mt19937 engine(7);
    std::uniform_real_distribution<float> distribution(-amplitude, amplitude);
    Wave wave(samples);
    for (float &sample : wave)
        sample = distribution(engine);
    return wave;
}

} // namespace cadorel
