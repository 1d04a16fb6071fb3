// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Files.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

/// @return 0 or errno
int writeAll(int descriptor, const QByteArray &bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count =
            ::write(descriptor, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0) {
            if (errno == EINTR)
                continue;
            return errno;
        }
        done += count;
    }
    return 0;
}

/// Entries of a directory are on the disk once the directory is.
void forceDirectory(const QByteArray &directory)
{
    const int descriptor = ::open(directory.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

enum class Kind { ordinary, privateAndLasting };

std::expected<void, QString> write(const QString &path, const QByteArray &bytes, Kind kind)
{
    const QByteArray target = QFile::encodeName(path);
    const QByteArray directory = target.first(target.lastIndexOf('/') + 1);
    QByteArray temporary = directory + ".write-XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC); // for this user alone
    if (descriptor < 0)
        return std::unexpected(qt_error_string(errno));
    constexpr mode_t readable = 0644;
    if (kind == Kind::ordinary)
        ::fchmod(descriptor, readable);
    int code = writeAll(descriptor, bytes);
    if (code == 0 && kind == Kind::privateAndLasting && ::fsync(descriptor) != 0)
        code = errno;
    if (::close(descriptor) != 0 && code == 0)
        code = errno;
    if (code == 0 && ::rename(temporary.constData(), target.constData()) != 0)
        code = errno;
    if (code != 0) {
        ::unlink(temporary.constData());
        return std::unexpected(qt_error_string(code));
    }
    if (kind == Kind::privateAndLasting)
        forceDirectory(directory);
    return {};
}

} // namespace

std::expected<void, QString> writeFileAtomically(const QString &path, const QByteArray &bytes)
{
    return write(path, bytes, Kind::ordinary);
}

std::expected<void, QString> writePrivateFileAtomically(const QString &path, const QByteArray &bytes)
{
    return write(path, bytes, Kind::privateAndLasting);
}

QString freeDamagedName(const QString &path)
{
    const QString base = path + u".damaged-"_s + QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
    QString name = base;
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = u"%1-%2"_s.arg(base).arg(number);
    return name;
}

} // namespace cadorel
