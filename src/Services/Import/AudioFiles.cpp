// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/AudioFiles.h"

#include "Utils/SystemErrorText.h"

#include <QMimeDatabase>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Beginning of the name of a copy that is not complete yet.
constexpr char copyPrefix[] = ".import-";

/// A file descriptor that closes itself.
class Descriptor
{
public:
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Q_DISABLE_COPY_MOVE(Descriptor)

    int get() const { return m_descriptor; }
    bool isOpen() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

CopyError copyError(int code)
{
    return {.targetExists = code == EEXIST, .description = systemErrorText(code)};
}

/// Moves the bytes inside the kernel, sharing the blocks where the file system can. @return 0 or errno
int copyContents(int from, int to)
{
    if (::ioctl(to, FICLONE, from) == 0)
        return 0;
    constexpr size_t step = size_t{64} << 20U;
    while (true) {
        const ssize_t count = ::copy_file_range(from, nullptr, to, nullptr, step, 0);
        if (count == 0)
            break;
        if (count < 0) {
            if (errno == EINTR)
                continue;
            if (errno != EXDEV && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP)
                return errno;
            // Not between these two file systems: read and write, from where the kernel stopped.
            QByteArray buffer(1 << 18, Qt::Uninitialized);
            while (true) {
                const ssize_t got = ::read(from, buffer.data(), static_cast<size_t>(buffer.size()));
                if (got == 0)
                    return 0;
                if (got < 0) {
                    if (errno == EINTR)
                        continue;
                    return errno;
                }
                for (ssize_t done = 0; done < got;) {
                    const ssize_t put =
                        ::write(to, buffer.constData() + done, static_cast<size_t>(got - done));
                    if (put < 0 && errno != EINTR)
                        return errno;
                    done += std::max<ssize_t>(put, 0);
                }
            }
        }
    }
    return 0;
}

} // namespace

const QStringList &supportedExtensions()
{
    static const QStringList extensions{u"mp3"_s,  u"m4a"_s, u"wav"_s, u"aiff"_s, u"aac"_s,
                                        u"flac"_s, u"ogg"_s, u"wma"_s, u"ape"_s,  u"dff"_s,
                                        u"dsf"_s,  u"wv"_s,  u"tta"_s, u"tak"_s,  u"mka"_s,
                                        u"opus"_s, u"spx"_s, u"ra"_s,  u"rm"_s,   u"rmvb"_s};
    return extensions;
}

bool hasSupportedExtension(const QByteArray &nativeName)
{
    const qsizetype slash = nativeName.lastIndexOf('/');
    const qsizetype dot = nativeName.lastIndexOf('.');
    if (dot <= slash)
        return false;
    const QByteArrayView extension = QByteArrayView(nativeName).sliced(dot + 1);
    return std::any_of(supportedExtensions().cbegin(), supportedExtensions().cend(),
                       [&](const QString &known) {
                           return QLatin1StringView(extension).compare(known, Qt::CaseInsensitive) == 0;
                       });
}

QStringList supportedTypes()
{
    static const QStringList types = [] {
        QStringList list{u"audio/mpeg"_s, u"audio/mp4"_s, u"audio/x-wav"_s, u"audio/x-aiff"_s, u"audio/*"_s};
        const QMimeDatabase database;
        for (const QString &extension :
             {u"m4a"_s, u"flac"_s, u"aac"_s, u"ogg"_s, u"ape"_s, u"dff"_s, u"dsf"_s, u"wv"_s, u"tta"_s,
              u"tak"_s, u"mka"_s, u"opus"_s, u"spx"_s, u"wma"_s, u"ra"_s, u"rm"_s, u"rmvb"_s}) {
            const QMimeType type =
                database.mimeTypeForFile(u"song."_s + extension, QMimeDatabase::MatchExtension);
            if (type.isValid() && !type.isDefault())
                list.append(type.name());
        }
        return list;
    }();
    return types;
}

void visitAudioFiles(const QByteArray &nativeDirectory, BrokenLinks brokenLinks,
                     const std::function<void(const QByteArray &path)> &visit)
{
    DIR *directory = ::opendir(nativeDirectory.constData());
    if (!directory)
        return;
    QList<QByteArray> files;
    QList<QByteArray> folders;
    while (const dirent *entry = ::readdir(directory)) {
        if (entry->d_name[0] == '.')
            continue;
        const QByteArray name(entry->d_name);
        unsigned char type = entry->d_type;
        if (type == DT_UNKNOWN) {
            struct stat status{};
            if (::fstatat(::dirfd(directory), name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
                continue;
            type = static_cast<unsigned char>(IFTODT(status.st_mode));
        }
        if (type == DT_DIR) {
            folders.append(name);
        } else if (type == DT_REG) {
            if (hasSupportedExtension(name))
                files.append(name);
        } else if (type == DT_LNK && hasSupportedExtension(name)) {
            // A link to a file counts, a link to a folder does not.
            struct stat status{};
            const bool isBroken = ::fstatat(::dirfd(directory), name.constData(), &status, 0) != 0;
            if (isBroken ? brokenLinks == BrokenLinks::include : S_ISREG(status.st_mode))
                files.append(name);
        }
    }
    ::closedir(directory);

    const QByteArray prefix = nativeDirectory.endsWith('/') ? nativeDirectory : nativeDirectory + '/';
    std::sort(files.begin(), files.end());
    for (const QByteArray &name : std::as_const(files))
        visit(prefix + name);
    std::sort(folders.begin(), folders.end());
    for (const QByteArray &name : std::as_const(folders))
        visitAudioFiles(prefix + name, brokenLinks, visit);
}

QList<QByteArray> findAudioFiles(const QByteArray &nativeDirectory)
{
    QList<QByteArray> found;
    visitAudioFiles(nativeDirectory, BrokenLinks::include,
                    [&](const QByteArray &path) { found.append(path); });
    return found;
}

QString displayName(const QByteArray &nativePath)
{
    return QString::fromUtf8(nativePath.sliced(nativePath.lastIndexOf('/') + 1));
}

std::expected<void, CopyError> copyAudioFile(const QByteArray &nativeSource, const QByteArray &nativeTarget)
{
    // O_NONBLOCK: opening a named pipe must not wait for a writer.
    const Descriptor source(::open(nativeSource.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!source.isOpen())
        return std::unexpected(copyError(errno));
    struct stat status{};
    if (::fstat(source.get(), &status) != 0)
        return std::unexpected(copyError(errno));
    if (!S_ISREG(status.st_mode))
        return std::unexpected(CopyError{.targetExists = false, .description = u"不是普通文件"_s});

    // A hidden name of its own until the copy is complete: no scan sees half a song.
    const qsizetype slash = nativeTarget.lastIndexOf('/');
    const QByteArray folder = nativeTarget.first(slash + 1);
    QByteArray temporary = folder + copyPrefix + "XXXXXX";
    const Descriptor target(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!target.isOpen())
        return std::unexpected(copyError(errno));
    const auto fail = [&](int code) {
        ::unlink(temporary.constData());
        return std::unexpected(copyError(code));
    };
    if (const int code = copyContents(source.get(), target.get()); code != 0)
        return fail(code);
    const timespec times[2] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, status.st_mtim};
    ::futimens(target.get(), times);
    constexpr mode_t readable = 0644;
    ::fchmod(target.get(), readable);
    if (::renameat2(AT_FDCWD, temporary.constData(), AT_FDCWD, nativeTarget.constData(), RENAME_NOREPLACE) ==
        0)
        return {};
    if (errno != EINVAL)
        return fail(errno);
    // A file system without that kind of rename: a hard link fails on an existing name just as well.
    if (::link(temporary.constData(), nativeTarget.constData()) != 0)
        return fail(errno);
    ::unlink(temporary.constData());
    return {};
}

void removeAbandonedCopies(const QByteArray &nativeDirectory, const QDateTime &before)
{
    DIR *directory = ::opendir(nativeDirectory.constData());
    if (!directory)
        return;
    while (const dirent *entry = ::readdir(directory)) {
        struct stat status{};
        if (std::strncmp(entry->d_name, copyPrefix, std::strlen(copyPrefix)) != 0 ||
            ::fstatat(::dirfd(directory), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        // The time of the last change of the entry itself: a copy carries its source's own time.
        if (S_ISREG(status.st_mode) && status.st_ctim.tv_sec < before.toSecsSinceEpoch())
            ::unlinkat(::dirfd(directory), entry->d_name, 0);
    }
    ::closedir(directory);
}

} // namespace cadorel
