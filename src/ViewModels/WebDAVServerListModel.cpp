// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/WebDAVServerListModel.h"

#include "Platform/Clock.h"
#include "ViewModels/RowDifference.h"
#include "ViewModels/WebDAVScans.h"
#include "ViewModels/WebDAVServerTexts.h"

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

QList<QString> idsOf(const QList<WebDAVConfig> &servers)
{
    QList<QString> ids;
    ids.reserve(servers.size());
    for (const WebDAVConfig &server : servers)
        ids.append(server.uuidText());
    return ids;
}

bool looksEqual(const WebDAVConfig &a, const WebDAVConfig &b)
{
    return a.name == b.name && a.serverURL == b.serverURL && a.port == b.port && a.isEnabled == b.isEnabled &&
           a.lastSyncDate == b.lastSyncDate;
}

} // namespace

WebDAVServerListModel::WebDAVServerListModel(const WebDAVScans &scans, const Clock &clock, QObject *parent)
    : QAbstractListModel(parent)
    , m_scans(scans)
    , m_clock(clock)
{
}

int WebDAVServerListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant WebDAVServerListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const WebDAVConfig &config = m_rows.at(index.row());
    switch (role) {
    case ServerIdRole:
        return config.uuidText();
    case Qt::DisplayRole:
    case NameRole:
        return config.name;
    case HostRole:
        return serverTexts::host(config);
    case SymbolRole:
        return serverTexts::symbol(config);
    case StatusRole:
        return status(config);
    case HasFailedRole:
        return m_scans.state(config.id) == WebDAVScans::State::none && !m_scans.failure(config.id).isEmpty();
    case IsEnabledRole:
        return config.isEnabled;
    case IsScanningRole:
        return m_scans.state(config.id) == WebDAVScans::State::running;
    case ProgressRole:
        return m_scans.state(config.id) == WebDAVScans::State::running ? m_scans.progress() : 0.0;
    case KindTextRole:
        return u"网盘"_s;
    case IsNavidromeRole:
        return false;
    default:
        return {};
    }
}

QHash<int, QByteArray> WebDAVServerListModel::names()
{
    return {{ServerIdRole, "serverId"},
            {NameRole, "name"},
            {HostRole, "host"},
            {SymbolRole, "symbol"},
            {StatusRole, "status"},
            {HasFailedRole, "hasFailed"},
            {IsEnabledRole, "isEnabled"},
            {IsScanningRole, "isScanning"},
            {ProgressRole, "progress"},
            {KindTextRole, "kindText"},
            {IsNavidromeRole, "isNavidrome"}};
}

QString WebDAVServerListModel::status(const WebDAVConfig &config) const
{
    switch (m_scans.state(config.id)) {
    case WebDAVScans::State::running:
        return u"正在扫描…"_s;
    case WebDAVScans::State::waiting:
        return u"等待扫描"_s;
    case WebDAVScans::State::none:
        break;
    }
    const QString failure = m_scans.failure(config.id);
    if (!failure.isEmpty())
        return u"扫描失败："_s + failure;
    const QString sync = serverTexts::lastSync(config, m_clock.now());
    const int songs = m_counts.value(config.id);
    const QString counted =
        config.lastSyncDate || songs > 0 ? QString::number(songs) + u" 首 · "_s + sync : sync;
    return config.isEnabled ? counted : u"已禁用 · "_s + counted;
}

void WebDAVServerListModel::setServers(const QList<WebDAVConfig> &servers)
{
    const int countBefore = count();
    // A list of servers is short: no difference is too long to be shown.
    const auto steps = rowDifference(idsOf(m_rows), idsOf(servers), m_rows.size() + servers.size() + 1);
    if (!steps) {
        beginResetModel();
        m_rows = servers;
        endResetModel();
    } else {
        for (const RowStep &step : *steps) {
            const int first = static_cast<int>(step.first);
            const int last = static_cast<int>(step.first + step.count) - 1;
            switch (step.kind) {
            case RowStep::Kind::remove:
                beginRemoveRows({}, first, last);
                m_rows.remove(step.first, step.count);
                endRemoveRows();
                break;
            case RowStep::Kind::move:
                beginMoveRows({}, first, last, {}, static_cast<int>(step.to));
                std::rotate(m_rows.begin() + step.to, m_rows.begin() + step.first, m_rows.begin() + last + 1);
                endMoveRows();
                break;
            case RowStep::Kind::insert:
                beginInsertRows({}, first, last);
                for (qsizetype row = step.first; row <= last; ++row)
                    m_rows.insert(row, servers.at(row));
                endInsertRows();
                break;
            }
        }
        for (int row = 0; row < count(); ++row) {
            if (looksEqual(m_rows.at(row), servers.at(row)))
                continue;
            m_rows[row] = servers.at(row);
            updateRow(row, {});
        }
        m_rows = servers;
    }
    if (count() != countBefore)
        Q_EMIT countChanged();
}

void WebDAVServerListModel::setSongCounts(const QHash<QUuid, int> &counts)
{
    const QHash<QUuid, int> before = std::exchange(m_counts, counts);
    for (int row = 0; row < count(); ++row) {
        const QUuid &id = m_rows.at(row).id;
        if (before.value(id) != m_counts.value(id))
            updateRow(row, {StatusRole});
    }
}

void WebDAVServerListModel::updateScan(const QUuid &server)
{
    updateRow(rowOf(server), {StatusRole, HasFailedRole, IsScanningRole, ProgressRole});
}

int WebDAVServerListModel::rowOf(const QUuid &server) const
{
    const auto found = std::find_if(m_rows.cbegin(), m_rows.cend(),
                                    [&server](const WebDAVConfig &config) { return config.id == server; });
    return found == m_rows.cend() ? -1 : static_cast<int>(found - m_rows.cbegin());
}

void WebDAVServerListModel::updateRow(int row, const QList<int> &roles)
{
    if (row >= 0)
        Q_EMIT dataChanged(index(row), index(row), roles);
}

} // namespace cadorel
