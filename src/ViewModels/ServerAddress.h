// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// What a listener typed or pasted as the address of a server, taken apart. A value; any thread.
struct ServerAddress
{
    enum class Problem {
        none,
        missing, ///< nothing, or a scheme alone
        scheme,  ///< neither http nor https
        host,    ///< no host, or one that cannot be
    };

    static ServerAddress parse(const QString &typed);

    /// The address without credentials, query and fragment; the trimmed text when it has a problem.
    QString text() const;

    Problem problem = Problem::none;
    /// Lower case; empty when there is a problem.
    QString scheme;
    /// Host, and port where one was typed, as it was typed.
    QString authority;
    /// Path behind the host without percent encoding; empty when there is none but "/".
    QString path;
    bool hasCredentials = false;
    /// Without percent encoding.
    QString username;
    QString password;
    /// The host lies in the listener's own network, as far as its name or number tells.
    bool isLocal = false;

    /// Everybody on the way can read what is sent there.
    bool isOpenToAll() const { return problem == Problem::none && scheme != u"https" && !isLocal; }

private:
    QString m_trimmed;
    QString m_encodedPath;
};

/// Whether a host name or number belongs to a private network or to this machine.
bool isLocalHost(const QString &host);

} // namespace cadorel
