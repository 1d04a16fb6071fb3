// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PlaylistEditorViewModel.h"

#include "Services/PlaylistService.h"
#include "Utils/Tasks.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/PlaylistListModel.h"

#include <QCoroFuture>
#include <QPointer>
#include <QtConcurrent>

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// A name may be anything.
QString nothingWrong(const QString & /*text*/)
{
    return {};
}

PlaylistType typeOf(PlaylistEditorViewModel::Kind kind)
{
    return kind == PlaylistEditorViewModel::Kind::Local ? PlaylistType::local : PlaylistType::online;
}

} // namespace

PlaylistEditorViewModel::PlaylistEditorViewModel(PlaylistService &service, Platform &platform,
                                                 QObject *parent)
    : QObject(parent)
    , m_service(service)
    , m_platform(platform)
    , m_newPlaylistName(new FormTextInput(nothingWrong, this))
    , m_renameText(new FormTextInput(nothingWrong, this))
{
    connect(m_newPlaylistName, &FormTextInput::textChanged, this, &PlaylistEditorViewModel::canCreateChanged);
    connect(m_renameText, &FormTextInput::textChanged, this, &PlaylistEditorViewModel::canRenameChanged);
}

PlaylistEditorViewModel::~PlaylistEditorViewModel() = default;

void PlaylistEditorViewModel::setSelectedType(Kind kind)
{
    if (kind == m_selectedType)
        return;
    m_selectedType = kind;
    Q_EMIT selectedTypeChanged();
}

bool PlaylistEditorViewModel::canCreate() const
{
    return !m_newPlaylistName->text().isEmpty();
}

bool PlaylistEditorViewModel::canRename() const
{
    return !m_renameText->text().isEmpty();
}

QString PlaylistEditorViewModel::pendingDeleteName() const
{
    return m_pendingDelete ? PlaylistListModel::displayName(*m_pendingDelete) : QString();
}

void PlaylistEditorViewModel::beginCreate()
{
    openCreateSheet(false);
}

void PlaylistEditorViewModel::beginCreateOf(PlaylistType type)
{
    setSelectedType(type == PlaylistType::local ? Kind::Local : Kind::Online);
    openCreateSheet(true);
}

void PlaylistEditorViewModel::openCreateSheet(bool isTypeFixed)
{
    m_newPlaylistName->reset(QString());
    m_isTypeFixed = isTypeFixed;
    setShowCreateSheet(true);
}

void PlaylistEditorViewModel::createPlaylist()
{
    if (!m_showCreateSheet || !canCreate())
        return;
    const Playlist playlist =
        m_service.createPlaylist(m_newPlaylistName->text(), QString(), typeOf(m_selectedType));
    m_newPlaylistName->reset(QString());
    setShowCreateSheet(false);
    Q_EMIT created(playlist);
}

void PlaylistEditorViewModel::cancelCreate()
{
    setShowCreateSheet(false);
}

void PlaylistEditorViewModel::beginRename(const QString &id)
{
    const std::optional<Playlist> playlist = m_service.playlist(id);
    if (!playlist)
        return;
    m_renameText->reset(playlist->name);
    setRenamed(id);
}

void PlaylistEditorViewModel::rename()
{
    if (!m_renamed || !canRename())
        return;
    if (const std::optional<Playlist> playlist = m_service.playlist(*m_renamed))
        m_service.renamePlaylist(*playlist, m_renameText->text());
    setRenamed(std::nullopt);
}

void PlaylistEditorViewModel::cancelRename()
{
    setRenamed(std::nullopt);
}

void PlaylistEditorViewModel::chooseCover(const QString &id)
{
    m_activePlaylist = id;
    setCoverNotice(QString());
    detach(choose(id));
}

QCoro::Task<void> PlaylistEditorViewModel::choose(QString id)
{
    const QPointer<PlaylistEditorViewModel> self(this);
    std::optional<QList<QUrl>> chosen;
    if (m_platform.filePicker) {
        chosen = co_await m_platform.filePicker->pick({.kind = FilePicker::Kind::picture,
                                                       .title = u"选择封面"_s,
                                                       .extensions = pictureExtensions(),
                                                       .filterName = u"图片"_s,
                                                       .parentWindow = {}});
    }
    if (!self)
        co_return;
    if (chosen)
        detach(setCover(id, *chosen));
    else
        Q_EMIT ownPictureDialogRequested();
}

void PlaylistEditorViewModel::takeCover(const QList<QUrl> &urls)
{
    detach(setCover(m_activePlaylist, urls));
}

QCoro::Task<void> PlaylistEditorViewModel::setCover(QString id, QList<QUrl> urls)
{
    if (urls.isEmpty())
        co_return;
    const QPointer<PlaylistEditorViewModel> self(this);
    const int cover = ++m_covers[id];
    const QString path = urls.constFirst().toLocalFile();
    const QImage picture = co_await QtConcurrent::run(readPicture, path);
    if (!self || cover != m_covers.value(id))
        co_return;
    if (picture.isNull()) {
        setCoverNotice(u"“"_s + urls.constFirst().fileName() + u"”不是能读取的图片，封面没有更换"_s);
        co_return;
    }
    if (const std::optional<Playlist> playlist = m_service.playlist(id))
        co_await m_service.setCoverImage(picture, *playlist);
}

void PlaylistEditorViewModel::removeCover(const QString &id)
{
    // A picture that is still being read is not wanted any more.
    ++m_covers[id];
    if (const std::optional<Playlist> playlist = m_service.playlist(id))
        m_service.removeCoverImage(*playlist);
}

void PlaylistEditorViewModel::dismissCoverNotice()
{
    setCoverNotice(QString());
}

void PlaylistEditorViewModel::askToDelete(const QString &id)
{
    const std::optional<Playlist> playlist = m_service.playlist(id);
    if (playlist && !PlaylistListModel::isProtected(*playlist))
        setPendingDelete(playlist);
}

void PlaylistEditorViewModel::confirmDelete()
{
    if (!m_pendingDelete)
        return;
    const Playlist playlist = *m_pendingDelete;
    setPendingDelete(std::nullopt);
    m_service.deletePlaylist(playlist);
}

void PlaylistEditorViewModel::cancelDelete()
{
    setPendingDelete(std::nullopt);
}

void PlaylistEditorViewModel::setShowCreateSheet(bool shows)
{
    if (shows == m_showCreateSheet)
        return;
    m_showCreateSheet = shows;
    Q_EMIT showCreateSheetChanged();
}

void PlaylistEditorViewModel::setRenamed(const std::optional<QString> &id)
{
    if (id == m_renamed)
        return;
    m_renamed = id;
    Q_EMIT showRenameSheetChanged();
}

void PlaylistEditorViewModel::setPendingDelete(const std::optional<Playlist> &playlist)
{
    if (playlist == m_pendingDelete)
        return;
    m_pendingDelete = playlist;
    Q_EMIT pendingDeleteChanged();
}

void PlaylistEditorViewModel::setCoverNotice(const QString &notice)
{
    if (notice == m_coverNotice)
        return;
    m_coverNotice = notice;
    Q_EMIT coverNoticeChanged();
}

} // namespace cadorel
