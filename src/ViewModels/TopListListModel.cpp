// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/TopListListModel.h"

#include "Utils/OneLine.h"

#include <algorithm>

namespace cadorel {

namespace {

struct ChartRows
{
    static QString id(const TopList &chart) { return TopListListModel::key(chart); }
    static bool isSameRow(const TopList &a, const TopList &b)
    {
        return a.platform == b.platform && a.id == b.id;
    }
    static bool looksEqual(const TopList &a, const TopList &b) { return a == b; }
};

} // namespace

int TopListListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_charts.size());
}

QVariant TopListListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const TopList &chart = m_charts.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return oneLine(chart.name);
    case UpdateFrequencyRole:
        return oneLine(chart.updateFrequency);
    default:
        return {};
    }
}

QHash<int, QByteArray> TopListListModel::roleNames() const
{
    return {{NameRole, "name"}, {UpdateFrequencyRole, "updateFrequency"}};
}

int TopListListModel::rowOf(const QString &chartKey) const
{
    const auto found = std::find_if(m_charts.cbegin(), m_charts.cend(),
                                    [&chartKey](const TopList &chart) { return key(chart) == chartKey; });
    return found == m_charts.cend() ? -1 : static_cast<int>(found - m_charts.cbegin());
}

QString TopListListModel::key(const TopList &chart)
{
    return rawValue(chart.platform) + u':' + chart.id;
}

void TopListListModel::setCharts(const QList<TopList> &charts)
{
    showRows<ChartRows>(m_charts, charts);
}

} // namespace cadorel
