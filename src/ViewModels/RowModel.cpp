// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/RowModel.h"

namespace cadorel {

RowModel::RowModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void RowModel::followFavorites(const PlaylistStore *playlists, int role)
{
    if (m_favorites)
        disconnect(m_favorites, nullptr, this, nullptr);
    m_favorites = playlists;
    const auto tellAll = [this, role] {
        if (count() > 0)
            Q_EMIT dataChanged(index(0), index(count() - 1), {role});
    };
    if (m_favorites)
        connect(m_favorites, &PlaylistStore::changed, this, tellAll);
    tellAll();
}

} // namespace cadorel
