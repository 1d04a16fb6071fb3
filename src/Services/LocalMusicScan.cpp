// SPDX-License-Identifier: GPL-3.0-or-later
// The look into the music directory: what came by another way, and what is gone.
#include "Services/LocalMusicImportService.h"

#include "Services/Import/OrderedJobs.h"
#include "Utils/Console.h"
#include "Utils/FreeMemory.h"
#include "Utils/Tasks.h"

#include <QFile>
#include <QPointer>
#include <QSet>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <algorithm>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// What a look into the music directory found.
struct SandboxListing
{
    qsizetype fileCount = 0;
    QList<QByteArray> newFiles;
    QSet<QByteArray> missing;
};

SandboxListing listSandbox(const QByteArray &directory, const QSet<QByteArray> &known,
                           const QDateTime &startedAt)
{
    removeAbandonedCopies(directory, startedAt);
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
        [directory = QFile::encodeName(m_musicDirectory), known, startedAt = m_startedAt] {
            return listSandbox(directory, known, startedAt);
        });
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
    // The paths of a large library, and what reading its index took before, are tens of megabytes.
    co_await QtConcurrent::run(giveBackFreeMemory);
    if (!self)
        co_return;
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

} // namespace cadorel
