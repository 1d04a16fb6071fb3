// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/StableHash.h"

#include <QCryptographicHash>

namespace cadorel {

QString stableHash(const QString &text)
{
    const QByteArray digest = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256);
    // 8 bytes are 16 digits; only those are formatted.
    return QString::fromLatin1(digest.first(8).toHex().toUpper());
}

} // namespace cadorel
