// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/NavidromeConfig.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

namespace cadorel {

class Random;

/// A server together with the password of its account.
struct SubsonicAccess
{
    NavidromeConfig config;
    QString password;
};

/// Builds addresses of one server, signed with a salt and a token of their own each. The password is in none
/// of them, but an address is good for as long as the password is: a bearer credential. Reentrant.
class SubsonicAddresses
{
public:
    using QueryItems = QList<QPair<QString, QString>>;
    using MakeSalt = std::function<QString()>;

    /// @param makeSalt gives a new salt at each call
    SubsonicAddresses(const SubsonicAccess &access, MakeSalt makeSalt);

    /// The address of an endpoint with these query items after those of the signature.
    /// @throws NavidromeRequestError when there is no address of a server or an item has no UTF-8 form
    QUrl signedAPIURL(const QString &endpoint, const QueryItems &queryItems) const;
    /// A cover, 400 pixels wide; nothing when there is no id or no address can be made.
    std::optional<QUrl> coverArtURL(const std::optional<QString> &coverArtId) const;
    /// The audio of a song as the server keeps it or was told to convert it.
    std::optional<QUrl> streamURL(const QString &songId) const;

private:
    std::optional<QUrl> signedOrNothing(const QString &endpoint, const QueryItems &queryItems) const;

    /// The root of the API with a "/" at its end, without what belongs to no endpoint.
    std::optional<QUrl> m_root;
    QString m_username;
    QString m_password;
    MakeSalt m_makeSalt;
};

/// Twelve lower-case letters and digits. Main thread.
QString randomSalt(Random &random);

/// MD5 of the UTF-8 bytes as 32 lower-case hexadecimal digits. Any thread.
QString md5Hex(const QString &text);

} // namespace cadorel
