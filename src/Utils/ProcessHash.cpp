// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/ProcessHash.h"

#include <QHashFunctions>
#include <QRandomGenerator>

namespace cadorel {

QString processHash(const QString &text)
{
    // A seed of our own: Qt's global one can be fixed from the environment (QT_HASH_SEED).
    static const size_t seed = static_cast<size_t>(QRandomGenerator::system()->generate64());
    return QString::number(static_cast<qint64>(qHash(text, seed)));
}

} // namespace cadorel
