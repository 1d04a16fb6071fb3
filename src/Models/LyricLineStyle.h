// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace cadorel {

/// How one line of lyrics looks, by how many lines it is away from the current one. A value; any thread.
struct LyricLineStyle
{
    /// Lines that are this far away, and all beyond, look alike.
    static constexpr int farthestDistance = 4;
    /// By how much larger the current line is than the others, in points.
    static constexpr double activeGrowth = 6;

    double pointSize = 0;
    bool isBold = false;
    double opacity = 1;
    /// In points; 0 is sharp.
    double blurRadius = 0;
    double scale = 1;

    /// @param fontSize of lines that are not current, in points
    static LyricLineStyle of(int distance, bool isActive, double fontSize, bool blurEnabled);

    friend bool operator==(const LyricLineStyle &a, const LyricLineStyle &b) = default;
};

} // namespace cadorel
