// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/FileBytes.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace cadorel {

std::expected<std::shared_ptr<FileBytes>, QString> FileBytes::open(const QString &path)
{
    // Without O_NONBLOCK a named pipe would keep the reader waiting for a writer.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return std::unexpected(qt_error_string(errno));
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return std::unexpected(u"not a regular file"_s);
    }
    return std::shared_ptr<FileBytes>(new FileBytes(descriptor, status.st_size));
}

FileBytes::FileBytes(int descriptor, qint64 size)
    : m_descriptor(descriptor)
    , m_size(size)
{
    m_head.length = readDirectly(0, m_head.bytes.data(), qint64(m_head.bytes.size()));
}

FileBytes::~FileBytes()
{
    ::close(m_descriptor);
}

qint64 FileBytes::readDirectly(qint64 offset, char *to, qint64 length) const
{
    qint64 done = 0;
    while (done < length) {
        const ssize_t got = pread(m_descriptor, to + done, size_t(length - done), offset + done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += got;
    }
    return done;
}

qint64 FileBytes::read(qint64 offset, char *to, qint64 length)
{
    if (offset < 0 || offset >= m_size)
        return 0;
    length = std::min(length, m_size - offset);
    for (const Window *window : {&m_head, &m_recent}) {
        if (offset >= window->offset && offset + length <= window->offset + window->length) {
            std::memcpy(to, window->bytes.data() + (offset - window->offset), size_t(length));
            return length;
        }
    }
    const auto capacity = qint64(m_recent.bytes.size());
    if (length > capacity / 2)
        return readDirectly(offset, to, length);
    // What is asked for at the end of a file is asked for backwards: last tag first.
    m_recent.offset = std::max<qint64>(0, std::min(offset, m_size - capacity));
    m_recent.length = readDirectly(m_recent.offset, m_recent.bytes.data(), capacity);
    const qint64 got = std::clamp<qint64>(m_recent.offset + m_recent.length - offset, 0, length);
    std::memcpy(to, m_recent.bytes.data() + (offset - m_recent.offset), size_t(got));
    return got;
}

QByteArray FileBytes::read(qint64 offset, qint64 length)
{
    if (offset < 0 || offset >= m_size || length <= 0)
        return {};
    QByteArray bytes(qsizetype(std::min(length, m_size - offset)), Qt::Uninitialized);
    bytes.truncate(qsizetype(read(offset, bytes.data(), bytes.size())));
    return bytes;
}

} // namespace cadorel
