// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/NavidromeServerPageViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/NavidromeService.h"
#include "Services/Subsonic/SubsonicSongs.h"
#include "Utils/Tasks.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/WebDAVServerTexts.h"

#include <QPointer>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

NavidromeServerPageViewModel::NavidromeServerPageViewModel(CadorelViewModel &viewModel,
                                                           NavidromeService &service, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_service(service)
    , m_songs(new SongListModel(this))
{
    m_songs->setFavorites(m_viewModel.playlistStore());
    connect(&m_service, &NavidromeService::configsChanged, this,
            &NavidromeServerPageViewModel::refreshConfig);
    connect(&m_service, &NavidromeService::songsChanged, this, &NavidromeServerPageViewModel::refreshSongs);
    for (const auto signal : {&NavidromeService::currentConfigChanged, &NavidromeService::isSearchingChanged})
        connect(&m_service, signal, this, &NavidromeServerPageViewModel::changed);
    connect(&m_service, &NavidromeService::errorChanged, this, [this] {
        m_isFailureDismissed = false;
        Q_EMIT changed();
    });
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this,
            &NavidromeServerPageViewModel::markCurrentSong);
}

NavidromeServerPageViewModel::~NavidromeServerPageViewModel() = default;

void NavidromeServerPageViewModel::open(const QUuid &server)
{
    const QList<NavidromeConfig> &configs = m_service.configs();
    const auto found = std::ranges::find(configs, server, &NavidromeConfig::id);
    if (found == configs.cend())
        return;
    m_config = *found;
    m_songs->setSongs({});
    m_query.clear();
    m_shownQuery.clear();
    setSearchText(QString());
    markCurrentSong();
    detach(connectAndLoad());
}

void NavidromeServerPageViewModel::reopen(const QUuid &server)
{
    if (m_config && m_config->id == server)
        open(server);
}

void NavidromeServerPageViewModel::close()
{
    if (!m_config)
        return;
    m_config.reset();
    Q_EMIT changed();
}

QCoro::Task<void> NavidromeServerPageViewModel::connectAndLoad()
{
    if (!m_config)
        co_return;
    const NavidromeConfig config = *m_config;
    const QPointer<NavidromeServerPageViewModel> self(this);
    const quint64 session = ++m_session;
    m_isConnecting = true;
    m_isFailureDismissed = false;
    Q_EMIT changed();
    const NavidromeService::Result result = co_await m_service.connectTo(config);
    if (!self || session != m_session)
        co_return;
    m_isConnecting = false;
    if (result && isConnected())
        co_await load(m_query);
    else
        Q_EMIT changed();
}

QCoro::Task<void> NavidromeServerPageViewModel::load(QString query)
{
    const QPointer<NavidromeServerPageViewModel> self(this);
    m_query = query;
    m_isFailureDismissed = false;
    ++m_listings;
    Q_EMIT changed();
    if (query.isEmpty())
        co_await m_service.loadDefaultSongs();
    else
        co_await m_service.searchSongs(query);
    if (!self)
        co_return;
    --m_listings;
    Q_EMIT changed();
}

void NavidromeServerPageViewModel::refreshConfig()
{
    if (!m_config)
        return;
    const QList<NavidromeConfig> &configs = m_service.configs();
    const auto found = std::ranges::find(configs, m_config->id, &NavidromeConfig::id);
    if (found == configs.cend())
        m_config.reset();
    else
        m_config = *found;
    Q_EMIT changed();
}

bool NavidromeServerPageViewModel::isThisServers(const QList<Song> &songs) const
{
    if (songs.isEmpty())
        return true;
    const std::optional<SubsonicSongId> id = SubsonicSongId::parse(songs.constFirst().id());
    return id && m_config && id->config == m_config->id;
}

void NavidromeServerPageViewModel::refreshSongs()
{
    // The rows of a page that closes stay until another one opens: it slides away with them.
    if (!m_config || !isThisServers(m_service.songs()))
        return;
    m_songs->setSongs(m_service.songs());
    m_shownQuery = m_query;
    Q_EMIT listed();
    Q_EMIT changed();
}

void NavidromeServerPageViewModel::markCurrentSong()
{
    const std::optional<Song> &song = m_viewModel.audioPlayer()->currentSong();
    m_songs->setCurrentSongId(song ? song->id() : QString());
}

QString NavidromeServerPageViewModel::host() const
{
    return m_config ? serverTexts::host(*m_config) : QString();
}

QString NavidromeServerPageViewModel::summary() const
{
    if (!m_config || m_songs->count() == 0)
        return host();
    const QString count = QString::number(m_songs->count());
    return m_shownQuery.isEmpty() ? u"随机 "_s + count + u" 首歌曲"_s
                                  : u"“"_s + m_shownQuery + u"” · "_s + count + u" 首歌曲"_s;
}

bool NavidromeServerPageViewModel::isConnected() const
{
    const std::optional<NavidromeConfig> &connected = m_service.currentConfig();
    return m_config && connected && connected->id == m_config->id;
}

bool NavidromeServerPageViewModel::isBusy() const
{
    return m_config && (m_isConnecting || m_listings > 0 || m_service.isSearching());
}

NavidromeServerPageViewModel::Content NavidromeServerPageViewModel::content() const
{
    if (!m_config)
        return Content::Songs;
    if (m_isConnecting)
        return Content::Connecting;
    if (!isConnected())
        return failure().isEmpty() ? Content::Disconnected : Content::Failed;
    if (m_songs->count() > 0)
        return Content::Songs;
    if (isBusy())
        return Content::Loading;
    if (!failure().isEmpty())
        return Content::Failed;
    return m_query.isEmpty() ? Content::Empty : Content::NothingFound;
}

QString NavidromeServerPageViewModel::failure() const
{
    // What failed before is being tried again.
    return m_config && !m_isFailureDismissed && !isBusy() ? m_service.errorText() : QString();
}

QUuid NavidromeServerPageViewModel::connectingServer() const
{
    return m_config && m_isConnecting ? m_config->id : QUuid();
}

void NavidromeServerPageViewModel::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
}

void NavidromeServerPageViewModel::refresh()
{
    if (!m_config || m_isConnecting)
        return;
    detach(isConnected() ? load(m_query) : connectAndLoad());
}

void NavidromeServerPageViewModel::search()
{
    if (!m_config)
        return;
    const QString query = m_searchText.trimmed();
    if (!m_isConnecting && isConnected()) {
        detach(load(query));
        return;
    }
    // What is asked for once there is a connection.
    m_query = query;
    if (!m_isConnecting)
        detach(connectAndLoad());
}

void NavidromeServerPageViewModel::disconnectFromServer()
{
    ++m_session;
    m_isConnecting = false;
    m_isFailureDismissed = true;
    m_songs->setSongs({});
    m_service.disconnectFromServer();
    Q_EMIT changed();
}

void NavidromeServerPageViewModel::dismissFailure()
{
    m_isFailureDismissed = true;
    Q_EMIT changed();
}

void NavidromeServerPageViewModel::playSongAt(int row)
{
    const QList<Song> songs = m_songs->songs();
    if (row >= 0 && row < songs.size())
        m_viewModel.audioPlayer()->playSong(Song(songs.at(row)), songs);
}

} // namespace cadorel
