// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/Console.h"

#include <charconv>
#include <cmath>
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

/// Shortest text that reads back the same; with an exponent from @p firstWithExponent on, and for tiny ones.
template <typename Number>
QString shortestText(Number value, Number firstWithExponent)
{
    if (!std::isfinite(value))
        return std::isnan(value) ? QStringLiteral("nan")
               : value > 0       ? QStringLiteral("inf")
                                 : QStringLiteral("-inf");
    constexpr auto smallestPlain = static_cast<Number>(1e-4);
    const Number size = std::abs(value);
    const bool isPlain = size == 0 || (size >= smallestPlain && size < firstWithExponent);
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value,
                                      isPlain ? std::chars_format::fixed : std::chars_format::scientific);
    const QString text = QString::fromLatin1(buffer, result.ptr - buffer);
    return isPlain && !text.contains(QLatin1Char('.')) ? text + QStringLiteral(".0") : text;
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
    // Plain digits for every length of sound that exists; only beyond those an exponent.
    constexpr double firstWithExponent = 1e16;
    return shortestText(value, firstWithExponent);
}

QString consoleNumber(float value)
{
    // Up to here every whole number is a float.
    constexpr float firstWithExponent = 16777218;
    return shortestText(value, firstWithExponent);
}

} // namespace cadorel
