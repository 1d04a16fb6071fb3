// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/TopList.h"
#include "ViewModels/RowModel.h"

namespace cadorel {

/// The charts of a platform. Main thread.
class TopListListModel : public cadorel::RowModel // QML's tools look up the name as it stands here
{
    Q_OBJECT
public:
    enum Role {
        NameRole = Qt::UserRole + 1, // name: QString
        UpdateFrequencyRole          // updateFrequency: QString
    };

    using RowModel::RowModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int rowOf(const QString &chartKey) const override;

    /// The charts in the order of the rows.
    const QList<TopList> &charts() const { return m_charts; }
    /// Names a chart among those of all platforms.
    static QString key(const TopList &chart);

    void setCharts(const QList<TopList> &charts);

private:
    QList<TopList> m_charts;
};

} // namespace cadorel
