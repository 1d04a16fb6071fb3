// SPDX-License-Identifier: GPL-3.0-or-later
// State, index, removal and queries. Imports are in LocalMusicImports.cpp, the scan in LocalMusicScan.cpp.
#include "Services/LocalMusicImportService.h"

#include "Platform/SharedServices.h"
#include "Services/Import/ImportIndex.h"
#include "Utils/Console.h"
#include "Utils/StableHash.h"
#include "Utils/SystemErrorText.h"
#include "Utils/Utf8Text.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Longest stretch of work between two looks at the window: a frame's time, less what drawing it takes.
constexpr qint64 longestTurnMs = 8;

} // namespace

LocalMusicImportService::LocalMusicImportService(Platform &platform)
    : m_platform(platform)
    , m_documentsDirectory(platform.directories.documents)
    , m_musicDirectory(m_documentsDirectory)
    , m_metadataDirectory(platform.directories.applicationSupport + "/LocalMusic"_L1)
    , m_indexWriter(m_metadataDirectory + "/index.json"_L1,
                    {.count = [this] { return m_importedSongs.size(); },
                     .revision = [this] { return m_revision; },
                     .songs = [this](qsizetype from) { return m_importedSongs.sliced(from); }})
{
    m_sinceYield.start();
    m_startedAt =
        QDateTime::currentDateTimeUtc(); // the file system's time, whatever the clock of a test says
    QDir().mkpath(m_metadataDirectory);
    migrateLegacyImportedMusicIfNeeded();
    loadImportedSongs();
    print(u"📂 本地音乐: 从缓存加载 "_s + QString::number(m_importedSongs.size()) + u" 首歌曲"_s);
}

LocalMusicImportService::~LocalMusicImportService() = default;

LocalMusicImportService &LocalMusicImportService::shared()
{
    return sharedService<LocalMusicImportService>(
        [] { return std::make_unique<LocalMusicImportService>(processPlatform()); });
}

// MARK: published state

template <typename T>
void LocalMusicImportService::publish(T &member, const T &value, void (LocalMusicImportService::*signal)())
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*signal)();
    Q_EMIT changed();
}

void LocalMusicImportService::setImportedSongs(const QList<Song> &songs)
{
    m_importedSongs = songs;
    ++m_revision;
    Q_EMIT importedSongsChanged();
    Q_EMIT changed();
}

void LocalMusicImportService::append(const Song &song)
{
    m_importedSongs.append(song);
    if (m_isScanning)
        m_pathsListedDuringScan.insert(song.assetPathUtf8());
    Q_EMIT importedSongsChanged();
    Q_EMIT changed();
}

void LocalMusicImportService::setIsImporting(bool value)
{
    publish(m_isImporting, value, &LocalMusicImportService::isImportingChanged);
}

void LocalMusicImportService::setIsScanning(bool value)
{
    publish(m_isScanning, value, &LocalMusicImportService::isScanningChanged);
}

void LocalMusicImportService::setImportError(const std::optional<QString> &value)
{
    publish(m_importError, value, &LocalMusicImportService::importErrorChanged);
}

void LocalMusicImportService::setLastScanDate(const QDateTime &value)
{
    publish(m_lastScanDate, std::optional(value), &LocalMusicImportService::lastScanDateChanged);
}

void LocalMusicImportService::setNewSongsFound(int value)
{
    publish(m_newSongsFound, value, &LocalMusicImportService::newSongsFoundChanged);
}

void LocalMusicImportService::setImportProgress(double value)
{
    publish(m_importProgress, value, &LocalMusicImportService::importProgressChanged);
}

void LocalMusicImportService::setImportProgressText(const QString &value)
{
    publish(m_importProgressText, value, &LocalMusicImportService::importProgressTextChanged);
}

// MARK: index

void LocalMusicImportService::migrateLegacyImportedMusicIfNeeded()
{
    const QString legacy = m_documentsDirectory + "/ImportedMusic"_L1;
    if (!QFileInfo(legacy).isDir() || QFile::exists(m_metadataDirectory + "/index.json"_L1))
        return;
    QStringList files;
    QDirIterator walk(legacy, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    for (const QString &file : std::as_const(files)) {
        const QString name = QFileInfo(file).fileName();
        const bool isAudio = hasSupportedExtension(QFile::encodeName(name));
        // rename() leaves an existing target alone.
        QFile::rename(file, (isAudio ? m_musicDirectory : m_metadataDirectory) + u'/' + name);
    }
    QDir(legacy).removeRecursively();
}

void LocalMusicImportService::loadImportedSongs()
{
    const std::optional<LoadedIndex> loaded =
        loadIndex(m_metadataDirectory + "/index.json"_L1, m_metadataDirectory, m_platform.clock->now());
    if (!loaded)
        return;
    print(loaded->log);
    setImportedSongs(loaded->songs);
    m_indexWriter.invalidate();
    if (loaded->idsChanged) {
        saveImportedSongsIndex();
        print(u"💾 已保存迁移后的歌曲索引"_s);
    }
}

QFuture<void> LocalMusicImportService::saveImportedSongsIndex()
{
    return m_indexWriter.request();
}

// MARK: storing files

QString LocalMusicImportService::storedName(const QString &originalName)
{
    return stableHash(originalName) + u'_' + originalName;
}

QString LocalMusicImportService::originalName(const QString &storedName)
{
    constexpr qsizetype hashLength = 16;
    if (storedName.indexOf(u'_') != hashLength)
        return storedName;
    const auto isHexDigit = [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    };
    const QStringView prefix = QStringView(storedName).first(hashLength);
    return std::all_of(prefix.begin(), prefix.end(), isHexDigit) ? storedName.sliced(hashLength + 1)
                                                                 : storedName;
}

QString LocalMusicImportService::targetPath(const QString &name) const
{
    return m_musicDirectory + u'/' + storedName(name);
}

/// Path, as the library writes it, of a file that lies in the store; empty for another. @param nativePath its
/// real path
QString LocalMusicImportService::storedPath(const QByteArray &nativePath) const
{
    const QByteArray store = QFile::encodeName(QFileInfo(m_musicDirectory).canonicalFilePath());
    if (store.isEmpty() || !nativePath.startsWith(store + '/'))
        return {};
    return m_musicDirectory + QFile::decodeName(nativePath.sliced(store.size()));
}

bool LocalMusicImportService::contains(const QString &id) const
{
    return std::any_of(m_importedSongs.cbegin(), m_importedSongs.cend(),
                       [&](const Song &song) { return song.id() == id; });
}

QCoro::Task<void> LocalMusicImportService::yieldWhenDue()
{
    if (m_sinceYield.elapsed() < longestTurnMs)
        co_return;
    QPromise<void> promise;
    promise.start();
    const QFuture<void> turn = promise.future();
    // Not by way of the application object: it drops what is still queued while it holds the lock of the
    // queue, which the end of the promise takes too.
    QMetaObject::invokeMethod(
        this, [promise = std::make_shared<QPromise<void>>(std::move(promise))] { promise->finish(); },
        Qt::QueuedConnection);
    const QPointer<LocalMusicImportService> self(this);
    co_await turn;
    if (self)
        m_sinceYield.restart();
}

// MARK: removing

void LocalMusicImportService::deleteSong(const Song &song)
{
    const QString path = song.assetPath();
    if (!path.isEmpty() && ::unlink(QFile::encodeName(path).constData()) != 0) {
        print(u"Failed to delete song: "_s + systemErrorText(errno));
        return;
    }
    QList<Song> kept = m_importedSongs;
    kept.removeIf([&](const Song &listed) { return listed.id() == song.id(); });
    setImportedSongs(kept);
    saveImportedSongsIndex();
}

QCoro::Task<void> LocalMusicImportService::clearAllImportedMusic()
{
    const QPointer<LocalMusicImportService> self(this);
    co_await m_indexWriter.idle();
    if (!self)
        co_return;
    const int code = co_await QtConcurrent::run(
        [music = QFile::encodeName(m_musicDirectory), metadata = m_metadataDirectory] {
            for (const QByteArray &path : findAudioFiles(music)) {
                if (::unlink(path.constData()) != 0)
                    return errno;
            }
            errno = 0;
            if (QFileInfo::exists(metadata) && !QDir(metadata).removeRecursively())
                return errno ? errno : EIO;
            return QDir().mkpath(metadata) ? 0 : EIO;
        });
    if (!self)
        co_return;
    m_indexWriter.invalidate();
    if (code != 0) {
        print(u"Failed to clear imported music: "_s + systemErrorText(code));
        co_return;
    }
    setImportedSongs({});
}

// MARK: queries

std::optional<QImage> LocalMusicImportService::getArtwork(const Song &song) const
{
    if (std::optional<QImage> embedded = song.embeddedArtwork())
        return embedded;
    const std::optional<QUrl> url = song.artworkURL();
    if (!url || !url->isLocalFile())
        return std::nullopt;
    const QImage image(url->toLocalFile());
    return image.isNull() ? std::nullopt : std::optional(image);
}

std::optional<QString> LocalMusicImportService::getLyrics(const Song &song) const
{
    if (song.hasLyricsText())
        return song.embeddedLyrics();
    constexpr qint64 largestLyrics = qint64{4} * 1024 * 1024;
    QFile file(lyricsFilePath(m_metadataDirectory, song.id()));
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestLyrics)
        return std::nullopt;
    return utf8Text(file.readAll());
}

std::optional<QUrl> LocalMusicImportService::artworkFileURL(const QString &id) const
{
    const QString path = artworkFilePath(m_metadataDirectory, id);
    return QFile::exists(path) ? std::optional(QUrl::fromLocalFile(path)) : std::nullopt;
}

std::optional<Song> LocalMusicImportService::findImportedSong(const QUrl &url,
                                                              const std::optional<QString> &songId) const
{
    const QByteArray path = url.toLocalFile().toUtf8();
    for (const Song &song : m_importedSongs) {
        if (!path.isEmpty() && song.assetPathUtf8() == path)
            return song;
    }
    for (const Song &song : m_importedSongs) {
        if (songId && song.id() == *songId)
            return song;
    }
    return std::nullopt;
}

QCoro::Task<QString> LocalMusicImportService::getImportedMusicSize() const
{
    const qint64 bytes = co_await QtConcurrent::run([directory = QFile::encodeName(m_musicDirectory)] {
        qint64 sum = 0;
        visitAudioFiles(directory, BrokenLinks::leaveOut,
                        [&sum](const QByteArray &path) { sum += QFileInfo(QFile::decodeName(path)).size(); });
        return sum;
    });
    co_return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace cadorel
