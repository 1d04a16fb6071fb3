// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PlaybackViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/Seams/OnlineSongAddresses.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/CoverRegistry.h"

#include <algorithm>
#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Steps of the slider over the whole song: finer than the pixels of a wide window, coarser than the ticks.
constexpr double sliderSteps = 2000;

/// A slider that is let go here or later ends the song.
constexpr double endFraction = 0.999;
/// So does one that is let go this close to the end, in seconds.
constexpr double endSeconds = 0.25;

} // namespace

QString PlaybackViewModel::timeText(double seconds)
{
    // A damaged file may tell any number as its length: one that no whole number can hold is shown as 0.
    constexpr double limit = 1e15;
    const auto whole = static_cast<qint64>(seconds > 0 && seconds < limit ? seconds : 0);
    return QString::asprintf("%lld:%02lld", whole / 60, whole % 60);
}

bool PlaybackViewModel::isAtEnd(double fraction, double duration)
{
    return std::isfinite(duration) && duration > 0 &&
           (fraction >= endFraction || duration - fraction * duration <= endSeconds);
}

PlaybackViewModel::PlaybackViewModel(CadorelViewModel &viewModel, const OnlineSongAddresses *onlineAddresses)
    : m_viewModel(viewModel)
    , m_onlineAddresses(onlineAddresses)
{
    connect(&player(), &AudioPlayerService::currentTimeChanged, this, &PlaybackViewModel::timeChanged);
    connect(&player(), &AudioPlayerService::durationChanged, this, &PlaybackViewModel::durationChanged);
    connect(&player(), &AudioPlayerService::isLoadingChanged, this, &PlaybackViewModel::durationChanged);
    connect(&player(), &AudioPlayerService::playErrorChanged, this, &PlaybackViewModel::durationChanged);
    // A song that failed and is played again is as long as it was, and has no new error.
    connect(&player(), &AudioPlayerService::isPlayingChanged, this, &PlaybackViewModel::durationChanged);
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this, &PlaybackViewModel::coverChanged);
    connect(&player(), &AudioPlayerService::volumeChanged, this, &PlaybackViewModel::followVolume);
    durationChanged();
    coverChanged();
    followVolume();
}

AudioPlayerService &PlaybackViewModel::player() const
{
    return *m_viewModel.audioPlayer();
}

void PlaybackViewModel::timeChanged()
{
    const QString text = timeText(player().currentTime());
    if (text != m_currentTimeText) {
        m_currentTimeText = text;
        Q_EMIT currentTimeTextChanged();
    }
    const double position = std::round(m_viewModel.progress() * sliderSteps) / sliderSteps;
    if (position != m_sliderPosition) {
        m_sliderPosition = position;
        Q_EMIT sliderPositionChanged();
    }
}

void PlaybackViewModel::durationChanged()
{
    const bool leadsSomewhere = player().canSeek() && std::isfinite(player().duration());
    if (leadsSomewhere != m_canSeek) {
        m_canSeek = leadsSomewhere;
        Q_EMIT canSeekChanged();
    }
    timeChanged();
}

QString PlaybackViewModel::currentCover() const
{
    CoverRegistry &covers = CoverRegistry::shared();
    if (const std::optional<OnlineSong> &song = player().currentOnlineSong())
        return covers.source(*song, m_onlineAddresses ? m_onlineAddresses->getCoverUrl(*song) : std::nullopt);
    return covers.source(player().currentSong().value_or(Song()));
}

void PlaybackViewModel::coverChanged()
{
    const QString source = currentCover();
    if (source == m_coverSource)
        return;
    m_coverSource = source;
    Q_EMIT coverSourceChanged();
}

void PlaybackViewModel::seek(double fraction)
{
    const double duration = player().duration();
    if (!m_canSeek || !std::isfinite(fraction))
        return;
    if (isAtEnd(fraction, duration))
        player().endCurrentTrack();
    else
        m_viewModel.seek(fraction);
}

void PlaybackViewModel::seekBy(double seconds, bool isRepeat)
{
    if (!m_canSeek || !std::isfinite(seconds))
        return;
    const double duration = player().duration();
    const double fraction = std::clamp((player().currentTime() + seconds) / duration, 0.0, 1.0);
    if (!isRepeat || !isAtEnd(fraction, duration))
        seek(fraction);
}

void PlaybackViewModel::changeVolume(double step)
{
    if (std::isfinite(step))
        player().setVolume(static_cast<float>(std::clamp(player().volume() + step, 0.0, 1.0)));
}

double PlaybackViewModel::volume() const
{
    return player().volume();
}

void PlaybackViewModel::dragVolume(double volume)
{
    if (!std::isfinite(volume))
        return;
    m_isDraggingVolume = true;
    player().setVolume(static_cast<float>(std::clamp(volume, 0.0, 1.0)));
}

void PlaybackViewModel::endVolumeDrag()
{
    m_isDraggingVolume = false;
    if (player().volume() > 0)
        m_audibleVolume = player().volume();
}

void PlaybackViewModel::toggleMute()
{
    player().setVolume(player().volume() > 0 ? 0 : m_audibleVolume);
}

void PlaybackViewModel::followVolume()
{
    // On its way to silence a drag comes by all that is nearly silent.
    if (!m_isDraggingVolume)
        endVolumeDrag();
    Q_EMIT volumeChanged();
}

void PlaybackViewModel::dismissPlayError()
{
    player().clearPlayError();
}

} // namespace cadorel
