// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/EqualizerPresetModel.h"

namespace cadorel {

int EqualizerPresetModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(allEqualizerPresets().size());
}

QVariant EqualizerPresetModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const EqualizerPreset preset = allEqualizerPresets().at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return displayName(preset);
    case SymbolRole:
        return symbol(preset);
    case DescriptionRole:
        return descriptionText(preset);
    case IsCurrentRole:
        return preset == m_current;
    default:
        return {};
    }
}

QHash<int, QByteArray> EqualizerPresetModel::roleNames() const
{
    return {{NameRole, "name"},
            {SymbolRole, "symbol"},
            {DescriptionRole, "description"},
            {IsCurrentRole, "isCurrent"}};
}

void EqualizerPresetModel::setCurrent(EqualizerPreset preset)
{
    if (m_current == preset)
        return;
    const int before = currentRow();
    m_current = preset;
    tellCurrent(before);
    tellCurrent(currentRow());
}

int EqualizerPresetModel::currentRow() const
{
    return static_cast<int>(allEqualizerPresets().indexOf(m_current));
}

void EqualizerPresetModel::tellCurrent(int row)
{
    Q_EMIT dataChanged(index(row), index(row), {IsCurrentRole});
}

} // namespace cadorel
