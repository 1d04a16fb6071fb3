// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <expected>

namespace cadorel {

/// A file that did not exist before, and is gone again with the object unless it was kept. Any thread.
class NewFile
{
public:
    NewFile() = default;
    ~NewFile();
    NewFile(NewFile &&other) noexcept;
    NewFile &operator=(NewFile &&other) noexcept;
    Q_DISABLE_COPY(NewFile)

    /// Creates the file, readable by its owner alone; what is there already, be it a link, stays untouched.
    /// @return the system's error number when it cannot
    std::expected<void, int> create(const QString &path);
    std::expected<void, int> write(const char *data, qint64 size);
    /// Closes the file and leaves it in its place.
    std::expected<void, int> keep();

    bool isOpen() const { return m_descriptor >= 0; }

private:
    void discard();

    QByteArray m_path;
    int m_descriptor = -1;
};

} // namespace cadorel
