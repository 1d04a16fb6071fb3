// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AssetReader.h"
#include "Platform/Linux/Tags/FileBytes.h"

namespace cadorel {

/// Reads length and tags with libavformat: Matroska, RealMedia, and lengths that nobody else knows.
class AvformatAssetReader
{
public:
    /// Only containers of sound are tried, none that refers to other files or to the network.
    /// @return the asset, or why the file cannot be read
    static std::expected<std::unique_ptr<AssetMetadata>, QString>
    open(const std::shared_ptr<FileBytes> &file);
};

} // namespace cadorel
