// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// What the fan of the mini player offers.
enum class ControlAction { playPause, next, previous, locate, favorite };

/// Where the fan of the mini player opens to.
enum class OverlaySide { left, right };

/// Symbol and name of an action.
struct IconAndLabel
{
    QString icon;
    QString label;

    bool operator==(const IconAndLabel &) const = default;
};

/// @param isFavorite the current song is one: the action then takes it back
IconAndLabel iconAndLabel(ControlAction action, bool isFavorite);

} // namespace cadorel
