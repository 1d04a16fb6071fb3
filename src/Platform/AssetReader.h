// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <expected>
#include <memory>
#include <optional>

namespace cadorel {

/// What an item means whatever the format calls it. The names are those of the log lines.
enum class CommonKey { title, artist, creator, albumName, artwork };

/// Name of a common key: "title", "artist", "creator", "albumName", "artwork".
QString commonKeyName(CommonKey key);

/// One tag of a file. Its values are read from the file's tag when they are asked for, never before.
class MetadataItem
{
public:
    virtual ~MetadataItem() = default;

    /// The format's own name of the tag: the ID3 frame ("TIT2", "TXXX:LYRICS"), the MP4 atom ("©nam"), the
    /// field of a comment ("TITLE").
    virtual QString key() const = 0;
    /// The same name with the tag format before it, for instance "id3/TIT2", "itsk/©nam", "vorb/TITLE".
    virtual QString identifier() const = 0;
    virtual std::optional<CommonKey> commonKey() const = 0;
    /// The text; nothing when the item holds none.
    virtual std::optional<QString> stringValue() const = 0;
    /// The bytes; nothing when the item holds none. For a picture: the encoded image alone.
    virtual std::optional<QByteArray> dataValue() const = 0;
};

using MetadataItems = QList<std::shared_ptr<const MetadataItem>>;

/// One audio file opened for its length and tags. Every load may fail alone; the failure is its description.
/// Reentrant: an asset belongs to one thread, several assets may be read at once.
class AssetMetadata
{
public:
    virtual ~AssetMetadata() = default;

    /// Length in seconds. @param precise counts packets where the header does not tell the length
    virtual std::expected<double, QString> duration(bool precise = false) = 0;
    /// The items that have a common key, in the order of the file.
    virtual std::expected<MetadataItems, QString> commonMetadata() = 0;
    /// All items in the order of the file.
    virtual std::expected<MetadataItems, QString> metadata() = 0;
    /// The lyrics text; nothing when the file holds none.
    virtual std::expected<std::optional<QString>, QString> lyrics() = 0;
};

/// Opens audio files for their length and tags. Any thread.
class AssetReader
{
public:
    virtual ~AssetReader() = default;

    /// Never null: a file that cannot be read gives an asset whose loads fail.
    virtual std::unique_ptr<AssetMetadata> open(const QString &path) const = 0;
};

} // namespace cadorel
