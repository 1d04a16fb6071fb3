// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonValue>

#include <optional>

namespace cadorel {

/// JSON form of a date in every stored record but the import index: seconds since 2001-01-01T00:00:00Z.
QJsonValue dateToJson(const QDateTime &date);

/// The date of such a number; nothing when the value is not a number.
std::optional<QDateTime> dateFromJson(const QJsonValue &value);

/// JSON form of bytes: base64 text.
QJsonValue bytesToJson(const QByteArray &bytes);

/// The bytes of such a text; nothing when the value is not a text or not base64.
std::optional<QByteArray> bytesFromJson(const QJsonValue &value);

} // namespace cadorel
