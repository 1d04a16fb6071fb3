// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/RowModel.h"

namespace cadorel {

RowModel::RowModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

} // namespace cadorel
