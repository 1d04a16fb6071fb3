// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LyricLineModel.h"

#include "Utils/OneLine.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace cadorel {

namespace {

/// Rows that are farther than this from the current line before and after look as they did.
constexpr int reach = LyricLineStyle::farthestDistance;

} // namespace

LyricLineModel::LyricLineModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int LyricLineModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant LyricLineModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const int row = index.row();
    switch (role) {
    case Qt::DisplayRole:
    case TextRole:
        return oneLine(m_lines.at(row).text);
    case TimeMsRole:
        return m_lines.at(row).timeMs;
    case IsActiveRole:
        return row == m_currentLine;
    case DistanceRole:
        return std::min(std::abs(row - m_currentLine), LyricLineStyle::farthestDistance);
    case PointSizeRole:
        return style(row, m_currentLine).pointSize;
    case IsBoldRole:
        return style(row, m_currentLine).isBold;
    case LineOpacityRole:
        return style(row, m_currentLine).opacity;
    case BlurRadiusRole:
        return style(row, m_currentLine).blurRadius;
    case LineScaleRole:
        return style(row, m_currentLine).scale;
    default:
        return {};
    }
}

QHash<int, QByteArray> LyricLineModel::roleNames() const
{
    return {{TextRole, "text"},
            {TimeMsRole, "timeMs"},
            {IsActiveRole, "isActive"},
            {DistanceRole, "distance"},
            {PointSizeRole, "pointSize"},
            {IsBoldRole, "isBold"},
            {LineOpacityRole, "lineOpacity"},
            {BlurRadiusRole, "blurRadius"},
            {LineScaleRole, "lineScale"}};
}

LyricLineStyle LyricLineModel::style(int row, int current) const
{
    return LyricLineStyle::of(std::abs(row - current), row == current, m_fontSize, m_blurEnabled);
}

void LyricLineModel::setLines(const QList<LyricLine> &lines, int currentLine)
{
    const bool countChanges = lines.size() != m_lines.size();
    beginResetModel();
    m_lines = lines;
    m_currentLine = currentLine;
    endResetModel();
    if (countChanges)
        Q_EMIT countChanged();
}

void LyricLineModel::setCurrentLine(int line)
{
    const int before = std::exchange(m_currentLine, line);
    if (before == line)
        return;
    const auto [lower, upper] = std::minmax(before, line);
    const auto tellAround = [this, before, line](int first, int last) {
        int changed = -1; // first row of a group that has changed
        for (int row = std::max(first, 0); row <= std::min(last, count() - 1); ++row) {
            const bool looksOther =
                row == before || row == line ||
                std::min(std::abs(row - before), reach) != std::min(std::abs(row - line), reach);
            if (looksOther && changed < 0)
                changed = row;
            if (!looksOther && changed >= 0)
                tell(std::exchange(changed, -1), row - 1);
        }
        if (changed >= 0)
            tell(changed, std::min(last, count() - 1));
    };
    if (upper - lower <= 2 * reach) {
        tellAround(lower - reach, upper + reach);
    } else {
        tellAround(lower - reach, lower + reach);
        tellAround(upper - reach, upper + reach);
    }
}

void LyricLineModel::setLook(double fontSize, bool blurEnabled)
{
    if (m_fontSize == fontSize && m_blurEnabled == blurEnabled)
        return;
    m_fontSize = fontSize;
    m_blurEnabled = blurEnabled;
    Q_EMIT lookChanged();
    if (count() > 0)
        tell(0, count() - 1);
}

void LyricLineModel::tell(int firstRow, int lastRow)
{
    Q_EMIT dataChanged(index(firstRow), index(lastRow),
                       {IsActiveRole, DistanceRole, PointSizeRole, IsBoldRole, LineOpacityRole,
                        BlurRadiusRole, LineScaleRole});
}

} // namespace cadorel
