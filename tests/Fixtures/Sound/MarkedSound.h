// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>
#include <span>
#include <vector>

namespace cadorel {

/// A sound that tells its place: noise, no two pieces of which are alike. Whatever is recorded while it plays
/// can be laid beside it, to the sample, and two players at once are like no piece of it.
class MarkedSound
{
public:
    static constexpr int sampleRate = 48'000;

    /// One channel, 16 bits.
    explicit MarkedSound(double seconds);

    const std::vector<float> &samples() const { return m_samples; }
    /// Writes it as a WAV file. @return whether it is there
    bool write(const QString &path) const;

    /// Where a piece of sound is from.
    struct Place
    {
        std::ptrdiff_t sample = 0;
        /// 1 for the very same, 0 for nothing alike (correlation).
        double likeness = 0;
        /// How loud it is beside the original.
        double level = 0;

        double seconds() const { return static_cast<double>(sample) / sampleRate; }
    };
    /// The place most like @p piece that begins between two samples; for a silent piece one without likeness.
    Place find(std::span<const float> piece, std::ptrdiff_t first, std::ptrdiff_t last) const;
    /// The same in all of it.
    Place find(std::span<const float> piece) const;

    /// Where in this sound a recording ends, in seconds, silence at its end left out. What is faded at the
    /// end counts by its length. Looks within a second of @p near; nothing when the recording is from
    /// elsewhere.
    std::optional<double> endOf(std::span<const float> recording, double near) const;

    /// How loud two places are in a piece of sound that may hold both at once.
    struct Mix
    {
        double first = 0;
        double second = 0;
    };
    /// @param first, @param second where in this sound the piece would begin; not the same
    Mix mix(std::span<const float> piece, std::ptrdiff_t first, std::ptrdiff_t second) const;

    /// A piece of a recording, a hundredth of a second long.
    struct Moment
    {
        /// Of its first sample, in the recording.
        std::ptrdiff_t recorded = 0;
        bool isSilent = false;
        /// Nothing when it is silent, or like no place: at its edges, or with something else in it.
        std::optional<Place> place;
    };
    static constexpr std::ptrdiff_t momentSamples = sampleRate / 100;
    /// What a recording tells, moment by moment, as long as no jump in it is farther than three seconds.
    std::vector<Moment> follow(std::span<const float> recording) const;

private:
    std::vector<float> m_samples;
};

} // namespace cadorel
