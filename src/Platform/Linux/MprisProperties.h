// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/PlayMode.h"

#include <QDBusObjectPath>
#include <QLatin1StringView>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace cadorel {

struct NowPlayingInfo;
struct PlaybackControls;

/// The words of MPRIS 2.2, the interfaces by which desktops speak to media players.
namespace mpris {

inline constexpr QLatin1StringView objectPath{"/org/mpris/MediaPlayer2"};
inline constexpr QLatin1StringView rootInterface{"org.mpris.MediaPlayer2"};
inline constexpr QLatin1StringView playerInterface{"org.mpris.MediaPlayer2.Player"};

/// Microseconds for seconds; 0 for what is no length of time.
qint64 microseconds(double seconds);

/// The track id of a song: tells songs apart for as long as the process runs, and tells nothing else.
QDBusObjectPath trackId(const QString &songId);

/// The properties of the root interface; they never change.
QVariantMap rootProperties();
/// Those of the player interface but Position. What is unknown has no entry in Metadata.
/// @param artUrl address of a local file; empty: no cover
/// @param isStopped the song was stopped rather than paused
QVariantMap playerProperties(const NowPlayingInfo &info, const PlaybackControls &controls,
                             const QString &artUrl, bool isStopped);

/// The mode that setting LoopStatus leads to; nothing for an unknown value. Repeating all is no change while
/// shuffling, which never ends.
std::optional<PlayMode> modeForLoopStatus(const QString &loopStatus, PlayMode current);
/// The mode that setting Shuffle leads to.
PlayMode modeForShuffle(bool shuffle, PlayMode current);

} // namespace mpris

} // namespace cadorel
