// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/KawaiiIcon.h"

#include "Utils/ArtworkFiles.h"

namespace cadorel {

using namespace Qt::StringLiterals;

QUrl KawaiiIcon::artworkFile(const QString &name)
{
    const QString path = artworkPath(name);
    return path.isEmpty() ? QUrl() : QUrl(u"qrc"_s + path);
}

} // namespace cadorel
