// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/CommonKeys.h"

#include <functional>

namespace cadorel {

/// One field as a format's reader hands it on. The functions hold on to the tag they read from.
struct TagField
{
    QString key = {};
    QString identifier = {};
    CommonKeys::Field field = {};
    /// The text, for a field that has one.
    std::function<QString()> text = {};
    /// The bytes, for a field that has them.
    std::function<QByteArray()> bytes = {};
    /// A picture's rank among the pictures of its file: the front cover first.
    int pictureRank = 0;
};

/// Collects the fields of one file and makes the items of them.
class TagFields
{
public:
    /// Appends a field.
    void add(TagField field);
    /// Appends the fields of a less trusted tag of the same file, without those whose role is filled already.
    void fillGaps(TagFields other);
    /// Puts the fields in the order of the table, for formats that keep no order.
    void sortByRank();
    /// Makes the items and leaves the list empty. One at most has each common key: the first that says
    /// something; of pictures, the front cover; a composer only when no album artist can stand in for a
    /// missing artist.
    MetadataItems takeItems();

    /// Rank of a picture by its type in ID3v2, FLAC and ASF (3: front cover, 0: other).
    static int rankOfPictureType(int type);

private:
    std::optional<qsizetype> holder(CommonKey key) const;

    QList<TagField> m_fields;
};

} // namespace cadorel
