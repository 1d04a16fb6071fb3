// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/NavidromeServerListModel.h"

#include "ViewModels/WebDAVServerListModel.h"
#include "ViewModels/WebDAVServerTexts.h"

#include <algorithm>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

using Role = WebDAVServerListModel::Role;

struct ServerRows
{
    static QString id(const NavidromeConfig &config) { return config.uuidText(); }
    static bool isSameRow(const NavidromeConfig &a, const NavidromeConfig &b) { return a.id == b.id; }
    static bool looksEqual(const NavidromeConfig &a, const NavidromeConfig &b) { return a == b; }
};

} // namespace

NavidromeServerListModel::NavidromeServerListModel(QObject *parent)
    : RowModel(parent)
{
}

int NavidromeServerListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant NavidromeServerListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const NavidromeConfig &config = m_rows.at(index.row());
    switch (role) {
    case Role::ServerIdRole:
        return config.uuidText();
    case Qt::DisplayRole:
    case Role::NameRole:
        return config.name;
    case Role::HostRole:
        return serverTexts::host(config);
    case Role::SymbolRole:
        return u"music.note.list"_s;
    case Role::StatusRole:
        return status(config);
    case Role::IsEnabledRole:
        return config.isEnabled;
    case Role::ProgressRole:
        return 0.0;
    case Role::KindTextRole:
        return u"Navidrome"_s;
    case Role::IsNavidromeRole:
        return true;
    case Role::HasFailedRole:
    case Role::IsScanningRole:
        return false;
    default:
        return {};
    }
}

QHash<int, QByteArray> NavidromeServerListModel::roleNames() const
{
    return WebDAVServerListModel::names();
}

QString NavidromeServerListModel::status(const NavidromeConfig &config) const
{
    const QString connection = config.id == m_connecting  ? u"正在连接…"_s
                               : config.id == m_connected ? u"已连接"_s
                                                          : u"未连接"_s;
    return config.isEnabled ? connection : u"已禁用 · "_s + connection;
}

int NavidromeServerListModel::rowOf(const QString &id) const
{
    const auto found = std::ranges::find(m_rows, id, &NavidromeConfig::uuidText);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

void NavidromeServerListModel::setServers(const QList<NavidromeConfig> &servers)
{
    showRows<ServerRows>(m_rows, servers);
}

void NavidromeServerListModel::setConnection(const QUuid &connected, const QUuid &connecting)
{
    const QList<QUuid> touched{connected, connecting, std::exchange(m_connected, connected),
                               std::exchange(m_connecting, connecting)};
    for (int row = 0; row < count(); ++row) {
        if (touched.contains(m_rows.at(row).id))
            Q_EMIT dataChanged(index(row), index(row), {Role::StatusRole});
    }
}

} // namespace cadorel
