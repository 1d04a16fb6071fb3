// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QUuid>

namespace cadorel {

/// One line of lyrics, whatever the source, and the parser that makes such lines of a text. A value type; any
/// thread.
struct LyricLine
{
    /// New for each line, so two parses of one text differ: the identity of a row.
    QUuid id = QUuid::createUuid();
    /// Start of the line, milliseconds from the song's start.
    int timeMs = 0;
    /// Without white space at its ends.
    QString text;
    /// The text had no time tags; `timeMs` is made up.
    bool isPlainText = false;

    /// The lines of an LRC text in the order of their times, those of one time as in the text; of a text
    /// without a single time tag that has words behind it, the lines as plain text. A line with several tags
    /// is not expanded: the others stay in its text. Takes time in proportion to the text, whatever it holds.
    static QList<LyricLine> parse(const QString &text);
    /// One line every five seconds, without tags of the song's title and the like.
    static QList<LyricLine> parsePlainText(const QString &text);
    /// Index of the last of @p lines that has begun at @p timeMs, -1 before the first: the last one of those
    /// that share a time. @param lines in the order of their times
    static qsizetype lastBegun(const QList<LyricLine> &lines, int timeMs);
    /// timeRegex() finds a match in the text as a whole: a time tag in its last line.
    static bool isLrcFormat(const QString &text);

    /// A time tag and what follows it to the end: minutes, seconds, fraction, words. Give it single lines: on
    /// long texts of many it can take time in proportion to the square.
    static const QRegularExpression &timeRegex();
    /// A tag that tells of the song instead of being sung. On long texts use it only as parsePlainText()
    /// does, which cuts them: alone it takes time in proportion to their square.
    static const QRegularExpression &metadataRegex();

    friend bool operator==(const LyricLine &a, const LyricLine &b) = default;
    friend size_t qHash(const LyricLine &line, size_t seed = 0)
    {
        return qHashMulti(seed, line.id, line.timeMs, line.text, line.isPlainText);
    }
};

} // namespace cadorel
