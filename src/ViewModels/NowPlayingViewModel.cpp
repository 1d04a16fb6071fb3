// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/NowPlayingViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "Services/LyricsOffsetService.h"
#include "Utils/Console.h"
#include "Utils/KawaiiIcon.h"
#include "Utils/OneLine.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/LyricsLoader.h"
#include "ViewModels/LyricsViewModel.h"
#include "ViewModels/PlaybackViewModel.h"

#include <algorithm>
#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// @param quality as the preferences name it
QString qualityDisplay(const QString &quality)
{
    if (quality == "128k"_L1)
        return u"128kbps"_s;
    if (quality == "192k"_L1)
        return u"192kbps"_s;
    if (quality == "320k"_L1)
        return u"320kbps"_s;
    if (quality == "flac"_L1)
        return u"FLAC"_s;
    return u"在线"_s;
}

} // namespace

template <typename T>
void NowPlayingViewModel::publish(T &member, const T &value, void (NowPlayingViewModel::*signal)())
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*signal)();
}

NowPlayingViewModel::NowPlayingViewModel(CadorelViewModel &viewModel, PlaybackViewModel &playback,
                                         PlaylistService &playlists, EqualizerService &equalizer,
                                         LyricsOffsetService &lyricsOffset, LyricsViewModel &lyrics)
    : m_viewModel(viewModel)
    , m_playback(playback)
    , m_equalizer(equalizer)
    , m_lyricsOffset(lyricsOffset)
    , m_lyrics(lyrics)
    , m_offset(lyricsOffset)
    , m_favorite(viewModel, playlists)
{
    followPlayer();
    connect(&m_favorite, &CurrentFavorite::changed, this, &NowPlayingViewModel::isFavoriteChanged);
    connect(&m_equalizer, &EqualizerService::isEnabledChanged, this, &NowPlayingViewModel::equalizerChanged);
    connect(&m_equalizer, &EqualizerService::currentPresetChanged, this,
            &NowPlayingViewModel::equalizerChanged);
    connect(&m_lyricsOffset, &LyricsOffsetService::offsetChanged, this,
            &NowPlayingViewModel::lyricsOffsetTextChanged);
    songChanged();
}

NowPlayingViewModel::~NowPlayingViewModel() = default;

void NowPlayingViewModel::followPlayer()
{
    using Player = AudioPlayerService;
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this, &NowPlayingViewModel::songChanged);
    connect(&player(), &Player::isPlayingChanged, this, &NowPlayingViewModel::isPlayingChanged);
    connect(&player(), &Player::isLoadingChanged, this, &NowPlayingViewModel::isLoadingChanged);
    connect(&player(), &Player::playModeChanged, this, &NowPlayingViewModel::playModeChanged);
    connect(&player(), &Player::durationChanged, this, [this] {
        Q_EMIT durationTextChanged();
        if (m_isDragging)
            Q_EMIT displayTimeTextChanged();
    });
    connect(&m_playback, &PlaybackViewModel::coverSourceChanged, this,
            &NowPlayingViewModel::coverSourceChanged);
    connect(&m_playback, &PlaybackViewModel::sliderPositionChanged, this, [this] {
        if (!m_isDragging)
            Q_EMIT sliderPositionChanged();
    });
    connect(&m_playback, &PlaybackViewModel::currentTimeTextChanged, this, [this] {
        if (!m_isDragging)
            Q_EMIT displayTimeTextChanged();
    });
    // Queued: which engine plays is settled once the player has answered to the same change.
    connect(&m_equalizer, &EqualizerService::isEnabledChanged, this, &NowPlayingViewModel::updateNeedsReplay,
            Qt::QueuedConnection);
    for (const auto change : {&Player::currentSongChanged, &Player::currentOnlineSongChanged,
                              &Player::isPlayingChanged, &Player::durationChanged}) {
        connect(&player(), change, this, &NowPlayingViewModel::updateNeedsReplay, Qt::QueuedConnection);
    }
}

AudioPlayerService &NowPlayingViewModel::player() const
{
    return *m_viewModel.audioPlayer();
}

// MARK: the song

bool NowPlayingViewModel::hasSong() const
{
    return m_viewModel.hasCurrentSong();
}

void NowPlayingViewModel::songChanged()
{
    const QString id = LyricsLoader::currentSongId(player());
    const bool isOther = id != m_currentSongId;
    if (isOther)
        cancelDrag();
    publish(m_title, oneLineOr(hasSong() ? m_viewModel.currentSongTitle() : QString(), u"未知歌曲"_s),
            &NowPlayingViewModel::titleChanged);
    publish(m_artist, oneLineOr(m_viewModel.currentArtist(), u"未知艺术家"_s),
            &NowPlayingViewModel::artistChanged);
    updateQuality();
    updateNeedsReplay();
    m_offset.setSong(hasSong() ? id : QString(), m_title);
    publish(m_currentSongId, id, &NowPlayingViewModel::currentSongIdChanged);
    if (isOther)
        Q_EMIT lyricsOffsetTextChanged();
}

QString NowPlayingViewModel::coverSource() const
{
    return m_playback.coverSource();
}

void NowPlayingViewModel::updateQuality()
{
    publish(m_currentQualityDisplay, qualityDisplay(player().audioQuality()),
            &NowPlayingViewModel::currentQualityDisplayChanged);
}

void NowPlayingViewModel::toggleFavorite()
{
    m_favorite.toggle();
}

QString NowPlayingViewModel::lyricsOffsetText() const
{
    return LyricsOffsetService::formatOffset(m_lyricsOffset.getOffset(m_currentSongId));
}

// MARK: the slider

double NowPlayingViewModel::sliderPosition() const
{
    return m_isDragging ? m_dragProgress : m_playback.sliderPosition();
}

QString NowPlayingViewModel::displayTimeText() const
{
    return m_isDragging ? PlaybackViewModel::timeText(m_dragProgress * player().duration())
                        : m_playback.currentTimeText();
}

QString NowPlayingViewModel::durationText() const
{
    return PlaybackViewModel::timeText(player().duration());
}

void NowPlayingViewModel::beginDrag()
{
    if (m_isDragging)
        return;
    m_isDragging = true;
    Q_EMIT isDraggingChanged();
    Q_EMIT sliderPositionChanged();
    Q_EMIT displayTimeTextChanged();
}

void NowPlayingViewModel::dragTo(double fraction)
{
    if (std::isnan(fraction))
        return;
    m_dragProgress = std::clamp(fraction, 0.0, 1.0);
    if (!m_isDragging)
        return;
    Q_EMIT sliderPositionChanged();
    Q_EMIT displayTimeTextChanged();
}

void NowPlayingViewModel::endDrag()
{
    if (!m_isDragging)
        return;
    const double duration = player().duration();
    const double seekTime = m_dragProgress * duration;
    print(u"📍 Slider: dragProgress="_s + consoleNumber(m_dragProgress) + u", duration="_s +
          consoleNumber(duration) + u", seekTime="_s + consoleNumber(seekTime));
    // Begun anew under the finger, a song may wait for its address: what is heard is the sound from before.
    const bool isHeard = player().isCurrentLoaded();
    if (isHeard && PlaybackViewModel::isAtEnd(m_dragProgress, duration))
        player().endCurrentTrack();
    else if (isHeard)
        player().seek(seekTime);
    cancelDrag();
}

void NowPlayingViewModel::cancelDrag()
{
    if (!m_isDragging)
        return;
    m_isDragging = false;
    m_dragProgress = 0;
    Q_EMIT isDraggingChanged();
    Q_EMIT sliderPositionChanged();
    Q_EMIT displayTimeTextChanged();
}

// MARK: the controls

bool NowPlayingViewModel::isPlaying() const
{
    return player().isPlaying();
}

bool NowPlayingViewModel::isLoading() const
{
    return player().isLoading();
}

QString NowPlayingViewModel::playModeSymbol() const
{
    return player().playModeSymbol();
}

QString NowPlayingViewModel::playModeLabel() const
{
    return player().playModeLabel();
}

QString NowPlayingViewModel::playModeKawaiiName() const
{
    switch (player().playMode()) {
    case PlayMode::sequential:
        return KawaiiIcon::sequential;
    case PlayMode::shuffle:
        return KawaiiIcon::shuffle;
    case PlayMode::repeatOne:
        return KawaiiIcon::loopOne;
    case PlayMode::repeatAll:
        return KawaiiIcon::loopAll;
    }
    Q_UNREACHABLE();
}

void NowPlayingViewModel::togglePlayPause()
{
    player().togglePlayPause();
}

void NowPlayingViewModel::next()
{
    player().next();
}

void NowPlayingViewModel::previous()
{
    player().previous();
}

void NowPlayingViewModel::togglePlayMode()
{
    player().togglePlayMode();
}

// MARK: the equalizer

QString NowPlayingViewModel::equalizerText() const
{
    return m_equalizer.isEnabled() ? u"均衡器已启用"_s : u"均衡器已关闭"_s;
}

QString NowPlayingViewModel::equalizerButtonText() const
{
    return m_equalizer.isEnabled() ? u"调整"_s : u"去开启"_s;
}

QString NowPlayingViewModel::equalizerDetail() const
{
    return m_equalizer.isEnabled() ? displayName(m_equalizer.currentPreset()) : u"已关闭"_s;
}

void NowPlayingViewModel::updateNeedsReplay()
{
    publish(m_needsReplay, hasSong() && m_equalizer.isEnabled() && !player().usingEqualizerEngine(),
            &NowPlayingViewModel::needsReplayChanged);
}

// MARK: as long as the screen is shown

void NowPlayingViewModel::appear()
{
    ++m_screens;
    forget();
    updateQuality();
    m_lyrics.load();
}

void NowPlayingViewModel::disappear()
{
    // A screen that takes the place of another appears before the other one has gone.
    if (m_screens == 0 || --m_screens > 0)
        return;
    forget();
    m_lyrics.clear();
}

void NowPlayingViewModel::forget()
{
    cancelDrag();
    setCurrentPage(CoverPage);
    m_sleep.cancelCustom();
    m_sleep.select(0);
    publish(m_showSleepTimer, false, &NowPlayingViewModel::showSleepTimerChanged);
    publish(m_showLyricsOffset, false, &NowPlayingViewModel::showLyricsOffsetChanged);
    publish(m_showNowPlayingSettings, false, &NowPlayingViewModel::showNowPlayingSettingsChanged);
    publish(m_showMoreOptions, false, &NowPlayingViewModel::showMoreOptionsChanged);
}

void NowPlayingViewModel::setCurrentPage(int page)
{
    if (page >= 0 && page < PageCount)
        publish(m_currentPage, page, &NowPlayingViewModel::currentPageChanged);
}

} // namespace cadorel
