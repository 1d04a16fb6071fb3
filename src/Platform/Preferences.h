// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFuture>
#include <QString>
#include <QStringList>

#include <optional>

namespace cadorel {

/// The store of small settings under literal keys. A value keeps the type that it was written with: a read as
/// another type gives nothing, but an int reads as a double too. Writing replaces value and type. A write
/// that the storage refuses is logged and kept in memory for the rest of the run. Main thread.
class Preferences
{
public:
    virtual ~Preferences() = default;

    virtual std::optional<bool> boolValue(const QString &key) const = 0;
    virtual std::optional<qint64> intValue(const QString &key) const = 0;
    virtual std::optional<double> doubleValue(const QString &key) const = 0;
    virtual std::optional<QString> stringValue(const QString &key) const = 0;
    virtual std::optional<QStringList> stringsValue(const QString &key) const = 0;
    virtual std::optional<QByteArray> dataValue(const QString &key) const = 0;
    /// The same for a value that may be tens of megabytes: where it has to be read from the disk, a worker
    /// does. It is the value at the time of the call or a later one.
    virtual QFuture<std::optional<QByteArray>> loadData(const QString &key) const
    {
        return QtFuture::makeReadyFuture(dataValue(key));
    }

    virtual void setBool(const QString &key, bool value) = 0;
    virtual void setInt(const QString &key, qint64 value) = 0;
    virtual void setDouble(const QString &key, double value) = 0;
    virtual void setString(const QString &key, const QString &value) = 0;
    virtual void setStrings(const QString &key, const QStringList &value) = 0;
    virtual void setData(const QString &key, const QByteArray &value) = 0;

    virtual bool contains(const QString &key) const = 0;
    virtual void remove(const QString &key) = 0;
};

} // namespace cadorel
