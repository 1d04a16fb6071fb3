// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/WebDAVConfig.h"
#include "ViewModels/PacedRefresh.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace cadorel {

class CadorelViewModel;
class Clock;
class SongListModel;
class WebDAVScans;
class WebDAVService;

/// One server: its songs and how its scan goes. Main thread.
class WebDAVServerPageViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/SongListModel.h")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString serverId READ serverId NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(cadorel::SongListModel *songs READ songs CONSTANT)
    Q_PROPERTY(Content content READ content NOTIFY changed)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY changed)
    Q_PROPERTY(QString scanText READ scanText NOTIFY changed)
    Q_PROPERTY(double scanProgress READ scanProgress NOTIFY changed)
    Q_PROPERTY(QString failure READ failure NOTIFY changed)
    Q_PROPERTY(bool isStale READ isStale NOTIFY changed)
    Q_PROPERTY(QString basePath READ basePath NOTIFY changed)

public:
    /// What the page shows beneath its header. Capitalised, because QML reads no other enumerators.
    enum class Content {
        Songs,
        Loading,  ///< the songs of the last run are being read
        Scanning, ///< the first scan is under way or waits
        Unscanned,
        Empty, ///< scanned, and nothing was found
        Failed ///< the scan failed, and there are no songs of an earlier one
    };
    Q_ENUM(Content)

    /// @param viewModel, @param service, @param scans and @param clock outlive this object
    WebDAVServerPageViewModel(CadorelViewModel &viewModel, WebDAVService &service, WebDAVScans &scans,
                              const Clock &clock, QObject *parent);
    ~WebDAVServerPageViewModel() override;
    Q_DISABLE_COPY_MOVE(WebDAVServerPageViewModel)

    bool isOpen() const { return m_config.has_value(); }
    QString serverId() const { return m_config ? m_config->uuidText() : QString(); }
    QString name() const { return m_config ? m_config->name : QString(); }
    /// Host, number of songs and last sync.
    QString summary() const;
    SongListModel *songs() const { return m_songs; }
    Content content() const;
    /// A scan of this server is under way or waits for another one.
    bool isScanning() const;
    QString scanText() const;
    /// 0...1
    double scanProgress() const;
    /// Why the last scan failed; empty when it did not.
    QString failure() const;
    /// The settings have changed since the songs were found.
    bool isStale() const;
    QString basePath() const { return m_config ? m_config->basePath : QString(); }

    void open(const QUuid &server);
    Q_INVOKABLE void close();
    Q_INVOKABLE void scan();
    Q_INVOKABLE void dismissFailure();
    /// Plays the song of a row, with the songs of this server as the queue.
    Q_INVOKABLE void playSongAt(int row);

Q_SIGNALS:
    void changed();

private:
    QCoro::Task<void> awaitSongs();
    void refreshConfig();
    void refreshSongs();
    void markCurrentSong();

    CadorelViewModel &m_viewModel;
    WebDAVService &m_service;
    WebDAVScans &m_scans;
    const Clock &m_clock;
    SongListModel *m_songs;
    PacedRefresh m_refresh;
    std::optional<WebDAVConfig> m_config;
    bool m_isLoading = true;
};

} // namespace cadorel
