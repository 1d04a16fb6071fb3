// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/LinearGradient.h"

#include <QColor>
#include <QList>
#include <QMetaType>
#include <QString>

namespace cadorel {

/// A blurred copy of a shape, beneath it.
struct SurfaceShadow
{
    QColor color;
    /// Blur radius: twice the standard deviation of the Gaussian, in pixels.
    double radius = 0;
    /// Offset in pixels, to the right and downwards.
    double x = 0;
    double y = 0;

    bool operator==(const SurfaceShadow &) const = default;
};

/// A line along the edge of a shape, within it.
struct SurfaceStroke
{
    QColor color;
    /// Instead of the colour, where it is not empty.
    LinearGradient gradient;
    double width = 1;
    /// Blur radius and offset in pixels. A blurred or moved stroke lies upon the edge before it is moved, and
    /// is cut off there: it looks like light or shade on the edge.
    double blur = 0;
    double x = 0;
    double y = 0;

    bool operator==(const SurfaceStroke &) const = default;
};

/// How a rounded rectangle is drawn: shadows beneath, the first on top, then the fill, then strokes. Shadows
/// are as strong as the fill is opaque and show through it; a surface without a fill is a frame, whose
/// shadows lie about it only, so that it can be laid over a picture. A value: equal surfaces share one
/// picture. Any thread.
struct Surface
{
    Q_GADGET
    /// Its picture at the image provider "surface", see SurfaceImageProvider; empty when there is nothing to
    /// see.
    Q_PROPERTY(QString address READ address)
    /// By how much the picture is larger than the shape at each side, in pixels: room for the shadows.
    Q_PROPERTY(int margin READ margin)
    /// Width of the parts at each side of the picture that are not stretched: margin, radius, and how far
    /// into a straight edge its corners show in shadows and blurred strokes.
    Q_PROPERTY(int border READ border)
    /// Whether it may be stretched from a small picture; otherwise it is drawn at the size it is shown at.
    Q_PROPERTY(bool isStretched READ isStretched)
    Q_PROPERTY(double cornerRadius MEMBER cornerRadius)
public:
    QColor fill;
    /// Over the fill.
    LinearGradient gradient;
    /// At most half of the shorter side is drawn.
    double cornerRadius = 0;
    QList<SurfaceShadow> shadows;
    QList<SurfaceStroke> strokes;

    QString address() const;
    int margin() const;
    int border() const;
    bool isStretched() const;

    /// What address() was made of, less what could not be seen; an empty surface for what is no such address.
    static Surface ofAddress(const QString &address);

    bool operator==(const Surface &) const = default;
};

/// How far in pixels a blur of that radius reaches.
double blurReach(double radius);

} // namespace cadorel
