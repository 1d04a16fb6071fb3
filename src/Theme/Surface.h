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
    /// Blur radius and offset in pixels; a blurred or moved stroke is cut off at the shape's edge.
    double blur = 0;
    double x = 0;
    double y = 0;

    bool operator==(const SurfaceStroke &) const = default;
};

/// How a rounded rectangle is drawn: shadows beneath, then the fill, then strokes. A value: equal surfaces
/// share one picture. Any thread.
struct Surface
{
    Q_GADGET
    /// Address of its picture at the image provider "surface"; see SurfaceImageProvider.
    Q_PROPERTY(QString address READ address)
    /// By how much the picture is larger than the shape at each side, in pixels: room for the shadows.
    Q_PROPERTY(int margin READ margin)
    /// Width of the parts at each side of the picture that are not stretched: margin, radius and what reaches
    /// inwards of blurred strokes.
    Q_PROPERTY(int border READ border)
    /// Whether it may be stretched from a small picture; otherwise it is drawn at the size it is shown at.
    Q_PROPERTY(bool isStretched READ isStretched)
public:
    QColor fill;
    /// Instead of the colour, where it is not empty.
    LinearGradient gradient;
    double cornerRadius = 0;
    QList<SurfaceShadow> shadows;
    QList<SurfaceStroke> strokes;

    QString address() const;
    int margin() const;
    int border() const;
    bool isStretched() const;

    /// What address() was made of; an empty surface for what is no such address.
    static Surface ofAddress(const QString &address);

    bool operator==(const Surface &) const = default;
};

} // namespace cadorel
