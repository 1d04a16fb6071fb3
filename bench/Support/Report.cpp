// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/Report.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype whatWidth = 62;
constexpr qsizetype valueWidth = 14;

/// Three significant digits, but never less than the whole part.
QString number(double value)
{
    constexpr double manyDigits = 100;
    constexpr double fewDigits = 10;
    return QString::number(value, 'f', value >= manyDigits ? 0 : value >= fewDigits ? 1 : value >= 1 ? 2 : 3);
}

} // namespace

Report::Report()
    : m_output(::dup(STDOUT_FILENO))
{
    std::fflush(stdout);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    ::dup2(nowhere, STDOUT_FILENO);
    ::close(nowhere);
}

Report::~Report()
{
    std::fflush(stdout);
    ::dup2(m_output, STDOUT_FILENO);
    ::close(m_output);
}

void Report::add(const Figure &figure)
{
    QString line = figure.what.leftJustified(whatWidth, u'.');
    line += (number(figure.value) + u' ' + figure.unit).rightJustified(valueWidth);
    double judged = figure.value;
    if (figure.reference) {
        judged = figure.value / figure.reference->value;
        line += "   reference "_L1 + number(figure.reference->value) + u' ' + figure.unit + " ("_L1 +
                figure.reference->what + ")   ratio "_L1 + number(judged);
    }
    if (figure.bar) {
        const QString bar = figure.reference ? number(*figure.bar) : number(*figure.bar) + u' ' + figure.unit;
        line += "   bar "_L1 + bar + (judged <= *figure.bar ? "   OK"_L1 : "   OVER"_L1);
    }
    note(line);
}

void Report::note(const QString &text)
{
    const QByteArray line = text.toUtf8() + '\n';
    if (::write(m_output, line.constData(), static_cast<size_t>(line.size())) < 0)
        std::perror("bench");
}

} // namespace cadorel
