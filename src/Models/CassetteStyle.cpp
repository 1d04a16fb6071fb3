// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/CassetteStyle.h"

#include "Models/NamedCases.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

struct StyleRow
{
    QString rawValue;
    QString displayName;
    QString imageName;
    CassetteConfig defaultConfig;
};

/// In the order of the declaration.
const std::array<StyleRow, 6> &styleTable()
{
    static const std::array<StyleRow, 6> table{{
        {u"default"_s, u"经典磁带"_s, u"Cassette"_s, {0.18F, 0, -0.2F}},
        {u"style1"_s, u"粉色磁带"_s, u"Cassette1"_s, {0.25F, 0, -0.15F}},
        {u"style2"_s, u"蓝色磁带"_s, u"Cassette2"_s, {0.22F, 0, -0.1F}},
        {u"style3"_s, u"紫色磁带"_s, u"Cassette3"_s, {0.24F, 0, -0.12F}},
        {u"style4"_s, u"橙色磁带"_s, u"Cassette4"_s, {0.23F, 0, -0.14F}},
        {u"none"_s, u"仅封面"_s, {}, {1, 0, 0}},
    }};
    return table;
}

const StyleRow &rowOf(CassetteStyle style)
{
    return styleTable().at(static_cast<size_t>(style));
}

} // namespace

const QList<CassetteStyle> &allCassetteStyles()
{
    static const QList<CassetteStyle> all = casesOf<CassetteStyle>(styleTable());
    return all;
}

QString rawValue(CassetteStyle style)
{
    return rowOf(style).rawValue;
}

std::optional<CassetteStyle> cassetteStyleOf(const QString &rawValue)
{
    return caseOf<CassetteStyle>(styleTable(), rawValue);
}

QString displayName(CassetteStyle style)
{
    return rowOf(style).displayName;
}

QString imageName(CassetteStyle style)
{
    return rowOf(style).imageName;
}

CassetteConfig defaultConfig(CassetteStyle style)
{
    return rowOf(style).defaultConfig;
}

} // namespace cadorel
