// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/QueueModel.h"

#include "Utils/OneLine.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/SongListModel.h"

#include <algorithm>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

template <typename Record>
bool sharesList(const QList<Record> &a, const QList<Record> &b)
{
    return a.constData() == b.constData() && a.size() == b.size();
}

} // namespace

const QString QueueModel::playingSection = u"正在播放"_s;
const QString QueueModel::nextSection = u"接下来播放"_s;

QueueModel::QueueModel(Order order, OnlineSongListModel::CoverAddress coverAddress, QObject *parent)
    : RowModel(parent)
    , m_order(order)
    , m_coverAddress(std::move(coverAddress))
{
}

int QueueModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(size() + (m_hasOutsider ? 1 : 0));
}

QVariant QueueModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const AnySong any = songAt(index.row());
    const Song *song = std::get_if<Song>(&any);
    const OnlineSong *online = std::get_if<OnlineSong>(&any);
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return song ? SongListModel::displayTitle(*song)
                    : oneLineOr(online ? online->name : QString(), u"未知歌曲"_s);
    case ArtistRole:
        return oneLineOr(song ? song->artist() : online ? online->artist : QString(), u"未知艺术家"_s);
    case CoverSourceRole:
        return online ? CoverRegistry::shared().source(*online, m_coverAddress(*online))
                      : CoverRegistry::shared().source(song ? *song : Song());
    case IsPlayingRole:
        return index.row() == playingRow();
    case SectionRole:
        return index.row() == playingRow() ? playingSection : nextSection;
    default:
        return {};
    }
}

QHash<int, QByteArray> QueueModel::roleNames() const
{
    return {{TitleRole, "title"},
            {ArtistRole, "artist"},
            {CoverSourceRole, "coverSource"},
            {IsPlayingRole, "isPlaying"},
            {SectionRole, "section"}};
}

/// Index in the queue of the first row that shows a song of it.
qsizetype QueueModel::rotation() const
{
    return m_order == Order::playingFirst ? std::max<qsizetype>(0, m_queue.current) : 0;
}

qsizetype QueueModel::queueIndex(int row) const
{
    const qsizetype inQueue = row - (m_hasOutsider ? 1 : 0);
    return row < 0 || inQueue < 0 || inQueue >= size() ? -1 : (inQueue + rotation()) % size();
}

int QueueModel::playingRow() const
{
    if (m_hasOutsider)
        return 0;
    if (m_queue.current < 0)
        return -1;
    return m_order == Order::playingFirst ? 0 : static_cast<int>(m_queue.current);
}

QueueModel::AnySong QueueModel::songAt(int row) const
{
    const qsizetype index = queueIndex(row);
    if (index >= 0)
        return m_queue.songs.isEmpty() ? AnySong(m_queue.onlineSongs.at(index))
                                       : AnySong(m_queue.songs.at(index));
    if (m_queue.song)
        return *m_queue.song;
    if (m_queue.onlineSong)
        return *m_queue.onlineSong;
    return {};
}

bool QueueModel::isSameList(const PlayingQueue &other) const
{
    return sharesList(m_queue.songs, other.songs) && sharesList(m_queue.onlineSongs, other.onlineSongs);
}

/// The same songs in the same order, whatever is known of each.
bool QueueModel::hasSameRows(const PlayingQueue &other) const
{
    return m_queue.songs == other.songs && m_queue.onlineSongs == other.onlineSongs;
}

bool QueueModel::wantsOutsider(const PlayingQueue &queue) const
{
    return m_order == Order::playingFirst && queue.current < 0 && (queue.song || queue.onlineSong) &&
           !(queue.songs.isEmpty() && queue.onlineSongs.isEmpty());
}

void QueueModel::show(const PlayingQueue &queue)
{
    const int before = rowCount();
    if (isSameList(queue)) {
        showCurrent(queue);
    } else if (hasSameRows(queue)) {
        // A list that was read anew: its songs may look different, and nobody loses their place.
        m_queue.songs = queue.songs;
        m_queue.onlineSongs = queue.onlineSongs;
        showCurrent(queue);
        if (rowCount() > 0)
            Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    } else {
        showAfresh(queue);
    }
    if (rowCount() != before)
        Q_EMIT countChanged();
}

void QueueModel::showAfresh(const PlayingQueue &queue)
{
    beginResetModel();
    m_queue = queue;
    m_hasOutsider = wantsOutsider(queue);
    endResetModel();
}

/// Another song of the same queue plays.
void QueueModel::showCurrent(const PlayingQueue &queue)
{
    if (m_hasOutsider) {
        beginRemoveRows({}, 0, 0);
        m_hasOutsider = false;
        m_queue.song.reset();
        m_queue.onlineSong.reset();
        endRemoveRows();
    }
    const qsizetype before = m_queue.current;
    const int count = rowCount();
    const qsizetype turned = m_order == Order::playingFirst && count > 0
                                 ? (std::max<qsizetype>(0, queue.current) - rotation() + count) % count
                                 : 0;
    if (turned > 0)
        beginMoveRows({}, 0, static_cast<int>(turned) - 1, {}, count);
    m_queue.current = queue.current;
    m_queue.song = queue.song;
    m_queue.onlineSong = queue.onlineSong;
    if (turned > 0)
        endMoveRows();
    if (wantsOutsider(queue)) {
        beginInsertRows({}, 0, 0);
        m_hasOutsider = true;
        endInsertRows();
    }
    if (before == queue.current)
        return;
    // The rows whose song has begun, and has ended.
    tellOf(playingRow());
    if (before >= 0 && count > 0) {
        const qsizetype inQueue = (before - rotation() + count) % count;
        tellOf(static_cast<int>(inQueue) + (m_hasOutsider ? 1 : 0));
    }
}

void QueueModel::tellOf(int row)
{
    if (row >= 0 && row < rowCount())
        Q_EMIT dataChanged(index(row), index(row), {IsPlayingRole, SectionRole});
}

void QueueModel::moveCovers()
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CoverSourceRole});
}

} // namespace cadorel
