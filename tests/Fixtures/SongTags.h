// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/MadeSong.h"

namespace TagLib {
namespace ID3v2 {
class Tag;
}
} // namespace TagLib

namespace cadorel {

/// Whether a file is a JPEG or a PNG.
QByteArray pictureMimeType(const QByteArray &picture);
/// Sets the frames of a tag.
void setId3Frames(TagLib::ID3v2::Tag &tag, const MadeSong &song);
/// An ID3v2 tag as bytes.
QByteArray renderedId3(const MadeSong &song);
/// An APE tag as bytes.
QByteArray renderedApe(const MadeSong &song);
/// Writes the tags into a file of a format that TagLib can write. @return whether it worked
bool writeTags(const QString &path, const QString &format, const MadeSong &song);

} // namespace cadorel
