// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/QueueModel.h"

#include <QObject>

namespace cadorel {

class AudioPlayerService;
class CadorelViewModel;

/// The playing queue: the one that "next" goes through, so the online one only while the other is empty. It
/// follows the player once in a turn of the event loop, however much changes. Main thread.
class QueueViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/QueueModel.h")
    Q_PROPERTY(cadorel::QueueModel *songs READ songs CONSTANT)
    Q_PROPERTY(cadorel::QueueModel *upcoming READ upcoming CONSTANT)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY isEmptyChanged)
    Q_PROPERTY(int playingRow READ playingRow NOTIFY playingRowChanged)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)

public:
    /// @param viewModel outlives this object, @param coverAddress tells where covers of online songs lie
    QueueViewModel(CadorelViewModel &viewModel, OnlineSongListModel::CoverAddress coverAddress);
    ~QueueViewModel() override;
    Q_DISABLE_COPY_MOVE(QueueViewModel)

    /// The songs as they stand in the queue.
    QueueModel *songs() const { return m_songs; }
    /// What plays, then what comes.
    QueueModel *upcoming() const { return m_upcoming; }
    bool isEmpty() const { return m_isEmpty; }
    /// Row of songs() that plays; -1 for none.
    int playingRow() const { return m_playingRow; }

    /// Plays the song of a row of songs(); the queue stays.
    Q_INVOKABLE void play(int row);
    /// The same for a row of upcoming().
    Q_INVOKABLE void playUpcoming(int row);
    Q_INVOKABLE void togglePlayPause();
    /// Empties the queue; the song plays on.
    Q_INVOKABLE void clear();
    /// The sheet with the queue is shown.
    bool isOpen() const { return m_isOpen; }
    Q_INVOKABLE void open() { setIsOpen(true); }
    Q_INVOKABLE void close() { setIsOpen(false); }
    /// The API endpoint has changed, and the covers of online songs with it.
    void moveCovers();

Q_SIGNALS:
    void isEmptyChanged();
    void playingRowChanged();
    void isOpenChanged();

private:
    AudioPlayerService &player() const;
    PlayingQueue playersQueue() const;
    void requestRefresh();
    void refresh();
    void playRow(const QueueModel &model, int row);
    void setIsOpen(bool isOpen);

    CadorelViewModel &m_viewModel;
    QueueModel *m_songs;
    QueueModel *m_upcoming;
    bool m_isEmpty = true;
    int m_playingRow = -1;
    bool m_isOpen = false;
    bool m_isStale = false;
};

} // namespace cadorel
