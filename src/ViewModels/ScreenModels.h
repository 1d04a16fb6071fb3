// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/EqualizerViewModel.h"
#include "ViewModels/NavidromeServersViewModel.h"
#include "ViewModels/OnlineViewModel.h"
#include "ViewModels/PlaylistsViewModel.h"
#include "ViewModels/WebDAVServersViewModel.h"

#include <QVariantMap>

namespace cadorel {

class APIConfigService;
class AudioPlayerService;
class CadorelViewModel;
class EqualizerService;
class LibraryViewModel;
class NavidromeService;
class OnlineMusicService;
class PlaybackViewModel;
class PlaylistService;
class WebDAVService;
struct Platform;

/// What the screens stand on. Everything outlives them.
struct ScreenServices
{
    Platform &platform;
    AudioPlayerService &audioPlayer;
    EqualizerService &equalizer;
    PlaylistService &playlists;
    APIConfigService &apiConfig;
    OnlineMusicService &onlineMusic;
    WebDAVService &webDAV;
    NavidromeService &navidrome;
};

/// The view models of the window's screens, joined to each other. Main thread.
class ScreenModels
{
public:
    /// @param root, @param library and @param playback outlive them
    ScreenModels(const ScreenServices &services, CadorelViewModel &root, LibraryViewModel &library,
                 PlaybackViewModel &playback);
    ~ScreenModels();
    Q_DISABLE_COPY_MOVE(ScreenModels)

    WebDAVServersViewModel &servers() { return m_servers; }
    OnlineViewModel &online() { return m_online; }
    PlaylistsViewModel &playlists() { return m_playlists; }
    NavidromeServersViewModel &navidrome() { return m_navidrome; }
    EqualizerViewModel &equalizer() { return m_equalizer; }

    /// What the window of Main.qml asks for, by the names of its properties.
    QVariantMap windowProperties();

private:
    CadorelViewModel &m_root;
    LibraryViewModel &m_library;
    PlaybackViewModel &m_playback;
    WebDAVServersViewModel m_servers;
    OnlineViewModel m_online;
    PlaylistsViewModel m_playlists;
    NavidromeServersViewModel m_navidrome;
    EqualizerViewModel m_equalizer;
};

} // namespace cadorel
