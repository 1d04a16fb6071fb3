// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MprisCoverFile.h"

#include "Platform/Linux/LinuxLog.h"
#include "Utils/Files.h"
#include "Utils/Tasks.h"

#include <QBuffer>
#include <QCoroFuture>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QThreadPool>
#include <QUrl>
#include <QUuid>
#include <QtConcurrent>

#include <algorithm>
#include <expected>
#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

/// The one that is shown, and the one before.
constexpr int mostFiles = 2;

void removeFiles(const QStringList &paths)
{
    for (const QString &path : paths)
        QFile::remove(path);
}

/// Removes what is in the directory. @param except beginning of names that stay
void sweep(const QString &directory, const QString &except, const std::atomic_bool &isAbandoned)
{
    const QDir folder(directory);
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        if (isAbandoned)
            return; // what comes now may be the next one's
        if (!name.startsWith(except))
            QFile::remove(folder.filePath(name));
    }
}

/// An album's cover is mostly a photograph, for which a JPEG is a fraction of a PNG.
QByteArray encoded(QImage picture)
{
    if (std::max(picture.width(), picture.height()) > MprisCoverFile::longestSide)
        picture = picture.scaled(MprisCoverFile::longestSide, MprisCoverFile::longestSide,
                                 Qt::KeepAspectRatio, Qt::SmoothTransformation);
    constexpr int quality = 90;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const bool done =
        picture.hasAlphaChannel() ? picture.save(&buffer, "PNG") : picture.save(&buffer, "JPEG", quality);
    return done ? bytes : QByteArray();
}

bool makePrivateDirectory(const QString &path)
{
    constexpr auto ownersOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    const QDir directory(path);
    return (directory.exists() || QDir().mkpath(QFileInfo(path).path())) &&
           (directory.exists() || QDir().mkdir(path, ownersOnly)) && QFile::setPermissions(path, ownersOnly);
}

using Written = std::expected<void, QString>;

Written write(const QString &path, const QImage &picture, const std::atomic_bool &isAbandoned)
{
    const QByteArray bytes = encoded(picture);
    if (bytes.isEmpty())
        return std::unexpected(u"the picture cannot be encoded"_s);
    if (!makePrivateDirectory(QFileInfo(path).path()))
        return std::unexpected(u"there is no directory for it"_s);
    Written result = writePrivateFileAtomically(path, bytes);
    // Whoever abandons it sweeps after having said so: one of the two sees the file.
    if (isAbandoned)
        QFile::remove(path);
    return result;
}

} // namespace

MprisCoverFile::MprisCoverFile(QString directory)
    : m_directory(std::move(directory))
    , m_prefix(QUuid::createUuid().toString(QUuid::Id128))
    , m_isAbandoned(std::make_shared<std::atomic_bool>(false))
{
    detach(sweepThenWrite());
}

MprisCoverFile::~MprisCoverFile()
{
    *m_isAbandoned = true;
    const QDir folder(m_directory);
    for (const QString &name : folder.entryList({m_prefix + u'*'}, QDir::Files))
        QFile::remove(folder.filePath(name));
}

void MprisCoverFile::setCover(const std::optional<QImage> &cover)
{
    const QImage image = cover.value_or(QImage());
    const qint64 key = image.isNull() ? 0 : image.cacheKey();
    if (key == m_key)
        return;
    m_key = key;
    m_cover = image;
    m_url.clear();
    const auto standing = std::ranges::find(m_files, key, &File::key);
    if (standing != m_files.end())
        publish(*standing);
    else if (key != 0 && !m_isBusy)
        detach(writeWanted());
}

QCoro::Task<void> MprisCoverFile::sweepThenWrite()
{
    const QPointer<MprisCoverFile> self(this);
    m_isBusy = true;
    const auto job = [directory = m_directory, prefix = m_prefix, isAbandoned = m_isAbandoned] {
        sweep(directory, prefix, *isAbandoned);
    };
    co_await QtConcurrent::run(job);
    if (self)
        co_await writeWanted();
}

QCoro::Task<void> MprisCoverFile::writeWanted()
{
    const QPointer<MprisCoverFile> self(this);
    m_isBusy = true;
    while (m_key != 0 && m_url.isEmpty() && m_key != m_refusedKey) {
        const File file{.key = m_key,
                        .path = u"%1/%2-%3"_s.arg(m_directory, m_prefix, QString::number(++m_written))};
        const auto job = [path = file.path, picture = m_cover, isAbandoned = m_isAbandoned] {
            return write(path, picture, *isAbandoned);
        };
        const Written written = co_await QtConcurrent::run(job);
        if (!self)
            co_return;
        if (written) {
            publish(file);
            continue;
        }
        m_refusedKey = file.key;
        if (!std::exchange(m_hasComplained, true))
            qCWarning(linuxLog).noquote() << "the desktop gets no covers:" << written.error();
    }
    m_isBusy = false;
}

/// @param file a copy, for it may be one of those in the list
void MprisCoverFile::publish(File file)
{
    QStringList old;
    const bool isWanted = file.key == m_key; // or it was written for a song that is over
    if (isWanted) {
        m_files.removeIf([&file](const File &other) { return other.key == file.key; });
        m_files.append(file);
        while (m_files.size() > mostFiles)
            old.append(m_files.takeFirst().path);
    } else {
        old.append(file.path);
    }
    if (!old.isEmpty())
        QThreadPool::globalInstance()->start([old] { removeFiles(old); });
    if (!isWanted)
        return;
    m_url = QUrl::fromLocalFile(file.path).toString(QUrl::FullyEncoded);
    Q_EMIT urlChanged();
}

} // namespace cadorel
