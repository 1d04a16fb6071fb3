// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PlaylistPickerViewModel.h"

#include "Services/PlaylistService.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/PlaylistListModel.h"

#include <algorithm>

namespace cadorel {

PlaylistPickerViewModel::PlaylistPickerViewModel(CadorelViewModel &viewModel, PlaylistService &service,
                                                 QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_service(service)
    , m_playlists(new PlaylistListModel(this))
{
    connect(&m_service, &PlaylistStore::changed, this, &PlaylistPickerViewModel::refresh);
}

PlaylistPickerViewModel::~PlaylistPickerViewModel() = default;

void PlaylistPickerViewModel::open(const QList<Song> &songs)
{
    if (songs.isEmpty())
        return;
    m_songs = songs;
    m_onlineSongs.clear();
    show(PlaylistType::local);
}

void PlaylistPickerViewModel::openOnline(const QList<OnlineSong> &songs)
{
    if (songs.isEmpty())
        return;
    m_songs.clear();
    m_onlineSongs = songs;
    show(PlaylistType::online);
}

void PlaylistPickerViewModel::show(PlaylistType type)
{
    const bool wasOpen = std::exchange(m_isOpen, true);
    if (type != m_type) {
        m_type = type;
        Q_EMIT kindTextChanged();
    }
    refresh();
    if (!wasOpen)
        Q_EMIT isOpenChanged();
}

void PlaylistPickerViewModel::choose(const QString &id)
{
    if (!m_isOpen)
        return;
    const QList<Song> songs = m_songs;
    const QList<OnlineSong> onlineSongs = m_onlineSongs;
    close();
    const std::optional<Playlist> playlist = m_service.playlist(id);
    if (!playlist)
        return;
    // One song by the call for one: it leaves a playlist that holds the song untouched.
    if (songs.size() == 1)
        m_service.addSong(songs.constFirst(), *playlist);
    else if (!songs.isEmpty())
        m_service.addSongs(songs, *playlist);
    if (onlineSongs.size() == 1)
        m_service.addOnlineSong(onlineSongs.constFirst(), *playlist);
    else if (!onlineSongs.isEmpty())
        m_service.addOnlineSongs(onlineSongs, *playlist);
}

void PlaylistPickerViewModel::close()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    m_songs.clear();
    m_onlineSongs.clear();
    Q_EMIT isOpenChanged();
}

void PlaylistPickerViewModel::refresh()
{
    if (!m_isOpen)
        return;
    QList<Playlist> playlists;
    QSet<QString> marked;
    for (const Playlist &playlist : m_service.playlists()) {
        if (playlist.type != m_type)
            continue;
        playlists.append(playlist);
        if (holdsAll(playlist))
            marked.insert(playlist.id);
    }
    m_playlists->setPlaylists(playlists,
                              PlaylistListModel::firstSongsOf(playlists, m_viewModel.localSongs()));
    m_playlists->setMarked(marked);
}

bool PlaylistPickerViewModel::holdsAll(const Playlist &playlist) const
{
    const auto holds = [&playlist](const Song &song) {
        return PlaylistService::isSongInPlaylist(song, playlist);
    };
    const auto holdsOnline = [&playlist](const OnlineSong &song) {
        return PlaylistService::isOnlineSongInPlaylist(song, playlist);
    };
    return std::all_of(m_songs.cbegin(), m_songs.cend(), holds) &&
           std::all_of(m_onlineSongs.cbegin(), m_onlineSongs.cend(), holdsOnline);
}

} // namespace cadorel
