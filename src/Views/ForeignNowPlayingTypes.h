// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of the full-screen player by.
#pragma once

#include "ViewModels/NowPlayingViewModel.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignNowPlayingViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::NowPlayingViewModel)
    QML_NAMED_ELEMENT(NowPlayingViewModel)
    QML_UNCREATABLE("given to the window")
};

} // namespace cadorel
