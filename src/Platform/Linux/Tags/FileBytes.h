// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <expected>
#include <memory>

namespace cadorel {

/// The bytes of one regular file, opened once for all readers of its tags. Small reads near each other cost
/// one system call. Belongs to one thread at a time.
class FileBytes
{
public:
    /// Opens the file; never waits for a pipe or a device. The failure is the system's description.
    static std::expected<std::shared_ptr<FileBytes>, QString> open(const QString &path);

    FileBytes(const FileBytes &) = delete;
    FileBytes &operator=(const FileBytes &) = delete;
    ~FileBytes();

    /// Length in bytes when it was opened.
    qint64 size() const { return m_size; }
    /// Reads at most @p length bytes from @p offset. @return how many were read, 0 past the end or on an
    /// error
    qint64 read(qint64 offset, char *to, qint64 length);
    /// The same as a byte array, shorter at the end of the file.
    QByteArray read(qint64 offset, qint64 length);

private:
    struct Window
    {
        qint64 offset = 0;
        qint64 length = 0;
        std::array<char, 8192> bytes;
    };

    FileBytes(int descriptor, qint64 size);
    qint64 readDirectly(qint64 offset, char *to, qint64 length) const;

    int m_descriptor;
    qint64 m_size;
    // The beginning of the file stays: signature, first tag and first frame are asked for again and again.
    Window m_head;
    Window m_recent;
};

} // namespace cadorel
