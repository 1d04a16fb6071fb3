// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/NavidromeConfig.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace cadorel {

class CadorelViewModel;
class NavidromeService;
class Song;
class SongListModel;

/// One Subsonic server: songs that it picked, or what a search found. Opening the page connects. Main thread.
class NavidromeServerPageViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/SongListModel.h")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString serverId READ serverId NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString host READ host NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(cadorel::SongListModel *songs READ songs CONSTANT)
    Q_PROPERTY(Content content READ content NOTIFY changed)
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY changed)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(QString failure READ failure NOTIFY changed)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QString query READ query NOTIFY changed)

public:
    /// What the page shows beneath its header. Capitalised, because QML reads no other enumerators.
    enum class Content {
        Songs,
        Connecting,
        Loading,      ///< the first songs are on their way
        Empty,        ///< the server has no songs
        NothingFound, ///< the search found none
        Failed,       ///< no connection, or no songs came
        Disconnected
    };
    Q_ENUM(Content)

    /// @param viewModel and @param service outlive this object
    NavidromeServerPageViewModel(CadorelViewModel &viewModel, NavidromeService &service, QObject *parent);
    ~NavidromeServerPageViewModel() override;
    Q_DISABLE_COPY_MOVE(NavidromeServerPageViewModel)

    bool isOpen() const { return m_config.has_value(); }
    QString serverId() const { return m_config ? m_config->uuidText() : QString(); }
    QString name() const { return m_config ? m_config->name : QString(); }
    QString host() const;
    /// How many songs there are, or the host while there are none.
    QString summary() const;
    SongListModel *songs() const { return m_songs; }
    Content content() const;
    bool isConnected() const;
    /// A connect, a listing or a search is under way.
    bool isBusy() const;
    /// Why the last of these failed; empty when it did not, and while the next is under way.
    QString failure() const;
    /// What stands in the search field.
    const QString &searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    /// What was looked for last; empty when the server picks the songs.
    const QString &query() const { return m_query; }
    /// The server being connected to; null while there is none.
    QUuid connectingServer() const;

    void open(const QUuid &server);
    /// The settings of a server have changed: if it is the one shown, it is connected anew.
    void reopen(const QUuid &server);
    Q_INVOKABLE void close();
    /// Connects again, or asks again for what is shown.
    Q_INVOKABLE void refresh();
    /// Looks for what stands in the search field, as soon as there is a connection; for nothing, the server
    /// picks songs.
    Q_INVOKABLE void search();
    Q_INVOKABLE void disconnectFromServer();
    Q_INVOKABLE void dismissFailure();
    /// Plays the song of a row, with the songs shown as the queue.
    Q_INVOKABLE void playSongAt(int row);

Q_SIGNALS:
    void changed();
    void searchTextChanged();
    /// Other songs stand in the list, for a view to show from the first.
    void listed();

private:
    QCoro::Task<void> connectAndLoad();
    QCoro::Task<void> load(QString query);
    bool isThisServers(const QList<Song> &songs) const;
    void refreshConfig();
    void refreshSongs();
    void markCurrentSong();

    CadorelViewModel &m_viewModel;
    NavidromeService &m_service;
    SongListModel *m_songs;
    std::optional<NavidromeConfig> m_config;
    QString m_searchText;
    QString m_query;
    /// What the songs in the list were found by.
    QString m_shownQuery;
    bool m_isConnecting = false;
    bool m_isFailureDismissed = false;
    int m_listings = 0;
    /// Counts the connects: one that another has overtaken is dropped.
    quint64 m_session = 0;
};

} // namespace cadorel
