// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QMetaType>
#include <QObject>
#include <QString>

#include <optional>

namespace cadorel {

/// How large the cover sits inside the picture of a cassette, and how far from its middle; as it stands, the
/// default of the first cassette.
struct CassetteConfig
{
    Q_GADGET
    Q_PROPERTY(float scale MEMBER scale)
    Q_PROPERTY(float offsetX MEMBER offsetX)
    Q_PROPERTY(float offsetY MEMBER offsetY)
public:
    /// Size of the cover as a fraction of the picture.
    float scale = 0.18F;
    /// From the middle, as fractions of the picture, to the right and downwards.
    float offsetX = 0;
    float offsetY = -0.2F;

    bool operator==(const CassetteConfig &) const = default;

    QJsonObject toJson() const;
    /// @throws DecodingError when a field is missing or no number that a float holds
    static CassetteConfig fromJson(const QJsonObject &object);
};

/// The listener's adjustments, by the raw value of the style.
using CassetteConfigs = QMap<QString, CassetteConfig>;

QByteArray encodedConfigs(const CassetteConfigs &configs);
/// Nothing when the bytes are not such a map.
std::optional<CassetteConfigs> decodedConfigs(const QByteArray &bytes);

} // namespace cadorel
