// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ContentTabModel.h"

#include <algorithm>
#include <utility>

namespace cadorel {

ContentTabModel::ContentTabModel(QList<ContentTab> tabs, QObject *parent)
    : QAbstractListModel(parent)
    , m_tabs(std::move(tabs))
{
}

void ContentTabModel::setShown(ContentTab tab, bool isShown)
{
    if (m_tabs.contains(tab) == isShown)
        return;
    const auto place = std::ranges::lower_bound(m_tabs, tab);
    const int row = static_cast<int>(std::distance(m_tabs.begin(), place));
    if (isShown) {
        beginInsertRows({}, row, row);
        m_tabs.insert(row, tab);
        endInsertRows();
    } else {
        beginRemoveRows({}, row, row);
        m_tabs.removeAt(row);
        endRemoveRows();
    }
    Q_EMIT countChanged();
}

int ContentTabModel::tabAt(int row) const
{
    return row >= 0 && row < m_tabs.size() ? static_cast<int>(m_tabs.at(row)) : -1;
}

int ContentTabModel::rowOf(int tab) const
{
    return static_cast<int>(m_tabs.indexOf(static_cast<ContentTab>(tab)));
}

int ContentTabModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant ContentTabModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_tabs.size())
        return {};
    const ContentTab tab = m_tabs.at(index.row());
    switch (role) {
    case TabRole:
        return static_cast<int>(tab);
    case NameRole:
        return caseName(tab);
    case Qt::DisplayRole:
    case TitleRole:
        return rawValue(tab);
    case SymbolRole:
        return symbol(tab);
    case SelectedSymbolRole:
        return selectedSymbol(tab);
    case KawaiiIconRole:
        return kawaiiIcon(tab);
    default:
        return {};
    }
}

QHash<int, QByteArray> ContentTabModel::roleNames() const
{
    return {{TabRole, "tab"},
            {NameRole, "name"},
            {TitleRole, "title"},
            {SymbolRole, "symbol"},
            {SelectedSymbolRole, "selectedSymbol"},
            {KawaiiIconRole, "kawaiiIcon"}};
}

} // namespace cadorel
