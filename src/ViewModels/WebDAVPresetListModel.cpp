// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/WebDAVPresetListModel.h"

#include "Models/WebDAVPreset.h"

namespace cadorel {

int WebDAVPresetListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(WebDAVPreset::presets().size());
}

QVariant WebDAVPresetListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const WebDAVPreset &preset = WebDAVPreset::presets().at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return preset.name;
    case DescriptionRole:
        return preset.description;
    case SymbolRole:
        return preset.icon;
    default:
        return {};
    }
}

QHash<int, QByteArray> WebDAVPresetListModel::roleNames() const
{
    return {{NameRole, "name"}, {DescriptionRole, "description"}, {SymbolRole, "symbol"}};
}

} // namespace cadorel
