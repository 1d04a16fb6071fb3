// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QConcatenateTablesProxyModel>

namespace cadorel {

/// The servers of every kind, one kind after the other, in the roles of WebDAVServerListModel. Main thread.
class ServerListModel : public QConcatenateTablesProxyModel
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel *webDAV READ webDAV WRITE setWebDAV NOTIFY kindsChanged REQUIRED)
    Q_PROPERTY(QAbstractItemModel *navidrome READ navidrome WRITE setNavidrome NOTIFY kindsChanged REQUIRED)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    explicit ServerListModel(QObject *parent = nullptr);

    QHash<int, QByteArray> roleNames() const override;

    int count() const { return rowCount(); }

    QAbstractItemModel *webDAV() const { return m_webDAV; }
    void setWebDAV(QAbstractItemModel *model);
    QAbstractItemModel *navidrome() const { return m_navidrome; }
    void setNavidrome(QAbstractItemModel *model);

Q_SIGNALS:
    void kindsChanged();
    void countChanged();

private:
    void setKind(QAbstractItemModel *&kind, QAbstractItemModel *model);

    QAbstractItemModel *m_webDAV = nullptr;
    QAbstractItemModel *m_navidrome = nullptr;
};

} // namespace cadorel
