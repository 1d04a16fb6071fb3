// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"
#include "Theme/Surface.h"

#include <QObject>

namespace cadorel {

/// How each look draws the grounds of cards, rows, buttons and covers. Screens know it as the singleton
/// "Surfaces"; no screen asks which look it is. A null theme gives an empty surface. Any thread.
class ThemedSurfaces : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    Q_INVOKABLE static cadorel::Surface neumorphismRaised(const cadorel::AppTheme *theme,
                                                          double cornerRadius = 12, double intensity = 1);
    Q_INVOKABLE static cadorel::Surface neumorphismPressed(const cadorel::AppTheme *theme,
                                                           double cornerRadius = 12, double intensity = 1);
    Q_INVOKABLE static cadorel::Surface kawaiiCard(const cadorel::AppTheme *theme, double cornerRadius = 16);
    /// Raised in an embossed look, else the card of kawaiiCard(), which the colours of a plain look make
    /// plain.
    Q_INVOKABLE static cadorel::Surface themedCard(const cadorel::AppTheme *theme, double cornerRadius = 12);
    Q_INVOKABLE static cadorel::Surface themedButton(const cadorel::AppTheme *theme, bool isPressed,
                                                     double cornerRadius = 12);
    Q_INVOKABLE static cadorel::Surface themedRow(const cadorel::AppTheme *theme);
    /// Lies over a row's cover.
    Q_INVOKABLE static cadorel::Surface themedRowArtwork(const cadorel::AppTheme *theme);
    Q_INVOKABLE static cadorel::Surface themedSegmentedPicker(const cadorel::AppTheme *theme);
    /// Beneath and over the large cover: its shadows, and the stroke on it.
    Q_INVOKABLE static cadorel::Surface albumCoverShadow(const cadorel::AppTheme *theme);
    Q_INVOKABLE static cadorel::Surface albumCoverStroke(const cadorel::AppTheme *theme);
    /// Of KawaiiButtonStyle.
    Q_INVOKABLE static cadorel::Surface kawaiiButton(const cadorel::AppTheme *theme, bool isPressed);
    Q_INVOKABLE static cadorel::Surface searchBar(const cadorel::AppTheme *theme);
    /// Circles of that diameter.
    Q_INVOKABLE static cadorel::Surface playButton(const cadorel::AppTheme *theme, double size);
    Q_INVOKABLE static cadorel::Surface controlButton(const cadorel::AppTheme *theme, double size);
    /// The square beneath the symbol of a settings row.
    Q_INVOKABLE static cadorel::Surface settingsIcon(const cadorel::AppTheme *theme, const QColor &color);
    /// Of ThemedProgressBar: the groove and the knob of that diameter.
    Q_INVOKABLE static cadorel::Surface progressTrack(const cadorel::AppTheme *theme);
    Q_INVOKABLE static cadorel::Surface progressKnob(const cadorel::AppTheme *theme, double size);
    /// The block of ThemePreviewCard.
    Q_INVOKABLE static cadorel::Surface previewBlock(const cadorel::AppTheme *theme);
};

} // namespace cadorel
