// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/TopList.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <optional>

namespace cadorel {

class CadorelViewModel;
class OnlineMusicService;
class OnlineSongListModel;

/// One chart and its songs, which are loaded anew at each opening. Main thread.
class TopListPageViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/OnlineSongListModel.h")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY chartChanged)
    Q_PROPERTY(QString name READ name NOTIFY chartChanged)
    Q_PROPERTY(QString updateFrequency READ updateFrequency NOTIFY chartChanged)
    Q_PROPERTY(cadorel::OnlineSongListModel *songs READ songs CONSTANT)
    Q_PROPERTY(Content content READ content NOTIFY contentChanged)

public:
    /// What the page shows beneath its header. Capitalised, because QML reads no other enumerators.
    enum class Content { Songs, Loading, Empty };
    Q_ENUM(Content)

    /// @param viewModel and @param service outlive this object, @param songs is empty and becomes its child
    TopListPageViewModel(CadorelViewModel &viewModel, OnlineMusicService &service, OnlineSongListModel *songs,
                         QObject *parent);
    ~TopListPageViewModel() override;
    Q_DISABLE_COPY_MOVE(TopListPageViewModel)

    bool isOpen() const { return m_isOpen; }
    /// Of the chart that was opened last; it stays while its page goes away.
    QString name() const { return m_topList.name; }
    QString updateFrequency() const { return m_topList.updateFrequency; }
    OnlineSongListModel *songs() const { return m_songs; }
    Content content() const { return m_content; }

    void open(const TopList &topList);
    Q_INVOKABLE void close();
    /// Asks for the songs once more.
    Q_INVOKABLE void retry();
    /// Plays the song of a row, with the whole chart as the queue.
    Q_INVOKABLE void playSongAt(int row);
    /// Plays the chart from its first song; one without songs plays nothing.
    Q_INVOKABLE void playAll();

Q_SIGNALS:
    void chartChanged();
    void contentChanged();

private:
    QCoro::Task<void> load();
    void refreshSongs();
    void refreshContent();
    void markCurrentSong();

    CadorelViewModel &m_viewModel;
    OnlineMusicService &m_service;
    OnlineSongListModel *m_songs;
    TopList m_topList;
    bool m_isOpen = false;
    int m_loads = 0;
    Content m_content = Content::Empty;
};

} // namespace cadorel
