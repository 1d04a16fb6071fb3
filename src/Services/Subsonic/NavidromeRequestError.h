// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace cadorel {

/// A request to a Subsonic server came to nothing.
class NavidromeRequestError : public std::exception
{
public:
    /// @param description for a listener to read, without an address or a credential
    explicit NavidromeRequestError(const QString &description, int code = 0)
        : m_description(description)
        , m_what(description.toUtf8())
        , m_code(code)
    {
    }

    const QString &description() const { return m_description; }
    /// Which failure it was: the status of the answer where a server could not be reached, else a number of
    /// ours; 0 when nobody asks.
    int code() const { return m_code; }
    /// The description in UTF-8.
    const char *what() const noexcept override { return m_what.constData(); }

private:
    QString m_description;
    QByteArray m_what;
    int m_code;
};

} // namespace cadorel
