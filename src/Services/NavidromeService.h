// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/NavidromeConfig.h"
#include "Models/Song.h"
#include "Platform/Platform.h"
#include "Services/Subsonic/SubsonicAddresses.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <expected>
#include <memory>
#include <optional>

namespace cadorel {

class HttpTransfer;
class NavidromeRequestError;
struct SubsonicError;
struct SubsonicSong;

/// Why a Subsonic server could not be reached or would not answer, for a listener to read.
struct NavidromeServiceError
{
    QString message;

    friend bool operator==(const NavidromeServiceError &a, const NavidromeServiceError &b) = default;
};

/// Talks to servers of the Subsonic API. It keeps no library: `songs` is the last listing, and each song
/// carries ready-made addresses with a signed query, which are bearer credentials. Main thread; passwords are
/// asked of the credential store on a thread of its own, and long answers are read by workers.
///
/// Only what was asked for last counts: an older connect, listing or search that is still under way is given
/// up, and so is a listing whose server is the current one no more.
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
    /// Makes it the current server. After a failure there is none, but for a missing password, which leaves
    /// the current one.
    QCoro::Task<Result> connectTo(NavidromeConfig config);
    void disconnectFromServer();
    /// Lists random songs of the current server.
    QCoro::Task<void> loadDefaultSongs(int songCount = defaultSongCount);
    /// Searches the current server. A query of blanks empties the list.
    QCoro::Task<void> searchSongs(QString query, int songCount = defaultSearchCount);
    /// Lyrics of a song of any configured server; nothing for every failure. @param transfer a hand on what
    /// is asked, for who may want it no more
    QCoro::Task<std::optional<QString>> lyrics(Song song, std::shared_ptr<HttpTransfer> transfer = {});

Q_SIGNALS:
    void configsChanged();
    void currentConfigChanged();
    void isConnectedChanged();
    void isTestingChanged();
    void isSearchingChanged();
    void errorChanged();
    void songsChanged();

private:
    using Transfer = std::shared_ptr<HttpTransfer>;
    using QueryItems = SubsonicAddresses::QueryItems;
    /// What to ask for a list of songs, and the failure that a bad status of the answer is.
    struct Listing;

    template <typename T>
    void publish(T &member, const T &value, void (NavidromeService::*signal)());
    void setCurrentConfig(const std::optional<NavidromeConfig> &config);
    void setIsSearching(bool value);
    void setError(const std::optional<QString> &value);
    void setSongs(const QList<Song> &songs);
    void changeTests(int by);

    void loadConfigs();
    void saveConfigs();
    static QCoro::Task<std::optional<QString>> storedPassword(NavidromeConfig config);
    QUrl signedAPIURL(const SubsonicAccess &access, const QString &endpoint,
                      const QueryItems &queryItems) const;
    /// Gives up what @p newest stands for, and lets a new request stand there.
    static Transfer begin(Transfer &newest);
    static void giveUp(Transfer &newest);

    QCoro::Task<QByteArray> fetch(QUrl url, NavidromeRequestError badStatus, Transfer transfer);
    template <typename Response>
    QCoro::Task<Response> ask(QUrl url, NavidromeRequestError badStatus, Transfer transfer);
    QCoro::Task<void> ping(SubsonicAccess access, Transfer transfer);
    static void ensureOK(const QString &status, const std::optional<SubsonicError> &error);

    /// The current server with its password; nothing, with the error told, when there is none of both, or
    /// when another listing was asked for meanwhile.
    QCoro::Task<std::optional<SubsonicAccess>> listingAccess(Transfer transfer);
    template <typename Response>
    QCoro::Task<void> list(SubsonicAccess access, Listing listing, Transfer transfer);
    void endListing(const Transfer &transfer);
    void dropListing();
    QCoro::Task<QList<Song>> listedSongs(QList<SubsonicSong> records, SubsonicAccess access) const;

    struct SubsonicContext
    {
        SubsonicAccess access;
        QString songId;
    };
    QCoro::Task<std::optional<SubsonicContext>> resolveSubsonicContext(QString songId) const;
    QCoro::Task<std::optional<QString>> lyricsBySongId(SubsonicAccess access, QString subsonicSongId,
                                                       Transfer transfer);
    QCoro::Task<std::optional<QString>> lyricsByArtistTitle(SubsonicAccess access, QString artist,
                                                            QString title, Transfer transfer);
    QCoro::Task<std::optional<QString>> askedLyrics(SubsonicAccess access, QString endpoint,
                                                    QueryItems queryItems, Transfer transfer);

    Platform &m_platform;
    QList<NavidromeConfig> m_configs;
    std::optional<NavidromeConfig> m_currentConfig;
    bool m_isConnected = false;
    bool m_isTesting = false;
    bool m_isSearching = false;
    std::optional<QString> m_error;
    QList<Song> m_songs;

    int m_runningTests = 0;
    /// The connect and the listing that were asked for last; null when none is under way.
    Transfer m_connecting;
    Transfer m_listing;
    QUuid m_connectingConfig;
    /// Every request under way.
    QList<Transfer> m_transfers;
};

} // namespace cadorel
