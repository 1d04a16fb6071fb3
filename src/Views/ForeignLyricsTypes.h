// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of lyrics by.
#pragma once

#include "ViewModels/LyricLineModel.h"
#include "ViewModels/LyricsViewModel.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignLyricLineModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::LyricLineModel)
    QML_NAMED_ELEMENT(LyricLineModel)
    QML_UNCREATABLE("given by the view model")
};

struct ForeignLyricsViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::LyricsViewModel)
    QML_NAMED_ELEMENT(LyricsViewModel)
    QML_UNCREATABLE("given to the window")
};

} // namespace cadorel
