// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace cadorel {

/// A platform of the online music API.
enum class MusicPlatform { netease, kuwo, qq };

/// All platforms, in the order in which they are listed.
QList<MusicPlatform> allMusicPlatforms();
/// The text that stands for the platform in addresses and JSON.
QString rawValue(MusicPlatform platform);
/// The platform of such a text, compared with case; nothing for another.
std::optional<MusicPlatform> musicPlatform(const QString &rawValue);
/// The name that a listener reads.
QString displayName(MusicPlatform platform);
/// The next platform of the list; after the last one, the first.
MusicPlatform nextPlatform(MusicPlatform platform);

} // namespace cadorel
