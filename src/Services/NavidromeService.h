// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/NavidromeConfig.h"
#include "Models/Song.h"
#include "Platform/Platform.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>

#include <expected>
#include <optional>

namespace cadorel {

/// Why a Subsonic server could not be reached or would not answer, for a listener to read.
struct NavidromeServiceError
{
    QString message;

    friend bool operator==(const NavidromeServiceError &a, const NavidromeServiceError &b) = default;
};

/// Talks to servers of the Subsonic API. It keeps no library: `songs` is the last listing, and each song
/// carries ready-made addresses with a signed query, which are bearer credentials. Main thread; passwords are
/// asked of the credential store on a thread of its own.
class NavidromeService : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY isConnectedChanged)
    Q_PROPERTY(bool isTesting READ isTesting NOTIFY isTestingChanged)
    Q_PROPERTY(bool isSearching READ isSearching NOTIFY isSearchingChanged)
    Q_PROPERTY(QString error READ errorText NOTIFY errorChanged)

public:
    using Result = std::expected<void, NavidromeServiceError>;

    static constexpr int defaultSongCount = 200;
    static constexpr int defaultSearchCount = 120;

    /// Loads the servers.
    /// @param platform outlives the service
    explicit NavidromeService(Platform &platform);
    ~NavidromeService() override;
    Q_DISABLE_COPY_MOVE(NavidromeService)

    static NavidromeService &shared();

    const QList<NavidromeConfig> &configs() const { return m_configs; }
    /// The server of the last successful connect.
    const std::optional<NavidromeConfig> &currentConfig() const { return m_currentConfig; }
    bool isConnected() const { return m_isConnected; }
    bool isTesting() const { return m_isTesting; }
    /// A listing or a search is under way.
    bool isSearching() const { return m_isSearching; }
    /// What went wrong last, for a listener to read.
    const std::optional<QString> &error() const { return m_error; }
    QString errorText() const { return m_error.value_or(QString()); }
    /// The last listing or search result.
    const QList<Song> &songs() const { return m_songs; }

    /// Adds a server or replaces the one with its id; ends when the password is stored too.
    QCoro::Task<void> saveConfig(NavidromeConfig config, QString password);
    /// Removes a server and its password; `songs` stays.
    QCoro::Task<void> deleteConfig(NavidromeConfig config);
    /// Tries a server that need not be saved, with the password given.
    QCoro::Task<Result> testConnection(NavidromeConfig config, QString password);
    /// Makes it the current server. After a failure there is none.
    QCoro::Task<Result> connectTo(NavidromeConfig config);
    void disconnectFromServer();
    /// Lists random songs of the current server.
    QCoro::Task<void> loadDefaultSongs(int songCount = defaultSongCount);
    /// Searches the current server. A query of blanks empties the list.
    QCoro::Task<void> searchSongs(QString query, int songCount = defaultSearchCount);
    /// Lyrics of a song of any configured server; nothing for every failure.
    QCoro::Task<std::optional<QString>> lyrics(Song song);

Q_SIGNALS:
    void configsChanged();
    void currentConfigChanged();
    void isConnectedChanged();
    void isTestingChanged();
    void isSearchingChanged();
    void errorChanged();
    void songsChanged();

private:
    Platform &m_platform;
    QList<NavidromeConfig> m_configs;
    std::optional<NavidromeConfig> m_currentConfig;
    bool m_isConnected = false;
    bool m_isTesting = false;
    bool m_isSearching = false;
    std::optional<QString> m_error;
    QList<Song> m_songs;
};

} // namespace cadorel
