// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// Place and width of a peaking filter's bell.
struct PeakingShape
{
    /// Centre in hertz.
    double frequency = 0;
    /// Octaves between the two frequencies where the gain is half of the centre's decibels.
    double bandwidth = 0;

    friend bool operator==(const PeakingShape &, const PeakingShape &) = default;
};

/// The five factors of a second-order filter in transposed direct form II,
///     y = b0 x + s1;   s1 <- b1 x - a1 y + s2;   s2 <- b2 x - a2 y
/// with y put in below, so that a frame waits for less of the one before it:
///     y = b0 x + s1;   s1 <- c1 x - a1 s1 + s2;   s2 <- c2 x - a2 s1
struct BiquadCoefficients
{
    double b0 = 1;
    double c1 = 0;
    double c2 = 0;
    double a1 = 0;
    double a2 = 0;
};

/// Makes the factors of a peaking filter for every gain, after "Cookbook formulae for audio equalizer biquad
/// filter coefficients" by Robert Bristow-Johnson, where it is "peakingEQ" with a bandwidth in octaves. What
/// does not depend on the gain is worked out once, since the gain moves while sound plays.
class PeakingFilter
{
public:
    /// Lets everything through.
    PeakingFilter() = default;
    /// Lets everything through too when the centre is no frequency of this rate's sound, or so near to the
    /// highest that nothing of the bell's upper half would be left (0.45 of the rate or more).
    /// @param sampleRate frames a second
    PeakingFilter(const PeakingShape &shape, double sampleRate);

    bool passesThrough() const { return m_alpha == 0; }
    /// @param decibels at the centre; 0 gives factors that change no sample, to the last bit
    BiquadCoefficients coefficients(double decibels) const;

private:
    double m_cosine = 0;
    double m_alpha = 0;
};

} // namespace cadorel
