// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"
#include "Models/Song.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/RowModel.h"

#include <optional>
#include <variant>

namespace cadorel {

/// A queue as it stands, and what plays. At most one of the two lists has songs, and one of the two songs is
/// set.
struct PlayingQueue
{
    QList<Song> songs;
    QList<OnlineSong> onlineSongs;
    /// Index of what plays; -1 when it is not in the queue.
    qsizetype current = -1;
    std::optional<Song> song;
    std::optional<OnlineSong> onlineSong;
};

/// The rows of the queue. It shares the player's list and keeps nothing for a row, so that a queue of 100,000
/// songs costs what one of ten does. Main thread.
class QueueModel : public cadorel::RowModel // QML's tools look up the name as it stands here
{
    Q_OBJECT
public:
    enum Role {
        TitleRole = Qt::UserRole + 1, // title: QString, never empty
        ArtistRole,                   // artist: QString, never empty
        CoverSourceRole,              // coverSource: QString, address for an Image
        IsPlayingRole,                // isPlaying: bool, this song is the player's
        SectionRole                   // section: QString, heading that the row stands under
    };
    enum class Order {
        queue,       ///< as the songs stand in the queue
        playingFirst ///< what plays, in the queue or not, then what follows it and, from the front, the rest
    };

    QueueModel(Order order, OnlineSongListModel::CoverAddress coverAddress, QObject *parent);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Shows another state of the queue.
    void show(const PlayingQueue &queue);
    const PlayingQueue &shown() const { return m_queue; }
    /// Index in the queue of a row's song; -1 for a row that is none, and for what plays without being in it.
    qsizetype queueIndex(int row) const;
    /// Row of the song that plays; -1 when none of the rows does.
    int playingRow() const;
    /// The covers of online songs lie elsewhere now.
    void moveCovers();

    static const QString playingSection;
    static const QString nextSection;

private:
    using AnySong = std::variant<std::monostate, Song, OnlineSong>;

    qsizetype size() const { return m_queue.songs.size() + m_queue.onlineSongs.size(); }
    bool isSameList(const PlayingQueue &other) const;
    bool hasSameRows(const PlayingQueue &other) const;
    qsizetype rotation() const;
    bool wantsOutsider(const PlayingQueue &queue) const;
    AnySong songAt(int row) const;
    void showAfresh(const PlayingQueue &queue);
    void showCurrent(const PlayingQueue &queue);
    void tellOf(int row);

    const Order m_order;
    OnlineSongListModel::CoverAddress m_coverAddress;
    PlayingQueue m_queue;
    /// What plays is not in the queue and stands before it, in a row of its own.
    bool m_hasOutsider = false;
};

} // namespace cadorel
