// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace cadorel {

/// One entry of a directory on a WebDAV server. Equality covers the whole record. A value type; any thread.
struct WebDAVFile
{
    QString id = newId();
    /// Display name as the server tells it, or the last component of `path`.
    QString name;
    /// Path on the server, percent-decoded, without a "/" at its end.
    QString path;
    bool isDirectory = false;
    /// Bytes.
    qint64 size = 0;
    std::optional<QDateTime> modifiedDate;
    std::optional<QString> contentType;

    /// Extension of `name`, lower-cased; empty when there is none.
    QString fileExtension() const;
    bool isAudioFile() const;
    /// "3.4 MB"
    QString formattedSize() const;

    friend bool operator==(const WebDAVFile &, const WebDAVFile &) = default;
    friend size_t qHash(const WebDAVFile &file, size_t seed);

private:
    static QString newId();
};

} // namespace cadorel
