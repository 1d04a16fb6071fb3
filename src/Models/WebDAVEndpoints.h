// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// What the presets and the factories of a server's configuration have in common.
namespace cadorel::webdav {

inline const QString jianguoyunName = QStringLiteral("坚果云");
/// Stands for the service's address in this build: a reserved host, which no request ever reaches.
inline const QString jianguoyunEndpoint = QStringLiteral("https://dav.example.com");
inline const QString jianguoyunBasePath = QStringLiteral("/dav");

inline const QString nextcloudName = QStringLiteral("NextCloud");
/// The listener's name on the server follows.
inline const QString nextcloudFiles = QStringLiteral("/remote.php/dav/files/");

inline constexpr int synologyHttpsPort = 5006;
inline constexpr int synologyHttpPort = 5005;

} // namespace cadorel::webdav
