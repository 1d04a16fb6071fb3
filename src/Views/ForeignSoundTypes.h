// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the equalizer's types by; the rest is in ForeignTypes.h.
#pragma once

#include "ViewModels/EqualizerBandModel.h"
#include "ViewModels/EqualizerPresetModel.h"
#include "ViewModels/EqualizerViewModel.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignEqualizerBandModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::EqualizerBandModel)
    QML_NAMED_ELEMENT(EqualizerBandModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignEqualizerPresetModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::EqualizerPresetModel)
    QML_NAMED_ELEMENT(EqualizerPresetModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignEqualizerViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::EqualizerViewModel)
    QML_NAMED_ELEMENT(EqualizerViewModel)
    QML_UNCREATABLE("given to the window")
};

} // namespace cadorel
