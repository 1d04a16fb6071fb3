// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AssetReader.h"

namespace cadorel {

/// Reads local files of every container that the player takes, told by their first bytes and not by their
/// names.
class FileAssetReader : public AssetReader
{
public:
    std::unique_ptr<AssetMetadata> open(const QString &path) const override;
};

} // namespace cadorel
