// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/MiniPlayerGeometry.h"

#include <QAbstractListModel>

namespace cadorel {

/// The five buttons of the mini player's fan. Main thread.
class MiniPlayerFanModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role {
        SymbolRole = Qt::UserRole + 1, // symbol: QString
        LabelRole,                     // label: QString
        OffsetRole,                    // offset: QPointF, from the centre of the disc
        IsActiveRole                   // isActive: bool, it is the chosen one
    };

    explicit MiniPlayerFanModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setSide(OverlaySide side);
    OverlaySide side() const { return m_side; }
    /// The current song is a favourite.
    void setFavorite(bool isFavorite);
    bool isFavorite() const { return m_isFavorite; }
    void setActive(std::optional<ControlAction> action);
    std::optional<ControlAction> active() const { return m_active; }

    /// What the button of a row does; nothing for a row that is none.
    std::optional<ControlAction> actionAt(int row) const;
    /// -1 for nothing.
    int rowOf(std::optional<ControlAction> action) const;

private:
    void tellOf(std::optional<ControlAction> action, const QList<int> &roles);

    OverlaySide m_side = OverlaySide::left;
    std::array<MiniPlayerGeometry::ActionPosition, 5> m_positions;
    bool m_isFavorite = false;
    std::optional<ControlAction> m_active;
};

} // namespace cadorel
