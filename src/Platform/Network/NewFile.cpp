// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/NewFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace cadorel {

NewFile::~NewFile()
{
    discard();
}

NewFile::NewFile(NewFile &&other) noexcept
    : m_path(std::exchange(other.m_path, {}))
    , m_descriptor(std::exchange(other.m_descriptor, -1))
{
}

NewFile &NewFile::operator=(NewFile &&other) noexcept
{
    if (this != &other) {
        discard();
        m_path = std::exchange(other.m_path, {});
        m_descriptor = std::exchange(other.m_descriptor, -1);
    }
    return *this;
}

std::expected<void, int> NewFile::create(const QString &path)
{
    discard();
    m_path = QFile::encodeName(path);
    m_descriptor =
        ::open(m_path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (m_descriptor < 0)
        return std::unexpected(errno);
    return {};
}

std::expected<void, int> NewFile::write(const char *data, qint64 size)
{
    while (size > 0) {
        const ssize_t count = ::write(m_descriptor, data, static_cast<size_t>(size));
        if (count < 0) {
            if (errno == EINTR)
                continue;
            return std::unexpected(errno);
        }
        data += count;
        size -= count;
    }
    return {};
}

std::expected<void, int> NewFile::keep()
{
    // A network file system may tell only now that there was no room.
    if (::close(std::exchange(m_descriptor, -1)) != 0) {
        const int code = errno;
        ::unlink(m_path.constData());
        return std::unexpected(code);
    }
    return {};
}

void NewFile::discard()
{
    if (m_descriptor < 0)
        return;
    ::close(std::exchange(m_descriptor, -1));
    ::unlink(m_path.constData());
}

} // namespace cadorel
