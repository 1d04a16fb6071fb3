// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/FileAssetReader.h"

#include "Platform/Linux/Tags/AudioSignature.h"
#include "Platform/Linux/Tags/AvformatAssetReader.h"
#include "Platform/Linux/Tags/TagLibAssetReader.h"

namespace cadorel {

namespace {

/// A file of which nothing can be read.
class FailedAsset final : public AssetMetadata
{
public:
    explicit FailedAsset(QString why)
        : m_why(std::move(why))
    {
    }
    std::expected<double, QString> duration(bool) override { return std::unexpected(m_why); }
    std::expected<MetadataItems, QString> commonMetadata() override { return std::unexpected(m_why); }
    std::expected<MetadataItems, QString> metadata() override { return std::unexpected(m_why); }
    std::expected<std::optional<QString>, QString> lyrics() override { return std::unexpected(m_why); }

private:
    QString m_why;
};

} // namespace

std::unique_ptr<AssetMetadata> FileAssetReader::open(const QString &path) const
{
    const auto file = FileBytes::open(path);
    if (!file)
        return std::make_unique<FailedAsset>(file.error());
    if (auto asset = TagLibAssetReader::open(*file, AudioSignature::of(**file)))
        return asset;
    auto asset = AvformatAssetReader::open(*file);
    return asset ? std::move(*asset) : std::make_unique<FailedAsset>(asset.error());
}

} // namespace cadorel
