// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <exception>

namespace cadorel {

/// Why a WebDAV operation failed.
class WebDAVError : public std::exception
{
public:
    enum class Case {
        invalidConfig,
        invalidURL,
        connectionFailed,
        authenticationFailed,
        serverError, ///< with the HTTP status
        parseError,
        networkError, ///< with the description of what failed underneath
        fileNotFound,
        accessDenied,
    };

    explicit WebDAVError(Case what);
    static WebDAVError serverError(int status);
    static WebDAVError networkError(const QString &underlying);

    Case kind() const { return m_case; }
    /// HTTP status of `serverError`, else 0.
    int status() const { return m_status; }
    /// For a listener to read.
    QString description() const;
    /// The same in UTF-8.
    const char *what() const noexcept override { return m_what.constData(); }

    friend bool operator==(const WebDAVError &a, const WebDAVError &b)
    {
        return a.m_case == b.m_case && a.m_status == b.m_status && a.m_underlying == b.m_underlying;
    }

private:
    WebDAVError(Case what, int status, const QString &underlying);

    Case m_case;
    int m_status = 0;
    QString m_underlying;
    QByteArray m_what;
};

} // namespace cadorel
