// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/EqualizerViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "ViewModels/EqualizerBandModel.h"
#include "ViewModels/EqualizerPresetModel.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// A screen reader may write any number.
std::optional<float> withinLimits(double decibels)
{
    if (!std::isfinite(decibels))
        return std::nullopt;
    return std::clamp(static_cast<float>(decibels), EqualizerService::lowestGain,
                      EqualizerService::highestGain);
}

} // namespace

EqualizerViewModel::EqualizerViewModel(EqualizerService &service, AudioPlayerService &player)
    : m_service(service)
    , m_player(player)
    , m_presets(new EqualizerPresetModel(this))
    , m_bands(new EqualizerBandModel(this))
{
    connect(&m_service, &EqualizerService::isEnabledChanged, this, &EqualizerViewModel::isEnabledChanged);
    connect(&m_service, &EqualizerService::currentPresetChanged, this, &EqualizerViewModel::presetChanged);
    connect(&m_service, &EqualizerService::bandsChanged, this, &EqualizerViewModel::bandsChanged);
    connect(&m_service, &EqualizerService::preampGainChanged, this, &EqualizerViewModel::preampChanged);
    // Queued: which engine plays is settled once the player has answered to the same change.
    connect(&m_service, &EqualizerService::isEnabledChanged, this, &EqualizerViewModel::refreshStatus,
            Qt::QueuedConnection);
    for (const auto change :
         {&AudioPlayerService::currentSongChanged, &AudioPlayerService::currentOnlineSongChanged,
          &AudioPlayerService::isPlayingChanged, &AudioPlayerService::durationChanged}) {
        connect(&m_player, change, this, &EqualizerViewModel::refreshStatus, Qt::QueuedConnection);
    }
    m_presets->setCurrent(m_service.currentPreset());
    m_bands->setGains(m_service.bands());
    m_statusText = currentStatus();
    refreshCanReset();
}

EqualizerViewModel::~EqualizerViewModel() = default;

bool EqualizerViewModel::isEnabled() const
{
    return m_service.isEnabled();
}

void EqualizerViewModel::setEnabled(bool enabled)
{
    m_service.setEnabled(enabled);
}

int EqualizerViewModel::currentPresetRow() const
{
    return m_presets->currentRow();
}

QString EqualizerViewModel::presetDescription() const
{
    return descriptionText(m_presets->current());
}

double EqualizerViewModel::preampGain() const
{
    return m_service.preampGain();
}

QString EqualizerViewModel::preampText() const
{
    return gainText(m_service.preampGain());
}

double EqualizerViewModel::lowestGain() const
{
    return EqualizerService::lowestGain;
}

double EqualizerViewModel::highestGain() const
{
    return EqualizerService::highestGain;
}

void EqualizerViewModel::open()
{
    if (m_isOpen)
        return;
    m_isOpen = true;
    Q_EMIT isOpenChanged();
}

void EqualizerViewModel::close()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    Q_EMIT isOpenChanged();
}

void EqualizerViewModel::choosePreset(int row)
{
    if (row >= 0 && row < allEqualizerPresets().size())
        m_service.setCurrentPreset(allEqualizerPresets().at(row));
}

void EqualizerViewModel::setBand(int band, double decibels)
{
    // Asking for what stands already leaves the preset as it is.
    const std::optional<float> gain = withinLimits(decibels);
    if (gain && *gain != m_service.getBand(band))
        m_service.setBand(band, *gain);
}

void EqualizerViewModel::setPreampGain(double decibels)
{
    const std::optional<float> gain = withinLimits(decibels);
    if (gain && *gain != m_service.preampGain())
        m_service.setPreampGain(*gain);
}

void EqualizerViewModel::reset()
{
    m_service.reset();
}

void EqualizerViewModel::presetChanged()
{
    m_presets->setCurrent(m_service.currentPreset());
    refreshCanReset();
    Q_EMIT currentPresetChanged();
}

void EqualizerViewModel::bandsChanged()
{
    m_bands->setGains(m_service.bands());
}

void EqualizerViewModel::preampChanged()
{
    refreshCanReset();
    Q_EMIT preampGainChanged();
}

void EqualizerViewModel::refreshCanReset()
{
    const bool can = m_service.currentPreset() != EqualizerPreset::flat || m_service.preampGain() != 0;
    if (can == m_canReset)
        return;
    m_canReset = can;
    Q_EMIT canResetChanged();
}

void EqualizerViewModel::refreshStatus()
{
    const QString text = currentStatus();
    if (text == m_statusText)
        return;
    m_statusText = text;
    Q_EMIT statusTextChanged();
}

QString EqualizerViewModel::currentStatus() const
{
    const std::optional<Song> &song = m_player.currentSong();
    const std::optional<QUrl> url = song ? song->assetURL() : std::nullopt;
    const bool isStream = m_player.currentOnlineSong() || (url && !url->isLocalFile());
    if (isStream)
        return u"仅对本地文件生效，当前歌曲来自网络"_s;
    if (!m_service.isEnabled())
        return u"已关闭，仅对本地文件生效"_s;
    if (!song)
        return u"已开启，仅对本地文件生效"_s;
    // A file that the engine cannot open plays on without, as does one that was restored at the start.
    return m_player.usingEqualizerEngine() ? u"正在作用于当前歌曲"_s : u"已开启，从下一首本地歌曲起生效"_s;
}

} // namespace cadorel
