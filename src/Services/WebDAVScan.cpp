// SPDX-License-Identifier: GPL-3.0-or-later
// The walk over a server's directories, and the songs that come of it.
#include "Services/WebDAVService.h"

#include "Platform/HttpTransfer.h"
#include "Services/WebDAV/WebDAVSongs.h"
#include "Utils/Console.h"
#include "Utils/LogText.h"

#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>
#include <QCoroTask>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int deepestDirectory = 15;
constexpr double progressOfDirectory = 0.1;
constexpr double mostProgressOfWalk = 0.9;
/// Looking through more entries than this takes longer than a frame may.
constexpr qsizetype mostEntriesAtOnce = 2000;

/// A path for comparison: servers write one directory with or without "/" at its ends, with one or two of
/// them inside, and with letters composed or not.
QString comparable(const QString &path)
{
    return path.split(u'/', Qt::SkipEmptyParts).join(u'/').normalized(QString::NormalizationForm_C);
}

/// The entries of a listing but the listed directory's own, its parent's and those without a name. Some
/// servers list the parent; walking up and down again multiplies the requests up to the depth limit.
QList<WebDAVFile> childrenIn(QList<WebDAVFile> entries, const QString &ownPath)
{
    entries.removeIf([own = comparable(ownPath)](const WebDAVFile &entry) {
        return comparable(entry.path) == own || entry.name.isEmpty() || entry.name == u'.' ||
               entry.name == u"..";
    });
    return entries;
}

} // namespace

/// One scan that was asked for.
struct WebDAVService::Scan
{
    explicit Scan(const WebDAVConfig &scanned)
        : config(scanned)
    {
        ended.start();
    }

    WebDAVConfig config;
    /// What the walk has found so far.
    QList<WebDAVFile> files;
    /// The request under way.
    std::shared_ptr<HttpTransfer> transfer;
    /// The server was deleted: what was found is wanted no more.
    bool isDropped = false;
    QPromise<void> ended;
};

void WebDAVService::dropScans(const QUuid &configId)
{
    for (const ScanPointer &scan : QList<ScanPointer>(m_scans)) {
        if (scan->config.id != configId)
            continue;
        scan->isDropped = true;
        if (scan->transfer)
            scan->transfer->cancel();
    }
}

QCoro::Task<void> WebDAVService::scanMusic(WebDAVConfig config)
{
    const QPointer<WebDAVService> self(this);
    const auto scan = std::make_shared<Scan>(config);
    const ScanPointer before = m_scans.isEmpty() ? nullptr : m_scans.constLast();
    m_scans.append(scan);
    if (before)
        co_await before->ended.future();
    if (self && !scan->isDropped)
        co_await runScan(scan);
    if (self)
        m_scans.removeOne(scan);
    scan->ended.finish();
}

QCoro::Task<void> WebDAVService::scanAllConfigs()
{
    const QPointer<WebDAVService> self(this);
    const QList<WebDAVConfig> configs = m_configs;
    for (const WebDAVConfig &asked : configs) {
        // It may have been changed or deleted during the scan of another.
        const qsizetype listed = m_configs.indexOf(asked);
        if (listed >= 0 && m_configs[listed].isEnabled)
            co_await scanMusic(m_configs[listed]);
        if (!self)
            co_return;
    }
}

QCoro::Task<void> WebDAVService::runScan(ScanPointer scan)
{
    const QPointer<WebDAVService> self(this);
    setIsScanning(true);
    setScanProgress(0);
    setError(std::nullopt);
    std::optional<QString> failure;
    try {
        co_await walk(scan);
    } catch (const std::exception &error) {
        failure = QString::fromUtf8(error.what());
    }
    if (!self)
        co_return;
    if (failure && !scan->isDropped) {
        setError(failure);
        print(u"❌ WebDAV: 扫描失败 - "_s + *failure);
    }
    setIsScanning(false);
    setScanProgress(1);
}

QCoro::Task<void> WebDAVService::walk(ScanPointer scan)
{
    const QPointer<WebDAVService> self(this);
    const WebDAVConfig config = scan->config;
    const Password password = co_await storedPassword(config);
    if (!self || scan->isDropped)
        co_return;
    if (!password) {
        setError(u"无法获取密码"_s);
        co_return;
    }
    print(u"🔍 WebDAV: 开始扫描 - "_s + config.name);
    co_await scanDirectory(scan, *password, QString(), 0);
    if (!self || scan->isDropped)
        co_return;
    print(u"📁 WebDAV: 找到 "_s + QString::number(scan->files.size()) + u" 个文件"_s);
    const QList<Song> songs = co_await QtConcurrent::run(songsOfFiles, std::exchange(scan->files, {}), config,
                                                         *password, m_platform.clock->now());
    if (!self)
        co_return;
    co_await songsLoaded();
    if (!self || scan->isDropped)
        co_return;
    replaceSongs(config, songs);
    const QDateTime now = m_platform.clock->now();
    if (const qsizetype listed = m_configs.indexOf(config); listed >= 0)
        m_configs[listed].lastSyncDate = now;
    saveConfigs();
    m_lastScanDate = now;
    Q_EMIT lastScanDateChanged();
    print(u"✅ WebDAV: 扫描完成，共 "_s + QString::number(songs.size()) + u" 首歌曲"_s);
}

QCoro::Task<void> WebDAVService::scanDirectory(ScanPointer scan, QString password, QString path, int depth)
{
    const QPointer<WebDAVService> self(this);
    if (depth >= deepestDirectory) {
        print(u"⚠️ WebDAV: 达到最大递归深度 - "_s + logText(path));
        co_return;
    }
    scan->transfer = std::make_shared<HttpTransfer>();
    QList<WebDAVFile> entries = co_await performPROPFIND(scan->config, password, path, scan->transfer);
    if (!self || scan->isDropped)
        co_return;
    const QString ownPath = scan->config.basePath + u'/' + path;
    const bool areMany = entries.size() > mostEntriesAtOnce;
    const QList<WebDAVFile> children =
        areMany ? co_await QtConcurrent::run(childrenIn, std::exchange(entries, {}), ownPath)
                : childrenIn(std::exchange(entries, {}), ownPath);
    for (const WebDAVFile &child : children) {
        if (!self || scan->isDropped)
            co_return;
        if (child.isDirectory) {
            co_await scanDirectory(scan, password, path.isEmpty() ? child.name : path + u'/' + child.name,
                                   depth + 1);
        } else {
            scan->files.append(child);
        }
    }
    if (self && !scan->isDropped)
        setScanProgress(std::min(m_scanProgress + progressOfDirectory, mostProgressOfWalk));
}

} // namespace cadorel
