// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPointF>
#include <QSize>
#include <QSizeF>

#include <vector>

namespace cadorel {

/// How much of each pixel something covers, 0 to 1.
class SurfaceMask
{
public:
    /// Covers nothing.
    explicit SurfaceMask(QSize size);
    /// Covers a rounded rectangle about @p centre; nothing where a side is not positive.
    SurfaceMask(QSize size, QPointF centre, QSizeF shape, double cornerRadius);

    /// Covers as much of each pixel as that channel of @p picture says, which has 32 bits a pixel.
    /// @param shift of the channel within a pixel
    SurfaceMask(const QImage &picture, int shift);

    float at(int x, int y) const { return m_values[index(x, y)]; }
    int width() const { return m_size.width(); }
    int height() const { return m_size.height(); }

    /// Blurs by a Gaussian of that standard deviation in pixels. What lies outside is as its nearest pixel.
    void blur(double deviation);
    void invert();
    /// Keeps what @p mask covers, too, which has the same size.
    void cutTo(const SurfaceMask &mask);
    /// Removes that share (0 to 1) of what @p mask covers.
    void cutOut(const SurfaceMask &mask, float share);

private:
    std::size_t index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_size.width()) +
               static_cast<std::size_t>(x);
    }

    QSize m_size;
    std::vector<float> m_values;
};

} // namespace cadorel
