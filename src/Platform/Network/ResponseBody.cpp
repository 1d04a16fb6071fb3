// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/ResponseBody.h"

#include "Platform/Network/HttpFailure.h"

#include <algorithm>
#include <utility>

namespace cadorel {

namespace {

/// An announced length is only a claim: no more memory than this is taken on its word.
constexpr qint64 trustedLength = 4 * 1024 * 1024;

} // namespace

ResponseBody ResponseBody::inMemory(qint64 limit, Overflow overflow)
{
    ResponseBody body;
    body.m_limit = limit;
    body.m_overflow = overflow;
    return body;
}

std::expected<ResponseBody, HttpError> ResponseBody::inFile(const QString &path, qint64 limit)
{
    ResponseBody body;
    body.m_limit = limit;
    if (const auto created = body.m_file.create(path); !created)
        return std::unexpected(fileFailure(created.error()));
    return body;
}

std::expected<void, HttpError> ResponseBody::expect(qint64 length)
{
    if (m_limit > 0 && length > m_limit && m_overflow == Overflow::fail)
        return std::unexpected(httpFailure(HttpError::Kind::tooLarge));
    if (!m_file.isOpen())
        m_bytes.reserve(std::min(m_limit > 0 ? std::min(length, m_limit) : length, trustedLength));
    return {};
}

std::expected<void, HttpError> ResponseBody::append(const char *data, qint64 size)
{
    if (m_limit > 0 && size > m_limit - m_size) {
        if (m_overflow == Overflow::fail)
            return std::unexpected(httpFailure(HttpError::Kind::tooLarge));
        size = m_limit - m_size;
        m_isTruncated = true;
    }
    m_size += size;
    if (!m_file.isOpen()) {
        m_bytes.append(data, size);
        return {};
    }
    if (const auto written = m_file.write(data, size); !written)
        return std::unexpected(fileFailure(written.error()));
    return {};
}

std::expected<void, HttpError> ResponseBody::finish(HttpResponse &response)
{
    if (m_file.isOpen()) {
        if (const auto kept = m_file.keep(); !kept)
            return std::unexpected(fileFailure(kept.error()));
    }
    response.body = std::exchange(m_bytes, {});
    response.bodySize = m_size;
    return {};
}

} // namespace cadorel
