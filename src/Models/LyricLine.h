// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
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

    /// The lines of an LRC text in the order of their times; of a text without a single time tag, the lines
    /// as plain text. A line with several tags is not expanded: the others stay in its text.
    static QList<LyricLine> parse(const QString &text);
    /// One line every five seconds, without tags of the song's title and the like.
    static QList<LyricLine> parsePlainText(const QString &text);
    /// A time tag is found in the text.
    static bool isLrcFormat(const QString &text);

    friend bool operator==(const LyricLine &a, const LyricLine &b) = default;
    friend size_t qHash(const LyricLine &line, size_t seed = 0)
    {
        return qHashMulti(seed, line.id, line.timeMs, line.text, line.isPlainText);
    }
};

} // namespace cadorel
