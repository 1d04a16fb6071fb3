// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/OutputDeviceModel.h"

#include "Utils/AppIcons.h"

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

struct OutputDeviceModel::Rows
{
    static QString id(const Row &row) { return row.id; }
    static bool isSameRow(const Row &a, const Row &b) { return a.id == b.id; }
    static bool looksEqual(const Row &a, const Row &b) { return a == b; }
};

OutputDeviceModel::OutputDeviceModel(QObject *parent)
    : RowModel(parent)
{
}

int OutputDeviceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant OutputDeviceModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return row.name;
    case DetailRole:
        return row.detail;
    case SymbolRole:
        return row.symbol;
    case IsChosenRole:
        return row.isChosen;
    default:
        return {};
    }
}

QHash<int, QByteArray> OutputDeviceModel::roleNames() const
{
    return {{NameRole, "name"_ba},
            {DetailRole, "detail"_ba},
            {SymbolRole, "symbol"_ba},
            {IsChosenRole, "isChosen"_ba}};
}

OutputDeviceModel::Row OutputDeviceModel::rowFor(const OutputDevice &device, const QString &chosen)
{
    return {.id = device.id,
            .name = device.name,
            .detail = device.isInUse ? u"正在播放"_s : QString(),
            .symbol = device.kind == OutputDevice::Kind::headphones ? u"headphones"_s
                                                                    : QString(AppIcons::Audio::speaker),
            .isChosen = device.id == chosen};
}

void OutputDeviceModel::show(const QList<OutputDevice> &devices, const QString &chosen)
{
    QList<Row> rows;
    if (!devices.isEmpty()) {
        const auto usual = std::ranges::find(devices, true, &OutputDevice::isDefault);
        rows.append({.id = {},
                     .name = u"系统默认"_s,
                     .detail = usual == devices.cend() ? QString() : usual->name,
                     .symbol = QString(AppIcons::Audio::airplay),
                     .isChosen = chosen.isEmpty()});
    }
    for (const OutputDevice &device : devices)
        rows.append(rowFor(device, chosen));
    showRows<Rows>(m_rows, rows);
}

QString OutputDeviceModel::idAt(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row).id : QString();
}

} // namespace cadorel
