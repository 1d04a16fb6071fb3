// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/JsonForms.h"

#include "Utils/Base64.h"

#include <cmath>

namespace cadorel {

namespace {

// 2001-01-01T00:00:00Z in milliseconds since 1970.
constexpr qint64 referenceMs = 978307200000;
constexpr double msPerSecond = 1000.0;

} // namespace

QJsonValue dateToJson(const QDateTime &date)
{
    return static_cast<double>(date.toMSecsSinceEpoch() - referenceMs) / msPerSecond;
}

std::optional<QDateTime> dateFromJson(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    // Beyond ±100 million years no date is meant, and the conversion to milliseconds would overflow.
    constexpr double limit = 3.2e15;
    const double seconds = value.toDouble();
    if (std::abs(seconds) > limit)
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(referenceMs + std::llround(seconds * msPerSecond), Qt::UTC);
}

QJsonValue bytesToJson(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

std::optional<QByteArray> bytesFromJson(const QJsonValue &value)
{
    if (!value.isString())
        return std::nullopt;
    return bytesFromBase64(value.toString().toLatin1());
}

} // namespace cadorel
