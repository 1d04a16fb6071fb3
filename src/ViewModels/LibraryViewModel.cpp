// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LibraryViewModel.h"

#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/SongListModel.h"

#include <QFileInfo>
#include <QPointer>

#include <QCoroTask>

namespace cadorel {

using namespace Qt::StringLiterals;

LibraryViewModel::LibraryViewModel(CadorelViewModel &viewModel, Platform &platform)
    : m_viewModel(viewModel)
    , m_platform(platform)
    , m_songs(new SongListModel(this))
    , m_refresh([this] { refreshSongs(); })
{
    m_songs->setFavorites(m_viewModel.playlistStore());
    // Comparing 100,000 rows for every song of an import would cost more than the import.
    connect(&m_viewModel, &CadorelViewModel::songsChanged, this, [this] { m_refresh.request(); });
    connect(&m_viewModel, &CadorelViewModel::currentChanged, this, [this] {
        const std::optional<Song> &song = m_viewModel.audioPlayer()->currentSong();
        m_songs->setCurrentSongId(song ? song->id() : QString());
    });
    m_refresh.run();
}

LibraryViewModel::~LibraryViewModel() = default;

void LibraryViewModel::refreshSongs()
{
    m_songs->setSongs(m_viewModel.allSongs());
    const std::optional<Song> &song = m_viewModel.audioPlayer()->currentSong();
    m_songs->setCurrentSongId(song ? song->id() : QString());
}

void LibraryViewModel::playSongAt(int row)
{
    if (row >= 0 && row < m_songs->count())
        m_viewModel.playSong(Song(m_songs->songs()[row]));
}

void LibraryViewModel::deleteSong(const QString &id)
{
    const int row = m_songs->rowOf(id);
    if (row >= 0)
        m_viewModel.importService()->deleteSong(Song(m_songs->songs()[row]));
}

void LibraryViewModel::importUrls(const QList<QUrl> &urls)
{
    if (urls.isEmpty())
        return;
    m_waitingImports.append(urls);
    if (!m_importsRun)
        runImports();
}

QCoro::Task<void> LibraryViewModel::runImports()
{
    const QPointer<LibraryViewModel> self(this);
    LocalMusicImportService &service = *m_viewModel.importService();
    m_importsRun = true;
    while (!m_waitingImports.isEmpty()) {
        setImportNotice(QString());
        QList<QUrl> files;
        QList<QUrl> folders;
        QStringList refused;
        for (const QUrl &url : m_waitingImports.takeFirst()) {
            const QFileInfo info(url.toLocalFile());
            if (info.isDir())
                folders.append(url);
            else if (url.isLocalFile() && hasSupportedExtension(QFile::encodeName(info.fileName())))
                files.append(url);
            else
                refused.append(url.fileName());
        }
        if (!refused.isEmpty()) {
            setImportNotice(refused.size() == 1
                                ? u"不支持的文件格式: "_s + refused.constFirst()
                                : u"有 "_s + QString::number(refused.size()) + u" 个文件的格式不受支持"_s);
        }
        if (files.size() == 1)
            co_await service.importFile(files.constFirst());
        else if (!files.isEmpty())
            co_await service.importFiles(files);
        for (const QUrl &folder : std::as_const(folders)) {
            if (!self)
                co_return;
            co_await service.importFromFolder(folder);
        }
        if (!self)
            co_return;
    }
    m_importsRun = false;
}

void LibraryViewModel::chooseFiles()
{
    choose(FilePicker::Kind::files);
}

void LibraryViewModel::chooseFolder()
{
    choose(FilePicker::Kind::folder);
}

QCoro::Task<void> LibraryViewModel::choose(FilePicker::Kind kind)
{
    const QPointer<LibraryViewModel> self(this);
    std::optional<QList<QUrl>> chosen;
    if (m_platform.filePicker) {
        chosen = co_await m_platform.filePicker->pick(
            {.kind = kind,
             .title = kind == FilePicker::Kind::files ? u"导入音乐文件"_s : u"导入音乐文件夹"_s,
             .extensions = supportedExtensions(),
             .filterName = u"音频文件"_s,
             .parentWindow = {}});
    }
    if (!self)
        co_return;
    if (chosen)
        importUrls(*chosen);
    else
        Q_EMIT ownPickerRequested(kind == FilePicker::Kind::folder);
}

void LibraryViewModel::openMusicFolder()
{
    const QString folder = m_viewModel.importService()->musicDirectory();
    if (!m_platform.system->open(QUrl::fromLocalFile(folder)))
        setImportNotice(u"没有可以打开文件夹的程序，音乐在 "_s + folder);
}

void LibraryViewModel::dismissImportError()
{
    m_viewModel.importService()->clearImportError();
    setImportNotice(QString());
}

void LibraryViewModel::setImportNotice(const QString &notice)
{
    if (m_importNotice == notice)
        return;
    m_importNotice = notice;
    Q_EMIT importNoticeChanged();
}

} // namespace cadorel
