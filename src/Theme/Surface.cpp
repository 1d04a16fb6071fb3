// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Surface.h"

#include "Theme/SurfaceLimits.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

using surfaceLimits::bounded;
using surfaceLimits::isSeen;
using surfaceLimits::largestRadius;
using surfaceLimits::largestReach;

// What an address may hold: far more than any look needs, little enough to be drawn in no time.
constexpr qsizetype longestAddress = 2048;
constexpr qsizetype mostLayers = 8;
constexpr qsizetype mostStops = 16;

// Margins and borders are whole pixels of the screen at every usual scale of it, quarters included.
constexpr int steps = 4;
constexpr double reachOfRadius = 1.5; // three standard deviations

constexpr int hexDigits = 16;
constexpr int hexBase = 16;

constexpr auto fillPart = 'f'_L1;
constexpr auto gradientPart = 'g'_L1;
constexpr auto radiusPart = 'r'_L1;
constexpr auto shadowPart = 's'_L1;
constexpr auto strokePart = 'k'_L1;

double offsetOf(double x, double y)
{
    return std::max(std::abs(bounded(x, -largestReach, largestReach)),
                    std::abs(bounded(y, -largestReach, largestReach)));
}

int upToStep(double length)
{
    return static_cast<int>(std::ceil(length / steps)) * steps;
}

bool isSeen(const SurfaceStroke &stroke)
{
    return !stroke.gradient.isEmpty() || isSeen(stroke.color);
}

QString number(double value, double low, double high)
{
    return QString::number(bounded(value, low, high), 'g', QLocale::FloatingPointShortest);
}

QString length(double value)
{
    return number(value, 0, largestReach);
}

QString offset(double value)
{
    return number(value, -largestReach, largestReach);
}

QString hex(const QColor &color)
{
    const quint64 rgba = color.rgba64();
    return QString::number(rgba, hexBase).rightJustified(hexDigits, u'0');
}

QStringList gradientFields(const LinearGradient &gradient)
{
    QStringList fields{number(gradient.start.x(), -1, 2), number(gradient.start.y(), -1, 2),
                       number(gradient.end.x(), -1, 2), number(gradient.end.y(), -1, 2)};
    for (const auto &[position, color] : gradient.stops)
        fields << number(position, 0, 1) << hex(color);
    return fields;
}

using Fields = std::span<const QString>;

std::optional<double> numberOf(const QString &text, double low, double high)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value) || value < low || value > high)
        return std::nullopt;
    return value;
}

std::optional<QColor> colorOf(const QString &text)
{
    bool isNumber = false;
    const quint64 rgba = text.toULongLong(&isNumber, hexBase);
    if (!isNumber || text.size() != hexDigits)
        return std::nullopt;
    return QColor::fromRgba64(QRgba64::fromRgba64(rgba));
}

/// All numbers of @p fields, of lengths first and of offsets then; nothing when one is none.
std::optional<QList<double>> numbersOf(Fields fields, std::size_t lengths)
{
    QList<double> numbers;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const auto value = numberOf(fields[i], i < lengths ? 0 : -largestReach, largestReach);
        if (!value)
            return std::nullopt;
        numbers.append(*value);
    }
    return numbers;
}

std::optional<LinearGradient> gradientOf(Fields fields)
{
    constexpr std::size_t ends = 4;
    if (fields.size() <= ends || fields.size() % 2 != 0 || fields.size() > ends + 2 * mostStops)
        return std::nullopt;
    QList<double> points;
    for (const QString &field : fields.first(ends)) {
        const auto value = numberOf(field, -1, 2);
        if (!value)
            return std::nullopt;
        points.append(*value);
    }
    LinearGradient gradient{
        .stops = {}, .start = {points.at(0), points.at(1)}, .end = {points.at(2), points.at(3)}};
    for (Fields stops = fields.subspan(ends); !stops.empty(); stops = stops.subspan(2)) {
        const auto position = numberOf(stops[0], 0, 1);
        const auto color = colorOf(stops[1]);
        if (!position || !color || (!gradient.stops.isEmpty() && gradient.stops.last().first > *position))
            return std::nullopt;
        gradient.stops.append({*position, *color});
    }
    return gradient;
}

std::optional<SurfaceShadow> shadowOf(Fields fields)
{
    constexpr std::size_t count = 4;
    const auto color = fields.size() == count ? colorOf(fields[0]) : std::nullopt;
    const auto numbers = color ? numbersOf(fields.subspan(1), 1) : std::nullopt;
    if (!numbers)
        return std::nullopt;
    return SurfaceShadow{.color = *color, .radius = numbers->at(0), .x = numbers->at(1), .y = numbers->at(2)};
}

std::optional<SurfaceStroke> strokeOf(Fields fields)
{
    constexpr std::size_t count = 5;
    if (fields.size() < count)
        return std::nullopt;
    const auto color = colorOf(fields[0]);
    const auto numbers = numbersOf(fields.subspan(1, count - 1), 2);
    const auto gradient = fields.size() > count ? gradientOf(fields.subspan(count)) : LinearGradient();
    if (!color || !numbers || !gradient)
        return std::nullopt;
    return SurfaceStroke{.color = gradient->isEmpty() ? *color : QColor(),
                         .gradient = *gradient,
                         .width = numbers->at(0),
                         .blur = numbers->at(1),
                         .x = numbers->at(2),
                         .y = numbers->at(3)};
}

template <typename Value, typename Target>
bool take(const std::optional<Value> &value, Target &target)
{
    if (value)
        target = *value;
    return value.has_value();
}

template <typename Layer>
bool takeLayer(const std::optional<Layer> &layer, QList<Layer> &layers)
{
    if (!layer || layers.size() >= mostLayers)
        return false;
    layers.append(*layer);
    return true;
}

/// Adds one part of an address; false when it is none.
bool addPart(Surface &surface, const QString &part)
{
    const QStringList list = part.mid(1).split(u',');
    const Fields fields(list.constData(), static_cast<std::size_t>(list.size()));
    const QStringView kind = QStringView(part).first(1);
    if (kind == fillPart)
        return take(colorOf(list.first()), surface.fill);
    if (kind == gradientPart)
        return take(gradientOf(fields), surface.gradient);
    if (kind == radiusPart)
        return take(numberOf(list.first(), 0, largestRadius), surface.cornerRadius);
    if (kind == shadowPart)
        return takeLayer(shadowOf(fields), surface.shadows);
    return kind == strokePart && takeLayer(strokeOf(fields), surface.strokes);
}

} // namespace

double blurReach(double radius)
{
    return reachOfRadius * bounded(radius, 0, largestReach);
}

QString Surface::address() const
{
    QStringList parts;
    if (isSeen(fill))
        parts << fillPart + hex(fill);
    if (!gradient.isEmpty())
        parts << gradientPart + gradientFields(gradient).join(u',');
    for (const SurfaceShadow &shadow : shadows) {
        if (isSeen(shadow.color))
            parts << shadowPart + QStringList{hex(shadow.color), length(shadow.radius), offset(shadow.x),
                                              offset(shadow.y)}
                                      .join(u',');
    }
    for (const SurfaceStroke &stroke : strokes) {
        if (!isSeen(stroke))
            continue;
        QStringList fields{hex(stroke.gradient.isEmpty() ? stroke.color : QColor(Qt::black)),
                           length(stroke.width), length(stroke.blur), offset(stroke.x), offset(stroke.y)};
        if (!stroke.gradient.isEmpty())
            fields += gradientFields(stroke.gradient);
        parts << strokePart + fields.join(u',');
    }
    if (!parts.isEmpty() && cornerRadius > 0)
        parts << radiusPart + number(cornerRadius, 0, largestRadius);
    return parts.join(u';');
}

int Surface::margin() const
{
    double reach = 0;
    for (const SurfaceShadow &shadow : shadows) {
        if (isSeen(shadow.color))
            reach = std::max(reach, blurReach(shadow.radius) + offsetOf(shadow.x, shadow.y));
    }
    return upToStep(reach);
}

int Surface::border() const
{
    double inwards = margin();
    for (const SurfaceStroke &stroke : strokes) {
        if (isSeen(stroke)) {
            inwards = std::max(inwards, bounded(stroke.width, 0, largestReach) + blurReach(stroke.blur) +
                                            offsetOf(stroke.x, stroke.y));
        }
    }
    return margin() + upToStep(bounded(cornerRadius, 0, largestRadius) + inwards);
}

bool Surface::isStretched() const
{
    const auto hasGradient = [](const SurfaceStroke &stroke) { return !stroke.gradient.isEmpty(); };
    return gradient.isEmpty() && std::ranges::none_of(strokes, hasGradient);
}

Surface Surface::ofAddress(const QString &address)
{
    if (address.size() > longestAddress)
        return {};
    Surface surface;
    const QStringList parts = address.split(u';');
    for (const QString &part : parts) {
        if (part.isEmpty() || !addPart(surface, part))
            return {};
    }
    return surface;
}

} // namespace cadorel
