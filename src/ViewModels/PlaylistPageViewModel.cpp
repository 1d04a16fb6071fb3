// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PlaylistPageViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/PlaylistService.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/PlaylistListModel.h"
#include "ViewModels/SongListModel.h"

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

PlaylistPageViewModel::PlaylistPageViewModel(CadorelViewModel &viewModel, PlaylistService &service,
                                             OnlineSongListModel::CoverAddress coverAddress, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_service(service)
    , m_songs(new SongListModel(this))
    , m_onlineSongs(new OnlineSongListModel(std::move(coverAddress), this))
    , m_refresh([this] { refresh(); })
{
    m_songs->setFavorites(&m_service);
    m_onlineSongs->setFavorites(&m_service);
    connect(&m_service, &PlaylistStore::changed, this, [this] { m_refresh.request(); });
    connect(&m_viewModel, &CadorelViewModel::songsChanged, this, [this] { m_refresh.request(); });
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this, &PlaylistPageViewModel::markCurrentSong);
    connect(m_viewModel.importService(), &LocalMusicImportService::isScanningChanged, this,
            &PlaylistPageViewModel::changed);
}

PlaylistPageViewModel::~PlaylistPageViewModel() = default;

QString PlaylistPageViewModel::name() const
{
    return m_playlist ? PlaylistListModel::displayName(*m_playlist) : u"歌单"_s;
}

QString PlaylistPageViewModel::summary() const
{
    if (!m_playlist)
        return {};
    const QString counted =
        QString::number(shownCount()) + u" 首歌曲 · "_s + cadorel::displayName(m_playlist->type);
    const int missing = missingCount();
    // Otherwise a song that the listener has added and cannot see would look like a fault of the player.
    return missing == 0 ? counted : counted + u" · "_s + QString::number(missing) + u" 首不在资料库中"_s;
}

QString PlaylistPageViewModel::coverSource() const
{
    if (!m_playlist)
        return {};
    const QList<Song> &songs = m_songs->songs();
    return CoverRegistry::shared().source(*m_playlist,
                                          songs.isEmpty() ? std::nullopt : std::optional(songs.constFirst()));
}

bool PlaylistPageViewModel::isLoading() const
{
    return m_viewModel.importService()->isScanning() && missingCount() > 0;
}

PlaylistPageViewModel::Content PlaylistPageViewModel::content() const
{
    if (!m_playlist)
        return Content::Missing;
    return shownCount() > 0 ? Content::Songs : Content::Empty;
}

int PlaylistPageViewModel::shownCount() const
{
    return isOnline() ? m_onlineSongs->count() : m_songs->count();
}

int PlaylistPageViewModel::missingCount() const
{
    return m_playlist ? m_playlist->songCount() - shownCount() : 0;
}

void PlaylistPageViewModel::open(const QString &id)
{
    m_id = id;
    m_isOpen = true;
    m_refresh.run();
    markCurrentSong();
}

void PlaylistPageViewModel::close()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    Q_EMIT changed();
}

void PlaylistPageViewModel::refresh()
{
    // The rows of a page that closes stay until another one opens: it slides away with them.
    if (!m_isOpen)
        return;
    m_playlist = m_service.playlist(m_id);
    m_songs->setSongs(m_playlist ? PlaylistService::getSongs(*m_playlist, m_viewModel.localSongs())
                                 : QList<Song>());
    m_onlineSongs->setSongs(m_playlist && isOnline() ? m_playlist->onlineSongs : QList<OnlineSong>());
    Q_EMIT changed();
}

void PlaylistPageViewModel::markCurrentSong()
{
    const AudioPlayerService *player = m_viewModel.audioPlayer();
    const std::optional<Song> &song = player->currentSong();
    m_songs->setCurrentSongId(song ? song->id() : QString());
    m_onlineSongs->setCurrentSong(player->currentOnlineSong());
}

void PlaylistPageViewModel::playAll()
{
    playSongAt(0);
}

void PlaylistPageViewModel::playSongAt(int row)
{
    if (row < 0 || row >= shownCount())
        return;
    // Copies: what plays may change the lists.
    if (isOnline()) {
        const QList<OnlineSong> songs = m_onlineSongs->songs();
        m_viewModel.playOnlineSongs(songs, OnlineSong(songs.at(row)));
    } else {
        const QList<Song> songs = m_songs->songs();
        m_viewModel.audioPlayer()->playSong(Song(songs.at(row)), songs);
    }
}

void PlaylistPageViewModel::removeSong(const QString &key)
{
    if (!m_playlist)
        return;
    if (!isOnline()) {
        m_service.removeSongById(key, *m_playlist);
    } else if (const int row = m_onlineSongs->rowOf(key); row >= 0) {
        m_service.removeOnlineSong(OnlineSong(m_onlineSongs->songs().at(row)), *m_playlist);
    } else {
        return;
    }
    // At once: it is what the listener is looking at.
    m_refresh.run();
}

} // namespace cadorel
