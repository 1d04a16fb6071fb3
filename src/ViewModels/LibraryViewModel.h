// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"
#include "ViewModels/PacedRefresh.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

namespace cadorel {

class CadorelViewModel;
class SongListModel;

/// The list of all songs and what a listener does with it: play, delete, import. Main thread.
class LibraryViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/SongListModel.h")
    Q_PROPERTY(cadorel::SongListModel *songs READ songs CONSTANT)
    Q_PROPERTY(QString importNotice READ importNotice NOTIFY importNoticeChanged)

public:
    /// @param viewModel and @param platform outlive this object
    LibraryViewModel(CadorelViewModel &viewModel, Platform &platform);
    ~LibraryViewModel() override;
    Q_DISABLE_COPY_MOVE(LibraryViewModel)

    SongListModel *songs() const { return m_songs; }
    /// Why something that the listener gave was not imported; empty when nothing is to be said.
    QString importNotice() const { return m_importNotice; }

    /// Plays the song of a row, with all songs as the queue.
    Q_INVOKABLE void playSongAt(int row);
    /// Deletes the song's file and the song.
    Q_INVOKABLE void deleteSong(const QString &id);
    /// Imports files and folders, chosen or dropped, mixed; one request after the other.
    Q_INVOKABLE void importUrls(const QList<QUrl> &urls);
    /// Asks for files with the desktop's dialog, or for ours where there is none.
    Q_INVOKABLE void chooseFiles();
    Q_INVOKABLE void chooseFolder();
    /// Shows the music folder in the file manager.
    Q_INVOKABLE void openMusicFolder();
    Q_INVOKABLE void dismissImportError();

Q_SIGNALS:
    /// The desktop has no dialog: the window shows the player's own. @param folder a folder is wanted
    void ownPickerRequested(bool folder);
    void importNoticeChanged();

private:
    QCoro::Task<void> choose(FilePicker::Kind kind);
    QCoro::Task<void> runImports();
    void refreshSongs();
    void setImportNotice(const QString &notice);

    CadorelViewModel &m_viewModel;
    Platform &m_platform;
    SongListModel *m_songs;
    QList<QList<QUrl>> m_waitingImports;
    bool m_importsRun = false;
    PacedRefresh m_refresh;
    QString m_importNotice;
};

} // namespace cadorel
