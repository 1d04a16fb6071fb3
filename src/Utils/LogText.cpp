// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/LogText.h"

#include "Utils/OneLine.h"

#include <algorithm>

namespace cadorel {

QString logText(const QString &text)
{
    if (std::none_of(text.cbegin(), text.cend(), endsLine))
        return text;
    QString result = text;
    std::replace_if(result.begin(), result.end(), endsLine, QChar(QChar::ReplacementCharacter));
    return result;
}

} // namespace cadorel
