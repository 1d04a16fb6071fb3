// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/FieldAsset.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

bool hasTimes(const QString &lyrics)
{
    static const QRegularExpression timeTag(u"\\[\\d{1,3}:\\d{2}"_s);
    return lyrics.contains(timeTag);
}

/// "TXXX:LYRICS" and "----:com.apple.iTunes:LYRICS" are named by what is behind the last colon.
bool isLyrics(const MetadataItem &item)
{
    return CommonKeys::field(item.key().section(u':', -1)).role == FieldRole::lyrics;
}

} // namespace

const MetadataItems &FieldAsset::items()
{
    if (!m_items)
        m_items = readFields().takeItems();
    return *m_items;
}

std::expected<MetadataItems, QString> FieldAsset::commonMetadata()
{
    MetadataItems common;
    std::ranges::copy_if(items(), std::back_inserter(common),
                         [](const auto &item) { return item->commonKey().has_value(); });
    return common;
}

std::expected<MetadataItems, QString> FieldAsset::metadata()
{
    return items();
}

std::expected<std::optional<QString>, QString> FieldAsset::lyrics()
{
    std::optional<QString> plain;
    for (const auto &item : items()) {
        if (!isLyrics(*item))
            continue;
        QString text = item->stringValue().value_or(QString());
        if (hasTimes(text))
            return text;
        if (!plain && !text.isEmpty())
            plain = text;
    }
    return plain;
}

} // namespace cadorel
