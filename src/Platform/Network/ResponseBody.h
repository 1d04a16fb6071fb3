// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpClient.h"
#include "Platform/Network/NewFile.h"

#include <QByteArray>

#include <expected>

namespace cadorel {

/// Where the body of one answer goes: into memory, into a new file, or nowhere. A file is gone again with the
/// object unless finish() kept it. One thread.
class ResponseBody
{
public:
    /// What to do with more than the limit.
    enum class Overflow {
        fail,     ///< the answer is refused
        truncate, ///< the rest is not wanted
    };

    /// Into memory. @param limit in bytes, 0 is none
    static ResponseBody inMemory(qint64 limit, Overflow overflow);
    /// Into a new file, refused beyond @p limit.
    static std::expected<ResponseBody, HttpError> inFile(const QString &path, qint64 limit);

    /// Makes room for a body of an announced length.
    std::expected<void, HttpError> expect(qint64 length);
    std::expected<void, HttpError> append(const char *data, qint64 size);
    /// Whether nothing more is wanted.
    bool isTruncated() const { return m_isTruncated; }
    /// Bytes that were taken.
    qint64 size() const { return m_size; }
    /// Ends the body and puts it into @p response.
    std::expected<void, HttpError> finish(HttpResponse &response);

private:
    QByteArray m_bytes;
    NewFile m_file;
    qint64 m_limit = 0;
    qint64 m_size = 0;
    Overflow m_overflow = Overflow::fail;
    bool m_isTruncated = false;
};

} // namespace cadorel
