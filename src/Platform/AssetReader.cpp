// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/AssetReader.h"

namespace cadorel {

using namespace Qt::StringLiterals;

QString commonKeyName(CommonKey key)
{
    switch (key) {
    case CommonKey::title:
        return u"title"_s;
    case CommonKey::artist:
        return u"artist"_s;
    case CommonKey::creator:
        return u"creator"_s;
    case CommonKey::albumName:
        return u"albumName"_s;
    case CommonKey::artwork:
        return u"artwork"_s;
    }
    Q_UNREACHABLE();
}

} // namespace cadorel
