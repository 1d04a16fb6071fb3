// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/WebDAVServerPageViewModel.h"

#include "Platform/Clock.h"
#include "Services/AudioPlayerService.h"
#include "Services/WebDAVService.h"
#include "Utils/Tasks.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/WebDAVScans.h"
#include "ViewModels/WebDAVServerTexts.h"

#include <QPointer>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

WebDAVServerPageViewModel::WebDAVServerPageViewModel(CadorelViewModel &viewModel, WebDAVService &service,
                                                     WebDAVScans &scans, const Clock &clock, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_service(service)
    , m_scans(scans)
    , m_clock(clock)
    , m_songs(new SongListModel(this))
    , m_refresh([this] { refreshSongs(); })
{
    m_songs->setFavorites(m_viewModel.playlistStore());
    connect(&m_service, &WebDAVService::configsChanged, this, &WebDAVServerPageViewModel::refreshConfig);
    connect(&m_service, &WebDAVSource::changed, this, [this] { m_refresh.request(); });
    connect(&m_scans, &WebDAVScans::changed, this, [this](const QUuid &server) {
        if (m_config && m_config->id == server)
            Q_EMIT changed();
    });
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this,
            &WebDAVServerPageViewModel::markCurrentSong);
    detach(awaitSongs());
}

WebDAVServerPageViewModel::~WebDAVServerPageViewModel() = default;

QCoro::Task<void> WebDAVServerPageViewModel::awaitSongs()
{
    const QPointer<WebDAVServerPageViewModel> self(this);
    co_await m_service.songsLoaded();
    if (!self)
        co_return;
    m_isLoading = false;
    m_refresh.run();
}

void WebDAVServerPageViewModel::open(const QUuid &server)
{
    m_config.emplace();
    m_config->id = server;
    refreshConfig();
    m_refresh.run();
    markCurrentSong();
}

void WebDAVServerPageViewModel::close()
{
    if (!m_config)
        return;
    m_config.reset();
    Q_EMIT changed();
}

void WebDAVServerPageViewModel::refreshConfig()
{
    if (!m_config)
        return;
    const QList<WebDAVConfig> configs = m_service.configs();
    const auto found = std::find(configs.cbegin(), configs.cend(), *m_config);
    if (found == configs.cend())
        m_config.reset();
    else
        m_config = *found;
    Q_EMIT changed();
}

void WebDAVServerPageViewModel::refreshSongs()
{
    // The rows of a page that closes stay until another one opens: it slides away with them.
    if (!m_config)
        return;
    m_songs->setSongs(m_service.getSongs(*m_config));
    Q_EMIT changed();
}

void WebDAVServerPageViewModel::markCurrentSong()
{
    const std::optional<Song> &song = m_viewModel.audioPlayer()->currentSong();
    m_songs->setCurrentSongId(song ? song->id() : QString());
}

QString WebDAVServerPageViewModel::summary() const
{
    if (!m_config)
        return {};
    const QString sync = serverTexts::lastSync(*m_config, m_clock.now());
    return m_songs->count() == 0 ? sync : QString::number(m_songs->count()) + u" 首歌曲 · "_s + sync;
}

WebDAVServerPageViewModel::Content WebDAVServerPageViewModel::content() const
{
    if (m_songs->count() > 0 || !m_config)
        return Content::Songs;
    if (isScanning())
        return Content::Scanning;
    if (!failure().isEmpty())
        return Content::Failed;
    if (!m_config->lastSyncDate)
        return Content::Unscanned;
    return m_isLoading ? Content::Loading : Content::Empty;
}

bool WebDAVServerPageViewModel::isScanning() const
{
    return m_config && m_scans.state(m_config->id) != WebDAVScans::State::none;
}

QString WebDAVServerPageViewModel::scanText() const
{
    const bool isWaiting = m_config && m_scans.state(m_config->id) == WebDAVScans::State::waiting;
    return isWaiting ? u"等待其他服务器扫描完成…"_s : u"正在扫描…"_s;
}

double WebDAVServerPageViewModel::scanProgress() const
{
    const bool isRunning = m_config && m_scans.state(m_config->id) == WebDAVScans::State::running;
    return isRunning ? m_scans.progress() : 0;
}

QString WebDAVServerPageViewModel::failure() const
{
    return m_config ? m_scans.failure(m_config->id) : QString();
}

bool WebDAVServerPageViewModel::isStale() const
{
    return m_config && m_scans.isStale(m_config->id);
}

void WebDAVServerPageViewModel::scan()
{
    if (m_config)
        m_scans.request(m_config->id);
}

void WebDAVServerPageViewModel::dismissFailure()
{
    if (m_config)
        m_scans.dismissFailure(m_config->id);
}

void WebDAVServerPageViewModel::playSongAt(int row)
{
    const QList<Song> songs = m_songs->songs();
    if (row >= 0 && row < songs.size())
        m_viewModel.audioPlayer()->playSong(Song(songs.at(row)), songs);
}

} // namespace cadorel
