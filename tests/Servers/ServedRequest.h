// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

namespace cadorel {

/// One request as it came over the wire.
struct ServedRequest
{
    QByteArray method;
    /// Path and query, byte for byte.
    QByteArray target;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    /// Which of the accepted connections it came over, counted from 1.
    int connection = 0;

    /// The target without its query.
    QByteArray path() const;
    /// Value of the first header of that name, whatever its case; null when there is none.
    QByteArray header(const QByteArray &name) const;
    bool hasHeader(const QByteArray &name) const { return !header(name).isNull(); }
    /// Whether the request carries Basic authentication of just this user, both in UTF-8.
    bool hasBasicCredentials(const QString &user, const QString &password) const;
};

} // namespace cadorel
