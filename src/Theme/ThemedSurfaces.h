// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/AppTheme.h"
#include "Theme/Surface.h"

#include <QObject>

namespace cadorel {

/// How each look draws the grounds of cards, rows, buttons and covers. Screens know it as the singleton
/// "Surfaces"; no screen asks which look it is. A null theme gives an empty surface. Lengths are in pixels,
/// an intensity is the share of a look's usual strength. Any thread.
class ThemedSurfaces : public QObject
{
    Q_OBJECT
    /// Of a look's primary text colour, laid over what the mouse is on.
    Q_PROPERTY(double hoverOpacity MEMBER hoverOpacity CONSTANT)
public:
    static constexpr double hoverOpacity = 0.06;

    Q_INVOKABLE static cadorel::Surface neumorphismRaised(cadorel::AppTheme *theme, double cornerRadius = 12,
                                                          double intensity = 1);
    Q_INVOKABLE static cadorel::Surface neumorphismPressed(cadorel::AppTheme *theme, double cornerRadius = 12,
                                                           double intensity = 1);
    Q_INVOKABLE static cadorel::Surface kawaiiCard(cadorel::AppTheme *theme, double cornerRadius = 16);
    /// Raised in an embossed look, else the card of kawaiiCard(), which the colours of a plain look make
    /// plain.
    Q_INVOKABLE static cadorel::Surface themedCard(cadorel::AppTheme *theme, double cornerRadius = 12);
    /// Sunk while it is pressed, in an embossed look.
    Q_INVOKABLE static cadorel::Surface themedButton(cadorel::AppTheme *theme, bool isPressed,
                                                     double cornerRadius = 12);
    Q_INVOKABLE static cadorel::Surface themedRow(cadorel::AppTheme *theme);
    /// A frame over a row's cover.
    Q_INVOKABLE static cadorel::Surface themedRowArtwork(cadorel::AppTheme *theme, double cornerRadius = 8);
    Q_INVOKABLE static cadorel::Surface themedSegmentedPicker(cadorel::AppTheme *theme,
                                                              double cornerRadius = 8);
    /// Two frames over a large cover: its shadows, and the stroke on it.
    Q_INVOKABLE static cadorel::Surface albumCoverShadow(cadorel::AppTheme *theme, double cornerRadius = 12);
    Q_INVOKABLE static cadorel::Surface albumCoverStroke(cadorel::AppTheme *theme, double cornerRadius = 12);
    /// Of KawaiiButtonStyle.
    Q_INVOKABLE static cadorel::Surface kawaiiButton(cadorel::AppTheme *theme, bool isPressed,
                                                     double cornerRadius = 12);
    /// Of the button style that belongs to the look.
    Q_INVOKABLE static cadorel::Surface themedButtonStyle(cadorel::AppTheme *theme, bool isPressed,
                                                          double cornerRadius = 12);
    Q_INVOKABLE static cadorel::Surface searchBar(cadorel::AppTheme *theme);
    /// Circles of that diameter.
    Q_INVOKABLE static cadorel::Surface playButton(cadorel::AppTheme *theme, double size);
    Q_INVOKABLE static cadorel::Surface controlButton(cadorel::AppTheme *theme, double size);
    /// The square beneath the symbol of a settings row.
    Q_INVOKABLE static cadorel::Surface settingsIcon(cadorel::AppTheme *theme, const QColor &color);
    /// The groove of a switch.
    Q_INVOKABLE static cadorel::Surface switchTrack(cadorel::AppTheme *theme, bool isOn, double cornerRadius);
    /// Of ThemedProgressBar: the groove, and the knob of that diameter.
    Q_INVOKABLE static cadorel::Surface progressTrack(cadorel::AppTheme *theme);
    Q_INVOKABLE static cadorel::Surface progressKnob(cadorel::AppTheme *theme, double size);
    /// The same in a colour of their own, for what lies on a picture.
    Q_INVOKABLE static cadorel::Surface progressTrackOf(const QColor &color);
    Q_INVOKABLE static cadorel::Surface progressKnobOf(const QColor &color, double size);
    /// The block of ThemePreviewCard.
    Q_INVOKABLE static cadorel::Surface previewBlock(cadorel::AppTheme *theme, double cornerRadius = 8);
    /// The screen in small that the block lies on: the background of the look on a card.
    Q_INVOKABLE static cadorel::Surface previewScreen(cadorel::AppTheme *theme, double cornerRadius = 12);
    /// The look's accent for a text on that surface, made darker or lighter where it could not be read.
    Q_INVOKABLE static QColor accentOn(cadorel::AppTheme *theme, const cadorel::Surface &surface);
    /// @p color for a text on that surface, made darker or lighter until it can be read on every part of it,
    /// also while the mouse is on it, whatever part of the look's background lies beneath.
    Q_INVOKABLE static QColor textOn(cadorel::AppTheme *theme, const cadorel::Surface &surface,
                                     const QColor &color);
    /// The same for what may lie on the background itself, on a card or on a row: readable on each of them.
    Q_INVOKABLE static QColor ink(cadorel::AppTheme *theme, const QColor &color);
    /// Of what lies over everything for a while: menus, dialogs, tool tips. Opaque, and a little raised.
    Q_INVOKABLE static cadorel::Surface popup(cadorel::AppTheme *theme, double cornerRadius = 12);
    /// A button whose ground is @p color, for the one that a screen wants pressed, or for one that destroys.
    /// Its text is white.
    Q_INVOKABLE static cadorel::Surface filledButton(cadorel::AppTheme *theme, const QColor &color,
                                                     bool isPressed, double cornerRadius = 12);
    /// Behind a whole screen: opaque, a translucent gradient lies over the background of the colour scheme.
    Q_INVOKABLE static cadorel::Surface background(cadorel::AppTheme *theme);
    /// Behind the Now Playing screen, beneath its veil: the gradient of the look, or one of its accent, so
    /// strong that the usual veil of a look with a gradient, nowPlayingVeil, leaves its background.
    Q_INVOKABLE static cadorel::Surface nowPlayingGradient(cadorel::AppTheme *theme);
    static constexpr double nowPlayingVeil = 0.8;
    /// Size of the picture of background() for a screen of @p pixels, which it is stretched to: no side is
    /// longer than longestBackground, since a gradient has no detail and a large screen would wait for its
    /// pixels.
    Q_INVOKABLE static QSize backgroundSize(const QSize &pixels);
    static constexpr int longestBackground = 1024;
    /// What @p surface looks like on each of those grounds, at the stops of its gradient where it has one.
    static QList<QColor> laidOver(const QList<QColor> &grounds, const Surface &surface);
};

} // namespace cadorel
