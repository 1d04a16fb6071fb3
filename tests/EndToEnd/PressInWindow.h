// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EndToEnd/AccessibleWindow.h"
#include "EndToEnd/RunningPlayer.h"

namespace cadorel {

/// The row of a song.
inline AccessibleWindow::Matches isRowOf(const QString &title)
{
    return [beginning = title + QStringLiteral("，")](const AccessibleWindow::Item &item) {
        return item.role == QLatin1StringView("list item") && item.name.startsWith(beginning);
    };
}

/// Presses something as soon as it can be pressed.
inline bool pressInWindow(AccessibleWindow &window, RunningPlayer &player,
                          const AccessibleWindow::Matches &matches)
{
    // What slides in goes on doing so after it was found.
    if (!window.find(matches) || !player.standsStill())
        return false;
    const std::optional<AccessibleWindow::Item> item = window.find(matches);
    if (item)
        player.click(item->place.center().x(), item->place.center().y());
    return item.has_value();
}

} // namespace cadorel
