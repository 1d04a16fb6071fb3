// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace cadorel {

/// A preference as the table holds it: the name of its type and a value of one of SQLite's storage classes.
/// Any thread.
struct PreferenceRow
{
    /// Name of the type of data values, the only ones that may stay on disk when the store is opened.
    static constexpr QLatin1StringView dataType{"data"};

    QString type;
    QVariant value;

    /// Form in the table of a bool, qint64, double, QString, QStringList or QByteArray.
    static PreferenceRow encode(const QVariant &value);
    /// The value again, with exactly the type that was encoded; nothing for an unknown type or a value that
    /// cannot be of its type.
    std::optional<QVariant> decode() const;
    /// Bytes that the value takes on disk, roughly.
    qsizetype size() const;
};

} // namespace cadorel
