// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

namespace cadorel {

/// One Subsonic server as the listener set it up. The password is no part of it: it lies in the credential
/// store under `passwordKeychainKey`. Equality and hashing cover all fields. A value type; any thread.
struct NavidromeConfig
{
    QUuid id = QUuid::createUuid();
    /// Label shown to the listener.
    QString name;
    /// Address as typed.
    QString serverURL;
    /// Path of the API below the server.
    QString apiBasePath = QStringLiteral("/rest");
    QString username;
    bool isEnabled = true;
    std::optional<QDateTime> lastSyncDate;

    /// `id` as upper-case text without braces.
    QString uuidText() const;
    QString passwordKeychainKey() const;
    /// Root of the API; nothing when the address cannot be read.
    std::optional<QUrl> apiBaseURL() const;

    QJsonObject toJson() const;
    /// @throws DecodingError on the first required key that is missing or mistyped
    static NavidromeConfig fromJson(const QJsonObject &object);

    friend bool operator==(const NavidromeConfig &a, const NavidromeConfig &b) = default;
};

size_t qHash(const NavidromeConfig &config, size_t seed = 0);

} // namespace cadorel
