// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/PeakingFilter.h"

#include <cmath>
#include <numbers>

namespace cadorel {

namespace {

constexpr double highestFrequency = 0.45; // of the sample rate

} // namespace

PeakingFilter::PeakingFilter(const PeakingShape &shape, double sampleRate)
{
    // Comparisons that are false for what is not a number.
    const bool usable = shape.frequency > 0 && shape.bandwidth > 0 && std::isfinite(shape.bandwidth) &&
                        shape.frequency < highestFrequency * sampleRate;
    if (!usable)
        return;
    const double w0 = 2 * std::numbers::pi * shape.frequency / sampleRate;
    const double sine = std::sin(w0);
    m_cosine = std::cos(w0);
    m_alpha = sine * std::sinh(std::numbers::ln2 / 2 * shape.bandwidth * w0 / sine);
}

BiquadCoefficients PeakingFilter::coefficients(double decibels) const
{
    if (passesThrough())
        return {};
    const double amplitude = std::pow(10.0, decibels / 40);
    const double a0 = 1 + m_alpha / amplitude;
    BiquadCoefficients result;
    result.a1 = -2 * m_cosine / a0;
    result.a2 = (1 - m_alpha / amplitude) / a0;
    // In the cookbook's terms b1 = a1, and both b0 - 1 and a2 - b2 are this.
    const double added = m_alpha * (amplitude - 1 / amplitude) / a0;
    result.b0 = 1 + added;
    result.c1 = -result.a1 * added;
    result.c2 = -(1 + result.a2) * added;
    return result;
}

} // namespace cadorel
