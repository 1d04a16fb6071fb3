// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/EqualizerPreset.h"
#include "Platform/AudioEngine.h"
#include "Platform/Preferences.h"
#include "Services/Seams/EqualizerEngine.h"

#include <QString>
#include <QUrl>

#include <array>
#include <memory>

namespace cadorel {

/// The ten-band equalizer: its settings, and the engine that plays local files through it. Main thread.
class EqualizerService : public EqualizerEngine
{
    Q_OBJECT
public:
    /// Centres of the bands in hertz.
    static constexpr EqualizerGains frequencies{32, 64, 125, 250, 500, 1000, 2000, 4000, 8000, 16000};
    /// How the bands are labelled.
    static const std::array<QString, equalizerBandCount> frequencyLabels;
    /// Limits of a band's gain in decibels.
    static constexpr float lowestGain = -12;
    static constexpr float highestGain = 12;

    /// Sets the engine up and reads the settings.
    /// @param preferences outlives the service
    /// @param engine null leaves the settings alone: no file can be prepared
    EqualizerService(Preferences &preferences, std::unique_ptr<AudioEngine> engine);
    ~EqualizerService() override;
    Q_DISABLE_COPY_MOVE(EqualizerService)

    static EqualizerService &shared();

    bool isEnabled() const override { return m_isEnabled; }
    EqualizerPreset currentPreset() const { return m_currentPreset; }
    /// Gains in decibels, lowest band first.
    const EqualizerGains &bands() const { return m_bands; }
    /// Decibels for the whole sound.
    float preampGain() const { return m_preampGain; }

    void setEnabled(bool enabled);
    /// Applies the preset, but for `custom`, which keeps the gains.
    void setCurrentPreset(EqualizerPreset preset);
    /// Makes the preset `custom`. A list with a gain that is no number is ignored.
    void setBands(const EqualizerGains &bands);
    /// What is no number is ignored.
    void setPreampGain(float decibels);

    /// Takes over the gains of @p preset; `custom` changes nothing.
    void applyPreset(EqualizerPreset preset);
    /// Back to `flat`, and the preamp to 0.
    void reset();
    /// Sets one band to @p gain decibels, within its limits, and makes the preset `custom`; an index out of
    /// range is ignored.
    void setBand(int index, float gain);
    /// Decibels; 0 for an index out of range.
    float getBand(int index) const;

    bool isPlaying() const override;
    double currentTime() const override;
    double duration() const override;
    /// Whether the sound device is open.
    bool isEngineRunning() const;

    void prepareToPlay(const QUrl &file) override;
    void play() override;
    void pause() override;
    void stop() override;
    void seek(double time) override;
    void setVolume(float volume) override;

Q_SIGNALS:
    void currentPresetChanged();
    void bandsChanged();
    void preampGainChanged();

private:
    void setupAudioEngine();
    void loadSettings();
    void saveSettings();
    void updateEqualizerBands();
    void startEngine();
    double sampleRate() const;

    Preferences &m_preferences;
    std::unique_ptr<AudioEngine> m_audioEngine;
    std::shared_ptr<AudioFile> m_audioFile;
    bool m_isEnabled = false;
    EqualizerPreset m_currentPreset = EqualizerPreset::flat;
    EqualizerGains m_bands{};
    float m_preampGain = 0;
    bool m_isApplyingPreset = false;
    double m_seekPosition = 0; ///< where the node's clock began, in seconds
};

} // namespace cadorel
