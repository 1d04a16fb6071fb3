// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: 10,000 lines of lyrics, and texts of a megabyte that were made to hold the parser up.
#include "Models/LyricLine.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"

#include <QElapsedTimer>

#include <vector>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int lineCount = 10'000;
constexpr int rounds = 25;
constexpr double parseBarMs = 20;
constexpr qsizetype megabyte = 1 << 20;

/// Sixteen characters a line, as a song has.
QString words(int line)
{
    return u"第%1句 夜色里的灯火照着我们回家"_s.arg(line % 100);
}

QString tagged(int line)
{
    constexpr int linesPerMinute = 100;
    return QString::asprintf("[%02d:%02d.%02d]", line / linesPerMinute,
                             line % linesPerMinute * 60 / linesPerMinute, line % 97);
}

template <typename Line>
QString text(Line line)
{
    QString result = u"[ti:夜航]\r\n[ar:歌手]\r\n[by:谁]\r\n"_s;
    for (int i = 0; i < lineCount; ++i)
        result += line(i) + u"\r\n"_s;
    return result;
}

QString filled(const QString &piece)
{
    return piece.repeated(megabyte / piece.size());
}

void measure(Report &report, const QString &what, const QString &lyrics, std::optional<double> bar = {})
{
    constexpr double nsPerMs = 1e6;
    std::vector<double> times;
    qsizetype lines = 0;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        lines = LyricLine::parse(lyrics).size();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / nsPerMs);
    }
    report.add({.what = u"%1, %2 lines found"_s.arg(what).arg(lines),
                .value = median(times),
                .unit = u"ms"_s,
                .bar = bar});
}

} // namespace

int main()
{
    Report report;
    measure(report, u"LRC in order"_s, text([](int i) { return tagged(i) + words(i); }), parseBarMs);
    measure(report, u"LRC, the last line first"_s,
            text([](int i) { return tagged(lineCount - 1 - i) + words(i); }), parseBarMs);
    measure(report, u"LRC, half of its tags without words"_s,
            text([](int i) { return i % 2 ? tagged(i) : tagged(i) + words(i); }), parseBarMs);
    measure(report, u"plain text"_s, text([](int i) { return words(i); }), parseBarMs);
    measure(report, u"plain text with tags of the song"_s,
            text([](int i) { return words(i) + u"[by:谁]"_s; }), parseBarMs);

    report.note(u"A megabyte in one line:"_s);
    measure(report, u"  tags left open"_s, filled(u"[ti:"_s));
    measure(report, u"  tags left open, one closed"_s, u"[ti:]"_s + filled(u"[ti:"_s));
    measure(report, u"  time tags"_s, filled(u"[00:10.00]"_s));
    measure(report, u"  half time tags"_s, filled(u"[00:10."_s));
    measure(report, u"  brackets"_s, filled(u"["_s));
    measure(report, u"  blanks"_s, filled(u" "_s));
    return 0;
}
