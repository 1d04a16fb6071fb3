// SPDX-License-Identifier: GPL-3.0-or-later
// Taking files and folders into the store.
#include "Services/LocalMusicImportService.h"

#include "Services/Import/OrderedJobs.h"
#include "Utils/Console.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <deque>

namespace cadorel {

using namespace Qt::StringLiterals;

/// What became of one file on its way into the store.
struct LocalMusicImportService::StoredFile
{
    enum class Outcome { copied, existed, failed };
    Outcome outcome = Outcome::failed;
    QString error;
    Extraction extraction; ///< of a copied file
};

QCoro::Task<Extraction> LocalMusicImportService::extract(QString path, QString name)
{
    const QFuture<Extraction> extraction = QtConcurrent::run(m_gate.through(
        [&reader = *m_platform.assetReader, path, name, directory = m_metadataDirectory,
         now = m_platform.clock->now()] { return extractMetadata(reader, path, name, directory, now); }));
    co_return co_await extraction;
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
    const QString path = QDir::cleanPath(url.toLocalFile());
    print(u"📂 开始从文件夹导入: "_s + path.section(u'/', -1));
    // The real path, so that what lies in the store already is known by where it lies.
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QByteArray folder = QFile::encodeName(canonical.isEmpty() ? path : canonical);
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
                jobs.add(m_gate.through([this, source, name = started.name, now = m_platform.clock->now()] {
                    return storeFile(source, name, now);
                }));
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
                m_gate.through([this, source = files[i], name, now = m_platform.clock->now()] {
                    return storeFile(source, name, now);
                }));
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
LocalMusicImportService::StoredFile
LocalMusicImportService::storeFile(const QByteArray &source, const QString &name, const QDateTime &now) const
{
    StoredFile stored;
    const QString target = targetPath(name);
    if (!storedPath(source).isEmpty() || QFile::exists(target)) {
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
    stored.extraction = extractMetadata(*m_platform.assetReader, target, name, m_metadataDirectory, now);
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
    // A file of the store is its own target: copied, it would be there twice.
    const QString stored = storedPath(QFile::encodeName(QFileInfo(path).canonicalFilePath()));
    const QString target = stored.isEmpty() ? targetPath(name) : stored;
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
    const Extraction extraction = co_await extract(target, target == stored ? originalName(name) : name);
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

} // namespace cadorel
