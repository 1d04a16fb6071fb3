// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringMatcher>

namespace cadorel {

/// Tells whether lower-cased texts contain one lower-cased text. Made for a search over 100,000 songs at each
/// key stroke: a text of ASCII and of scripts without case is compared where it lies, only others are
/// lower-cased into a copy. Reentrant.
class LowercaseSearch
{
public:
    /// @param text what to look for, in any case
    explicit LowercaseSearch(const QString &text);

    bool isIn(const QString &haystack) const;

private:
    bool isInPlain(QStringView haystack) const;

    QString m_needle;
    QStringMatcher m_matcher;
    char16_t m_first = 0;
};

} // namespace cadorel
