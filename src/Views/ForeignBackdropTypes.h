// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the Now Playing screen knows the types of what moves with the music by.
#pragma once

#include "Theme/BeatDetector.h"
#include "Theme/WaveRing.h"

#include <QtQml/qqml.h>

namespace cadorel {

struct ForeignBeatDetector
{
    Q_GADGET
    QML_FOREIGN(cadorel::BeatDetector)
    QML_NAMED_ELEMENT(BeatDetector)
};

struct ForeignWaveBar
{
    Q_GADGET
    QML_FOREIGN(cadorel::WaveBar)
    QML_VALUE_TYPE(waveBar)
};

struct ForeignWaveRing
{
    Q_GADGET
    QML_FOREIGN(cadorel::WaveRing)
    QML_NAMED_ELEMENT(WaveRing)
    QML_SINGLETON
public:
    static WaveRing *create(QQmlEngine *, QJSEngine *) { return new WaveRing; }
};

} // namespace cadorel
