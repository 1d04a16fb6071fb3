// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/EqualizerPreset.h"

#include <QAbstractListModel>

namespace cadorel {

/// A gain as a listener reads it: "+3.5", "-12", "0".
QString gainText(float decibels);

/// The bands of the equalizer, lowest first. Their number never changes. Main thread.
class EqualizerBandModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role {
        LabelRole = Qt::UserRole + 1,
        SpokenNameRole, ///< the label as a screen reader says it: "32 赫兹"
        GainRole,       ///< decibels
        GainTextRole
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setGains(const EqualizerGains &gains);

private:
    EqualizerGains m_gains{};
};

} // namespace cadorel
