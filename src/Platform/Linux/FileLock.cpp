// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/FileLock.h"

#include "Platform/Linux/LinuxLog.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cadorel {

FileLock::FileLock(const QString &path)
    : m_path(path)
    // Closed by exec, or a program that the player starts would hold the lock on.
    , m_file(::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR))
{
}

FileLock::~FileLock()
{
    if (m_isTaken)
        setText({});
    if (m_file != -1)
        ::close(m_file);
}

FileLock::Outcome FileLock::tryLock()
{
    if (m_file == -1)
        return Outcome::unavailable;
    if (::flock(m_file, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK || errno == EINTR ? Outcome::heldByAnother : Outcome::unavailable;
    m_isTaken = true;
    setText({});
    return Outcome::taken;
}

void FileLock::setText(const QByteArray &text)
{
    const auto size = static_cast<size_t>(text.size());
    if (::ftruncate(m_file, 0) != 0 || ::pwrite(m_file, text.constData(), size, 0) != text.size())
        qCWarning(linuxLog).noquote() << "cannot write" << m_path << qt_error_string();
}

QByteArray FileLock::text() const
{
    QFile file(m_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace cadorel
