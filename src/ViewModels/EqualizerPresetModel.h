// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/EqualizerPreset.h"

#include <QAbstractListModel>

namespace cadorel {

/// The presets of the equalizer, one of them the current one. Their number never changes. Main thread.
class EqualizerPresetModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role { NameRole = Qt::UserRole + 1, SymbolRole, DescriptionRole, IsCurrentRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    EqualizerPreset current() const { return m_current; }
    void setCurrent(EqualizerPreset preset);
    /// Row of the current one.
    int currentRow() const;

private:
    void tellCurrent(int row);

    EqualizerPreset m_current = EqualizerPreset::flat;
};

} // namespace cadorel
