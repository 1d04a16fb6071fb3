// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"
#include "Models/WebDAVConfig.h"
#include "Models/WebDAVError.h"
#include "Platform/Platform.h"
#include "Services/Seams/WebDAVSource.h"
#include "Services/WebDAV/WebDAVFile.h"

#include <QCoroTask>
#include <QDateTime>
#include <QList>
#include <QPromise>
#include <QString>
#include <QUuid>

#include <expected>
#include <memory>
#include <optional>

namespace cadorel {

class HttpTransfer;
class WebDAVSongStore;
enum class SecretStatus : int;

/// Everything that talks to WebDAV servers but the streaming of audio: the list of servers, connections, the
/// walk over their directories, and the songs that come of it, which are kept for the next start. Main
/// thread.
///
/// The songs of the last run are read on other threads while the window comes up: whatever changes the list
/// waits for them first. Passwords are asked of the credential store on a thread of its own.
class WebDAVService : public WebDAVSource
{
    Q_OBJECT
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY isConnectedChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(bool isTesting READ isTesting NOTIFY isTestingChanged)
    Q_PROPERTY(QString error READ errorText NOTIFY errorChanged)
    Q_PROPERTY(double scanProgress READ scanProgress NOTIFY scanProgressChanged)

public:
    /// Loads the servers, and starts loading the songs.
    /// @param platform outlives the service
    explicit WebDAVService(Platform &platform);
    /// Songs that are not stored yet are stored.
    ~WebDAVService() override;
    Q_DISABLE_COPY_MOVE(WebDAVService)

    static WebDAVService &shared();

    /// All servers in the order of their creation.
    const QList<WebDAVConfig> &configs() const { return m_configs; }
    /// The server of the last successful connect().
    const std::optional<WebDAVConfig> &currentConfig() const { return m_currentConfig; }
    bool isConnected() const { return m_isConnected; }
    bool isScanning() const { return m_isScanning; }
    bool isTesting() const { return m_isTesting; }
    QList<Song> webDAVSongs() const override { return m_webDAVSongs; }
    /// Why the last scan failed, for a listener to read.
    const std::optional<QString> &error() const { return m_error; }
    QString errorText() const { return m_error.value_or(QString()); }
    /// A rough count of finished directories, 0...1.
    double scanProgress() const { return m_scanProgress; }
    /// End of the last successful scan of this run.
    const std::optional<QDateTime> &lastScanDate() const { return m_lastScanDate; }

    /// Adds a server or replaces the one with its id; ends when the password is stored too.
    QCoro::Task<void> saveConfig(WebDAVConfig config, QString password);
    /// Removes a server, its password and its songs.
    QCoro::Task<void> deleteConfig(WebDAVConfig config);
    /// Tries a server that need not be saved, with the password given.
    QCoro::Task<std::expected<void, WebDAVError>> testConnection(WebDAVConfig config, QString password);
    /// Makes it the current server. After a failure there is none.
    /// @throws WebDAVError, or TransportError when no answer came
    QCoro::Task<void> connectTo(WebDAVConfig config);
    void disconnectFromServer();

    /// Walks one server and replaces its songs. A failure is told in `error` and leaves the old songs. A scan
    /// that is asked for during another begins after it.
    QCoro::Task<void> scanMusic(WebDAVConfig config);
    QCoro::Task<void> scanAllConfigs() override;
    QList<Song> getSongs(const WebDAVConfig &config) const;
    /// Forgets the songs of all servers.
    void clearAllSongs();
    /// Builds the addresses of a server's songs anew, for another password, host or port.
    QCoro::Task<void> refreshSongURLs(WebDAVConfig config);
    /// Takes title, artist, album, duration, lyrics and cover of @p song over to the stored record.
    void updateSongMetadata(const Song &song);

    /// Ends when the songs of the last run are there, or known not to come.
    QCoro::Task<void> songsLoaded();
    /// Ends when every change of the songs so far has been handed to the preferences.
    QCoro::Task<void> songsStored();

Q_SIGNALS:
    void configsChanged();
    void currentConfigChanged();
    void isConnectedChanged();
    void isScanningChanged();
    void isTestingChanged();
    void errorChanged();
    void scanProgressChanged();
    void lastScanDateChanged();

private:
    struct Scan;
    using ScanPointer = std::shared_ptr<Scan>;
    using Password = std::expected<QString, SecretStatus>;

    void loadConfigs();
    void saveConfigs();
    static QCoro::Task<Password> storedPassword(WebDAVConfig config);
    QCoro::Task<QList<WebDAVFile>> performPROPFIND(WebDAVConfig config, QString password, QString path,
                                                   std::shared_ptr<HttpTransfer> transfer);

    QCoro::Task<void> loadCachedSongs();
    QCoro::Task<void> takeStored(std::shared_ptr<QList<Song>> stored);
    void saveCachedSongs();
    QCoro::Task<void> takeMetadataWhenLoaded(Song song);
    QCoro::Task<void> clearWhenLoaded();
    void takeMetadata(const Song &song);
    void replaceSongs(const WebDAVConfig &config, const QList<Song> &songs);

    QCoro::Task<void> runScan(ScanPointer scan);
    QCoro::Task<void> walk(ScanPointer scan);
    QCoro::Task<void> scanDirectory(ScanPointer scan, QString password, QString path, int depth);
    void dropScans(const QUuid &configId);

    void setSongs(const QList<Song> &songs);
    void setCurrentConfig(const std::optional<WebDAVConfig> &config);
    void setIsConnected(bool value);
    void setIsScanning(bool value);
    void setError(const std::optional<QString> &value);
    void setScanProgress(double value);
    void changeTests(int by);
    template <typename T>
    void publish(T &member, const T &value, void (WebDAVService::*signal)());

    Platform &m_platform;
    QList<WebDAVConfig> m_configs;
    std::optional<WebDAVConfig> m_currentConfig;
    bool m_isConnected = false;
    bool m_isScanning = false;
    bool m_isTesting = false;
    QList<Song> m_webDAVSongs;
    std::optional<QString> m_error;
    double m_scanProgress = 0;
    std::optional<QDateTime> m_lastScanDate;

    int m_runningTests = 0;
    /// Grows with every change of the songs.
    quint64 m_revision = 0;
    /// Songs of servers whose password the credential store would not tell at the start. They are in no list,
    /// but stay stored, so that a prompt that was dismissed costs nobody the songs.
    QList<Song> m_heldBack;
    bool m_isLoaded = false;
    QPromise<void> m_loaded;
    /// In the order in which they were asked for; the first one runs.
    QList<ScanPointer> m_scans;
    /// Requests under way.
    QList<std::shared_ptr<HttpTransfer>> m_transfers;
    std::unique_ptr<WebDAVSongStore> m_store;
};

} // namespace cadorel
