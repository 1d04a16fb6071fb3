// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace cadorel {

/// No answer came from a server, or not the whole of it.
class TransportError : public std::exception
{
public:
    /// @param description for a listener to read, without a credential
    explicit TransportError(const QString &description)
        : m_description(description)
        , m_what(description.toUtf8())
    {
    }

    const QString &description() const { return m_description; }
    /// The same in UTF-8.
    const char *what() const noexcept override { return m_what.constData(); }

private:
    QString m_description;
    QByteArray m_what;
};

} // namespace cadorel
