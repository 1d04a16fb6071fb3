// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Cloud/CloudSongCache.h"

#include "Platform/HttpTransfer.h"
#include "Services/WebDAV/LargestSong.h"
#include "Utils/StableHash.h"
#include "Utils/Utf8Text.h"

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QPromise>
#include <QUuid>
#include <QtConcurrent>

#include <QCoroFuture>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

using Failure = CloudSongCache::Failure;

/// What downloads under way are called. No copy is named like that.
constexpr auto temporaryPrefix = ".download-"_L1;

/// Longest name that the file systems take, in bytes.
constexpr qsizetype longestName = 255;
/// What is longer is no ending of a file, in bytes.
constexpr qsizetype longestEnding = 16;

constexpr int statusOk = 200;

/// The last component of an address's path, as it stands there.
QString lastComponent(const QUrl &url)
{
    QString path = url.path(QUrl::FullyEncoded);
    while (path.endsWith(u'/'))
        path.chop(1);
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

QString withoutPercentEncoding(const QString &component)
{
    return utf8Text(QByteArray::fromPercentEncoding(component.toLatin1())).value_or(component);
}

/// Cuts a text to so many bytes of UTF-8, between two code points.
QString shortened(const QString &text, qsizetype bytes)
{
    const QByteArray utf8 = text.toUtf8();
    if (utf8.size() <= bytes)
        return text;
    constexpr int markBits = 0xC0;
    constexpr int continuation = 0x80;
    while (bytes > 0 && (utf8[bytes] & markBits) == continuation)
        --bytes;
    return QString::fromUtf8(utf8.first(bytes));
}

/// A name that can lie in one folder only. One that had to be changed ends in a hash, so that it does not
/// become the name of another song.
QString harmless(const QString &name)
{
    QString result = name;
    for (QChar &c : result) {
        if (c == u'/' || c.category() == QChar::Other_Control)
            c = u'_';
    }
    if (result.isEmpty() || result == "."_L1 || result == ".."_L1)
        result = u"_"_s;
    if (result.startsWith(temporaryPrefix))
        result.front() = u'_';
    if (result == name && result.toUtf8().size() <= longestName)
        return result;
    const qsizetype dot = result.lastIndexOf(u'.');
    const bool hasEnding = dot > 0 && result.sliced(dot).toUtf8().size() <= longestEnding;
    const QString ending = hasEnding ? result.sliced(dot) : QString();
    const QString tail = u'-' + stableHash(name) + ending;
    return shortened(result.chopped(ending.size()), longestName - tail.toUtf8().size()) + tail;
}

/// Makes the folder, and removes what downloads that were cut off by a crash left there.
/// @param ownPrefix beginning of the names of this cache's own downloads
/// @return 0 or errno
int prepareFolder(const QString &directory, const QString &ownPrefix)
{
    if (!QDir().mkpath(directory))
        return errno != 0 ? errno : EIO;
    QDir folder(directory, temporaryPrefix + u'*', QDir::Unsorted, QDir::Files | QDir::Hidden);
    for (const QString &name : folder.entryList()) {
        if (!name.startsWith(ownPrefix))
            folder.remove(name);
    }
    return 0;
}

/// Gives a whole download its name, in the place of an earlier copy. What else lies there, a folder or a
/// link, is not ours and stays.
/// @return 0 or errno
int moveIntoPlace(const QByteArray &temporary, const QByteArray &target)
{
    struct stat there = {};
    if (::lstat(target.constData(), &there) == 0 && !S_ISREG(there.st_mode))
        return EEXIST;
    const int descriptor = ::open(temporary.constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return errno;
    // A copy that a power cut left empty would be played in place of the song for ever after.
    const int flushed = ::fsync(descriptor) == 0 ? 0 : errno;
    ::close(descriptor);
    if (flushed != 0)
        return flushed;
    return ::rename(temporary.constData(), target.constData()) == 0 ? 0 : errno;
}

Failure failure(const HttpError &error)
{
    switch (error.kind) {
    case HttpError::Kind::cancelled:
        return {};
    case HttpError::Kind::file:
        return {.kind = Failure::Kind::storage, .description = error.description};
    default:
        return {.kind = Failure::Kind::download, .description = error.description};
    }
}

/// Why an answer is not the whole song; nothing when it is.
std::optional<Failure> fault(const HttpResponse &response)
{
    if (response.status != statusOk)
        return Failure{Failure::Kind::download, u"HTTP %1"_s.arg(response.status)};
    const QString type = response.mimeType();
    if (type == "text/html"_L1 || type == "application/xhtml+xml"_L1)
        return Failure{Failure::Kind::download, u"服务器返回的是网页"_s};
    if (response.bodySize == 0)
        return Failure{Failure::Kind::noFile, u"无数据"_s};
    // A packed body was not asked for, and its bytes are not those of the song.
    const QByteArray encoding = response.header("Content-Encoding").toLower();
    if (!encoding.isEmpty() && encoding != "identity")
        return Failure{Failure::Kind::download, u"服务器返回的是压缩数据"_s};
    bool isNumber = false;
    const qint64 announced = response.header("Content-Length").toLongLong(&isNumber);
    if (isNumber && announced != response.bodySize && response.header("Transfer-Encoding").isEmpty())
        return Failure{Failure::Kind::download, u"文件不完整"_s};
    return std::nullopt;
}

} // namespace

struct CloudSongCache::Download
{
    QString temporary;
    std::shared_ptr<HttpTransfer> transfer = std::make_shared<HttpTransfer>();
    QPromise<Result> promise;
};

CloudSongCache::CloudSongCache(Platform &platform)
    : m_platform(platform)
    , m_directory(platform.directories.caches + "/WebDAVCache"_L1)
    , m_temporaryPrefix(temporaryPrefix + QUuid::createUuid().toString(QUuid::WithoutBraces) + u'-')
{
}

CloudSongCache::~CloudSongCache()
{
    // A client may end a request, and so its entry here, before cancel() returns.
    for (const auto downloads = std::exchange(m_downloads, {}); const auto &download : downloads) {
        download->transfer->cancel();
        QFile::remove(download->temporary);
    }
}

QString CloudSongCache::fileName(const QUrl &url)
{
    return harmless(withoutPercentEncoding(lastComponent(url)));
}

std::optional<QString> CloudSongCache::cachedFile(const QUrl &url) const
{
    const QString path = filePath(url);
    struct stat there = {};
    const bool isCopy = ::lstat(QFile::encodeName(path).constData(), &there) == 0 && S_ISREG(there.st_mode) &&
                        there.st_size > 0;
    return isCopy ? std::optional(path) : std::nullopt;
}

QCoro::Task<CloudSongCache::Result> CloudSongCache::download(QUrl url)
{
    const QString name = fileName(url);
    if (const auto other = m_downloads.value(name)) {
        const QFuture<Result> future = other->promise.future();
        co_return co_await future;
    }
    const QPointer<CloudSongCache> self(this);
    const auto download = std::make_shared<Download>();
    download->temporary = m_directory + u'/' + m_temporaryPrefix + QString::number(++m_downloadsMade);
    download->promise.start();
    download->transfer->setPaused(!m_hold.expired());
    m_downloads.insert(name, download);
    const Result result = co_await fetch(url, download);
    if (self) {
        m_downloads.remove(name);
        if (!result)
            QFile::remove(download->temporary);
    }
    download->promise.addResult(result);
    download->promise.finish();
    co_return result;
}

std::shared_ptr<void> CloudSongCache::holdDownloads()
{
    if (std::shared_ptr<void> others = m_hold.lock())
        return others;
    // The end of the last hold is told when nothing refers to it any more.
    std::shared_ptr<void> hold(this, [self = QPointer<CloudSongCache>(this)](void *) {
        if (self)
            self->updatePausing();
    });
    m_hold = hold;
    updatePausing();
    return hold;
}

void CloudSongCache::updatePausing()
{
    for (const auto &download : std::as_const(m_downloads))
        download->transfer->setPaused(!m_hold.expired());
}

QCoro::Task<CloudSongCache::Result> CloudSongCache::fetch(QUrl url, std::shared_ptr<Download> download)
{
    if (url.userName().isEmpty() || url.password().isEmpty())
        co_return std::unexpected(Failure{Failure::Kind::credentials});
    QUrl clean = url;
    clean.setUserInfo(QString());
    if (!clean.isValid() || clean.isRelative() || clean.host().isEmpty())
        co_return std::unexpected(Failure{Failure::Kind::address});
    HttpRequest request;
    request.url = clean;
    request.headers.append({"Authorization", "Basic " + (url.userName(QUrl::FullyDecoded) + u':' +
                                                         url.password(QUrl::FullyDecoded))
                                                            .toUtf8()
                                                            .toBase64()});
    request.outputFile = download->temporary;
    request.mustBeWhole = true;
    request.sizeLimit = webdav::largestSong;
    request.transfer = download->transfer;

    const QPointer<CloudSongCache> self(this);
    const int unprepared = co_await QtConcurrent::run(m_gate.through(
        [directory = m_directory, own = m_temporaryPrefix] { return prepareFolder(directory, own); }));
    if (!self)
        co_return std::unexpected(Failure{});
    if (unprepared != 0)
        co_return std::unexpected(Failure{Failure::Kind::storage, qt_error_string(unprepared)});

    if (!m_platform.httpClient)
        co_return std::unexpected(Failure{Failure::Kind::download, u"无网络"_s});
    const std::expected<HttpResponse, HttpError> response =
        co_await m_platform.httpClient->send(std::move(request));
    if (!self)
        co_return std::unexpected(Failure{});
    if (!response)
        co_return std::unexpected(failure(response.error()));
    if (const std::optional<Failure> why = fault(*response))
        co_return std::unexpected(*why);

    const QString target = filePath(url);
    const int unmoved = co_await QtConcurrent::run(
        m_gate.through([from = QFile::encodeName(download->temporary), to = QFile::encodeName(target)] {
            return moveIntoPlace(from, to);
        }));
    if (!self)
        co_return std::unexpected(Failure{});
    if (unmoved != 0)
        co_return std::unexpected(Failure{Failure::Kind::storage, qt_error_string(unmoved)});
    co_return target;
}

} // namespace cadorel
