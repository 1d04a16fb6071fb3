// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/TagFields.h"

namespace cadorel {

/// An asset whose three lists of tags come from one list of fields, made when the first of them is asked for.
class FieldAsset : public AssetMetadata
{
public:
    std::expected<MetadataItems, QString> commonMetadata() override;
    std::expected<MetadataItems, QString> metadata() override;
    /// Of several lyrics the first that have times, else the first that are not empty.
    std::expected<std::optional<QString>, QString> lyrics() override;

protected:
    virtual TagFields readFields() = 0;

private:
    const MetadataItems &items();

    std::optional<MetadataItems> m_items;
};

} // namespace cadorel
