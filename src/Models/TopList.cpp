// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/TopList.h"

namespace cadorel {

using namespace Qt::StringLiterals;

QString TopListItem::displayFrequency() const
{
    return updateFrequency.value_or(u"定期更新"_s);
}

TopList TopList::from(const TopListItem &item, MusicPlatform platform)
{
    return {
        .id = item.id, .name = item.name, .updateFrequency = item.displayFrequency(), .platform = platform};
}

} // namespace cadorel
