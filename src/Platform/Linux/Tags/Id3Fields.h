// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/TagFields.h"

namespace TagLib {
namespace ID3v1 {
class Tag;
}
namespace ID3v2 {
class Tag;
}
} // namespace TagLib

namespace cadorel {

/// Fields of an ID3v2 tag, in the order of its frames.
/// @param frameSeconds length of one MPEG frame, the unit of some lyrics' times; 0 when unknown
void addId3v2Fields(TagFields &fields, const std::shared_ptr<const TagLib::ID3v2::Tag> &tag,
                    double frameSeconds = 0);

/// Fields of an ID3v1 tag. Its texts are cut at 30 bytes: any other tag of the file knows better.
void addId3v1Fields(TagFields &fields, const std::shared_ptr<const TagLib::ID3v1::Tag> &tag);

} // namespace cadorel
