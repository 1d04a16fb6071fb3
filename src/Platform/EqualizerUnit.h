// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// One parametric band of an equalizer: a bell around its centre.
struct EqualizerBand
{
    /// Centre in hertz.
    double frequency = 1000;
    /// Width of the bell in octaves.
    double bandwidth = 1.0;
    /// Decibels at the centre.
    double gain = 0;
    /// The band leaves the sound as it is.
    bool bypass = true;

    friend bool operator==(const EqualizerBand &, const EqualizerBand &) = default;
};

/// A parametric equalizer in the road of the sound. Main thread; changes are taken over by the sound's own
/// thread, gradually, so that none is heard as a click.
class EqualizerUnit
{
public:
    virtual ~EqualizerUnit() = default;

    virtual int bandCount() const = 0;
    /// @param index 0 ..< bandCount()
    virtual EqualizerBand band(int index) const = 0;
    virtual void setBand(int index, const EqualizerBand &band) = 0;
    /// Decibels for the whole sound.
    virtual double globalGain() const = 0;
    virtual void setGlobalGain(double decibels) = 0;
};

} // namespace cadorel
