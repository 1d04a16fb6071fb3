// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace cadorel::json {

// Reads members of JSON objects with their types held to the letter: a required member that is missing, null
// or of another type throws DecodingError with its key; an optional one may be missing or null, and throws
// when it is of another type. Reentrant.

QString requiredText(const QJsonObject &object, QLatin1StringView key);
bool requiredBool(const QJsonObject &object, QLatin1StringView key);
QUuid requiredUuid(const QJsonObject &object, QLatin1StringView key);
QJsonObject requiredObject(const QJsonObject &object, QLatin1StringView key);

std::optional<QString> optionalText(const QJsonObject &object, QLatin1StringView key);
/// A whole number, also when it is written as 180.0.
std::optional<int> optionalInt(const QJsonObject &object, QLatin1StringView key);
std::optional<qint64> optionalInt64(const QJsonObject &object, QLatin1StringView key);
std::optional<QDateTime> optionalDate(const QJsonObject &object, QLatin1StringView key);
std::optional<QStringList> optionalTexts(const QJsonObject &object, QLatin1StringView key);
std::optional<QJsonObject> optionalObject(const QJsonObject &object, QLatin1StringView key);
/// The objects of a list; an element of another type throws.
std::optional<QList<QJsonObject>> optionalObjects(const QJsonObject &object, QLatin1StringView key);

} // namespace cadorel::json
