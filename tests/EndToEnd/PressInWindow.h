// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EndToEnd/AccessibleWindow.h"
#include "EndToEnd/RunningPlayer.h"

namespace cadorel {

/// What has that name, and is of that kind if one is given.
inline AccessibleWindow::Matches isNamed(const QString &name, const QString &role = {})
{
    return [name, role](const AccessibleWindow::Item &item) {
        return item.name == name && (role.isEmpty() || item.role == role);
    };
}

/// The field for a text, or for a password: the toolkit keeps the name of the latter to itself.
inline AccessibleWindow::Matches isField(const QString &label)
{
    return [label](const AccessibleWindow::Item &item) {
        return item.role == QLatin1StringView("text") &&
               (item.name == label || (item.name.isEmpty() && item.parentName == label));
    };
}

/// The row of a song.
inline AccessibleWindow::Matches isRowOf(const QString &title)
{
    return [beginning = title + QStringLiteral("，")](const AccessibleWindow::Item &item) {
        return item.role == QLatin1StringView("list item") && item.name.startsWith(beginning);
    };
}

/// The disc of the song that plays.
inline bool isDisc(const AccessibleWindow::Item &item)
{
    return item.name.startsWith(QStringLiteral("迷你播放器"));
}

/// Presses something with the mouse as soon as it can be pressed.
inline bool pressInWindow(AccessibleWindow &window, RunningPlayer &player,
                          const AccessibleWindow::Matches &matches)
{
    const std::optional<AccessibleWindow::Item> item = window.find(matches);
    if (item)
        player.click(item->place.center().x(), item->place.center().y());
    return item.has_value();
}

} // namespace cadorel
