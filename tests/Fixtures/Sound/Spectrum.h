// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <vector>

namespace cadorel {

/// Which frequencies a piece of sound holds, and how loud. It looks at the largest power of two of samples
/// from the beginning.
class Spectrum
{
public:
    struct Peak
    {
        double hertz;
        /// Of a sine wave that would give this peak; full scale is 1.
        double amplitude;
    };

    Spectrum(std::span<const float> samples, int sampleRate);

    Peak loudest() const { return loudestElsewhere(-1, 0); }
    /// The loudest that is at least @p distance hertz away from @p hertz. Below 20 Hz nothing counts.
    Peak loudestElsewhere(double hertz, double distance) const;

    /// A ratio of amplitudes in decibels.
    static double decibels(double ratio);

private:
    double m_binWidth;
    /// Square of the amplitude that each frequency bin holds its part of; a sine's parts add up to its own.
    std::vector<double> m_energies;
};

} // namespace cadorel
