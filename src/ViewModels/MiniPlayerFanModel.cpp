// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerFanModel.h"

#include <utility>

namespace cadorel {

MiniPlayerFanModel::MiniPlayerFanModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_positions(MiniPlayerGeometry::actionPositions(m_side))
{
}

int MiniPlayerFanModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_positions.size());
}

QVariant MiniPlayerFanModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto &[action, offset] = m_positions.at(static_cast<size_t>(index.row()));
    switch (role) {
    case SymbolRole:
        return iconAndLabel(action, m_isFavorite).icon;
    case Qt::DisplayRole:
    case LabelRole:
        return iconAndLabel(action, m_isFavorite).label;
    case OffsetRole:
        return offset;
    case IsActiveRole:
        return action == m_active;
    default:
        return {};
    }
}

QHash<int, QByteArray> MiniPlayerFanModel::roleNames() const
{
    return {{SymbolRole, "symbol"}, {LabelRole, "label"}, {OffsetRole, "offset"}, {IsActiveRole, "isActive"}};
}

void MiniPlayerFanModel::setSide(OverlaySide side)
{
    if (side == m_side)
        return;
    m_side = side;
    m_positions = MiniPlayerGeometry::actionPositions(side);
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {OffsetRole});
}

void MiniPlayerFanModel::setFavorite(bool isFavorite)
{
    if (isFavorite == m_isFavorite)
        return;
    m_isFavorite = isFavorite;
    tellOf(ControlAction::favorite, {Qt::DisplayRole, SymbolRole, LabelRole});
}

void MiniPlayerFanModel::setActive(std::optional<ControlAction> action)
{
    if (action == m_active)
        return;
    const std::optional<ControlAction> before = std::exchange(m_active, action);
    tellOf(before, {IsActiveRole});
    tellOf(action, {IsActiveRole});
}

void MiniPlayerFanModel::tellOf(std::optional<ControlAction> action, const QList<int> &roles)
{
    if (const int row = rowOf(action); row >= 0)
        Q_EMIT dataChanged(index(row), index(row), roles);
}

std::optional<ControlAction> MiniPlayerFanModel::actionAt(int row) const
{
    if (row < 0 || row >= rowCount())
        return std::nullopt;
    return m_positions.at(static_cast<size_t>(row)).action;
}

int MiniPlayerFanModel::rowOf(std::optional<ControlAction> action) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (actionAt(row) == action)
            return row;
    }
    return -1;
}

} // namespace cadorel
