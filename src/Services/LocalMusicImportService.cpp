// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/LocalMusicImportService.h"

#include "Services/Import/ImportIndex.h"
#include "Services/Import/OrderedJobs.h"
#include "Services/SharedServices.h"
#include "Utils/Console.h"
#include "Utils/StableHash.h"

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
#include <deque>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Longest stretch of work between two looks at the window: a frame's time, less what drawing it takes.
constexpr qint64 longestTurnMs = 8;

/// A task that nobody waits for.
void detach(QCoro::Task<void> task)
{
    Q_UNUSED(task);
}

/// What a look into the music directory found.
struct SandboxListing
{
    qsizetype fileCount = 0;
    QList<QByteArray> newFiles;
    QSet<QByteArray> missing;
};

SandboxListing listSandbox(const QByteArray &directory, const QSet<QByteArray> &known)
{
    SandboxListing listing;
    QSet<QByteArray> gone = known;
    visitAudioFiles(directory, BrokenLinks::leaveOut, [&](const QByteArray &path) {
        ++listing.fileCount;
        if (known.contains(path))
            gone.remove(path);
        else if (QString::fromUtf8(path).toUtf8() == path)
            listing.newFiles.append(path);
        // A name that is not UTF-8 has no form that the index can hold: such a file is left where it lies.
    });
    // What the walk did not meet may still lie elsewhere: in a hidden folder, or outside of the directory.
    for (const QByteArray &path : std::as_const(gone)) {
        if (::access(path.constData(), F_OK) != 0)
            listing.missing.insert(path);
    }
    return listing;
}

} // namespace

/// What became of one file on its way into the store.
struct LocalMusicImportService::StoredFile
{
    enum class Outcome { copied, existed, failed };
    Outcome outcome = Outcome::failed;
    QString error;
    Extraction extraction; // of a copied file
};

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

bool LocalMusicImportService::contains(const QString &id) const
{
    return std::any_of(m_importedSongs.cbegin(), m_importedSongs.cend(),
                       [&](const Song &song) { return song.id() == id; });
}

QCoro::Task<Extraction> LocalMusicImportService::extract(QString path, QString name)
{
    const QFuture<Extraction> extraction = QtConcurrent::run(m_gate.through(
        [&reader = *m_platform.assetReader, path, name, directory = m_metadataDirectory,
         now = m_platform.clock->now()] { return extractMetadata(reader, path, name, directory, now); }));
    co_return co_await extraction;
}

QCoro::Task<void> LocalMusicImportService::yieldWhenDue()
{
    if (m_sinceYield.elapsed() < longestTurnMs)
        co_return;
    QPromise<void> promise;
    promise.start();
    const QFuture<void> turn = promise.future();
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [promise = std::make_shared<QPromise<void>>(std::move(promise))] { promise->finish(); },
        Qt::QueuedConnection);
    const QPointer<LocalMusicImportService> self(this);
    co_await turn;
    if (self)
        m_sinceYield.restart();
}

QCoro::Task<void> LocalMusicImportService::importFromFolder(QUrl url)
{
    if (m_isImporting)
        co_return;
    const QPointer<LocalMusicImportService> self(this);
    setIsImporting(true);
    setNewSongsFound(0);
    setImportProgress(0);
    setImportProgressText(u"正在扫描..."_s);
    co_await importFolderContents(std::move(url));
    if (!self)
        co_return;
    setIsImporting(false);
    setLastScanDate(m_platform.clock->now());
    setImportProgress(1.0);
    setImportProgressText(QString());
}

QCoro::Task<void> LocalMusicImportService::importFolderContents(QUrl url)
{
    const QPointer<LocalMusicImportService> self(this);
    const QByteArray folder = QFile::encodeName(QDir::cleanPath(url.toLocalFile()));
    print(u"📂 开始从文件夹导入: "_s + displayName(folder));
    const QList<QByteArray> files = co_await QtConcurrent::run([folder] { return findAudioFiles(folder); });
    if (!self)
        co_return;
    print(u"📁 找到 "_s + QString::number(files.size()) + u" 个音频文件"_s);
    if (files.isEmpty()) {
        setImportProgressText(u"未找到音频文件"_s);
        co_return;
    }

    // Files are copied and read ahead on the thread pool; what is said and listed keeps the order of the
    // files.
    const qsizetype count = files.size();
    struct Started
    {
        QString name;
        QByteArray target;
        bool isClaimed = false;
        bool isLate = false;
    };
    OrderedJobs<StoredFile> jobs;
    std::deque<Started> ahead;
    qsizetype nextToStart = 0;
    int imported = 0;
    int skipped = 0;
    for (qsizetype i = 0; i < count; ++i) {
        while (nextToStart < count && jobs.hasRoom()) {
            const QByteArray &source = files[nextToStart++];
            Started started{.name = displayName(source), .target = {}};
            started.target = targetPath(started.name).toUtf8();
            // What lies there already is claimed by nobody, or a scan would pass it over.
            if (!QFile::exists(QString::fromUtf8(started.target))) {
                started.isClaimed = m_claims.claim(started.target);
                started.isLate = !started.isClaimed;
            }
            // Somebody is filling the name: whether it is taken is known when he has ended.
            if (!started.isLate) {
                jobs.add(
                    m_gate.through([this, source, name = started.name] { return storeFile(source, name); }));
            }
            ahead.push_back(std::move(started));
        }
        const Started current = std::move(ahead.front());
        ahead.pop_front();
        const QString &name = current.name;
        setImportProgress(static_cast<double>(i) / static_cast<double>(count));
        setImportProgressText(u"正在导入 "_s + QString::number(i + 1) + u'/' + QString::number(count) +
                              u": "_s + name);
        StoredFile stored;
        if (current.isLate) {
            while (!m_claims.claim(current.target)) {
                co_await m_claims.released(current.target);
                if (!self)
                    co_return;
            }
            stored = co_await QtConcurrent::run(
                m_gate.through([this, source = files[i], name] { return storeFile(source, name); }));
        } else {
            stored = co_await jobs.next();
        }
        if (!self)
            co_return;
        switch (stored.outcome) {
        case StoredFile::Outcome::existed:
            print(u"⏭️ 文件已存在: "_s + name);
            ++skipped;
            break;
        case StoredFile::Outcome::failed:
            print(u"❌ 复制失败: "_s + name + u" - "_s + stored.error);
            break;
        case StoredFile::Outcome::copied:
            print(QStringList{u"📥 复制: "_s + name} + stored.extraction.log);
            append(stored.extraction.song);
            setNewSongsFound(m_newSongsFound + 1);
            ++imported;
            break;
        }
        if (current.isClaimed || current.isLate)
            m_claims.release(current.target);
        co_await yieldWhenDue();
        if (!self)
            co_return;
    }
    if (imported > 0) {
        co_await saveImportedSongsIndex();
        if (!self)
            co_return;
    }
    print(u"✅ 导入完成: 新增 "_s + QString::number(imported) + u" 首，跳过 "_s + QString::number(skipped) +
          u" 首"_s);
    setImportProgressText(u"导入完成: 新增 "_s + QString::number(imported) + u" 首"_s);
}

/// Copies one file into the store and reads its tags. On the thread pool: touches nothing that changes.
LocalMusicImportService::StoredFile LocalMusicImportService::storeFile(const QByteArray &source,
                                                                       const QString &name) const
{
    StoredFile stored;
    const QString target = targetPath(name);
    if (QFile::exists(target)) {
        stored.outcome = StoredFile::Outcome::existed;
        return stored;
    }
    if (const auto copied = copyAudioFile(source, QFile::encodeName(target)); !copied) {
        stored.outcome =
            copied.error().targetExists ? StoredFile::Outcome::existed : StoredFile::Outcome::failed;
        stored.error = copied.error().description;
        return stored;
    }
    stored.outcome = StoredFile::Outcome::copied;
    stored.extraction =
        extractMetadata(*m_platform.assetReader, target, name, m_metadataDirectory, m_platform.clock->now());
    return stored;
}

QCoro::Task<std::optional<Song>> LocalMusicImportService::importFile(QUrl url)
{
    const QPointer<LocalMusicImportService> self(this);
    std::optional<Song> song = co_await importOne(std::move(url));
    if (self)
        co_await m_indexWriter.idle();
    co_return song;
}

/// Imports one file and asks for the index to be written, without waiting for that.
QCoro::Task<std::optional<Song>> LocalMusicImportService::importOne(QUrl url)
{
    const QPointer<LocalMusicImportService> self(this);
    const QString path = url.toLocalFile();
    const QString name = path.section(u'/', -1);
    print(u"📥 开始导入文件: "_s + name);
    print(u"📍 源路径: "_s + path);
    if (!QFile::exists(path)) {
        print(u"❌ 源文件不存在"_s);
        setImportError(u"文件不存在"_s);
        co_return std::nullopt;
    }
    const QString target = targetPath(name);
    print(u"📍 目标路径: "_s + target);
    const QByteArray claimed = target.toUtf8();
    while (m_claims.contains(claimed)) {
        co_await m_claims.released(claimed);
        if (!self)
            co_return std::nullopt;
    }
    const bool existed = QFile::exists(target);
    if (existed) {
        print(u"⏭️ 文件已存在，跳过"_s);
    } else {
        m_claims.claim(claimed);
        const std::expected<void, CopyError> copied = co_await QtConcurrent::run(
            [path, target] { return copyAudioFile(QFile::encodeName(path), QFile::encodeName(target)); });
        if (!self)
            co_return std::nullopt;
        if (!copied) {
            m_claims.release(claimed);
            setImportError(u"导入失败: "_s + copied.error().description);
            print(u"❌ 导入失败: "_s + copied.error().description);
            co_return std::nullopt;
        }
        print(u"✅ 文件已复制到沙盒"_s);
    }
    const Extraction extraction = co_await extract(target, name);
    if (!self)
        co_return std::nullopt;
    print(extraction.log);
    if (!existed || !contains(extraction.song.id())) {
        append(extraction.song);
        saveImportedSongsIndex();
    }
    if (!existed) {
        m_claims.release(claimed);
        print(u"✅ 歌曲导入成功: "_s + extraction.song.title());
    }
    co_return extraction.song;
}

QCoro::Task<QList<Song>> LocalMusicImportService::importFiles(QList<QUrl> urls)
{
    const QPointer<LocalMusicImportService> self(this);
    print(u"📥 批量导入 "_s + QString::number(urls.size()) + u" 个文件"_s);
    setIsImporting(true);
    setImportProgress(0);
    setImportProgressText(u"正在导入..."_s);
    QList<Song> collected;
    for (qsizetype i = 0; i < urls.size(); ++i) {
        setImportProgress(static_cast<double>(i) / static_cast<double>(urls.size()));
        setImportProgressText(u"正在导入 "_s + QString::number(i + 1) + u'/' + QString::number(urls.size()));
        const std::optional<Song> song = co_await importOne(urls[i]);
        if (!self)
            co_return collected;
        if (song)
            collected.append(*song);
        co_await yieldWhenDue();
        if (!self)
            co_return collected;
    }
    co_await m_indexWriter.idle();
    if (!self)
        co_return collected;
    setNewSongsFound(static_cast<int>(collected.size()));
    print(u"✅ 批量导入完成: "_s + QString::number(collected.size()) + u" 首"_s);
    setIsImporting(false);
    setImportProgress(1.0);
    setImportProgressText(u"导入完成: "_s + QString::number(collected.size()) + u" 首"_s);
    co_return collected;
}

QCoro::Task<std::optional<Song>> LocalMusicImportService::extractMetadataAndSave(QUrl url,
                                                                                 QString originalName)
{
    const QPointer<LocalMusicImportService> self(this);
    print(u"📝 提取元数据: "_s + originalName);
    const QString path = url.toLocalFile();
    if (!QFile::exists(path)) {
        print(u"❌ 文件不存在: "_s + path);
        co_return std::nullopt;
    }
    const Extraction extraction = co_await extract(path, originalName);
    if (!self)
        co_return std::nullopt;
    print(extraction.log);
    if (contains(extraction.song.id())) {
        print(u"⏭️ 歌曲已存在: "_s + extraction.song.title());
        co_return extraction.song;
    }
    append(extraction.song);
    setNewSongsFound(m_newSongsFound + 1);
    co_await saveImportedSongsIndex();
    print(u"✅ 歌曲已保存: "_s + extraction.song.title());
    co_return extraction.song;
}

// MARK: scan

void LocalMusicImportService::rescan()
{
    detach(scanSandbox());
}

QCoro::Task<void> LocalMusicImportService::scanSandbox()
{
    if (m_isScanning)
        co_return;
    const QPointer<LocalMusicImportService> self(this);
    setIsScanning(true);
    setNewSongsFound(0);
    print(u"🔍 扫描沙盒目录..."_s);

    QSet<QByteArray> known;
    known.reserve(m_importedSongs.size());
    for (const Song &song : std::as_const(m_importedSongs))
        known.insert(song.assetPathUtf8());
    m_pathsListedDuringScan.clear();
    const SandboxListing listing = co_await QtConcurrent::run(
        [directory = QFile::encodeName(m_musicDirectory), known] { return listSandbox(directory, known); });
    if (!self)
        co_return;
    known.clear();
    print(u"📁 沙盒中有 "_s + QString::number(listing.fileCount) + u" 个音频文件"_s);
    QList<QByteArray> newFiles;
    for (const QByteArray &path : listing.newFiles) {
        if (!m_claims.contains(path) && !m_pathsListedDuringScan.contains(path))
            newFiles.append(path);
    }
    print(u"🆕 发现 "_s + QString::number(newFiles.size()) + u" 个新文件"_s);
    const qsizetype before = m_importedSongs.size();
    dropSongsWithoutFile(listing.missing);
    const bool cleaned = m_importedSongs.size() != before;

    // Several files a job: handing one over costs as much as reading a small file's tags.
    constexpr qsizetype filesPerJob = 16;
    OrderedJobs<QList<Extraction>> jobs;
    int added = 0;
    for (qsizetype next = 0; next < newFiles.size() || !jobs.isEmpty();) {
        while (next < newFiles.size() && jobs.hasRoom()) {
            jobs.add(
                m_gate.through([&reader = *m_platform.assetReader,
                                files = newFiles.sliced(next, std::min(filesPerJob, newFiles.size() - next)),
                                directory = m_metadataDirectory, now = m_platform.clock->now()] {
                    QList<Extraction> extractions;
                    for (const QByteArray &file : files) {
                        const QString path = QString::fromUtf8(file);
                        extractions.append(extractMetadata(
                            reader, path, LocalMusicImportService::originalName(path.section(u'/', -1)),
                            directory, now));
                    }
                    return extractions;
                }));
            next += filesPerJob;
        }
        const QList<Extraction> extractions = co_await jobs.next();
        if (!self)
            co_return;
        for (const Extraction &extraction : extractions) {
            if (m_pathsListedDuringScan.contains(extraction.song.assetPathUtf8()))
                continue; // an import beside the scan has listed it meanwhile
            append(extraction.song);
            ++added;
            setNewSongsFound(m_newSongsFound + 1);
            print(extraction.log + QStringList{u"✅ 添加: "_s + extraction.song.title()});
        }
        co_await yieldWhenDue();
        if (!self)
            co_return;
    }
    if (added > 0 || cleaned) {
        co_await saveImportedSongsIndex();
        if (!self)
            co_return;
        print(u"💾 已更新歌曲索引"_s);
    }
    m_pathsListedDuringScan.clear();
    setIsScanning(false);
    setLastScanDate(m_platform.clock->now());
}

void LocalMusicImportService::dropSongsWithoutFile(const QSet<QByteArray> &missing)
{
    QList<Song> kept;
    kept.reserve(m_importedSongs.size());
    for (const Song &song : std::as_const(m_importedSongs)) {
        const QByteArray path = song.assetPathUtf8();
        // The disk is asked again: the file may have come back while the directory was walked.
        if (path.isEmpty() || (missing.contains(path) && ::access(path.constData(), F_OK) != 0))
            continue;
        kept.append(song);
    }
    const qsizetype dropped = m_importedSongs.size() - kept.size();
    if (dropped == 0)
        return;
    setImportedSongs(kept);
    print(u"🗑️ 清理了 "_s + QString::number(dropped) + u" 首已删除的歌曲"_s);
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
    QFile file(lyricsFilePath(m_metadataDirectory, song.id()));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(file.readAll());
    return decoder.hasError() ? std::nullopt : std::optional(text);
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
