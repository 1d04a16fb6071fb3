// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QPointF>
#include <QSizeF>
#include <QString>

namespace cadorel {

/// Where a sticker lies, and which. Lengths in pixels, from the upper left corner of the box that it lies in.
struct StickerPlace
{
    Q_GADGET
    Q_PROPERTY(QString imageName MEMBER imageName)
    Q_PROPERTY(double x MEMBER x)
    Q_PROPERTY(double y MEMBER y)
    Q_PROPERTY(double size MEMBER size)
    Q_PROPERTY(double rotation MEMBER rotation)
    Q_PROPERTY(double opacity MEMBER opacity)
public:
    QString imageName;
    /// Its centre.
    double x = 0;
    double y = 0;
    /// Side of the square that it fills.
    double size = 0;
    /// Degrees, clockwise.
    double rotation = 0;
    double opacity = 1;

    bool operator==(const StickerPlace &) const = default;
};

/// The sticker of that index in a scatter over a box: it looks like chance and is the same at every redraw.
StickerPlace scatteredSticker(int index, const QSizeF &box);

/// Corners of a box; leading is where a line of text begins. Capitalised, because QML reads no other
/// enumerators.
namespace KawaiiCorners {
Q_NAMESPACE

enum class Corner { TopLeading, TopTrailing, BottomLeading, BottomTrailing };
Q_ENUM_NS(Corner)
} // namespace KawaiiCorners
using KawaiiCorner = KawaiiCorners::Corner;

/// Centre of a sticker of side @p size that peeks out of a corner of the box.
QPointF cornerStickerCentre(KawaiiCorner corner, double size, const QSizeF &box);

} // namespace cadorel
