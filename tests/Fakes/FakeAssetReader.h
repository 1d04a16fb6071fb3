// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AssetReader.h"

#include <QHash>

#include <atomic>
#include <mutex>

namespace cadorel {

/// One made tag.
struct FakeTag
{
    QString identifier;
    std::optional<CommonKey> commonKey;
    std::optional<QString> string;
    std::optional<QByteArray> data;
};

/// What a made file says of itself.
struct FakeAsset
{
    std::expected<double, QString> duration = 0;
    std::expected<QList<FakeTag>, QString> common;
    std::expected<QList<FakeTag>, QString> all;
    std::optional<QString> lyrics;
};

/// Gives the made assets of a test by file name; an unknown name gives an asset whose loads fail.
class FakeAssetReader : public AssetReader
{
public:
    /// Assets by the file's last path component.
    QHash<QString, FakeAsset> assets;
    /// The asset of every other name, when there is one.
    std::optional<FakeAsset> otherwise;
    /// How many item values were read.
    mutable std::atomic<int> valueReads{0};
    /// Called in open(), on the thread that opens; a test may block there.
    std::function<void(const QString &path)> onOpen;

    std::unique_ptr<AssetMetadata> open(const QString &path) const override
    {
        if (onOpen)
            onOpen(path);
        const QString name = path.section(QLatin1Char('/'), -1);
        FakeAsset unreadable;
        unreadable.duration = std::unexpected(QStringLiteral("cannot read"));
        unreadable.common = std::unexpected(QStringLiteral("cannot read"));
        unreadable.all = std::unexpected(QStringLiteral("cannot read"));
        return std::make_unique<Metadata>(assets.value(name, otherwise.value_or(unreadable)), valueReads);
    }

private:
    class Item : public MetadataItem
    {
    public:
        Item(FakeTag tag, std::atomic<int> &reads)
            : m_tag(std::move(tag))
            , m_reads(reads)
        {
        }
        QString key() const override { return m_tag.identifier.section(QLatin1Char('/'), -1); }
        QString identifier() const override { return m_tag.identifier; }
        std::optional<CommonKey> commonKey() const override { return m_tag.commonKey; }
        std::optional<QString> stringValue() const override
        {
            ++m_reads;
            return m_tag.string;
        }
        std::optional<QByteArray> dataValue() const override
        {
            ++m_reads;
            return m_tag.data;
        }

    private:
        FakeTag m_tag;
        std::atomic<int> &m_reads;
    };

    class Metadata : public AssetMetadata
    {
    public:
        Metadata(FakeAsset asset, std::atomic<int> &reads)
            : m_asset(std::move(asset))
            , m_reads(reads)
        {
        }
        std::expected<double, QString> duration(bool) override { return m_asset.duration; }
        std::expected<MetadataItems, QString> commonMetadata() override { return items(m_asset.common); }
        std::expected<MetadataItems, QString> metadata() override { return items(m_asset.all); }
        std::expected<std::optional<QString>, QString> lyrics() override { return m_asset.lyrics; }

    private:
        std::expected<MetadataItems, QString> items(const std::expected<QList<FakeTag>, QString> &tags)
        {
            if (!tags)
                return std::unexpected(tags.error());
            MetadataItems result;
            for (const FakeTag &tag : *tags)
                result.append(std::make_shared<Item>(tag, m_reads));
            return result;
        }

        FakeAsset m_asset;
        std::atomic<int> &m_reads;
    };
};

} // namespace cadorel
