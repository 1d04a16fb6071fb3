// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace cadorel {

/// Decimal hash of a text, seeded anew in each run: good for keys of records that are rebuilt at every start,
/// never for anything that is stored or compared across runs. Any thread.
QString processHash(const QString &text);

} // namespace cadorel
