// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/SurfaceMask.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace cadorel {

namespace {

constexpr double half = 0.5;
constexpr double reachOfDeviation = 3;

/// The right half of a Gaussian, its middle first; the whole of it weighs 1.
std::vector<float> kernelOf(double deviation)
{
    const int reach = static_cast<int>(std::ceil(deviation * reachOfDeviation));
    std::vector<double> weights;
    double sum = 0;
    for (int i = 0; i <= reach; ++i) {
        weights.push_back(std::exp(-half * i * i / (deviation * deviation)));
        sum += weights.back() * (i == 0 ? 1 : 2);
    }
    std::vector<float> kernel(weights.size());
    std::ranges::transform(weights, kernel.begin(),
                           [sum](double weight) { return static_cast<float>(weight / sum); });
    return kernel;
}

/// Blurs @p line, whose neighbours lie @p step apart, by way of @p padded.
void blurLine(float *line, std::size_t length, std::size_t step, std::span<const float> kernel,
              std::vector<float> &padded)
{
    const std::size_t reach = kernel.size() - 1;
    padded.resize(length + 2 * reach);
    std::fill_n(padded.begin(), reach, line[0]);
    for (std::size_t i = 0; i < length; ++i)
        padded[reach + i] = line[i * step];
    std::fill_n(padded.end() - static_cast<std::ptrdiff_t>(reach), reach, line[(length - 1) * step]);
    for (std::size_t i = 0; i < length; ++i) {
        const float *middle = padded.data() + reach + i;
        float sum = middle[0] * kernel[0];
        for (std::size_t k = 1; k <= reach; ++k)
            sum += (middle[k] + *(middle - k)) * kernel[k];
        line[i * step] = sum;
    }
}

} // namespace

SurfaceMask::SurfaceMask(QSize size)
    : m_size(size.expandedTo({0, 0}))
    , m_values(static_cast<std::size_t>(m_size.width()) * static_cast<std::size_t>(m_size.height()))
{
}

SurfaceMask::SurfaceMask(QSize size, QPointF centre, QSizeF shape, double cornerRadius)
    : SurfaceMask(size)
{
    if (shape.width() <= 0 || shape.height() <= 0)
        return;
    const double radius = std::clamp(cornerRadius, 0.0, std::min(shape.width(), shape.height()) * half);
    const double straightX = shape.width() * half - radius;
    const double straightY = shape.height() * half - radius;
    for (int y = 0; y < m_size.height(); ++y) {
        for (int x = 0; x < m_size.width(); ++x) {
            // Distance of the pixel's middle from the outline, negative within.
            const double byX = std::abs(x + half - centre.x()) - straightX;
            const double byY = std::abs(y + half - centre.y()) - straightY;
            const double distance = std::min(std::max(byX, byY), 0.0) +
                                    std::hypot(std::max(byX, 0.0), std::max(byY, 0.0)) - radius;
            m_values[index(x, y)] = static_cast<float>(std::clamp(half - distance, 0.0, 1.0));
        }
    }
}

SurfaceMask::SurfaceMask(const QImage &picture, int shift)
    : SurfaceMask(picture.size())
{
    constexpr QRgb channelBits = 0xFF;
    constexpr float full = 255;
    for (int y = 0; y < m_size.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = 0; x < m_size.width(); ++x)
            m_values[index(x, y)] = static_cast<float>((line[x] >> shift) & channelBits) / full;
    }
}

void SurfaceMask::blur(double deviation)
{
    if (!(deviation > 0) || m_values.empty())
        return;
    const std::vector<float> kernel = kernelOf(deviation);
    const auto width = static_cast<std::size_t>(m_size.width());
    const auto height = static_cast<std::size_t>(m_size.height());
    std::vector<float> padded;
    for (std::size_t y = 0; y < height; ++y)
        blurLine(m_values.data() + y * width, width, 1, kernel, padded);
    for (std::size_t x = 0; x < width; ++x)
        blurLine(m_values.data() + x, height, width, kernel, padded);
}

void SurfaceMask::invert()
{
    std::ranges::transform(m_values, m_values.begin(), [](float value) { return 1 - value; });
}

void SurfaceMask::cutTo(const SurfaceMask &mask)
{
    std::ranges::transform(m_values, mask.m_values, m_values.begin(), std::multiplies());
}

void SurfaceMask::cutOut(const SurfaceMask &mask, float share)
{
    std::ranges::transform(m_values, mask.m_values, m_values.begin(),
                           [share](float value, float covered) { return value * (1 - covered * share); });
}

} // namespace cadorel
