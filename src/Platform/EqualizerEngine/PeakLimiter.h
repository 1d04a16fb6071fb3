// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// Keeps sound within full scale by turning it down, instead of cutting its peaks off: sound that stays
/// within -1...1 is not touched, to the last bit. A peak beyond that is turned down at once to exactly full
/// scale, all channels alike so that the stereo picture stays in its place, and the gain comes back slowly.
///
/// This is the feed-forward limiter without look-ahead of D. Giannoulis, M. Massberg and J. D. Reiss,
/// "Digital Dynamic Range Compressor Design - A Tutorial and Analysis", J. Audio Eng. Soc. 60 (6), 2012, with
/// a hold before the release. The hold spans more than half a wave of the lowest note, so that a steady sound
/// is turned down evenly and keeps its shape, where a curve that bends each peak would distort all of it; and
/// without look-ahead no sound is late. Any one thread.
class PeakLimiter
{
public:
    /// Makes ready for sound of this rate, in frames a second, as after reset().
    void prepare(double sampleRate);
    /// Forgets the peaks so far.
    void reset();

    /// Writes so many frames of interleaved sound from @p input to @p output, limited to -1...1.
    void process(const double *input, float *output, int frames, int channels);

private:
    double m_release = 0; ///< part of the way back to 1 in one frame
    int m_holdFrames = 0;
    int m_heldFor = 0;
    double m_gain = 1; ///< the factor of the last frame
};

} // namespace cadorel
