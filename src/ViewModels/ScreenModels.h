// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/ContentViewModel.h"
#include "ViewModels/EqualizerViewModel.h"
#include "ViewModels/LyricsViewModel.h"
#include "ViewModels/MiniPlayerViewModel.h"
#include "ViewModels/NavidromeServersViewModel.h"
#include "ViewModels/NowPlayingSettingsViewModel.h"
#include "ViewModels/NowPlayingViewModel.h"
#include "ViewModels/OnlineViewModel.h"
#include "ViewModels/OutputDevicesViewModel.h"
#include "ViewModels/PlaylistsViewModel.h"
#include "ViewModels/QueueViewModel.h"
#include "ViewModels/WebDAVServersViewModel.h"

#include <QObject>
#include <QVariantMap>

namespace cadorel {

class APIConfigService;
class AudioPlayerService;
class CadorelViewModel;
class EqualizerService;
class LibraryViewModel;
class LocalMusicImportService;
class LyricsOffsetService;
class NavidromeService;
class OnlineMusicService;
class PlaybackViewModel;
class PlaylistService;
class ThemeService;
class WebDAVService;
struct Platform;

/// What the screens stand on. Everything outlives them.
struct ScreenServices
{
    Platform &platform;
    AudioPlayerService &audioPlayer;
    LocalMusicImportService &importService;
    EqualizerService &equalizer;
    PlaylistService &playlists;
    APIConfigService &apiConfig;
    OnlineMusicService &onlineMusic;
    WebDAVService &webDAV;
    NavidromeService &navidrome;
    LyricsOffsetService &lyricsOffset;
    ThemeService &appearance;
};

/// The view models of the window's screens, joined to each other. Main thread.
class ScreenModels : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/CadorelViewModel.h")
    Q_MOC_INCLUDE("ViewModels/LibraryViewModel.h")
    Q_MOC_INCLUDE("ViewModels/PlaybackViewModel.h")
    Q_PROPERTY(cadorel::CadorelViewModel *viewModel READ viewModel CONSTANT)
    Q_PROPERTY(cadorel::LibraryViewModel *library READ library CONSTANT)
    Q_PROPERTY(cadorel::PlaybackViewModel *playback READ playback CONSTANT)
    Q_PROPERTY(cadorel::ContentViewModel *content READ content CONSTANT)
    Q_PROPERTY(cadorel::WebDAVServersViewModel *servers READ servers CONSTANT)
    Q_PROPERTY(cadorel::OnlineViewModel *online READ online CONSTANT)
    Q_PROPERTY(cadorel::PlaylistsViewModel *playlists READ playlists CONSTANT)
    Q_PROPERTY(cadorel::NavidromeServersViewModel *navidrome READ navidrome CONSTANT)
    Q_PROPERTY(cadorel::EqualizerViewModel *equalizer READ equalizer CONSTANT)
    Q_PROPERTY(cadorel::NowPlayingViewModel *nowPlaying READ nowPlaying CONSTANT)
    Q_PROPERTY(cadorel::LyricsViewModel *lyrics READ lyrics CONSTANT)
    Q_PROPERTY(cadorel::QueueViewModel *queue READ queue CONSTANT)
    Q_PROPERTY(cadorel::MiniPlayerViewModel *miniPlayer READ miniPlayer CONSTANT)
    Q_PROPERTY(cadorel::OutputDevicesViewModel *devices READ devices CONSTANT)
    Q_PROPERTY(cadorel::NowPlayingSettingsViewModel *nowPlayingSettings READ nowPlayingSettings CONSTANT)

public:
    /// @param root, @param library and @param playback outlive them
    ScreenModels(const ScreenServices &services, CadorelViewModel &root, LibraryViewModel &library,
                 PlaybackViewModel &playback);
    ~ScreenModels() override;
    Q_DISABLE_COPY_MOVE(ScreenModels)

    CadorelViewModel *viewModel() const { return &m_root; }
    LibraryViewModel *library() const { return &m_library; }
    PlaybackViewModel *playback() const { return &m_playback; }
    ContentViewModel *content() { return &m_content; }
    WebDAVServersViewModel *servers() { return &m_servers; }
    OnlineViewModel *online() { return &m_online; }
    PlaylistsViewModel *playlists() { return &m_playlists; }
    NavidromeServersViewModel *navidrome() { return &m_navidrome; }
    EqualizerViewModel *equalizer() { return &m_equalizer; }
    NowPlayingViewModel *nowPlaying() { return &m_nowPlaying; }
    LyricsViewModel *lyrics() { return &m_lyrics; }
    QueueViewModel *queue() { return &m_queue; }
    MiniPlayerViewModel *miniPlayer() { return &m_miniPlayer; }
    OutputDevicesViewModel *devices() { return &m_devices; }
    NowPlayingSettingsViewModel *nowPlayingSettings() { return &m_nowPlayingSettings; }

    /// What the window of Main.qml asks for, by the names of its properties.
    QVariantMap windowProperties();
    /// Forgets which sheets and pages are open, so that screens that are made anew begin without.
    Q_INVOKABLE void closeSheetsAndPages();

private:
    CadorelViewModel &m_root;
    LibraryViewModel &m_library;
    PlaybackViewModel &m_playback;
    ContentViewModel m_content;
    WebDAVServersViewModel m_servers;
    OnlineViewModel m_online;
    PlaylistsViewModel m_playlists;
    NavidromeServersViewModel m_navidrome;
    EqualizerViewModel m_equalizer;
    LyricsViewModel m_lyrics;
    NowPlayingViewModel m_nowPlaying;
    QueueViewModel m_queue;
    MiniPlayerViewModel m_miniPlayer;
    OutputDevicesViewModel m_devices;
    NowPlayingSettingsViewModel m_nowPlayingSettings;
};

} // namespace cadorel
