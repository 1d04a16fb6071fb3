// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/CurrentFavorite.h"

#include "Services/AudioPlayerService.h"
#include "Services/PlaylistService.h"
#include "ViewModels/CadorelViewModel.h"

#include <optional>

namespace cadorel {

CurrentFavorite::CurrentFavorite(CadorelViewModel &viewModel, PlaylistService &playlists)
    : m_player(*viewModel.audioPlayer())
    , m_playlists(playlists)
{
    connect(&viewModel, &CadorelViewModel::currentChanged, this, &CurrentFavorite::update);
    connect(&playlists, &PlaylistStore::changed, this, &CurrentFavorite::update);
    update();
}

void CurrentFavorite::toggle()
{
    // Copies: the player may be given another song while the playlists tell of the change.
    if (const std::optional<Song> song = m_player.currentSong())
        m_playlists.toggleFavorite(*song);
    else if (const std::optional<OnlineSong> online = m_player.currentOnlineSong())
        m_playlists.toggleFavorite(*online);
}

void CurrentFavorite::update()
{
    const auto &song = m_player.currentSong();
    const auto &online = m_player.currentOnlineSong();
    const bool isFavorite = song     ? m_playlists.isFavorite(*song)
                            : online ? m_playlists.isFavorite(*online)
                                     : false;
    if (isFavorite == m_isFavorite)
        return;
    m_isFavorite = isFavorite;
    Q_EMIT changed();
}

} // namespace cadorel
