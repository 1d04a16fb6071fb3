// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BoxBlur.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace cadorel {

namespace {

constexpr int channels = 4;
/// Beyond this a picture is of one colour, whatever is averaged.
constexpr double largestDeviation = 4096;

using Sums = std::array<quint64, channels>;

/// Two widths, whose mixture has the wanted variance: that of a box of width w is (w² - 1) / 12.
std::array<int, BoxBlur::passes> widthsOf(double deviation)
{
    constexpr int count = BoxBlur::passes;
    if (!(deviation > 0))
        return {1, 1, 1};
    const double variance = std::pow(std::min(deviation, largestDeviation), 2);
    const int ideal = static_cast<int>(std::sqrt(12 * variance / count + 1));
    const int narrow = ideal % 2 == 0 ? ideal - 1 : ideal;
    const double narrowOnes =
        (12 * variance - count * narrow * narrow - 4 * count * narrow - 3 * count) / (-4 * narrow - 4);
    std::array<int, count> widths{};
    for (int i = 0; i < count; ++i)
        widths.at(static_cast<size_t>(i)) = i < std::lround(narrowOnes) ? narrow : narrow + 2;
    return widths;
}

void add(Sums &sums, const quint16 *pixel)
{
    for (size_t c = 0; c < channels; ++c)
        sums.at(c) += pixel[c];
}

void subtract(Sums &sums, const quint16 *pixel)
{
    for (size_t c = 0; c < channels; ++c)
        sums.at(c) -= pixel[c];
}

/// Averages a line of pixels, whose neighbours lie @p step numbers apart, by way of @p line.
void averageLine(quint16 *first, int length, qsizetype step, int width, std::vector<quint16> &line)
{
    line.resize(static_cast<size_t>(length) * channels);
    for (int i = 0; i < length; ++i)
        std::copy_n(first + i * step, channels, line.data() + qsizetype{i} * channels);
    const int reach = width / 2;
    const auto at = [&line, length](int i) {
        return line.data() + qsizetype{std::clamp(i, 0, length - 1)} * channels;
    };
    Sums sums{};
    for (int i = -reach; i <= reach; ++i)
        add(sums, at(i));
    const quint64 half = static_cast<quint64>(width) / 2;
    for (int i = 0; i < length; ++i) {
        quint16 *pixel = first + i * step;
        for (size_t c = 0; c < channels; ++c)
            pixel[c] = static_cast<quint16>((sums.at(c) + half) / static_cast<quint64>(width));
        add(sums, at(i + reach + 1));
        subtract(sums, at(i - reach));
    }
}

void average(QImage &image, int width)
{
    if (width <= 1)
        return;
    auto *numbers = reinterpret_cast<quint16 *>(image.bits());
    const qsizetype stride = image.bytesPerLine() / qsizetype{sizeof(quint16)};
    std::vector<quint16> line;
    for (int y = 0; y < image.height(); ++y)
        averageLine(numbers + y * stride, image.width(), channels, width, line);
    for (int x = 0; x < image.width(); ++x)
        averageLine(numbers + qsizetype{x} * channels, image.height(), stride, width, line);
}

} // namespace

BoxBlur::BoxBlur(double deviation)
    : m_widths(widthsOf(deviation))
{
}

QImage BoxBlur::blurred(const QImage &image) const
{
    if (image.isNull() || std::ranges::all_of(m_widths, [](int width) { return width <= 1; }))
        return image;
    // Sixteen bits a channel: six roundings to eight would show as bands.
    QImage result = image.convertToFormat(QImage::Format_RGBA64_Premultiplied);
    for (const int width : m_widths)
        average(result, width);
    return result.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                          : QImage::Format_RGB32);
}

} // namespace cadorel
