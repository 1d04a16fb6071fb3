// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/Spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <numbers>

namespace cadorel {

namespace {

using Complex = std::complex<double>;

/// Blackman-Harris: what leaks into other frequencies stays 92 dB below.
double window(double phase)
{
    return 0.35875 - 0.48829 * std::cos(phase) + 0.14128 * std::cos(2 * phase) -
           0.01168 * std::cos(3 * phase);
}

void transform(std::span<Complex> values)
{
    const std::size_t half = values.size() / 2;
    if (half == 0)
        return;
    std::vector<Complex> even(half);
    std::vector<Complex> odd(half);
    for (std::size_t i = 0; i < half; ++i) {
        even[i] = values[2 * i];
        odd[i] = values[2 * i + 1];
    }
    transform(even);
    transform(odd);
    for (std::size_t i = 0; i < half; ++i) {
        const Complex turned =
            odd[i] * std::polar(1.0, -std::numbers::pi * static_cast<double>(i) / static_cast<double>(half));
        values[i] = even[i] + turned;
        values[i + half] = even[i] - turned;
    }
}

} // namespace

Spectrum::Spectrum(std::span<const float> samples, int sampleRate)
    : m_binWidth(0)
{
    const std::size_t size = std::bit_floor(samples.size());
    if (size < 2)
        return;
    std::vector<Complex> values(size);
    double windowEnergy = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const double weight =
            window(2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size - 1));
        windowEnergy += weight * weight;
        values[i] = weight * double{samples[i]};
    }
    transform(values);
    m_binWidth = double(sampleRate) / static_cast<double>(size);
    m_energies.resize(size / 2);
    for (std::size_t i = 0; i < m_energies.size(); ++i)
        m_energies[i] = 4 * std::norm(values[i]) / (windowEnergy * static_cast<double>(size));
}

Spectrum::Peak Spectrum::loudestElsewhere(double hertz, double distance) const
{
    std::size_t loudest = 0;
    double most = 0;
    for (std::size_t i = 0; i < m_energies.size(); ++i) {
        const double here = m_binWidth * static_cast<double>(i);
        if (here >= 20 && std::abs(here - hertz) >= distance && m_energies[i] > most) {
            loudest = i;
            most = m_energies[i];
        }
    }
    // The window spreads a sine over four bins to each side.
    constexpr std::size_t spread = 4;
    double energy = 0;
    for (std::size_t i = loudest - std::min(loudest, spread); i <= loudest + spread && i < m_energies.size();
         ++i)
        energy += m_energies[i];
    return {.hertz = m_binWidth * static_cast<double>(loudest), .amplitude = std::sqrt(energy)};
}

double Spectrum::decibels(double ratio)
{
    return 20 * std::log10(ratio);
}

} // namespace cadorel
