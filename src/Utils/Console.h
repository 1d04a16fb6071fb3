// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace cadorel {

/// Prints one line to standard output, in UTF-8, with nothing added but the line end. These lines are part of
/// the player's behaviour; our own diagnostics use QLoggingCategory. Any thread; a line is never torn.
void print(const QString &line);

/// Prints several lines with one write: what a file's import says, for instance. Any thread.
void print(const QStringList &lines);

/// Receives the lines instead of standard output, called on the printing thread, one line at a time.
using ConsoleSink = std::function<void(const QString &line)>;

/// Redirects every later print() of the process; an empty sink brings standard output back. For tests.
void setConsoleSink(ConsoleSink sink);

/// Text of a number in a log line: the shortest that reads back the same, "3.0" and "2.5", "nan" and "inf".
QString consoleNumber(double value);
/// The shortest that reads back as the same float: "0.1", not the digits that it has as a double.
QString consoleNumber(float value);

} // namespace cadorel
