// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/JsonFields.h"

#include "Models/DecodingError.h"
#include "Utils/JsonForms.h"

namespace cadorel::json {

namespace {

bool isAbsent(const QJsonValue &value)
{
    return value.isUndefined() || value.isNull();
}

/// @throws DecodingError when a required value is not there
template <typename T>
T required(std::optional<T> value, QLatin1StringView key)
{
    if (!value)
        throw DecodingError(key);
    return *std::move(value);
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

QDateTime requiredDate(const QJsonObject &object, QLatin1StringView key)
{
    return required(optionalDate(object, key), key);
}

QUuid requiredUuid(const QJsonObject &object, QLatin1StringView key)
{
    const QUuid id = QUuid::fromString(requiredText(object, key));
    if (id.isNull())
        throw DecodingError(key);
    return id;
}

QStringList requiredTexts(const QJsonObject &object, QLatin1StringView key)
{
    return required(optionalTexts(object, key), key);
}

QJsonObject requiredObject(const QJsonObject &object, QLatin1StringView key)
{
    return required(optionalObject(object, key), key);
}

std::optional<QString> optionalText(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (isAbsent(value))
        return std::nullopt;
    if (!value.isString())
        throw DecodingError(key);
    return value.toString();
}

std::optional<int> optionalInt(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (isAbsent(value))
        return std::nullopt;
    // What is no int gives each of the two defaults.
    if (value.toInt(0) != value.toInt(1))
        throw DecodingError(key);
    return value.toInt();
}

std::optional<qint64> optionalInt64(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (isAbsent(value))
        return std::nullopt;
    if (value.toInteger(0) != value.toInteger(1))
        throw DecodingError(key);
    return value.toInteger();
}

std::optional<QDateTime> optionalDate(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (isAbsent(value))
        return std::nullopt;
    std::optional<QDateTime> date = dateFromJson(value);
    if (!date)
        throw DecodingError(key);
    return date;
}

std::optional<QStringList> optionalTexts(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (isAbsent(value))
        return std::nullopt;
    if (!value.isArray())
        throw DecodingError(key);
    const QJsonArray array = value.toArray();
    QStringList texts;
    texts.reserve(array.size());
    for (const auto &element : array) {
        if (!element.isString())
            throw DecodingError(key);
        texts.append(element.toString());
    }
    return texts;
}

std::optional<QJsonObject> optionalObject(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (isAbsent(value))
        return std::nullopt;
    if (!value.isObject())
        throw DecodingError(key);
    return value.toObject();
}

std::optional<QList<QJsonObject>> optionalObjects(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (isAbsent(value))
        return std::nullopt;
    if (!value.isArray())
        throw DecodingError(key);
    const QJsonArray array = value.toArray();
    QList<QJsonObject> objects;
    objects.reserve(array.size());
    for (const auto &element : array) {
        if (!element.isObject())
            throw DecodingError(key);
        objects.append(element.toObject());
    }
    return objects;
}

} // namespace cadorel::json
