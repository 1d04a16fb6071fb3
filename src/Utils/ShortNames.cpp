// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/ShortNames.h"

#include "Utils/OneLine.h"
#include "Utils/TextPreview.h"

namespace cadorel {

QString ShortNames::of(const QString &name)
{
    // Three lines of a dialog on the smallest window with large texts.
    constexpr int mostCharacters = 32;
    const QString line = oneLine(name);
    const QString start = textPreview(line.toUtf8(), mostCharacters).value_or(line);
    return start.size() < line.size() ? start + QChar(0x2026) : line;
}

} // namespace cadorel
