// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the helpers for texts by.
#pragma once

#include "Utils/ShortNames.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignShortNames
{
    Q_GADGET
    QML_FOREIGN(cadorel::ShortNames)
    QML_NAMED_ELEMENT(ShortNames)
    QML_SINGLETON
public:
    static ShortNames *create(QQmlEngine *, QJSEngine *) { return new ShortNames; }
};

} // namespace cadorel
