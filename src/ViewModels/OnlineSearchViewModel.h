// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/MusicPlatform.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace cadorel {

class CadorelViewModel;
class OnlineMusicService;
class OnlineSongListModel;

/// The search of the online platforms: what is looked for and where, and what has come of it. Searches run
/// when the listener asks for one or changes the platform, never while he types. Main thread.
class OnlineSearchViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/OnlineSongListModel.h")
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QStringList platforms READ platforms CONSTANT)
    Q_PROPERTY(int platformIndex READ platformIndex NOTIFY platformIndexChanged)
    Q_PROPERTY(Content content READ content NOTIFY contentChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(cadorel::OnlineSongListModel *songs READ songs CONSTANT)

public:
    /// What stands in the place of the list. Capitalised, because QML reads no other enumerators.
    enum class Content {
        Initial, ///< nobody has searched yet
        Searching,
        Results,
        Failed,
        Empty ///< searched, and nothing was found
    };
    Q_ENUM(Content)
    /// A platform, or nothing for all of them at once.
    using Scope = std::optional<MusicPlatform>;

    /// @param viewModel and @param service outlive this object, @param songs is empty and becomes its child
    OnlineSearchViewModel(CadorelViewModel &viewModel, OnlineMusicService &service,
                          OnlineSongListModel *songs, QObject *parent);
    ~OnlineSearchViewModel() override;
    Q_DISABLE_COPY_MOVE(OnlineSearchViewModel)

    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    /// The names of the platforms, and behind them the one for all at once.
    QStringList platforms() const;
    int platformIndex() const;
    Scope selectedPlatform() const { return m_selectedPlatform; }
    /// What was searched for last, and where.
    QString lastSearchKeyword() const { return m_lastSearchKeyword; }
    Scope lastSearchPlatform() const { return m_lastSearchPlatform; }
    Content content() const { return m_content; }
    /// Why the last search failed, for the listener to read.
    QString error() const { return m_error; }
    OnlineSongListModel *songs() const { return m_songs; }

    /// Searches for the text as it stands.
    Q_INVOKABLE void performSearch();
    /// The same, unless there is no text or it is what was searched for last, there, whatever came of it.
    Q_INVOKABLE void searchIfNew();
    /// Chooses a platform by its place in platforms(); a text that is there is searched for there.
    Q_INVOKABLE void selectPlatform(int index);
    /// Searches again as the last time, whatever has been typed since.
    Q_INVOKABLE void retry();
    /// Takes the text and the failure away.
    Q_INVOKABLE void clear();
    /// Searches for the text on the platform that comes next.
    Q_INVOKABLE void tryNextPlatform();
    /// Plays the song of a row, with all results as the queue.
    Q_INVOKABLE void playSongAt(int row);

Q_SIGNALS:
    void searchTextChanged();
    void platformIndexChanged();
    void contentChanged();
    void errorChanged();

private:
    void setSelectedPlatform(Scope platform);
    void refreshSongs();
    void refreshContent();
    void refreshError();
    void markCurrentSong();

    CadorelViewModel &m_viewModel;
    OnlineMusicService &m_service;
    OnlineSongListModel *m_songs;
    QString m_searchText;
    Scope m_selectedPlatform = MusicPlatform::netease;
    QString m_lastSearchKeyword;
    Scope m_lastSearchPlatform = MusicPlatform::netease;
    bool m_hasSearched = false;
    Content m_content = Content::Initial;
    QString m_error;
};

} // namespace cadorel
