// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AssetReader.h"

namespace cadorel {

/// What an importer takes from a file: common keys first, then parts of identifiers, the first text that is
/// not empty; of track numbers the last.
struct TakenTags
{
    QString title;
    QString artist;
    QString album;
    QString track;
    QString lyrics;
    QByteArray artwork;

    explicit TakenTags(AssetMetadata &asset);

private:
    void takeCommon(const MetadataItem &item);
    void takeByIdentifier(const MetadataItem &item);
};

} // namespace cadorel
