// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

struct WebDAVConfig;

/// What addresses of a server are put together from. Reentrant.
namespace webdav {

/// Scheme, host, port and typed path of a server; nothing when they cannot be read or the port cannot be.
/// Credentials that were typed into it are left out, for they would be sent and logged beside the ones that
/// count, and so are a query and a fragment, which belong to no directory.
std::optional<QUrl> serverURL(const WebDAVConfig &config);

QString withLeadingSlash(const QString &path);

/// The server's address with another path, which is given without percent escapes and begins with "/".
std::optional<QUrl> withPath(std::optional<QUrl> server, const QString &path);

} // namespace webdav

} // namespace cadorel
