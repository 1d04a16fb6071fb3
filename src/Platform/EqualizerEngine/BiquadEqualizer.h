// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioFile.h"
#include "Platform/EqualizerEngine/PeakLimiter.h"
#include "Platform/EqualizerEngine/PeakingFilter.h"
#include "Platform/EqualizerUnit.h"

#include <QtGlobal>

#include <array>
#include <atomic>
#include <vector>

namespace cadorel {

/// Ten peaking filters one after the other (PeakingFilter), the global gain before them and a limiter behind
/// (PeakLimiter).
///
/// The main thread says what is wanted; the sound's thread takes it over while it works, without a lock on
/// either side. A gain moves by 0.25 dB in 64 frames, whatever the size of the pieces that are processed, and
/// the factors move along with every frame: twelve decibels take 70 ms at 44.1 kHz, and no step is heard. A
/// bypassed band moves to 0 dB in the same way, and another centre or width is taken over on the way through
/// 0 dB. With every gain at 0 dB and sound within full scale the samples stay as they are, to the last bit.
class BiquadEqualizer : public EqualizerUnit
{
public:
    static constexpr int bands = 10;
    /// Gains beyond these limits, in decibels, are taken for the limit. One that is not a number is 0 dB.
    static constexpr double lowestGain = -96;
    static constexpr double highestGain = 24;

    BiquadEqualizer();

    int bandCount() const override { return bands; }
    EqualizerBand band(int index) const override;
    void setBand(int index, const EqualizerBand &band) override;
    double globalGain() const override { return m_globalGain; }
    void setGlobalGain(double decibels) override;

    /// Makes ready for sound of this format, as if nothing had been played. What is set until the sound
    /// begins holds from its first frame on. Not while process() runs.
    void prepare(const AudioFormat &format);
    /// The same for the format so far: what comes next follows a silence. Not while process() runs.
    void reset() { m_begins = true; }
    /// Equalizes @p frames frames where they lie. The sound's thread; it neither waits nor allocates. A
    /// sample that is not a number counts as silence, so that it cannot stay in the filters.
    void process(float *interleaved, qint64 frames);

private:
    /// Two channels of one frame, which the processor works on together.
    using Pair = std::array<double, 2>;
    /// What a filter remembers of two channels (transposed direct form II).
    struct Memory
    {
        Pair first{};
        Pair second{};
    };
    /// What the main thread wants of a band. A bypassed band wants 0 dB.
    struct Wanted
    {
        std::atomic<double> frequency = 0;
        std::atomic<double> bandwidth = 0;
        std::atomic<double> gain = 0;
    };
    /// A band as it works now.
    struct Section
    {
        PeakingShape shape;
        PeakingFilter filter;
        double gain = 0; ///< decibels
        BiquadCoefficients now;
        BiquadCoefficients next; ///< what they become in the course of the piece, while the gain moves
        bool moves = false;
        bool rings = false; ///< some memory is not empty
    };

    /// Frames that are worked on at once; settings are looked at between.
    static constexpr int pieceFrames = 64;

    void begin();
    PeakingShape wantedShape(std::size_t band) const;
    double wantedGain(std::size_t band) const;
    void takeShape(Section &section, const PeakingShape &shape) const;
    void moveSections(int frames);
    void moveGlobalGain(int frames);
    void processPiece(float *interleaved, int frames);
    static void filter(const Section &section, Memory &memory, Pair *sound, int frames);
    static void filterMoving(const Section &section, Memory &memory, Pair *sound, int frames);
    void settle();

    // The main thread's own copy.
    std::array<EqualizerBand, bands> m_bands{};
    double m_globalGain = 0;

    std::array<Wanted, bands> m_wanted;
    std::atomic<double> m_wantedGlobalGain = 0;

    // The sound's thread.
    int m_sampleRate = 0;
    int m_channels = 0;
    bool m_begins = true;
    std::array<Section, bands> m_sections;
    std::vector<std::array<Memory, bands>> m_memories; ///< one for each pair of channels
    double m_movedGlobalGain = 0;                      ///< decibels
    double m_amplitude = 1;
    double m_nextAmplitude = 1;
    std::array<Pair, pieceFrames> m_pair{};
    std::vector<double> m_piece;
    PeakLimiter m_limiter;
};

} // namespace cadorel
