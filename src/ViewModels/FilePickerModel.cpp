// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/FilePickerModel.h"

#include "Services/Import/AudioFiles.h"

#include <QCollator>
#include <QDir>
#include <QDirIterator>
#include <QFutureWatcher>
#include <QStandardPaths>

namespace cadorel {

using namespace Qt::StringLiterals;

FilePickerModel::FilePickerModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_extensions(supportedExtensions())
{
}

int FilePickerModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant FilePickerModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Entry &entry = m_entries.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return entry.name;
    case IsFolderRole:
        return entry.isFolder;
    case IsSelectedRole:
        return m_selected.contains(index.row());
    default:
        return {};
    }
}

QHash<int, QByteArray> FilePickerModel::roleNames() const
{
    return {{NameRole, "name"}, {IsFolderRole, "isFolder"}, {IsSelectedRole, "isSelected"}};
}

void FilePickerModel::setFolderMode(bool folderMode)
{
    if (folderMode == m_folderMode)
        return;
    m_folderMode = folderMode;
    Q_EMIT folderModeChanged();
    clearSelection();
}

void FilePickerModel::setExtensions(const QStringList &extensions)
{
    if (extensions == m_extensions)
        return;
    m_extensions = extensions;
    Q_EMIT extensionsChanged();
    if (!m_folder.isEmpty())
        open(m_folder);
}

QString FilePickerModel::folderName() const
{
    if (m_folder == QDir::homePath())
        return u"主目录"_s;
    const QString name = QDir(m_folder).dirName();
    return name.isEmpty() ? m_folder : name;
}

bool FilePickerModel::canGoUp() const
{
    return !m_folder.isEmpty() && !QDir(m_folder).isRoot();
}

void FilePickerModel::setSingleFile(bool singleFile)
{
    if (singleFile == m_singleFile)
        return;
    m_singleFile = singleFile;
    Q_EMIT singleFileChanged();
    clearSelection();
}

QString FilePickerModel::location(Place place)
{
    const auto standard = [place] {
        switch (place) {
        case Place::Home:
            return QStandardPaths::HomeLocation;
        case Place::Music:
            return QStandardPaths::MusicLocation;
        case Place::Pictures:
            return QStandardPaths::PicturesLocation;
        case Place::Downloads:
            return QStandardPaths::DownloadLocation;
        }
        Q_UNREACHABLE();
    }();
    return QStandardPaths::writableLocation(standard);
}

void FilePickerModel::openPlace(Place place)
{
    open(location(place));
}

void FilePickerModel::restart(Place place)
{
    if (!m_folder.isEmpty())
        open(m_folder);
    else
        openPlace(QDir(location(place)).exists() ? place : Place::Home);
}

void FilePickerModel::up()
{
    if (canGoUp())
        open(QFileInfo(m_folder).path());
}

void FilePickerModel::open(const QString &path)
{
    const quint64 request = ++m_latestRequest;
    const QString folder = QDir::cleanPath(path);
    setLoading(true);
    // A watcher goes with the model; a continuation with a context that is gone would end the program.
    auto *watcher = new QFutureWatcher<Listing>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, request, folder] {
        watcher->deleteLater();
        if (request == m_latestRequest)
            show(folder, watcher->result());
    });
    watcher->setFuture(
        QtConcurrent::run([folder, extensions = m_extensions] { return list(folder, extensions); }));
}

FilePickerModel::Listing FilePickerModel::list(const QString &path, const QStringList &extensions)
{
    const QFileInfo folder(path);
    if (!folder.exists())
        return std::unexpected(u"这个文件夹不存在"_s);
    if (!folder.isDir() || !folder.isReadable() || !folder.isExecutable())
        return std::unexpected(u"没有权限打开这个文件夹"_s);

    QList<Entry> entries;
    QDirIterator found(path, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot);
    while (found.hasNext()) {
        const QFileInfo info = found.nextFileInfo();
        const bool isFolder = info.isDir();
        if (isFolder || extensions.contains(info.suffix().toLower()))
            entries.append({.name = info.fileName(), .isFolder = isFolder});
    }
    // Without a language, numbers would not sort by their value.
    QCollator collator(QLocale(QLocale::Chinese, QLocale::China));
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(entries.begin(), entries.end(), [&collator](const Entry &a, const Entry &b) {
        return a.isFolder == b.isFolder ? collator.compare(a.name, b.name) < 0 : a.isFolder;
    });
    return entries;
}

void FilePickerModel::show(const QString &path, const Listing &listing)
{
    const int countBefore = count();
    clearSelection();
    beginResetModel();
    m_entries = listing.value_or(QList<Entry>());
    endResetModel();
    if (count() != countBefore)
        Q_EMIT countChanged();
    if (path != m_folder) {
        m_folder = path;
        Q_EMIT folderChanged();
    }
    setErrorText(listing ? QString() : listing.error());
    setLoading(false);
}

void FilePickerModel::activate(int row)
{
    if (row < 0 || row >= count())
        return;
    if (m_entries.at(row).isFolder) {
        open(QDir(m_folder).filePath(m_entries.at(row).name));
        return;
    }
    if (m_folderMode)
        return;
    const bool wasSelected = m_selected.contains(row);
    if (m_singleFile)
        clearSelection();
    if (wasSelected)
        m_selected.remove(row);
    else
        m_selected.insert(row);
    Q_EMIT dataChanged(index(row), index(row), {IsSelectedRole});
    Q_EMIT selectedCountChanged();
}

QList<QUrl> FilePickerModel::chosenUrls() const
{
    if (m_folderMode)
        return m_folder.isEmpty() || !m_errorText.isEmpty() ? QList<QUrl>()
                                                            : QList{QUrl::fromLocalFile(m_folder)};
    QList<int> rows(m_selected.cbegin(), m_selected.cend());
    std::sort(rows.begin(), rows.end());
    QList<QUrl> urls;
    for (const int row : std::as_const(rows))
        urls.append(QUrl::fromLocalFile(QDir(m_folder).filePath(m_entries.at(row).name)));
    return urls;
}

void FilePickerModel::clearSelection()
{
    if (m_selected.isEmpty())
        return;
    const QSet<int> before = std::exchange(m_selected, {});
    for (const int row : before)
        Q_EMIT dataChanged(index(row), index(row), {IsSelectedRole});
    Q_EMIT selectedCountChanged();
}

void FilePickerModel::setErrorText(const QString &text)
{
    if (text == m_errorText)
        return;
    m_errorText = text;
    Q_EMIT errorTextChanged();
}

void FilePickerModel::setLoading(bool loading)
{
    if (loading == m_isLoading)
        return;
    m_isLoading = loading;
    Q_EMIT isLoadingChanged();
}

} // namespace cadorel
