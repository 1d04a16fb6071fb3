// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/IffChunks.h"
#include "Platform/Linux/Tags/TagFields.h"

#include <taglib/tlist.h>

namespace TagLib {
namespace APE {
class Tag;
}
namespace ASF {
class Tag;
}
namespace FLAC {
class Picture;
}
namespace MP4 {
class Tag;
}
namespace Ogg {
class XiphComment;
}
namespace RIFF::Info {
class Tag;
}
} // namespace TagLib

namespace cadorel {

/// Fields of the tags that are maps from names to values. Each tag is shared with the file that it belongs
/// to.
void addXiphFields(TagFields &fields, const std::shared_ptr<TagLib::Ogg::XiphComment> &tag);
/// Pictures of a FLAC file, or of a comment that holds FLAC picture blocks.
void addFlacPictures(TagFields &fields, const std::shared_ptr<const void> &owner,
                     const TagLib::List<TagLib::FLAC::Picture *> &pictures);
void addApeFields(TagFields &fields, const std::shared_ptr<const TagLib::APE::Tag> &tag);
void addMp4Fields(TagFields &fields, const std::shared_ptr<const TagLib::MP4::Tag> &tag);
void addAsfFields(TagFields &fields, const std::shared_ptr<const TagLib::ASF::Tag> &tag);
/// Needs keepInfoBytes() before the file was opened.
void addInfoFields(TagFields &fields, const std::shared_ptr<const TagLib::RIFF::Info::Tag> &tag);

/// Texts of chunks that hold one text each, in no declared encoding.
void addChunkTexts(TagFields &fields, QLatin1StringView format, const ChunkTexts &texts);

/// Makes TagLib keep the bytes of INFO chunks as they are, once for the process: their encoding is declared
/// nowhere, and TagLib's own reading as UTF-8 loses all others.
void keepInfoBytes();

} // namespace cadorel
