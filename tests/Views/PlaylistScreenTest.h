// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeFilePicker.h"
#include "Services/LocalMusicImportService.h"
#include "Services/PlaylistService.h"
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/PlaylistEditorViewModel.h"
#include "ViewModels/PlaylistListModel.h"
#include "ViewModels/PlaylistPageViewModel.h"
#include "ViewModels/PlaylistPickerViewModel.h"
#include "ViewModels/PlaylistsViewModel.h"
#include "ViewModels/SongListModel.h"
#include "Views/ScreenTest.h"

namespace cadorel {

/// What the tests of playlists do in the window.
class PlaylistScreenTest : public ScreenTest
{
    Q_OBJECT
protected:
    void openTab()
    {
        t->click(QStringLiteral("playlistsTab"));
        QTRY_VERIFY(t->shows(QStringLiteral("playlistList")));
    }
    void openPage(const QString &id)
    {
        t->playlists->openPlaylist(id);
        QTRY_VERIFY(t->item(QStringLiteral("playlistPage"))->property("covers").toBool());
    }
    bool isOpen(const QString &popup) const
    {
        const QObject *found = t->object(popup);
        return found && found->property("opened").toBool();
    }
    bool isGone(const QString &popup) const
    {
        const QObject *found = t->object(popup);
        return !found || !found->property("visible").toBool();
    }
    QQuickItem *rowOf(const QString &list, int index) const
    {
        QQuickItem *found = nullptr;
        QMetaObject::invokeMethod(t->item(list), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, found),
                                  Q_ARG(int, index));
        return found;
    }
    QQuickItem *playlistRow(const QString &id) const
    {
        return rowOf(QStringLiteral("playlistList"), t->playlists->playlists()->rowOf(id));
    }
    QQuickItem *songRow(int index) const { return rowOf(QStringLiteral("playlistSongList"), index); }
    QQuickItem *onlineRow(int index) const { return rowOf(QStringLiteral("playlistOnlineSongList"), index); }
    QString textOf(const QString &name) const { return t->item(name)->property("text").toString(); }
    void type(const QString &text) const
    {
        for (const uint c : text.toUcs4()) {
            const QString letter = QString::fromUcs4(reinterpret_cast<const char32_t *>(&c), 1);
            QTest::sendKeyEvent(QTest::Click, t->window, Qt::Key_unknown, letter, {});
        }
    }
    /// Opens the menu of a row with the right button.
    void openMenu(QQuickItem *row, const QString &menu)
    {
        QVERIFY(row);
        t->click(row, Qt::RightButton);
        QTRY_VERIFY(isOpen(menu));
    }
    /// Clicks an entry of the open menu, once it stands where it belongs: which ones there are changes with
    /// the row.
    void choose(const QString &entry) const
    {
        QVERIFY(!t->window->grabWindow().isNull());
        QVERIFY2(t->shows(entry), qPrintable(entry));
        t->click(entry);
    }
    Playlist addLocal(const QString &name, const QList<Song> &songs = {}) const
    {
        const Playlist playlist = t->playlistService->createPlaylist(name, {}, PlaylistType::local);
        t->playlistService->addSongs(songs, playlist);
        return playlist;
    }
    static OnlineSong onlineSong(const QString &id)
    {
        OnlineSong song;
        song.id = id;
        song.name = QStringLiteral("在线 ") + id;
        song.artist = QStringLiteral("歌手");
        return song;
    }
    Playlist addOnline(const QString &name, const QList<OnlineSong> &songs = {}) const
    {
        const Playlist playlist = t->playlistService->createPlaylist(name, {}, PlaylistType::online);
        t->playlistService->addOnlineSongs(songs, playlist);
        return playlist;
    }
    Playlist stored(const Playlist &playlist) const
    {
        return t->playlistService->playlist(playlist.id).value_or(Playlist());
    }
    QList<Song> songs() const { return t->importService->importedSongs(); }
    QUrl pictureFile(const QString &name, const QByteArray &bytes) const
    {
        QDir().mkpath(t->home.filePath(QStringLiteral("Pictures")));
        QFile file(t->home.filePath(QStringLiteral("Pictures/") + name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write a picture");
        return QUrl::fromLocalFile(file.fileName());
    }
    /// The desktop has a dialog, in which the listener chooses this.
    void answerDialogs(const QList<QUrl> &urls)
    {
        auto picker = std::make_unique<FakeFilePicker>();
        picker->answer = urls;
        t->platform.filePicker = std::move(picker);
    }
};

} // namespace cadorel
