// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/TagLibText.h"

#include <algorithm>

namespace cadorel {

QString toQString(const TagLib::String &text)
{
    QString result(qsizetype(text.size()), Qt::Uninitialized);
    std::ranges::transform(text, result.begin(), [](wchar_t unit) { return QChar(char16_t(unit)); });
    return result;
}

QString toQString(const TagLib::StringList &values, QLatin1StringView separator)
{
    QString result;
    for (const TagLib::String &value : values) {
        if (value.isEmpty())
            continue;
        if (!result.isEmpty())
            result += separator;
        result += toQString(value);
    }
    return result;
}

QString toQString(const TagLib::String &text, DeclaredEncoding encoding)
{
    return encoding == DeclaredEncoding::latin1 ? legacyText(text.data(TagLib::String::Latin1))
                                                : toQString(text);
}

QByteArray toQByteArray(const TagLib::ByteVector &bytes)
{
    return {bytes.data(), qsizetype(bytes.size())};
}

QString legacyText(const TagLib::ByteVector &bytes, FieldEnd end)
{
    return legacyText(QByteArrayView(bytes.data(), qsizetype(bytes.size())), end);
}

} // namespace cadorel
