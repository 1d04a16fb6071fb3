// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace cadorel {

class AudioPlayerService;
class CadorelViewModel;
class PlaylistService;

/// Whether what plays, a song or an online song, is a favourite. Main thread.
class CurrentFavorite : public QObject
{
    Q_OBJECT
public:
    /// Both outlive this object.
    CurrentFavorite(CadorelViewModel &viewModel, PlaylistService &playlists);

    bool isFavorite() const { return m_isFavorite; }
    /// Makes it one, or takes that back; nothing without a song.
    void toggle();

Q_SIGNALS:
    void changed();

private:
    void update();

    AudioPlayerService &m_player;
    PlaylistService &m_playlists;
    bool m_isFavorite = false;
};

} // namespace cadorel
