// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace cadorel {

class AudioPlayerService;
class EqualizerBandModel;
class EqualizerPresetModel;
class EqualizerService;

/// The equalizer's sheet: whether it is open, what it shows, and what a listener does there. Main thread.
class EqualizerViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("Services/AudioPlayerService.h")
    Q_MOC_INCLUDE("ViewModels/EqualizerBandModel.h")
    Q_MOC_INCLUDE("ViewModels/EqualizerPresetModel.h")
    Q_PROPERTY(cadorel::AudioPlayerService *audioPlayer READ audioPlayer CONSTANT)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY isEnabledChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)
    Q_PROPERTY(cadorel::EqualizerPresetModel *presets READ presets CONSTANT)
    Q_PROPERTY(int currentPresetRow READ currentPresetRow NOTIFY currentPresetChanged)
    Q_PROPERTY(QString presetDescription READ presetDescription NOTIFY currentPresetChanged)
    Q_PROPERTY(cadorel::EqualizerBandModel *bands READ bands CONSTANT)
    Q_PROPERTY(double preampGain READ preampGain NOTIFY preampGainChanged)
    Q_PROPERTY(QString preampText READ preampText NOTIFY preampGainChanged)
    Q_PROPERTY(bool canReset READ canReset NOTIFY canResetChanged)
    Q_PROPERTY(double lowestGain READ lowestGain CONSTANT)
    Q_PROPERTY(double highestGain READ highestGain CONSTANT)

public:
    /// @param service and @param player outlive this object
    EqualizerViewModel(EqualizerService &service, AudioPlayerService &player);
    ~EqualizerViewModel() override;
    Q_DISABLE_COPY_MOVE(EqualizerViewModel)

    AudioPlayerService *audioPlayer() const { return &m_player; }
    bool isOpen() const { return m_isOpen; }
    bool isEnabled() const;
    void setEnabled(bool enabled);
    /// What the equalizer does for the song of the moment: it reaches local files alone.
    QString statusText() const { return m_statusText; }
    EqualizerPresetModel *presets() const { return m_presets; }
    int currentPresetRow() const;
    QString presetDescription() const;
    EqualizerBandModel *bands() const { return m_bands; }
    /// Decibels.
    double preampGain() const;
    /// "+3.5".
    QString preampText() const;
    /// Something stands otherwise than a reset would leave it.
    bool canReset() const { return m_canReset; }
    /// Limits in decibels of each band and of the preamp.
    double lowestGain() const;
    double highestGain() const;

    Q_INVOKABLE void open();
    Q_INVOKABLE void close();
    /// Chooses the preset of a row of `presets`; the listener's own one keeps the gains.
    Q_INVOKABLE void choosePreset(int row);
    /// @param decibels any number; the limits hold
    Q_INVOKABLE void setBand(int band, double decibels);
    Q_INVOKABLE void setPreampGain(double decibels);
    Q_INVOKABLE void reset();

Q_SIGNALS:
    void isOpenChanged();
    void isEnabledChanged();
    void statusTextChanged();
    void currentPresetChanged();
    void preampGainChanged();
    void canResetChanged();

private:
    void presetChanged();
    void bandsChanged();
    void preampChanged();
    void refreshStatus();
    void refreshCanReset();
    QString currentStatus() const;

    EqualizerService &m_service;
    AudioPlayerService &m_player;
    EqualizerPresetModel *m_presets;
    EqualizerBandModel *m_bands;
    QString m_statusText;
    bool m_isOpen = false;
    bool m_canReset = false;
};

} // namespace cadorel
