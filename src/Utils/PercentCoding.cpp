// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/PercentCoding.h"

#include <QUrl>

#include <cctype>

namespace cadorel {

namespace {

/// Qt never escapes these unless told to.
constexpr QByteArrayView unreservedMarks = "-._~";

} // namespace

std::optional<QString> percentDecoded(const QString &text)
{
    if (!text.contains(u'%'))
        return text;
    const QByteArray encoded = text.toUtf8();
    const auto isHexDigit = [&encoded](qsizetype i) {
        return i < encoded.size() && std::isxdigit(static_cast<unsigned char>(encoded[i])) != 0;
    };
    for (qsizetype i = encoded.indexOf('%'); i >= 0; i = encoded.indexOf('%', i + 1)) {
        if (!isHexDigit(i + 1) || !isHexDigit(i + 2))
            return std::nullopt;
    }
    const QByteArray decoded = QByteArray::fromPercentEncoding(encoded);
    return decoded.isValidUtf8() ? std::optional(QString::fromUtf8(decoded)) : std::nullopt;
}

std::optional<QString> percentEncoded(const QString &text, const QByteArray &allowed)
{
    if (!text.isValidUtf16())
        return std::nullopt;
    QByteArray escaped;
    for (const char mark : unreservedMarks) {
        if (!allowed.contains(mark))
            escaped += mark;
    }
    return QString::fromLatin1(QUrl::toPercentEncoding(text, allowed, escaped));
}

} // namespace cadorel
