// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppearanceChoice.h"
#include "Models/NumberRange.h"
#include "Models/PresetColor.h"
#include "Platform/ColorScheme.h"

#include <QList>
#include <QObject>
#include <QStringList>

namespace cadorel {

/// What the settings of the appearance offer: the rows of their pickers and the ends of their sliders. Any
/// thread.
class AppearanceOptions : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<cadorel::AppearanceChoice> lyricsAlignments READ lyricsAlignments CONSTANT)
    Q_PROPERTY(QList<cadorel::AppearanceChoice> lyricAnimationStyles READ lyricAnimationStyles CONSTANT)
    Q_PROPERTY(
        QList<cadorel::AppearanceChoice> nowPlayingBackgroundStyles READ nowPlayingBackgroundStyles CONSTANT)
    Q_PROPERTY(QList<cadorel::AppearanceChoice> cassetteStyles READ cassetteStyles CONSTANT)
    Q_PROPERTY(cadorel::NumberRange albumCoverCornerRadii MEMBER albumCoverCornerRadii CONSTANT)
    Q_PROPERTY(cadorel::NumberRange backgroundBlurs MEMBER backgroundBlurs CONSTANT)
    Q_PROPERTY(cadorel::NumberRange backgroundOpacities MEMBER backgroundOpacities CONSTANT)
    Q_PROPERTY(cadorel::NumberRange cassetteOffsets MEMBER cassetteOffsets CONSTANT)
    Q_PROPERTY(cadorel::NumberRange cassetteScales MEMBER cassetteScales CONSTANT)
    Q_PROPERTY(cadorel::NumberRange lyricsFontSizes MEMBER lyricsFontSizes CONSTANT)
public:
    using QObject::QObject;

    /// Pixels.
    static constexpr NumberRange albumCoverCornerRadii{0, 50};
    /// Radius in pixels.
    static constexpr NumberRange backgroundBlurs{0, 50};
    static constexpr NumberRange backgroundOpacities{0, 1};
    /// Fractions of the cassette's picture.
    static constexpr NumberRange cassetteOffsets{-0.5, 0.5};
    static constexpr NumberRange cassetteScales{0.1, 0.5};
    /// Points.
    static constexpr NumberRange lyricsFontSizes{14, 28};

    static const QList<AppearanceChoice> &lyricsAlignments();
    static const QList<AppearanceChoice> &lyricAnimationStyles();
    static const QList<AppearanceChoice> &nowPlayingBackgroundStyles();
    static const QList<AppearanceChoice> &cassetteStyles();
    /// What can dance to the beat.
    static const QStringList &emojiOptions();
    /// The accent colours as they are in that scheme.
    static const QList<PresetColor> &presetColors(ColorScheme scheme);
};

} // namespace cadorel
