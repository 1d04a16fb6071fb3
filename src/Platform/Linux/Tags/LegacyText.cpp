// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Tags/LegacyText.h"

#include <QStringDecoder>

#include <algorithm>

namespace cadorel {

namespace {

bool isHigh(char c)
{
    return uchar(c) >= 0x80;
}

bool isAsciiLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isC1(uchar c)
{
    return c >= 0x80 && c < 0xa0;
}

bool isLatin1Letter(uchar c)
{
    return c >= 0xc0 && c != 0xd7 && c != 0xf7;
}

/// What speaks for GBK in a text that parses as GBK from end to end.
struct GbkEvidence
{
    /// Two-byte characters in all.
    int pairs = 0;
    /// Those of the first level of GB 2312 (the 3,755 frequent characters, rows 16 to 55) and its
    /// punctuation.
    int frequent = 0;
    /// Longest run of two-byte characters.
    int longestRun = 0;
    /// A frequent character standing alone, at least one byte of which is no letter of Latin-1.
    bool loneCharacter = false;
};

/// @return nothing when the text is no GBK. @p text is without a cut last byte.
std::optional<GbkEvidence> gbkEvidence(QByteArrayView text)
{
    GbkEvidence evidence;
    int run = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isHigh(text[i])) {
            run = 0;
            continue;
        }
        if (i + 1 >= text.size())
            return std::nullopt;
        const auto lead = uchar(text[i]);
        const auto trail = uchar(text[i + 1]);
        if (lead == 0x80 || lead == 0xff || trail < 0x40 || trail == 0x7f || trail == 0xff)
            return std::nullopt;
        const bool frequent =
            isC1(lead) || isC1(trail) ||
            (trail >= 0xa1 && ((lead >= 0xb0 && lead <= 0xd7) || lead == 0xa1 || lead == 0xa3));
        ++evidence.pairs;
        evidence.frequent += frequent ? 1 : 0;
        evidence.longestRun = std::max(evidence.longestRun, ++run);
        const bool alone = run == 1 && (i == 0 || !isAsciiLetter(text[i - 1])) &&
                           (i + 2 >= text.size() || (!isHigh(text[i + 2]) && !isAsciiLetter(text[i + 2])));
        if (frequent && lead >= 0xb0 && trail >= 0xa1 && alone &&
            !(isLatin1Letter(lead) && isLatin1Letter(trail)))
            evidence.loneCharacter = true;
        ++i;
    }
    return evidence;
}

/// Whether the text is GBK. Words of Latin-1 have single accented letters, seldom two in a row ("Größe"),
/// never four; and two in a row are seldom the code of a frequent character.
bool isGbk(QByteArrayView text)
{
    const std::optional<GbkEvidence> evidence = gbkEvidence(text);
    if (!evidence || evidence->pairs == 0)
        return false;
    return evidence->loneCharacter ||
           (evidence->longestRun >= 2 && evidence->frequent * 2 >= evidence->pairs);
}

} // namespace

QString legacyText(QByteArrayView bytes, FieldEnd end)
{
    if (const qsizetype zero = bytes.indexOf('\0'); zero >= 0)
        bytes = bytes.first(zero);
    if (std::none_of(bytes.begin(), bytes.end(), isHigh))
        return QString::fromLatin1(bytes);
    if (bytes.isValidUtf8())
        return QString::fromUtf8(bytes);
    QByteArrayView text = bytes;
    if (end == FieldEnd::maybeCut && isHigh(text.back()) && !isGbk(text))
        text = text.chopped(1);
    if (isGbk(text)) {
        QStringDecoder decoder("GB18030");
        const QString decoded = decoder.isValid() ? QString(decoder.decode(text)) : QString();
        if (!decoded.isEmpty() && !decoder.hasError())
            return decoded;
    }
    return QString::fromLatin1(bytes);
}

} // namespace cadorel
