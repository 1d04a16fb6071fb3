// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the types of the library's search by.
#pragma once

#include "ViewModels/LocalSearchViewModel.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignLocalSearchViewModel
{
    Q_GADGET
    QML_FOREIGN(cadorel::LocalSearchViewModel)
    QML_NAMED_ELEMENT(LocalSearchViewModel)
};

} // namespace cadorel
