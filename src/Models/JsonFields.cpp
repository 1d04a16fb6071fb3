// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/JsonFields.h"

#include "Models/DecodingError.h"
#include "Utils/JsonForms.h"

#include <QJsonArray>

namespace cadorel::json {

namespace {

/// What @p read makes of a member that is there. @throws DecodingError when that is nothing
template <typename Read>
auto optionalValue(const QJsonObject &object, QLatin1StringView key, Read read)
    -> decltype(read(QJsonValue()))
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    auto result = read(value);
    if (!result)
        throw DecodingError(key);
    return result;
}

/// @throws DecodingError when a required value is not there
template <typename T>
T required(std::optional<T> value, QLatin1StringView key)
{
    if (!value)
        throw DecodingError(key);
    return *std::move(value);
}

std::optional<QString> textOf(const QJsonValue &value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QJsonObject> objectOf(const QJsonValue &value)
{
    return value.isObject() ? std::optional(value.toObject()) : std::nullopt;
}

std::optional<qint64> wholeNumberOf(const QJsonValue &value)
{
    // What is none gives each of the two defaults.
    return value.toInteger(0) == value.toInteger(1) ? std::optional(value.toInteger()) : std::nullopt;
}

std::optional<int> intOf(const QJsonValue &value)
{
    return value.toInt(0) == value.toInt(1) ? std::optional(value.toInt()) : std::nullopt;
}

/// Nothing when @p read gives nothing for an element.
template <typename T>
std::optional<QList<T>> listOf(const QJsonValue &value, std::optional<T> (*read)(const QJsonValue &))
{
    if (!value.isArray())
        return std::nullopt;
    const QJsonArray array = value.toArray();
    QList<T> list;
    list.reserve(array.size());
    for (const auto &element : array) {
        std::optional<T> item = read(element);
        if (!item)
            return std::nullopt;
        list.append(*std::move(item));
    }
    return list;
}

} // namespace

QString requiredText(const QJsonObject &object, QLatin1StringView key)
{
    return required(optionalText(object, key), key);
}

bool requiredBool(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (!value.isBool())
        throw DecodingError(key);
    return value.toBool();
}

QUuid requiredUuid(const QJsonObject &object, QLatin1StringView key)
{
    const QUuid id = QUuid::fromString(requiredText(object, key));
    if (id.isNull())
        throw DecodingError(key);
    return id;
}

QJsonObject requiredObject(const QJsonObject &object, QLatin1StringView key)
{
    return required(optionalObject(object, key), key);
}

std::optional<QString> optionalText(const QJsonObject &object, QLatin1StringView key)
{
    return optionalValue(object, key, textOf);
}

std::optional<int> optionalInt(const QJsonObject &object, QLatin1StringView key)
{
    return optionalValue(object, key, intOf);
}

std::optional<qint64> optionalInt64(const QJsonObject &object, QLatin1StringView key)
{
    return optionalValue(object, key, wholeNumberOf);
}

std::optional<QDateTime> optionalDate(const QJsonObject &object, QLatin1StringView key)
{
    return optionalValue(object, key, dateFromJson);
}

std::optional<QStringList> optionalTexts(const QJsonObject &object, QLatin1StringView key)
{
    return optionalValue(object, key, [](const QJsonValue &value) { return listOf(value, textOf); });
}

std::optional<QJsonObject> optionalObject(const QJsonObject &object, QLatin1StringView key)
{
    return optionalValue(object, key, objectOf);
}

std::optional<QList<QJsonObject>> optionalObjects(const QJsonObject &object, QLatin1StringView key)
{
    return optionalValue(object, key, [](const QJsonValue &value) { return listOf(value, objectOf); });
}

} // namespace cadorel::json
