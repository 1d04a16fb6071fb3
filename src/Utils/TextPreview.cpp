// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/TextPreview.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace cadorel {

namespace {

/// As much of a text as @p size bytes hold, without half a character.
QString decodedStart(const QByteArray &utf8, qsizetype size)
{
    const auto continuesCharacter = [&utf8](qsizetype i) {
        return (static_cast<unsigned char>(utf8[i]) & 0xC0U) == 0x80U;
    };
    qsizetype end = std::min(size, utf8.size());
    while (end > 0 && end < utf8.size() && continuesCharacter(end))
        --end;
    return QString::fromUtf8(utf8.first(end));
}

} // namespace

std::optional<QString> textPreview(const QByteArray &utf8, int characters)
{
    // Plain letters take the first, the longest emoji less than the second.
    constexpr qsizetype usualBytes = 4;
    constexpr qsizetype mostBytes = 64;
    if (!utf8.isValidUtf8())
        return std::nullopt;
    for (const qsizetype bytes : {usualBytes, mostBytes}) {
        const QString text = decodedStart(utf8, bytes * characters);
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
        int counted = 0;
        while (counted < characters && finder.toNextBoundary() != -1)
            ++counted;
        // The last one may go on where the text was cut.
        const bool isWhole = finder.position() >= 0 && finder.position() < text.size();
        if (counted == characters && isWhole)
            return text.first(finder.position());
    }
    return decodedStart(utf8, mostBytes * characters);
}

} // namespace cadorel
