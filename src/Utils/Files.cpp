// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Files.h"

#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

} // namespace

std::expected<void, QString> writeFileAtomically(const QString &path, const QByteArray &bytes)
{
    const QByteArray target = QFile::encodeName(path);
    QByteArray temporary = target.first(target.lastIndexOf('/') + 1) + ".write-XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0)
        return std::unexpected(qt_error_string(errno));
    constexpr mode_t readable = 0644;
    ::fchmod(descriptor, readable);
    int code = writeAll(descriptor, bytes);
    if (::close(descriptor) != 0 && code == 0)
        code = errno;
    if (code == 0 && ::rename(temporary.constData(), target.constData()) != 0)
        code = errno;
    if (code == 0)
        return {};
    ::unlink(temporary.constData());
    return std::unexpected(qt_error_string(code));
}

} // namespace cadorel
