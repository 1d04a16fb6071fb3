// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Preferences.h"

#include <QHash>
#include <QVariant>

namespace cadorel {

/// Preferences in memory.
class FakePreferences : public Preferences
{
public:
    std::optional<bool> boolValue(const QString &key) const override { return read<bool>(key); }
    std::optional<qint64> intValue(const QString &key) const override { return read<qint64>(key); }
    std::optional<double> doubleValue(const QString &key) const override
    {
        if (const std::optional<qint64> integer = read<qint64>(key))
            return static_cast<double>(*integer);
        return read<double>(key);
    }
    std::optional<QString> stringValue(const QString &key) const override { return read<QString>(key); }
    std::optional<QStringList> stringsValue(const QString &key) const override
    {
        return read<QStringList>(key);
    }
    std::optional<QByteArray> dataValue(const QString &key) const override { return read<QByteArray>(key); }

    void setBool(const QString &key, bool value) override { write(key, value); }
    void setInt(const QString &key, qint64 value) override { write(key, value); }
    void setDouble(const QString &key, double value) override { write(key, value); }
    void setString(const QString &key, const QString &value) override { write(key, value); }
    void setStrings(const QString &key, const QStringList &value) override { write(key, value); }
    void setData(const QString &key, const QByteArray &value) override { write(key, value); }

    bool contains(const QString &key) const override { return m_values.contains(key); }
    void remove(const QString &key) override { m_values.remove(key); }

    /// Number of writes so far, for tests of throttling.
    int writes() const { return m_writes; }

private:
    template <typename T>
    std::optional<T> read(const QString &key) const
    {
        const QVariant value = m_values.value(key);
        return value.metaType() == QMetaType::fromType<T>() ? std::optional(value.value<T>()) : std::nullopt;
    }
    template <typename T>
    void write(const QString &key, const T &value)
    {
        m_values.insert(key, QVariant::fromValue(value));
        ++m_writes;
    }

    QHash<QString, QVariant> m_values;
    int m_writes = 0;
};

} // namespace cadorel
