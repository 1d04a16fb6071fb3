// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// Number of characters as a reader counts them: one for an emoji with modifiers, one for a base with its
/// marks. Any thread.
qsizetype characterCount(const QString &text);

} // namespace cadorel
