// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Playlist.h"
#include "Platform/Platform.h"
#include "ViewModels/PictureFile.h"

#include <QCoroTask>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

class FormTextInput;
class PlaylistService;

/// What a listener does to a playlist as such: make one, give it another name or another cover, delete it.
/// Playlists are named by their ids; one that is gone meanwhile is left alone. Main thread.
class PlaylistEditorViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/FormTextInput.h")
    Q_PROPERTY(bool showCreateSheet READ showCreateSheet NOTIFY showCreateSheetChanged)
    Q_PROPERTY(cadorel::FormTextInput *newPlaylistName READ newPlaylistName CONSTANT)
    Q_PROPERTY(Kind selectedType READ selectedType WRITE setSelectedType NOTIFY selectedTypeChanged)
    Q_PROPERTY(bool isTypeFixed READ isTypeFixed NOTIFY showCreateSheetChanged)
    Q_PROPERTY(bool canCreate READ canCreate NOTIFY canCreateChanged)
    Q_PROPERTY(bool showRenameSheet READ showRenameSheet NOTIFY showRenameSheetChanged)
    Q_PROPERTY(cadorel::FormTextInput *renameText READ renameText CONSTANT)
    Q_PROPERTY(bool canRename READ canRename NOTIFY canRenameChanged)
    Q_PROPERTY(bool asksToDelete READ asksToDelete NOTIFY pendingDeleteChanged)
    Q_PROPERTY(QString pendingDeleteName READ pendingDeleteName NOTIFY pendingDeleteChanged)
    Q_PROPERTY(QStringList pictureExtensions READ pictureExtensions CONSTANT)
    Q_PROPERTY(QString coverNotice READ coverNotice NOTIFY coverNoticeChanged)

public:
    /// PlaylistType for QML, which reads only enumerators in capitals.
    enum class Kind { Local, Online };
    Q_ENUM(Kind)

    /// @param service and @param platform outlive this object
    PlaylistEditorViewModel(PlaylistService &service, Platform &platform, QObject *parent);
    ~PlaylistEditorViewModel() override;
    Q_DISABLE_COPY_MOVE(PlaylistEditorViewModel)

    bool showCreateSheet() const { return m_showCreateSheet; }
    FormTextInput *newPlaylistName() const { return m_newPlaylistName; }
    Kind selectedType() const { return m_selectedType; }
    void setSelectedType(Kind kind);
    /// The playlist is made for songs of one kind.
    bool isTypeFixed() const { return m_isTypeFixed; }
    /// There is a name, if only of blanks.
    bool canCreate() const;
    bool showRenameSheet() const { return m_renamed.has_value(); }
    FormTextInput *renameText() const { return m_renameText; }
    bool canRename() const;
    bool asksToDelete() const { return m_pendingDelete.has_value(); }
    QString pendingDeleteName() const;
    /// Endings of the files that can become a cover.
    QStringList pictureExtensions() const { return cadorel::pictureExtensions(); }
    /// Why the last picture became no cover; empty when nothing is to be said.
    QString coverNotice() const { return m_coverNotice; }

    /// Opens the sheet for a new playlist.
    Q_INVOKABLE void beginCreate();
    /// The same, for songs of one kind.
    void beginCreateOf(PlaylistType type);
    /// Makes the playlist and closes the sheet.
    Q_INVOKABLE void createPlaylist();
    Q_INVOKABLE void cancelCreate();

    /// Opens the sheet for another name.
    Q_INVOKABLE void beginRename(const QString &id);
    Q_INVOKABLE void rename();
    Q_INVOKABLE void cancelRename();

    /// Asks for a picture with the desktop's dialog, or for ours where there is none.
    Q_INVOKABLE void chooseCover(const QString &id);
    /// Takes the picture that the listener has chosen in our dialog.
    Q_INVOKABLE void takeCover(const QList<QUrl> &urls);
    Q_INVOKABLE void removeCover(const QString &id);
    Q_INVOKABLE void dismissCoverNotice();

    /// Asks whether the playlist shall go for good; a favourites playlist stays unasked.
    Q_INVOKABLE void askToDelete(const QString &id);
    Q_INVOKABLE void confirmDelete();
    Q_INVOKABLE void cancelDelete();

Q_SIGNALS:
    void showCreateSheetChanged();
    void selectedTypeChanged();
    void canCreateChanged();
    void showRenameSheetChanged();
    void canRenameChanged();
    void pendingDeleteChanged();
    void coverNoticeChanged();
    /// The desktop has no dialog: the window shows the player's own.
    void ownPictureDialogRequested();
    /// The listener has made a playlist.
    void created(const cadorel::Playlist &playlist);

private:
    void openCreateSheet(bool isTypeFixed);
    QCoro::Task<void> choose(QString id);
    QCoro::Task<void> setCover(QString id, QList<QUrl> urls);
    void setShowCreateSheet(bool shows);
    void setRenamed(const std::optional<QString> &id);
    void setPendingDelete(const std::optional<Playlist> &playlist);
    void setCoverNotice(const QString &notice);

    PlaylistService &m_service;
    Platform &m_platform;
    FormTextInput *m_newPlaylistName;
    FormTextInput *m_renameText;
    Kind m_selectedType = Kind::Local;
    bool m_showCreateSheet = false;
    bool m_isTypeFixed = false;
    std::optional<QString> m_renamed;
    /// The playlist that the picture which is being chosen belongs to.
    QString m_activePlaylist;
    std::optional<Playlist> m_pendingDelete;
    QString m_coverNotice;
    /// Of pictures chosen one after the other for a playlist, the last one is wanted, whichever is read
    /// first.
    QHash<QString, int> m_covers;
};

} // namespace cadorel
