// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/LowercaseSearch.h"

namespace cadorel {

namespace {

/// Lower case of a unit that needs no tables: ASCII, and the scripts from CJK radicals to Hangul, which have
/// none.
constexpr char16_t lowered(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

constexpr bool needsTables(char16_t unit)
{
    // From U+2E80 to U+A63F no letter has case; U+A640 starts Cyrillic Extended-B.
    return unit >= 0x80 && (unit < 0x2E80 || unit > 0xA63F);
}

} // namespace

LowercaseSearch::LowercaseSearch(const QString &text)
    : m_needle(text.toLower())
    , m_matcher(m_needle)
    , m_first(m_needle.isEmpty() ? u'\0' : m_needle.front().unicode())
{
}

bool LowercaseSearch::isIn(const QString &haystack) const
{
    if (m_needle.isEmpty())
        return true;
    for (const QChar c : haystack) {
        if (needsTables(c.unicode()))
            return m_matcher.indexIn(haystack.toLower()) >= 0;
    }
    return isInPlain(haystack);
}

bool LowercaseSearch::isInPlain(QStringView haystack) const
{
    const qsizetype length = m_needle.size();
    const QChar *needle = m_needle.constData();
    const QChar *text = haystack.data();
    for (qsizetype from = 0; from + length <= haystack.size(); ++from) {
        if (lowered(text[from].unicode()) != m_first)
            continue;
        qsizetype i = 1;
        while (i < length && lowered(text[from + i].unicode()) == needle[i].unicode())
            ++i;
        if (i == length)
            return true;
    }
    return false;
}

} // namespace cadorel
