// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/NavidromeConfig.h"
#include "ViewModels/RowModel.h"

namespace cadorel {

/// The rows of the Subsonic servers, in the order in which they were set up and in the roles of
/// WebDAVServerListModel. Main thread.
class NavidromeServerListModel : public cadorel::RowModel // QML's tools look up the name as it stands here
{
    Q_OBJECT
public:
    explicit NavidromeServerListModel(QObject *parent);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int rowOf(const QString &id) const override;

    void setServers(const QList<NavidromeConfig> &servers);
    /// Which server is connected, and which one is being connected to; null ids for none.
    void setConnection(const QUuid &connected, const QUuid &connecting);

private:
    QString status(const NavidromeConfig &config) const;

    QList<NavidromeConfig> m_rows;
    QUuid m_connected;
    QUuid m_connecting;
};

} // namespace cadorel
