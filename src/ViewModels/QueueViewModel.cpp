// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/QueueViewModel.h"

#include "Services/AudioPlayerService.h"
#include "ViewModels/CadorelViewModel.h"

#include <utility>

namespace cadorel {

namespace {

/// Where in the queue the player is: at @p index if that is its song, for a song can be in it twice.
template <typename Record>
qsizetype placeOf(const std::optional<Record> &song, const QList<Record> &queue, int index)
{
    if (!song)
        return -1;
    if (index >= 0 && index < queue.size() && queue.at(index) == *song)
        return index;
    return queue.indexOf(*song);
}

} // namespace

QueueViewModel::QueueViewModel(CadorelViewModel &viewModel, OnlineSongListModel::CoverAddress coverAddress)
    : m_viewModel(viewModel)
    , m_songs(new QueueModel(QueueModel::Order::queue, coverAddress, this))
    , m_upcoming(new QueueModel(QueueModel::Order::playingFirst, std::move(coverAddress), this))
{
    using Player = AudioPlayerService;
    for (const auto signal :
         {&Player::queueChanged, &Player::onlineQueueChanged, &Player::currentIndexChanged,
          &Player::currentSongChanged, &Player::currentOnlineSongChanged})
        connect(&player(), signal, this, &QueueViewModel::requestRefresh);
    refresh();
}

QueueViewModel::~QueueViewModel() = default;

AudioPlayerService &QueueViewModel::player() const
{
    return *m_viewModel.audioPlayer();
}

PlayingQueue QueueViewModel::playersQueue() const
{
    PlayingQueue queue;
    queue.song = player().currentSong();
    queue.onlineSong = player().currentOnlineSong();
    if (player().queue().isEmpty()) {
        queue.onlineSongs = player().onlineQueue();
        queue.current = placeOf(queue.onlineSong, queue.onlineSongs, player().currentIndex());
    } else {
        queue.songs = player().queue();
        queue.current = placeOf(queue.song, queue.songs, player().currentIndex());
    }
    return queue;
}

/// The player tells its song, its queue and its place in it one after the other; what is between is no state
/// that anybody should see.
void QueueViewModel::requestRefresh()
{
    if (std::exchange(m_isStale, true))
        return;
    const auto refreshOnce = [this] {
        if (m_isStale)
            refresh();
    };
    QMetaObject::invokeMethod(this, refreshOnce, Qt::QueuedConnection);
}

void QueueViewModel::refresh()
{
    m_isStale = false;
    const PlayingQueue queue = playersQueue();
    m_songs->show(queue);
    m_upcoming->show(queue);
    if (const bool isEmpty = m_songs->count() == 0; isEmpty != m_isEmpty) {
        m_isEmpty = isEmpty;
        Q_EMIT isEmptyChanged();
    }
    if (const int row = m_songs->playingRow(); row != m_playingRow) {
        m_playingRow = row;
        Q_EMIT playingRowChanged();
    }
}

void QueueViewModel::play(int row)
{
    playRow(*m_songs, row);
}

void QueueViewModel::playUpcoming(int row)
{
    playRow(*m_upcoming, row);
}

void QueueViewModel::playRow(const QueueModel &model, int row)
{
    // Kept, for the model changes while the player takes the song.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const PlayingQueue queue = model.shown();
    const qsizetype index = model.queueIndex(row);
    if (index < 0) {
        // What plays without being in the queue starts anew, and the queue stays.
        if (row != 0 || model.playingRow() != 0)
            return;
        if (queue.song)
            m_viewModel.playSongs({}, *queue.song);
        else if (queue.onlineSong)
            m_viewModel.playOnlineSongs({}, *queue.onlineSong);
    } else if (!queue.songs.isEmpty()) {
        m_viewModel.playSongs(queue.songs, queue.songs.at(index));
    } else {
        m_viewModel.playOnlineSongs(queue.onlineSongs, queue.onlineSongs.at(index));
    }
}

void QueueViewModel::togglePlayPause()
{
    m_viewModel.togglePlayPause();
}

void QueueViewModel::clear()
{
    player().clearQueue();
    refresh();
}

void QueueViewModel::setIsOpen(bool isOpen)
{
    if (isOpen == m_isOpen)
        return;
    m_isOpen = isOpen;
    Q_EMIT isOpenChanged();
}

void QueueViewModel::moveCovers()
{
    m_songs->moveCovers();
    m_upcoming->moveCovers();
}

} // namespace cadorel
