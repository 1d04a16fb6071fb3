// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace cadorel {

/// Waits for a program's end; whether it did well. Unlike QProcess also under ThreadSanitizer.
bool runProgram(const QString &program, const QStringList &arguments);

} // namespace cadorel
