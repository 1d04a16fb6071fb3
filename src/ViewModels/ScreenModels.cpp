// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ScreenModels.h"

#include "Services/APIConfigService.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "ViewModels/PlaylistPageViewModel.h"

namespace cadorel {

using namespace Qt::StringLiterals;

ScreenModels::ScreenModels(const ScreenServices &services, CadorelViewModel &root, LibraryViewModel &library,
                           PlaybackViewModel &playback)
    : m_root(root)
    , m_library(library)
    , m_playback(playback)
    , m_servers(root, services.webDAV, services.platform)
    , m_online(root, services.onlineMusic, services.apiConfig)
    , m_playlists(root, services.playlists, services.platform,
                  [&config = services.apiConfig](const OnlineSong &song) { return config.getCoverUrl(song); })
    , m_navidrome(root, services.navidrome)
    , m_equalizer(services.equalizer, services.audioPlayer)
{
    QObject::connect(&services.apiConfig, &APIConfigService::baseURLChanged,
                     m_playlists.page()->onlineSongs(), &OnlineSongListModel::moveCovers);
}

ScreenModels::~ScreenModels() = default;

QVariantMap ScreenModels::windowProperties()
{
    return {{u"viewModel"_s, QVariant::fromValue(&m_root)},
            {u"playback"_s, QVariant::fromValue(&m_playback)},
            {u"library"_s, QVariant::fromValue(&m_library)},
            {u"servers"_s, QVariant::fromValue(&m_servers)},
            {u"online"_s, QVariant::fromValue(&m_online)},
            {u"playlists"_s, QVariant::fromValue(&m_playlists)},
            {u"navidrome"_s, QVariant::fromValue(&m_navidrome)},
            {u"equalizer"_s, QVariant::fromValue(&m_equalizer)}};
}

} // namespace cadorel
