// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// The character ends a line or steers one.
bool endsLine(QChar c);

/// Text from outside as one line of a list: line breaks and control characters, which tags may hold, become
/// blanks, and those at both ends go. Of a text longer than any row can show only the beginning is taken:
/// laying out megabytes would hold up the window. Any thread.
QString oneLine(QString text);

/// The same, or @p otherwise where nothing is left of it. Any thread.
QString oneLineOr(const QString &text, const QString &otherwise);

} // namespace cadorel
