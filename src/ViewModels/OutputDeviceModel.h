// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/OutputDevices.h"
#include "ViewModels/RowModel.h"

namespace cadorel {

/// What the player can play on: first the machine's default, whichever that is, then each device. Without
/// devices there is no row. Main thread.
class OutputDeviceModel : public RowModel
{
    Q_OBJECT
public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        DetailRole, ///< which device the default is, or that the sound goes there; else empty
        SymbolRole,
        IsChosenRole,
    };

    explicit OutputDeviceModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// @param chosen id of the chosen device; empty for the default
    void show(const QList<OutputDevice> &devices, const QString &chosen);
    /// Id of the row's device; empty for the default and for a row that is not there.
    QString idAt(int row) const;

private:
    struct Row
    {
        QString id;
        QString name;
        QString detail;
        QString symbol;
        bool isChosen = false;

        bool operator==(const Row &) const = default;
    };
    struct Rows;

    static Row rowFor(const OutputDevice &device, const QString &chosen);

    QList<Row> m_rows;
};

} // namespace cadorel
