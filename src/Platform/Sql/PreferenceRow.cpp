// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Sql/PreferenceRow.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <limits>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr QLatin1StringView boolType{"bool"};
constexpr QLatin1StringView intType{"int"};
constexpr QLatin1StringView doubleType{"double"};
constexpr QLatin1StringView stringType{"string"};
constexpr QLatin1StringView stringsType{"strings"};

std::optional<QVariant> decodeInteger(const QVariant &value)
{
    bool valid = false;
    const qint64 integer = value.toLongLong(&valid);
    return valid ? std::optional(QVariant::fromValue(integer)) : std::nullopt;
}

std::optional<QVariant> decodeDouble(const QVariant &value)
{
    // SQLite has no NaN: it stores NULL instead.
    if (value.isNull())
        return std::numeric_limits<double>::quiet_NaN();
    bool valid = false;
    const double number = value.toDouble(&valid);
    return valid ? std::optional(QVariant(number)) : std::nullopt;
}

std::optional<QVariant> decodeStrings(const QVariant &value)
{
    const QJsonDocument document = QJsonDocument::fromJson(value.toString().toUtf8());
    if (!document.isArray())
        return std::nullopt;
    QStringList strings;
    const QJsonArray array = document.array();
    for (const auto &string : array)
        strings.append(string.toString());
    return strings;
}

} // namespace

PreferenceRow PreferenceRow::encode(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::Bool:
        return {.type = boolType, .value = value.toBool() ? 1 : 0};
    case QMetaType::LongLong:
        return {.type = intType, .value = value};
    case QMetaType::Double:
        return {.type = doubleType, .value = value};
    case QMetaType::QString:
        return {.type = stringType, .value = value};
    case QMetaType::QStringList:
        return {.type = stringsType,
                .value = QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(value.toStringList()))
                                               .toJson(QJsonDocument::Compact))};
    default:
        Q_ASSERT(value.metaType() == QMetaType::fromType<QByteArray>());
        return {.type = dataType, .value = value};
    }
}

std::optional<QVariant> PreferenceRow::decode() const
{
    if (type == boolType) {
        const std::optional<QVariant> integer = decodeInteger(value);
        return integer ? std::optional(QVariant(integer->toLongLong() != 0)) : std::nullopt;
    }
    if (type == intType)
        return decodeInteger(value);
    if (type == doubleType)
        return decodeDouble(value);
    if (type == stringType)
        return value.toString();
    if (type == stringsType)
        return decodeStrings(value);
    if (type == dataType)
        return value.toByteArray();
    return std::nullopt;
}

qsizetype PreferenceRow::size() const
{
    switch (value.metaType().id()) {
    case QMetaType::QByteArray:
        return value.toByteArray().size();
    case QMetaType::QString:
        return value.toString().size();
    default:
        return static_cast<qsizetype>(sizeof(qint64));
    }
}

} // namespace cadorel
