// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/CassetteConfig.h"

#include "Models/DecodingError.h"
#include "Utils/Console.h"

#include <QJsonDocument>

#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// The double that is written with as few digits as the float: 0.18 rather than 0.18000000715255737.
double jsonNumber(float value)
{
    return consoleNumber(value).toDouble();
}

float requiredFloat(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    const auto number = static_cast<float>(value.toDouble());
    if (!value.isDouble() || !std::isfinite(number))
        throw DecodingError(key);
    return number;
}

} // namespace

QJsonObject CassetteConfig::toJson() const
{
    return {{u"scale"_s, jsonNumber(scale)},
            {u"offsetX"_s, jsonNumber(offsetX)},
            {u"offsetY"_s, jsonNumber(offsetY)}};
}

CassetteConfig CassetteConfig::fromJson(const QJsonObject &object)
{
    return {.scale = requiredFloat(object, "scale"_L1),
            .offsetX = requiredFloat(object, "offsetX"_L1),
            .offsetY = requiredFloat(object, "offsetY"_L1)};
}

QByteArray encodedConfigs(const CassetteConfigs &configs)
{
    QJsonObject object;
    for (const auto &[style, config] : configs.asKeyValueRange())
        object.insert(style, config.toJson());
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<CassetteConfigs> decodedConfigs(const QByteArray &bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    CassetteConfigs configs;
    try {
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            if (!entry.value().isObject())
                return std::nullopt;
            configs.insert(entry.key(), CassetteConfig::fromJson(entry.value().toObject()));
        }
    } catch (const DecodingError &) {
        return std::nullopt;
    }
    return configs;
}

} // namespace cadorel
