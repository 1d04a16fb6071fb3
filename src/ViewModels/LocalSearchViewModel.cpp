// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LocalSearchViewModel.h"

#include "Services/AudioPlayerService.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/SongListModel.h"

namespace cadorel {

LocalSearchViewModel::LocalSearchViewModel(QObject *parent)
    : QObject(parent)
    , m_songs(new SongListModel(this))
    , m_refresh([this] { search(); })
{
}

LocalSearchViewModel::~LocalSearchViewModel() = default;

void LocalSearchViewModel::setViewModel(CadorelViewModel *viewModel)
{
    if (m_viewModel == viewModel)
        return;
    if (m_viewModel)
        m_viewModel->disconnect(this);
    m_viewModel = viewModel;
    m_songs->setFavorites(viewModel ? viewModel->playlistStore() : nullptr);
    if (viewModel) {
        connect(viewModel, &CadorelViewModel::songsChanged, this, [this] {
            if (!m_searchText.isEmpty())
                m_refresh.request();
        });
        connect(viewModel, &CadorelViewModel::currentChanged, this, &LocalSearchViewModel::markCurrentSong);
    }
    markCurrentSong();
    search();
    Q_EMIT viewModelChanged();
}

void LocalSearchViewModel::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    m_refresh.run();
    Q_EMIT searchTextChanged();
}

void LocalSearchViewModel::search()
{
    const bool isAsked = m_viewModel && !m_searchText.isEmpty();
    m_songs->setSongs(isAsked ? m_viewModel->searchLocal(m_searchText) : QList<Song>());
    setContent(!isAsked ? Content::Initial : m_songs->count() > 0 ? Content::Results : Content::Empty);
}

void LocalSearchViewModel::playSongAt(int row)
{
    if (m_viewModel && row >= 0 && row < m_songs->count())
        m_viewModel->playSong(Song(m_songs->songs()[row]));
}

void LocalSearchViewModel::setContent(Content content)
{
    if (m_content == content)
        return;
    m_content = content;
    Q_EMIT contentChanged();
}

void LocalSearchViewModel::markCurrentSong()
{
    const std::optional<Song> song = m_viewModel ? m_viewModel->audioPlayer()->currentSong() : std::nullopt;
    m_songs->setCurrentSongId(song ? song->id() : QString());
}

} // namespace cadorel
