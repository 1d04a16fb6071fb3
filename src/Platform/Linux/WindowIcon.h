// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppIcon.h"

#include <QString>

#include <expected>
#include <optional>

namespace cadorel {

/// The icon of the player's windows, and a file that keeps its choice between runs. Main thread.
class WindowIcon
{
public:
    /// Shows the icon that the file names. A file that is not there, cannot be read or names no icon means
    /// the default one.
    explicit WindowIcon(QString file, ArtworkLookup artwork = &artworkPath);

    /// None is the default icon.
    const std::optional<QString> &name() const { return m_name; }
    /// Keeps the choice and shows it; otherwise nothing changes.
    /// @return what went wrong: there is no such icon, or the choice cannot be kept
    std::expected<void, QString> setName(const std::optional<QString> &name);

private:
    void show() const;

    const QString m_file;
    const ArtworkLookup m_artwork;
    std::optional<QString> m_name;
};

} // namespace cadorel
