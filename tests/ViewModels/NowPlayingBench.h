// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeAudioEngine.h"
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakeOnlineSongAddresses.h"
#include "Fakes/PlayerBench.h"
#include "Services/APIConfigService.h"
#include "Services/EqualizerService.h"
#include "Services/LyricsOffsetService.h"
#include "Services/NavidromeService.h"
#include "Services/OnlineMusicService.h"
#include "Services/PlaylistService.h"
#include "Services/ThemeService.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/LyricsViewModel.h"
#include "ViewModels/NowPlayingViewModel.h"
#include "ViewModels/PlaybackViewModel.h"

namespace cadorel {

/// The full-screen player's view model over the real player, playlists and equalizer, on a machine of fakes.
class NowPlayingBench
{
public:
    NowPlayingBench() { console.take(); }
    ~NowPlayingBench()
    {
        // A length that is never told would keep the task that waits for it.
        if (home.streamPlayer()) {
            for (const std::shared_ptr<FakePlayerItem> &item : std::as_const(home.streamPlayer()->items))
                item->answerDuration(std::unexpected(QStringLiteral("the test has ended")));
        }
        settle();
    }
    Q_DISABLE_COPY_MOVE(NowPlayingBench)

    /// Plays the song of that id, with another one after it.
    void play(const QString &id, double duration) { playSong(fileSong(id), duration); }
    void playSong(const Song &song, double duration)
    {
        player.playSong(song, {song, fileSong(QStringLiteral("following"))});
        stream().lastItem()->answerDuration(duration);
        stream().lastItem()->becomeReady();
        settle();
    }
    /// As a finger does it.
    void dragAndRelease(double fraction)
    {
        nowPlaying.dragTo(fraction);
        nowPlaying.beginDrag();
        nowPlaying.endDrag();
    }
    FakeStreamPlayer &stream() const { return *home.streamPlayer(); }
    QString songId() const { return songOf(player).id(); }

    ConsoleLines console;
    TestPlatform home;
    FakeOnlineSongAddresses addresses;
    FakeAudioEngine *engine = new FakeAudioEngine;
    EqualizerService equalizer{*home.platform.preferences, std::unique_ptr<AudioEngine>(engine)};
    LyricsOffsetService offsets{home.platform};
    LocalMusicImportService importService{home.platform};
    AudioPlayerService player{
        home.platform, importService, {.equalizer = &equalizer, .onlineAddresses = &addresses}};
    PlaylistService playlists{home.platform, importService};
    CadorelViewModel viewModel{player, importService, {.playlistService = &playlists}};
    PlaybackViewModel playback{viewModel, &addresses};
    APIConfigService apiConfig{home.platform};
    OnlineMusicService onlineMusic{home.platform, apiConfig};
    NavidromeService navidrome{home.platform};
    FakeDesktopAppearance desktop;
    ThemeManager themeManager{home.preferences(), desktop};
    ThemeService themeService{home.preferences(), themeManager, desktop};
    LyricsViewModel lyrics{
        {.audioPlayer = player,
         .sources = {.onlineMusic = onlineMusic, .navidrome = navidrome, .importService = importService},
         .offsets = offsets,
         .appearance = themeService,
         .clock = *home.platform.clock}};
    NowPlayingViewModel nowPlaying{viewModel, playback, playlists, equalizer, offsets, lyrics};
};

} // namespace cadorel
