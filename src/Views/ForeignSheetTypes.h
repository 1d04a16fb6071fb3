// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types behind the sheets of the player's screen by.
#pragma once

#include "ViewModels/LyricsOffsetViewModel.h"
#include "ViewModels/NowPlayingSettingsViewModel.h"
#include "ViewModels/OutputDeviceModel.h"
#include "ViewModels/OutputDevicesViewModel.h"
#include "ViewModels/SleepTimerViewModel.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignLyricsOffsetViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::LyricsOffsetViewModel)
    QML_NAMED_ELEMENT(LyricsOffsetViewModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignNowPlayingSettingsViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::NowPlayingSettingsViewModel)
    QML_NAMED_ELEMENT(NowPlayingSettingsViewModel)
    QML_UNCREATABLE("given to the window")
};

struct ForeignOutputDeviceModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::OutputDeviceModel)
    QML_NAMED_ELEMENT(OutputDeviceModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignOutputDevicesViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::OutputDevicesViewModel)
    QML_NAMED_ELEMENT(OutputDevicesViewModel)
    QML_UNCREATABLE("given to the window")
};

struct ForeignSleepTimerViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::SleepTimerViewModel)
    QML_NAMED_ELEMENT(SleepTimerViewModel)
    QML_UNCREATABLE("given by the view model")
};

} // namespace cadorel
