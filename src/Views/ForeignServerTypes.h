// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of servers by that are not WebDAV's alone; the rest is in
// ForeignTypes.h.
#pragma once

#include "ViewModels/NavidromeServerFormViewModel.h"
#include "ViewModels/NavidromeServerListModel.h"
#include "ViewModels/NavidromeServerPageViewModel.h"
#include "ViewModels/NavidromeServersViewModel.h"
#include "ViewModels/ServerFormViewModel.h"
#include "ViewModels/ServerListModel.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignServerFormViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::ServerFormViewModel)
    QML_NAMED_ELEMENT(ServerFormViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignServerListModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::ServerListModel)
    QML_NAMED_ELEMENT(ServerListModel)
};

struct ForeignNavidromeServerFormViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::NavidromeServerFormViewModel)
    QML_NAMED_ELEMENT(NavidromeServerFormViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignNavidromeServerListModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::NavidromeServerListModel)
    QML_NAMED_ELEMENT(NavidromeServerListModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignNavidromeServerPageViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::NavidromeServerPageViewModel)
    QML_NAMED_ELEMENT(NavidromeServerPageViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignNavidromeServersViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::NavidromeServersViewModel)
    QML_NAMED_ELEMENT(NavidromeServersViewModel)
    QML_UNCREATABLE("given to the window")
};

} // namespace cadorel
