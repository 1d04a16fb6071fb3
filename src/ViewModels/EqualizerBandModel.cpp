// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/EqualizerBandModel.h"

#include "Services/EqualizerService.h"

#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

QString gainText(float decibels)
{
    // Tenths are as fine as anybody hears; a gain that rounds to nothing has no sign.
    const int tenths = static_cast<int>(std::lround(decibels * 10));
    QString text = QString::number(tenths / 10.0, 'f', tenths % 10 == 0 ? 0 : 1);
    return tenths > 0 ? u'+' + text : text;
}

int EqualizerBandModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : equalizerBandCount;
}

QVariant EqualizerBandModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto band = static_cast<std::size_t>(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case LabelRole:
        return EqualizerService::frequencyLabels.at(band);
    case SpokenNameRole:
        return QString::number(EqualizerService::frequencies.at(band)) + u" 赫兹"_s;
    case GainRole:
        return m_gains.at(band);
    case GainTextRole:
        return gainText(m_gains.at(band));
    default:
        return {};
    }
}

QHash<int, QByteArray> EqualizerBandModel::roleNames() const
{
    return {
        {LabelRole, "label"}, {SpokenNameRole, "spokenName"}, {GainRole, "gain"}, {GainTextRole, "gainText"}};
}

void EqualizerBandModel::setGains(const EqualizerGains &gains)
{
    const EqualizerGains before = std::exchange(m_gains, gains);
    for (int band = 0; band < equalizerBandCount; ++band) {
        const auto i = static_cast<std::size_t>(band);
        if (before.at(i) != gains.at(i))
            Q_EMIT dataChanged(index(band), index(band), {GainRole, GainTextRole});
    }
}

} // namespace cadorel
