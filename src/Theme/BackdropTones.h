// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QList>

namespace cadorel {

class AppTheme;

/// Colours of texts that can be read on a picture: by at least Contrast::legible on every part of it. Main
/// thread.
struct BackdropTones
{
    QColor textColor;
    QColor secondaryTextColor;
    /// What has to be laid over the picture first, no more than needed; transparent for most.
    QColor shade;
    /// Whether texts are light.
    bool isDark = false;

    /// Those of the look where they can be read, made darker or lighter within their hue where that helps,
    /// else black or white. @param grounds opaque colours of the picture's parts; without any the texts are
    /// the look's own
    static BackdropTones of(const AppTheme &theme, const QList<QColor> &grounds);

    bool operator==(const BackdropTones &) const = default;
};

} // namespace cadorel
