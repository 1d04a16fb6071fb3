// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/OnlineSong.h"

#include "Utils/JsonWriter.h"

namespace cadorel {

void OnlineSong::writeJson(JsonWriter &writer) const
{
    writer.beginObject();
    writer.member("id", id);
    writer.member("name", name);
    writer.member("artist", artist);
    writer.member("album", album);
    writer.member("platform", rawValue(platform));
    writer.member("picUrl", picUrl);
    writer.member("lrcUrl", lrcUrl);
    writer.endObject();
}

} // namespace cadorel
