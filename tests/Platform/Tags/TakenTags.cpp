// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Tags/TakenTags.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

bool containsAny(const QString &text, std::initializer_list<QLatin1StringView> parts)
{
    return std::ranges::any_of(parts, [&text](QLatin1StringView part) { return text.contains(part); });
}

} // namespace

TakenTags::TakenTags(AssetMetadata &asset)
{
    for (const auto &item : asset.commonMetadata().value_or(MetadataItems()))
        takeCommon(*item);
    for (const auto &item : asset.metadata().value_or(MetadataItems()))
        takeByIdentifier(*item);
}

void TakenTags::takeCommon(const MetadataItem &item)
{
    const QString text = item.stringValue().value_or(QString());
    const std::optional<CommonKey> key = item.commonKey();
    if (key == CommonKey::artwork)
        artwork = item.dataValue().value_or(artwork);
    else if (key == CommonKey::title && !text.isEmpty())
        title = text;
    else if ((key == CommonKey::artist || (key == CommonKey::creator && artist.isEmpty())) && !text.isEmpty())
        artist = text;
    else if (key == CommonKey::albumName && !text.isEmpty())
        album = text;
}

void TakenTags::takeByIdentifier(const MetadataItem &item)
{
    const QString identifier = item.identifier().toLower();
    const auto take = [&](QString &value, std::initializer_list<QLatin1StringView> parts) {
        if (value.isEmpty() && containsAny(identifier, parts))
            value = item.stringValue().value_or(QString());
    };
    take(title, {"tit2"_L1, "nam"_L1});
    take(artist, {"tpe1"_L1, "tpe2"_L1, "art"_L1});
    take(album, {"talb"_L1, "alb"_L1});
    if (artwork.isEmpty() && containsAny(identifier, {"apic"_L1, "pic"_L1, "covr"_L1, "artwork"_L1}))
        artwork = item.dataValue().value_or(QByteArray());
    take(lyrics, {"uslt"_L1, "sylt"_L1, "lyr"_L1});
    if (containsAny(identifier, {"trck"_L1, "trkn"_L1}))
        track = item.stringValue().value_or(QString());
}

} // namespace cadorel
