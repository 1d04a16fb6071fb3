// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/OnlineSearchViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/OnlineMusicService.h"
#include "Utils/Tasks.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/PlatformNames.h"

namespace cadorel {

using namespace Qt::StringLiterals;

OnlineSearchViewModel::OnlineSearchViewModel(CadorelViewModel &viewModel, OnlineMusicService &service,
                                             OnlineSongListModel *songs, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_service(service)
    , m_songs(songs)
{
    m_songs->setParent(this);
    connect(&m_service, &OnlineMusicService::searchResultsChanged, this,
            &OnlineSearchViewModel::refreshSongs);
    connect(&m_service, &OnlineMusicService::isSearchingChanged, this,
            &OnlineSearchViewModel::refreshContent);
    connect(&m_service, &OnlineMusicService::searchErrorChanged, this, &OnlineSearchViewModel::refreshError);
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this, &OnlineSearchViewModel::markCurrentSong);
    refreshSongs();
    refreshError();
    markCurrentSong();
}

OnlineSearchViewModel::~OnlineSearchViewModel() = default;

void OnlineSearchViewModel::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
}

QStringList OnlineSearchViewModel::platforms() const
{
    return platformNames() + QStringList{u"聚合"_s};
}

int OnlineSearchViewModel::platformIndex() const
{
    const QList<MusicPlatform> all = allMusicPlatforms();
    return static_cast<int>(m_selectedPlatform ? all.indexOf(*m_selectedPlatform) : all.size());
}

void OnlineSearchViewModel::setSelectedPlatform(Scope platform)
{
    if (m_selectedPlatform == platform)
        return;
    m_selectedPlatform = platform;
    Q_EMIT platformIndexChanged();
}

void OnlineSearchViewModel::selectPlatform(int index)
{
    if (index == platformIndex() || index < 0)
        return;
    const QList<MusicPlatform> all = allMusicPlatforms();
    setSelectedPlatform(index < all.size() ? Scope(all.at(index)) : Scope());
    if (!m_searchText.isEmpty())
        performSearch();
}

void OnlineSearchViewModel::performSearch()
{
    m_lastSearchKeyword = m_searchText;
    m_lastSearchPlatform = m_selectedPlatform;
    m_hasSearched = !m_searchText.isEmpty();
    detach(m_selectedPlatform ? m_service.search(m_searchText, *m_selectedPlatform)
                              : m_service.aggregateSearch(m_searchText));
    refreshContent();
}

void OnlineSearchViewModel::searchIfNew()
{
    const bool isKnown =
        m_hasSearched && m_searchText == m_lastSearchKeyword && m_selectedPlatform == m_lastSearchPlatform;
    if (!m_searchText.isEmpty() && !isKnown)
        performSearch();
}

void OnlineSearchViewModel::retry()
{
    setSearchText(m_lastSearchKeyword);
    setSelectedPlatform(m_lastSearchPlatform);
    performSearch();
}

void OnlineSearchViewModel::clear()
{
    setSearchText(QString());
    m_hasSearched = false;
    m_service.clearSearchError();
    refreshContent();
}

void OnlineSearchViewModel::tryNextPlatform()
{
    // Behind the search of all platforms comes the first one.
    setSelectedPlatform(m_selectedPlatform ? nextPlatform(*m_selectedPlatform)
                                           : allMusicPlatforms().constFirst());
    performSearch();
}

void OnlineSearchViewModel::playSongAt(int row)
{
    const QList<OnlineSong> songs = m_songs->songs();
    if (row >= 0 && row < songs.size())
        m_viewModel.playOnlineSongs(songs, songs.at(row));
}

void OnlineSearchViewModel::refreshSongs()
{
    m_songs->setSongs(m_service.searchResults());
    refreshContent();
}

void OnlineSearchViewModel::refreshError()
{
    const QString error = m_service.searchErrorText();
    if (m_error != error) {
        m_error = error;
        Q_EMIT errorChanged();
    }
    refreshContent();
}

void OnlineSearchViewModel::refreshContent()
{
    const auto now = [this] {
        if (m_service.isSearching())
            return Content::Searching;
        if (m_service.searchError())
            return Content::Failed;
        if (m_songs->count() > 0)
            return Content::Results;
        return m_hasSearched ? Content::Empty : Content::Initial;
    }();
    if (m_content == now)
        return;
    m_content = now;
    Q_EMIT contentChanged();
}

void OnlineSearchViewModel::markCurrentSong()
{
    m_songs->setCurrentSong(m_viewModel.audioPlayer()->currentOnlineSong());
}

} // namespace cadorel
