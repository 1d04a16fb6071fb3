// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/CharacterCount.h"

#include <QTextBoundaryFinder>

namespace cadorel {

qsizetype characterCount(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() != -1)
        ++count;
    return count;
}

} // namespace cadorel
