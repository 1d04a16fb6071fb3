// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <span>
#include <vector>

namespace cadorel {

/// Samples of one channel.
using Wave = std::vector<float>;

inline Wave sine(double hertz, int sampleRate, double amplitude, double seconds)
{
    Wave wave(static_cast<std::size_t>(seconds * sampleRate));
    for (std::size_t i = 0; i < wave.size(); ++i) {
        const double phase = 2 * std::numbers::pi * hertz * static_cast<double>(i) / sampleRate;
        wave[i] = static_cast<float>(amplitude * std::sin(phase));
    }
    return wave;
}

/// A tone in a piece of sound, found by least squares, so for a piece of any length that spans some waves.
struct FittedTone
{
    double amplitude = 0;
    /// Root mean square of what is not the tone, relative to the tone's own.
    double remainder = 0;
};

inline FittedTone fitTone(std::span<const float> sound, double hertz, int sampleRate)
{
    // x ~ a cos + b sin; two normal equations.
    double cc = 0;
    double ss = 0;
    double cs = 0;
    double xc = 0;
    double xs = 0;
    double xx = 0;
    const std::complex<double> turn = std::polar(1.0, 2 * std::numbers::pi * hertz / sampleRate);
    std::complex<double> pointer = 1;
    for (std::size_t i = 0; i < sound.size(); ++i, pointer *= turn) {
        const double c = pointer.real();
        const double s = pointer.imag();
        const double x = double{sound[i]};
        cc += c * c;
        ss += s * s;
        cs += c * s;
        xc += x * c;
        xs += x * s;
        xx += x * x;
    }
    const double determinant = cc * ss - cs * cs;
    const double a = (xc * ss - xs * cs) / determinant;
    const double b = (xs * cc - xc * cs) / determinant;
    const double tone = a * xc + b * xs;
    return {std::hypot(a, b), std::sqrt(std::max(0.0, xx - tone) / tone)};
}

inline double decibelsOf(double ratio)
{
    return 20 * std::log10(ratio);
}
inline double ratioOf(double decibels)
{
    return std::pow(10.0, decibels / 20);
}

/// Decibels of a peaking filter at any frequency, from the analogue filter that the Audio EQ Cookbook begins
/// with, H(s) = (s^2 + s A / Q + 1) / (s^2 + s / (A Q) + 1), and its bilinear transform.
inline double bellDecibels(double hertz, double centre, double bandwidth, double gain, int sampleRate)
{
    const double w0 = 2 * std::numbers::pi * centre / sampleRate;
    const double perQ = 2 * std::sinh(std::numbers::ln2 / 2 * bandwidth * w0 / std::sin(w0));
    const double amplitude = std::pow(10.0, gain / 40);
    const double w = std::tan(std::numbers::pi * hertz / sampleRate) / std::tan(w0 / 2);
    const std::complex<double> above(1 - w * w, w * amplitude * perQ);
    const std::complex<double> below(1 - w * w, w * perQ / amplitude);
    return decibelsOf(std::abs(above / below));
}

/// The largest jump from one sample to the next.
inline double largestJump(std::span<const float> sound)
{
    double jump = 0;
    for (std::size_t i = 1; i < sound.size(); ++i)
        jump = std::max(jump, std::abs(double{sound[i]} - double{sound[i - 1]}));
    return jump;
}

} // namespace cadorel
