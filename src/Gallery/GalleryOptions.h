// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/ThemeType.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <expected>

namespace cadorel {

/// How the gallery is to be shown, as the command line tells.
struct GalleryOptions
{
    static constexpr int pageCount = 4;

    ThemeType look = ThemeType::classic;
    bool isDark = false;
    /// Index of the page that is shown first.
    int page = 0;
    double textScale = 1;
    QSize size{1200, 860};
    /// Where the whole page is saved to; empty opens the window for a person.
    QString file;

    /// @param arguments with the program's name first
    /// @return an explanation of what cannot be understood; the help, where that is asked for
    static std::expected<GalleryOptions, QString> parse(const QStringList &arguments);
};

} // namespace cadorel
