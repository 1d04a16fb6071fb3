// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpClient.h"

namespace cadorel {

/// A longer picture is no cover, in bytes.
constexpr qint64 largestCover = qint64{10} * 1024 * 1024;

/// Asks for the cover at @p url, within limits: nobody knows what lies at the address of a cover, and a
/// server that trickles must not hold up the next one for ever.
inline HttpRequest coverRequest(const QUrl &url)
{
    HttpRequest request;
    request.url = url;
    request.idleTimeout = std::chrono::seconds(30);
    request.totalTimeout = std::chrono::seconds(120);
    request.sizeLimit = largestCover;
    return request;
}

} // namespace cadorel
