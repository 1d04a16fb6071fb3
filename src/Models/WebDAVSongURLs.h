// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/WebDAVConfig.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

/// Builds the addresses of many files of one server, as WebDAVConfig::buildAuthenticatedURL() does one by
/// one. Holds the password: keep it no longer than the work takes. Reentrant.
class WebDAVSongURLs
{
public:
    WebDAVSongURLs(const WebDAVConfig &config, const QString &password);

    /// @param path on the server, without percent escapes
    /// @param line receives the line for the log; empty when there is no address
    std::optional<QUrl> build(const QString &path, QString &line) const;

private:
    /// Nothing when the server has no address.
    std::optional<QUrl> m_server;
    /// The line up to the path.
    QString m_lineStart;
};

} // namespace cadorel
