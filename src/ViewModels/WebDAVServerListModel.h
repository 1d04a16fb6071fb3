// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/WebDAVConfig.h"

#include <QAbstractListModel>
#include <QHash>
#include <QUuid>

namespace cadorel {

class Clock;
class WebDAVScans;

/// The rows of the list of servers, in the order in which they were set up. Main thread.
class WebDAVServerListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum Role {
        ServerIdRole = Qt::UserRole + 1, // serverId: QString
        NameRole,                        // name: QString
        HostRole,                        // host: QString, without credentials
        SymbolRole,                      // symbol: QString, name of a symbol
        StatusRole,                      // status: QString, songs and last sync, or what the scan does
        HasFailedRole,                   // hasFailed: bool, the status tells why a scan failed
        IsEnabledRole,                   // isEnabled: bool
        IsScanningRole,                  // isScanning: bool
        ProgressRole,                    // progress: double, of the scan, 0...1
        KindTextRole,                    // kindText: QString, header of the servers of a kind
        IsNavidromeRole                  // isNavidrome: bool
    };

    /// The names of the roles, which lists of other kinds of servers share.
    static QHash<int, QByteArray> names();

    /// @param scans and @param clock outlive the model
    WebDAVServerListModel(const WebDAVScans &scans, const Clock &clock, QObject *parent);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override { return names(); }

    int count() const { return static_cast<int>(m_rows.size()); }

    /// Shows other servers. Rows are removed, moved and inserted; those that look otherwise now say so.
    void setServers(const QList<WebDAVConfig> &servers);
    /// How many songs each server has; one that is not named has none.
    void setSongCounts(const QHash<QUuid, int> &counts);
    /// The scan of a server has changed.
    void updateScan(const QUuid &server);

    /// First row of the server; -1 when it is not in the list.
    int rowOf(const QUuid &server) const;

Q_SIGNALS:
    void countChanged();

private:
    QString status(const WebDAVConfig &config) const;
    void updateRow(int row, const QList<int> &roles);

    const WebDAVScans &m_scans;
    const Clock &m_clock;
    QList<WebDAVConfig> m_rows;
    QHash<QUuid, int> m_counts;
};

} // namespace cadorel
