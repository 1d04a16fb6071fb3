// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the window and the root screen know their types by.
#pragma once

#include "Theme/BarAppearance.h"
#include "ViewModels/ContentTab.h"
#include "ViewModels/ContentTabModel.h"
#include "ViewModels/ContentViewModel.h"
#include "ViewModels/ScreenModels.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignBarAppearance
{
    Q_GADGET
    QML_FOREIGN(cadorel::BarAppearance)
    QML_VALUE_TYPE(barAppearance)
};

struct ForeignBarAppearances
{
    Q_GADGET
    QML_FOREIGN(cadorel::BarAppearances)
    QML_NAMED_ELEMENT(BarAppearances)
    QML_SINGLETON
public:
    static BarAppearances *create(QQmlEngine *, QJSEngine *) { return new BarAppearances; }
};

namespace ForeignContentTabs {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(cadorel::ContentTabs)
QML_NAMED_ELEMENT(ContentTabs)
} // namespace ForeignContentTabs

struct ForeignContentTabModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::ContentTabModel)
    QML_NAMED_ELEMENT(ContentTabModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignContentViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::ContentViewModel)
    QML_NAMED_ELEMENT(ContentViewModel)
    QML_UNCREATABLE("given to the window")
};

struct ForeignScreenModels
{
    Q_GADGET
    QML_FOREIGN(cadorel::ScreenModels)
    QML_NAMED_ELEMENT(ScreenModels)
    QML_UNCREATABLE("given to the window")
};

} // namespace cadorel
