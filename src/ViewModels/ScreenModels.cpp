// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ScreenModels.h"

#include "Platform/Platform.h"
#include "Services/APIConfigService.h"
#include "ViewModels/APISettingsViewModel.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/NavidromeServerFormViewModel.h"
#include "ViewModels/NavidromeServerPageViewModel.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "ViewModels/PlaylistEditorViewModel.h"
#include "ViewModels/PlaylistPageViewModel.h"
#include "ViewModels/PlaylistPickerViewModel.h"
#include "ViewModels/TopListPageViewModel.h"
#include "ViewModels/TopListsViewModel.h"
#include "ViewModels/WebDAVServerFormViewModel.h"
#include "ViewModels/WebDAVServerPageViewModel.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Where the covers of online songs lie.
OnlineSongListModel::CoverAddress coverAddresses(const APIConfigService &config)
{
    return [&config](const OnlineSong &song) { return config.getCoverUrl(song); };
}

} // namespace

ScreenModels::ScreenModels(const ScreenServices &services, CadorelViewModel &root, LibraryViewModel &library,
                           PlaybackViewModel &playback)
    : m_root(root)
    , m_library(library)
    , m_playback(playback)
    , m_content(*services.platform.preferences)
    , m_servers(root, services.webDAV, services.platform)
    , m_online(root, services.onlineMusic, services.apiConfig)
    , m_playlists(root, services.playlists, services.platform, coverAddresses(services.apiConfig))
    , m_navidrome(root, services.navidrome)
    , m_equalizer(services.equalizer, services.audioPlayer)
    , m_lyrics({.audioPlayer = services.audioPlayer,
                .sources = {.onlineMusic = services.onlineMusic,
                            .navidrome = services.navidrome,
                            .importService = services.importService},
                .offsets = services.lyricsOffset,
                .appearance = services.appearance,
                .clock = *services.platform.clock})
    , m_nowPlaying(root, playback, services.playlists, services.equalizer, services.lyricsOffset, m_lyrics)
    , m_queue(root, coverAddresses(services.apiConfig))
    , m_miniPlayer(root, playback, services.playlists, services.appearance)
    , m_devices(services.platform.outputDevices.get())
    , m_nowPlayingSettings(services.appearance, services.platform.filePicker.get())
{
    QObject::connect(&services.apiConfig, &APIConfigService::baseURLChanged,
                     m_playlists.page()->onlineSongs(), &OnlineSongListModel::moveCovers);
    QObject::connect(&services.apiConfig, &APIConfigService::baseURLChanged, &m_queue,
                     &QueueViewModel::moveCovers);
    QObject::connect(&m_miniPlayer, &MiniPlayerViewModel::miniPlayerLocateCurrentSong, &m_content,
                     &ContentViewModel::miniPlayerLocateCurrentSong);
    QObject::connect(&m_miniPlayer, &MiniPlayerViewModel::queueRequested, &m_queue, &QueueViewModel::open);
}

ScreenModels::~ScreenModels() = default;

QVariantMap ScreenModels::windowProperties()
{
    return {{u"screens"_s, QVariant::fromValue(this)}};
}

void ScreenModels::closeSheetsAndPages()
{
    m_playlists.page()->close();
    m_servers.page()->close();
    m_navidrome.page()->close();
    m_online.charts()->page()->close();
    m_online.charts()->close();
    m_equalizer.close();
    m_devices.close();
    m_queue.close();
    m_online.settings()->close();
    m_playlists.picker()->close();
    m_playlists.editor()->cancelCreate();
    m_playlists.editor()->cancelRename();
    m_playlists.editor()->cancelDelete();
    m_servers.form()->cancel();
    m_navidrome.form()->cancel();
}

} // namespace cadorel
