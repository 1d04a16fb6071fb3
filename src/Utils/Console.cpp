// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Console.h"

#include <QLocale>

#include <cstdio>
#include <mutex>
#include <utility>

namespace cadorel {

namespace {

std::mutex consoleMutex;

ConsoleSink &consoleSink()
{
    static ConsoleSink sink;
    return sink;
}

} // namespace

void print(const QString &line)
{
    print(QStringList{line});
}

void print(const QStringList &lines)
{
    const std::scoped_lock lock(consoleMutex);
    if (const ConsoleSink &sink = consoleSink()) {
        for (const QString &line : lines)
            sink(line);
        return;
    }
    QByteArray text;
    for (const QString &line : lines)
        text += line.toUtf8() + '\n';
    std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), stdout);
    std::fflush(stdout);
}

void setConsoleSink(ConsoleSink sink)
{
    const std::scoped_lock lock(consoleMutex);
    consoleSink() = std::move(sink);
}

QString consoleNumber(double value)
{
    // The shortest text that reads back as the same number, always with a fraction: "3.0", "2.5".
    const QString text = QString::number(value, 'g', QLocale::FloatingPointShortest);
    const bool isPlainInteger = !text.contains(QLatin1Char('.')) && !text.contains(QLatin1Char('e')) &&
                                !text.contains(QLatin1Char('n'));
    return isPlainInteger ? text + QStringLiteral(".0") : text;
}

} // namespace cadorel
