// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeMediaLibrarySource.h"
#include "Fakes/PlayerBench.h"
#include "Services/PlaylistService.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/PlaylistEditorViewModel.h"
#include "ViewModels/PlaylistListModel.h"
#include "ViewModels/PlaylistPageViewModel.h"
#include "ViewModels/PlaylistPickerViewModel.h"
#include "ViewModels/PlaylistsViewModel.h"
#include "ViewModels/SongListModel.h"

#include <QAbstractItemModelTester>
#include <QImage>

namespace cadorel {

/// The playlists' view model over the real service, on a machine of fakes. A test fills the library first.
class PlaylistsBench : public PlayerBench
{
public:
    PlaylistsBench() = default;
    ~PlaylistsBench()
    {
        m_testers.clear();
        m_playlists.reset();
        m_viewModel.reset();
        m_service.reset();
    }
    Q_DISABLE_COPY_MOVE(PlaylistsBench)

    FakeMediaLibrarySource mediaLibrary;

    PlaylistsViewModel &startPlaylists()
    {
        start();
        m_service = std::make_unique<PlaylistService>(home.platform, importService());
        m_viewModel = std::make_unique<CadorelViewModel>(
            player(), importService(),
            LibrarySources{.mediaLibrary = &mediaLibrary, .playlistService = m_service.get()});
        const auto coverAddress = [](const OnlineSong &song) {
            return std::optional(QUrl(QStringLiteral("https://api.example/pic/") + song.id));
        };
        m_playlists =
            std::make_unique<PlaylistsViewModel>(*m_viewModel, *m_service, home.platform, coverAddress);
        for (QAbstractItemModel *model :
             {static_cast<QAbstractItemModel *>(list()), static_cast<QAbstractItemModel *>(page().songs()),
              static_cast<QAbstractItemModel *>(page().onlineSongs()),
              static_cast<QAbstractItemModel *>(picker().playlists())}) {
            m_testers.push_back(std::make_unique<QAbstractItemModelTester>(
                model, QAbstractItemModelTester::FailureReportingMode::QtTest));
        }
        return *m_playlists;
    }
    PlaylistService &service() { return *m_service; }
    CadorelViewModel &viewModel() { return *m_viewModel; }
    PlaylistListModel *list() { return m_playlists->playlists(); }
    PlaylistPageViewModel &page() { return *m_playlists->page(); }
    PlaylistPickerViewModel &picker() { return *m_playlists->picker(); }
    PlaylistEditorViewModel &editor() { return *m_playlists->editor(); }
    PlaylistsViewModel &playlists() { return *m_playlists; }

    /// A playlist as it is stored now.
    Playlist stored(const QString &id) { return service().playlist(id).value(); }
    Playlist addLocal(const QString &name, const QList<Song> &songs = {})
    {
        const Playlist playlist = service().createPlaylist(name, {}, PlaylistType::local);
        service().addSongs(songs, playlist);
        return stored(playlist.id);
    }
    Playlist addOnline(const QString &name, const QList<OnlineSong> &songs = {})
    {
        const Playlist playlist = service().createPlaylist(name, {}, PlaylistType::online);
        service().addOnlineSongs(songs, playlist);
        return stored(playlist.id);
    }
    /// A picture file in the home. @return its address
    QUrl picture(const QString &name, const QSize &size = {40, 20}) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::red);
        const QString path = home.platform.directories.documents + QStringLiteral("/../") + name;
        if (!image.save(path, "PNG"))
            qFatal("cannot write a picture");
        return QUrl::fromLocalFile(path);
    }

    QVariant data(const QString &playlistId, int role)
    {
        return list()->index(list()->rowOf(playlistId)).data(role);
    }
    static QStringList names(const PlaylistListModel *model)
    {
        QStringList result;
        for (int row = 0; row < model->count(); ++row)
            result.append(model->index(row).data(PlaylistListModel::NameRole).toString());
        return result;
    }

private:
    std::unique_ptr<PlaylistService> m_service;
    std::unique_ptr<CadorelViewModel> m_viewModel;
    std::unique_ptr<PlaylistsViewModel> m_playlists;
    std::vector<std::unique_ptr<QAbstractItemModelTester>> m_testers;
};

} // namespace cadorel
