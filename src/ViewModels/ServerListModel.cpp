// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ServerListModel.h"

#include "ViewModels/WebDAVServerListModel.h"

namespace cadorel {

ServerListModel::ServerListModel(QObject *parent)
    : QConcatenateTablesProxyModel(parent)
{
    connect(this, &QAbstractItemModel::modelReset, this, &ServerListModel::countChanged);
    connect(this, &QAbstractItemModel::rowsInserted, this, &ServerListModel::countChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &ServerListModel::countChanged);
}

QHash<int, QByteArray> ServerListModel::roleNames() const
{
    // This version of the joining model has but the roles of every model.
    return WebDAVServerListModel::names();
}

void ServerListModel::setWebDAV(QAbstractItemModel *model)
{
    setKind(m_webDAV, model);
}

void ServerListModel::setNavidrome(QAbstractItemModel *model)
{
    setKind(m_navidrome, model);
}

void ServerListModel::setKind(QAbstractItemModel *&kind, QAbstractItemModel *model)
{
    if (kind == model)
        return;
    const QList<QAbstractItemModel *> joined = sourceModels();
    for (QAbstractItemModel *source : joined)
        removeSourceModel(source);
    kind = model;
    for (QAbstractItemModel *source : {m_webDAV, m_navidrome}) {
        if (source)
            addSourceModel(source);
    }
    Q_EMIT kindsChanged();
}

} // namespace cadorel
