// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/KawaiiCartoon.h"

#include <cstdlib>

namespace cadorel {

using namespace Qt::StringLiterals;

const QStringList &KawaiiCartoon::allImages()
{
    static const QStringList images{u"cartoon1"_s,  u"cartoon3"_s,  u"cartoon4"_s,  u"cartoon5"_s,
                                    u"cartoon6"_s,  u"cartoon7"_s,  u"cartoon8"_s,  u"cartoon9"_s,
                                    u"cartoon10"_s, u"cartoon11"_s, u"cartoon12"_s, u"cartoon13"_s,
                                    u"cartoon14"_s, u"cartoon15"_s, u"cartoon16"_s};
    return images;
}

QString KawaiiCartoon::random(Random &random)
{
    return allImages().at(random.index(static_cast<int>(allImages().size())));
}

QString KawaiiCartoon::at(int index, const QStringList &images)
{
    if (images.isEmpty())
        return u"cartoon1"_s;
    // The lowest integer has no counterpart above 0 in its own type.
    return images.at(std::abs(static_cast<qint64>(index)) % images.size());
}

} // namespace cadorel
