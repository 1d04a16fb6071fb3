// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>

namespace cadorel {

/// The ready-made kinds of servers, in their order. Never changes. Main thread.
class WebDAVPresetListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role {
        NameRole = Qt::UserRole + 1, // name: QString
        DescriptionRole,             // description: QString
        SymbolRole                   // symbol: QString, name of a symbol
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

} // namespace cadorel
