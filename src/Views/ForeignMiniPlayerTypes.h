// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of the mini player and of the queue by.
#pragma once

#include "ViewModels/MiniPlayerFanModel.h"
#include "ViewModels/MiniPlayerGeometry.h"
#include "ViewModels/MiniPlayerViewModel.h"
#include "ViewModels/QueueModel.h"
#include "ViewModels/QueueViewModel.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignMiniPlayerFanModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::MiniPlayerFanModel)
    QML_NAMED_ELEMENT(MiniPlayerFanModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignMiniPlayerGeometry
{
    Q_GADGET
    QML_FOREIGN(cadorel::MiniPlayerGeometry)
    QML_NAMED_ELEMENT(MiniPlayerGeometry)
    QML_SINGLETON
public:
    static MiniPlayerGeometry *create(QQmlEngine *, QJSEngine *) { return new MiniPlayerGeometry; }
};

struct ForeignMiniPlayerViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::MiniPlayerViewModel)
    QML_NAMED_ELEMENT(MiniPlayerViewModel)
    QML_UNCREATABLE("given to the window")
};

struct ForeignQueueModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::QueueModel)
    QML_NAMED_ELEMENT(QueueModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignQueueViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::QueueViewModel)
    QML_NAMED_ELEMENT(QueueViewModel)
    QML_UNCREATABLE("given to the window")
};

} // namespace cadorel
