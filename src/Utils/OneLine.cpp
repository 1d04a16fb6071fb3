// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/OneLine.h"

#include <algorithm>

namespace cadorel {

bool endsLine(QChar c)
{
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

QString oneLine(QString text)
{
    constexpr qsizetype longestLine = 1000;
    text = text.trimmed();
    if (text.size() > longestLine)
        text = text.first(text.at(longestLine).isLowSurrogate() ? longestLine - 1 : longestLine);
    std::replace_if(text.begin(), text.end(), endsLine, QChar(u' '));
    return text.trimmed();
}

QString oneLineOr(const QString &text, const QString &otherwise)
{
    const QString line = oneLine(text);
    return line.isEmpty() ? otherwise : line;
}

} // namespace cadorel
