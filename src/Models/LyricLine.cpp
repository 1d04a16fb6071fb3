// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/LyricLine.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <vector>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int msPerSecond = 1000;
constexpr int secondsPerMinute = 60;
constexpr int plainLineMs = 5000;
/// Of the last line of a plain text whose time an int holds; later ones share it.
constexpr qsizetype lastPlainNumber = std::numeric_limits<int>::max() / plainLineMs;
constexpr qsizetype fractionDigits = 3;

/// An expression in which a digit is one of any script, and "." and "$" know every line end of Unicode.
QRegularExpression built(const QString &pattern)
{
    QRegularExpression expression(u"(*ANY)"_s + pattern, QRegularExpression::UseUnicodePropertiesOption);
    if (!expression.isValid())
        qFatal("An expression of the lyrics parser is not valid");
    expression.optimize();
    return expression;
}

/// What finds nothing looks at the text once: it is known to be well-formed.
QRegularExpressionMatch firstMatch(const QRegularExpression &expression, QStringView text)
{
    return expression.match(text, 0, QRegularExpression::NormalMatch,
                            QRegularExpression::DontCheckSubjectStringMatchOption);
}

constexpr bool isLineBreak(QChar c)
{
    switch (c.unicode()) {
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
    case u'\u0085':
    case u'\u2028':
    case u'\u2029':
        return true;
    default:
        return false;
    }
}

/// Half a surrogate pair, which tags can hold, would keep the expressions from matching at all.
QString wellFormed(QString text)
{
    if (text.isValidUtf16())
        return text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        else if (text.at(i).isSurrogate())
            text[i] = QChar::ReplacementCharacter;
    }
    return text;
}

/// The lines that are not blank, without white space at their ends: nothing but that can stand before the
/// first tag or behind the last word.
template <typename Visit>
void forEachLine(QStringView text, Visit visit)
{
    while (!text.isEmpty()) {
        const auto end = std::ranges::find_if(text, isLineBreak);
        const qsizetype length = end - text.begin();
        if (const QStringView line = text.first(length).trimmed(); !line.isEmpty())
            visit(line);
        text = text.sliced(std::min(length + 1, text.size()));
    }
}

/// Makes identities for the lines of one text: a UUID of the system's random numbers for each would cost more
/// than the parsing.
class LineIds
{
public:
    QUuid next()
    {
        std::array<quint32, 4> numbers;
        m_random.fillRange(numbers.data(), numbers.size());
        QUuid id = QUuid::fromRfc4122(QByteArrayView(std::as_bytes(std::span(numbers))));
        // Version 4, the variant of RFC 4122.
        id.data3 = static_cast<ushort>((id.data3 & 0x0FFF) | 0x4000);
        id.data4[0] = static_cast<uchar>((id.data4[0] & 0x3F) | 0x80);
        return id;
    }

private:
    QRandomGenerator m_random = QRandomGenerator::securelySeeded();
};

int fractionMs(QStringView digits)
{
    return digits.toString().leftJustified(fractionDigits, u'0').toInt();
}

bool isMetadata(QStringView line)
{
    // Every match ends in a "]". Without what follows the last one a tag that is left open is told at once,
    // where the library's own short cut for that is not to be relied on.
    const qsizetype end = line.lastIndexOf(u']') + 1;
    return firstMatch(LyricLine::metadataRegex(), line.first(end)).hasMatch();
}

QList<LyricLine> plainLines(QStringView text)
{
    QList<LyricLine> lines;
    LineIds ids;
    forEachLine(text, [&lines, &ids](QStringView line) {
        if (isMetadata(line))
            return;
        lines.append({.id = ids.next(),
                      .timeMs = static_cast<int>(std::min(lines.size(), lastPlainNumber)) * plainLineMs,
                      .text = line.toString(),
                      .isPlainText = true});
    });
    return lines;
}

/// In the order of their times, those of one time as they were.
QList<LyricLine> sorted(QList<LyricLine> lines)
{
    if (std::ranges::is_sorted(lines, {}, &LyricLine::timeMs))
        return lines;
    std::vector<std::pair<int, qsizetype>> order;
    order.reserve(static_cast<size_t>(lines.size()));
    for (const LyricLine &line : std::as_const(lines))
        order.emplace_back(line.timeMs, static_cast<qsizetype>(order.size()));
    std::ranges::sort(order);
    QList<LyricLine> result;
    result.reserve(lines.size());
    for (const auto &[timeMs, index] : order)
        result.append(std::move(lines[index]));
    return result;
}

} // namespace

const QRegularExpression &LyricLine::timeRegex()
{
    static const QRegularExpression expression = built(uR"(\[(\d{1,2}):(\d{2})(?:\.(\d{2,3}))?](.*)$)"_s);
    return expression;
}

const QRegularExpression &LyricLine::metadataRegex()
{
    static const QRegularExpression expression = built(uR"(\[(ti|ar|al|by|offset|total|length):.+])"_s);
    return expression;
}

QList<LyricLine> LyricLine::parse(const QString &text)
{
    const QString checked = wellFormed(text);
    QList<LyricLine> lines;
    LineIds ids;
    forEachLine(checked, [&lines, &ids](QStringView line) {
        if (!line.contains(u'['))
            return;
        const QRegularExpressionMatch match = firstMatch(timeRegex(), line);
        if (!match.hasMatch())
            return;
        const QStringView words = match.capturedView(4).trimmed();
        if (words.isEmpty())
            return;
        // Digits of other scripts match and count as 0.
        const int minutes = match.capturedView(1).toInt();
        const int seconds = match.capturedView(2).toInt();
        lines.append({.id = ids.next(),
                      .timeMs = (minutes * secondsPerMinute + seconds) * msPerSecond +
                                fractionMs(match.capturedView(3)),
                      .text = words.toString(),
                      .isPlainText = false});
    });
    return lines.isEmpty() ? plainLines(checked) : sorted(std::move(lines));
}

QList<LyricLine> LyricLine::parsePlainText(const QString &text)
{
    return plainLines(wellFormed(text));
}

qsizetype LyricLine::lastBegun(const QList<LyricLine> &lines, int timeMs)
{
    return std::ranges::upper_bound(lines, timeMs, {}, &LyricLine::timeMs) - lines.cbegin() - 1;
}

bool LyricLine::isLrcFormat(const QString &text)
{
    const QString checked = wellFormed(text);
    // A match runs to the end of the text and over no line end but the last: where tags fill the lines before
    // that, looking there would take time in proportion to the square of their length.
    QStringView last = checked;
    if (last.endsWith("\r\n"_L1))
        last.chop(2);
    else if (!last.isEmpty() && isLineBreak(last.back()))
        last.chop(1);
    const auto lineBreak = std::find_if(last.crbegin(), last.crend(), isLineBreak);
    return firstMatch(timeRegex(), last.last(lineBreak - last.crbegin())).hasMatch();
}

} // namespace cadorel
