// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/WaveRing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace cadorel {

namespace {

constexpr int quarters = 4;
constexpr int highestLevel = 6;
constexpr double half = 0.5;
constexpr double quarterTurn = 90;
constexpr int mostBars = 400;

/// The way round a rounded rectangle, clockwise from its upper middle.
class Outline
{
public:
    Outline(double width, double height, double cornerRadius, double gap)
        : m_halfWidth(width * half + gap)
        , m_halfHeight(height * half + gap)
        , m_radius(std::clamp(cornerRadius, 0.0, std::min(width, height) * half) + gap)
        , m_straightX(m_halfWidth - m_radius)
        , m_straightY(m_halfHeight - m_radius)
        , m_arc(m_radius * std::numbers::pi * half)
    {
    }

    double length() const { return quarters * (m_straightX + m_straightY + m_arc); }

    /// The place after @p way, from the middle of the rectangle, and the direction outwards.
    WaveBar at(double way) const
    {
        // Half of the upper side, a corner, half of a side; then the same by quarters, each seen as the
        // first.
        const double quarter = length() / quarters;
        const int turns = std::min(static_cast<int>(way / quarter), quarters - 1);
        const bool isTurned = turns % 2 == 1;
        const double rest = way - turns * quarter;
        const double top = isTurned ? m_straightY : m_straightX;
        const double side = isTurned ? m_straightX : m_straightY;
        const double height = isTurned ? m_halfWidth : m_halfHeight;
        WaveBar place;
        if (rest <= top) {
            place = {.x = rest, .y = -height, .angle = 0};
        } else if (rest <= top + m_arc) {
            const double angle = (rest - top) / m_radius;
            place = {.x = top + m_radius * std::sin(angle),
                     .y = -height + m_radius * (1 - std::cos(angle)),
                     .angle = angle * 2 * quarterTurn / std::numbers::pi};
        } else {
            place = {.x = top + m_radius, .y = -side + (rest - top - m_arc), .angle = quarterTurn};
        }
        return turned(place, turns);
    }

private:
    static WaveBar turned(WaveBar place, int turns)
    {
        for (int i = 0; i < turns; ++i)
            place = {.x = -place.y, .y = place.x, .angle = place.angle + quarterTurn};
        return place;
    }

    double m_halfWidth;
    double m_halfHeight;
    double m_radius;
    double m_straightX;
    double m_straightY;
    double m_arc;
};

bool isSensible(double width, double height, double cornerRadius, double gap)
{
    return std::isfinite(width) && std::isfinite(height) && width > 0 && height > 0 &&
           std::isfinite(cornerRadius) && std::isfinite(gap) && gap >= 0;
}

} // namespace

int WaveRing::count(double width, double height, double cornerRadius, double gap, double spacing)
{
    if (!isSensible(width, height, cornerRadius, gap) || !(spacing > 0))
        return 0;
    const double perQuarter = Outline(width, height, cornerRadius, gap).length() / quarters / spacing;
    return quarters * static_cast<int>(std::clamp(std::round(perQuarter), 1.0, double{mostBars} / quarters));
}

WaveBar WaveRing::bar(int index, int count, double width, double height, double cornerRadius, double gap)
{
    if (!isSensible(width, height, cornerRadius, gap) || index < 0 || index >= count)
        return {};
    const double share = (index + half) / count;
    const Outline outline(width, height, cornerRadius, gap);
    WaveBar place = outline.at(share * outline.length());
    place.x += width * half;
    place.y += height * half;
    const double inQuarter = std::fmod(share * quarters, 1);
    place.level = static_cast<int>(std::lround(highestLevel * (1 - std::abs(2 * inQuarter - 1))));
    return place;
}

} // namespace cadorel
