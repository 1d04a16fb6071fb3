// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ColorScheme.h"

#include <QColor>
#include <QMetaType>

namespace cadorel {

/// The colours by role and by name that all looks are made of, for one scheme.
struct SystemColorTable
{
    Q_GADGET
    Q_PROPERTY(QColor background MEMBER background CONSTANT)
    Q_PROPERTY(QColor secondaryBackground MEMBER secondaryBackground CONSTANT)
    Q_PROPERTY(QColor tertiaryBackground MEMBER tertiaryBackground CONSTANT)
    Q_PROPERTY(QColor label MEMBER label CONSTANT)
    Q_PROPERTY(QColor secondaryLabel MEMBER secondaryLabel CONSTANT)
    Q_PROPERTY(QColor tertiaryLabel MEMBER tertiaryLabel CONSTANT)
    Q_PROPERTY(QColor separator MEMBER separator CONSTANT)
    Q_PROPERTY(QColor gray MEMBER gray CONSTANT)
    Q_PROPERTY(QColor brown MEMBER brown CONSTANT)
    Q_PROPERTY(QColor red MEMBER red CONSTANT)
    Q_PROPERTY(QColor orange MEMBER orange CONSTANT)
    Q_PROPERTY(QColor yellow MEMBER yellow CONSTANT)
    Q_PROPERTY(QColor green MEMBER green CONSTANT)
    Q_PROPERTY(QColor mint MEMBER mint CONSTANT)
    Q_PROPERTY(QColor teal MEMBER teal CONSTANT)
    Q_PROPERTY(QColor blue MEMBER blue CONSTANT)
    Q_PROPERTY(QColor indigo MEMBER indigo CONSTANT)
    Q_PROPERTY(QColor purple MEMBER purple CONSTANT)
    Q_PROPERTY(QColor pink MEMBER pink CONSTANT)
    Q_PROPERTY(QColor accent MEMBER accent CONSTANT)
    Q_PROPERTY(QColor accentText MEMBER accentText CONSTANT)
    Q_PROPERTY(QColor redText MEMBER redText CONSTANT)
    Q_PROPERTY(QColor accentFill MEMBER accentFill CONSTANT)
    Q_PROPERTY(QColor redFill MEMBER redFill CONSTANT)
    Q_PROPERTY(QColor accentInk MEMBER accentInk CONSTANT)
    Q_PROPERTY(QColor hover MEMBER hover CONSTANT)
    Q_PROPERTY(QColor pressed MEMBER pressed CONSTANT)
    Q_PROPERTY(QColor scrim MEMBER scrim CONSTANT)
    Q_PROPERTY(QColor track MEMBER track CONSTANT)
    Q_PROPERTY(QColor redTint MEMBER redTint CONSTANT)
    Q_PROPERTY(QColor accentTint MEMBER accentTint CONSTANT)
    Q_PROPERTY(QColor coverFill MEMBER coverFill CONSTANT)
public:
    QColor background;
    QColor secondaryBackground;
    QColor tertiaryBackground;
    QColor label;
    QColor secondaryLabel;
    QColor tertiaryLabel;
    QColor separator;
    QColor gray;
    QColor brown;
    QColor red;
    QColor orange;
    QColor yellow;
    QColor green;
    QColor mint;
    QColor teal;
    QColor blue;
    QColor indigo;
    QColor purple;
    QColor pink;
    /// The desktop's own accent, not the listener's.
    QColor accent;
    /// The accent and the red as texts, which can be read on every background and on the tints below.
    QColor accentText;
    QColor redText;
    /// The same as grounds of a text, which is of the colour beneath them here.
    QColor accentFill;
    QColor redFill;
    QColor accentInk;
    /// Laid over whatever lies beneath: a control under the pointer, one that is pressed, what lies behind a
    /// sheet, the groove of a slider.
    QColor hover;
    QColor pressed;
    QColor scrim;
    QColor track;
    /// Grounds of what is dangerous, and of what is chosen.
    QColor redTint;
    QColor accentTint;
    /// What a cover shows until it is there.
    QColor coverFill;

    bool operator==(const SystemColorTable &) const = default;
};

/// The colours of that scheme. Any thread.
const SystemColorTable &systemColors(ColorScheme scheme);

} // namespace cadorel
