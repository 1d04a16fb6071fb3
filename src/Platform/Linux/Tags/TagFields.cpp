// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/TagFields.h"

#include <QSet>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <map>

namespace cadorel {

namespace {

/// Values that the two ends of a tag may carry without meaning: zero bytes behind, a byte order mark before.
QString cleaned(QString text)
{
    while (text.endsWith(QChar::Null))
        text.chop(1);
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    return text;
}

class TagItem final : public MetadataItem
{
public:
    TagItem(TagField field, std::optional<CommonKey> common)
        : m_field(std::move(field))
        , m_common(common)
    {
    }

    QString key() const override { return m_field.key; }
    QString identifier() const override { return m_field.identifier; }
    std::optional<CommonKey> commonKey() const override { return m_common; }
    std::optional<QString> stringValue() const override
    {
        return m_field.text ? std::optional(cleaned(m_field.text())) : std::nullopt;
    }
    std::optional<QByteArray> dataValue() const override
    {
        return m_field.bytes ? std::optional(m_field.bytes()) : std::nullopt;
    }

private:
    TagField m_field;
    std::optional<CommonKey> m_common;
};

/// Readers hand on no empty picture, so bytes alone are a value.
bool saysSomething(const TagField &field)
{
    return field.bytes || (field.text && !cleaned(field.text()).isEmpty());
}

} // namespace

void TagFields::add(TagField field)
{
    m_fields.append(std::move(field));
}

void TagFields::fillGaps(TagFields other)
{
    QSet<FieldRole> filled;
    for (const TagField &field : m_fields) {
        const FieldRole role = field.field.role;
        if (role != FieldRole::other && role != FieldRole::machine && saysSomething(field))
            filled.insert(role);
    }
    for (TagField &field : other.m_fields) {
        if (!filled.contains(field.field.role))
            m_fields.append(std::move(field));
    }
}

void TagFields::sortByRank()
{
    // A multimap keeps the order of equals.
    std::multimap<int, TagField> sorted;
    for (TagField &field : m_fields)
        sorted.emplace(field.field.rank, std::move(field));
    m_fields.clear();
    for (auto &[rank, field] : sorted)
        m_fields.append(std::move(field));
}

int TagFields::rankOfPictureType(int type)
{
    constexpr std::array preferred{3, 0};
    return int(std::ranges::find(preferred, type) - preferred.begin());
}

std::optional<qsizetype> TagFields::holder(CommonKey key) const
{
    std::optional<qsizetype> holder;
    for (qsizetype i = 0; i < m_fields.size(); ++i) {
        const TagField &field = m_fields[i];
        if (CommonKeys::commonKey(field.field.role) != key)
            continue;
        const bool better =
            !holder || (key == CommonKey::artwork ? field.pictureRank < m_fields[*holder].pictureRank
                                                  : !saysSomething(m_fields[*holder]));
        if (better)
            holder = i;
    }
    return holder;
}

MetadataItems TagFields::takeItems()
{
    const bool albumArtist = std::ranges::any_of(
        m_fields, [](const TagField &field) { return field.field.role == FieldRole::albumArtist; });
    QVarLengthArray<std::optional<CommonKey>, 32> common(m_fields.size());
    for (const CommonKey key : {CommonKey::title, CommonKey::artist, CommonKey::creator, CommonKey::albumName,
                                CommonKey::artwork}) {
        if (key == CommonKey::creator && albumArtist)
            continue;
        if (const auto index = holder(key))
            common[*index] = key;
    }
    MetadataItems items;
    items.reserve(m_fields.size());
    for (qsizetype i = 0; i < m_fields.size(); ++i)
        items.append(std::make_shared<TagItem>(std::move(m_fields[i]), common[i]));
    m_fields.clear();
    return items;
}

} // namespace cadorel
