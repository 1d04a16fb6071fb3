// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/LyricsAlignment.h"

#include "Models/NamedCases.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

struct AlignmentRow
{
    QString rawValue;
    QString displayName;
    Qt::Alignment textAlignment;
    Qt::Alignment frameAlignment;
};

/// In the order of the declaration. Left is the leading side: what reads from right to left mirrors it.
const std::array<AlignmentRow, 2> &alignmentTable()
{
    static const std::array<AlignmentRow, 2> table{{
        {u"left"_s, u"左对齐"_s, Qt::AlignLeft, Qt::AlignLeft | Qt::AlignVCenter},
        {u"center"_s, u"居中"_s, Qt::AlignHCenter, Qt::AlignCenter},
    }};
    return table;
}

const AlignmentRow &rowOf(LyricsAlignment alignment)
{
    return alignmentTable().at(static_cast<size_t>(alignment));
}

} // namespace

const QList<LyricsAlignment> &allLyricsAlignments()
{
    static const QList<LyricsAlignment> all = casesOf<LyricsAlignment>(alignmentTable());
    return all;
}

QString rawValue(LyricsAlignment alignment)
{
    return rowOf(alignment).rawValue;
}

std::optional<LyricsAlignment> lyricsAlignmentOf(const QString &rawValue)
{
    return caseOf<LyricsAlignment>(alignmentTable(), rawValue);
}

QString displayName(LyricsAlignment alignment)
{
    return rowOf(alignment).displayName;
}

Qt::Alignment textAlignment(LyricsAlignment alignment)
{
    return rowOf(alignment).textAlignment;
}

Qt::Alignment frameAlignment(LyricsAlignment alignment)
{
    return rowOf(alignment).frameAlignment;
}

} // namespace cadorel
