// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

namespace cadorel {

/// One WebDAV server as the listener set it up. The password is no part of it: it lies in the credential
/// store under `passwordKeychainKey`. Equality and hashing use `id` alone. A value type; any thread.
struct WebDAVConfig
{
    QUuid id = QUuid::createUuid();
    /// Label shown to the listener.
    QString name;
    /// Scheme and host as typed; never holds the port unless the listener typed it.
    QString serverURL;
    /// Absent: the scheme's default.
    std::optional<int> port;
    QString username;
    /// Directory on the server that is the root of this source.
    QString basePath = QStringLiteral("/");
    bool isEnabled = true;
    /// End of the last finished scan.
    std::optional<QDateTime> lastSyncDate;

    /// `id` as upper-case text without braces.
    QString uuidText() const;
    QString passwordKeychainKey() const;

    /// The root of the source. None of these addresses is there when `serverURL` cannot be read, when the
    /// port cannot be one, or when a text that becomes part of it has no UTF-8 form. Credentials, query and
    /// fragment of `serverURL` are left out.
    std::optional<QUrl> baseURL() const;
    /// Address of a directory below `basePath`, without credentials, ending in "/".
    std::optional<QUrl> buildURL(const QString &subPath) const;
    /// Address of a path on the server, which is not joined to `basePath`, with user and password in it. Logs
    /// it with the password masked. Only playback reads the password back out of it.
    std::optional<QUrl> buildAuthenticatedURL(const QString &path, const QString &password) const;
    /// The same without logging the line, which @p line receives. WebDAVSongURLs builds many of one server.
    std::optional<QUrl> buildAuthenticatedURL(const QString &path, const QString &password,
                                              QString &line) const;

    QJsonObject toJson() const;
    /// @throws DecodingError on the first required key that is missing or mistyped
    static WebDAVConfig fromJson(const QJsonObject &object);

    static WebDAVConfig jianguoyunPreset(const QString &username,
                                         const QString &basePath = QStringLiteral("/dav"));
    static WebDAVConfig nextcloudPreset(const QString &serverURL, const QString &username);
    static WebDAVConfig synologyPreset(const QString &serverURL, const QString &username,
                                       bool useHTTPS = true);
    /// For trying a screen without a server.
    static const WebDAVConfig &example();

    friend bool operator==(const WebDAVConfig &a, const WebDAVConfig &b) { return a.id == b.id; }
    friend size_t qHash(const WebDAVConfig &config, size_t seed = 0) { return qHash(config.id, seed); }
};

} // namespace cadorel
