// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AssetReader.h"
#include "Platform/Linux/Tags/AudioSignature.h"

namespace cadorel {

/// Reads length and tags with TagLib: every container but Matroska and RealMedia.
class TagLibAssetReader
{
public:
    /// @return null when the file is not what its signature says
    static std::unique_ptr<AssetMetadata> open(const std::shared_ptr<FileBytes> &file,
                                               const AudioSignature &signature);
};

} // namespace cadorel
