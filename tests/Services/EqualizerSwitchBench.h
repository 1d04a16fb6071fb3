// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the change of engines share.
#pragma once

#include "Fakes/PlayerBench.h"

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

inline constexpr auto tick = 250ms;

inline QString switchedOn(const QString &position)
{
    return u"🎛️ 均衡器状态变化: 启用，当前位置: "_s + position + u"s"_s;
}

inline QString switchedOff(const QString &position)
{
    return u"🎛️ 均衡器状态变化: 关闭，当前位置: "_s + position + u"s"_s;
}

/// Drops what was called and said so far.
inline void drop(PlayerBench &bench)
{
    bench.equalizer.calls.clear();
    if (bench.home.streamPlayer())
        bench.stream().calls.clear();
    bench.console.take();
}

/// Song "a" of three plays on the stream player, loaded, at @p position.
inline AudioPlayerService &playStream(PlayerBench &bench, double position)
{
    AudioPlayerService &player = bench.start();
    const QList<Song> queue = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    player.playSong(queue[0], queue);
    bench.item().becomeReady();
    bench.answerDuration(199.5);
    bench.stream().tick(position);
    drop(bench);
    return player;
}

/// The same on the engine, where the tick has seen @p position.
inline AudioPlayerService &playEngine(PlayerBench &bench, double position)
{
    bench.equalizer.enabled = true;
    AudioPlayerService &player = bench.start();
    const QList<Song> queue = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    player.playSong(queue[0], queue);
    bench.equalizer.position = position;
    bench.home.clock().advance(tick);
    drop(bench);
    return player;
}

/// As the listener does it, and the player has heard of it.
inline void setEqualizer(PlayerBench &bench, bool enabled)
{
    bench.equalizer.setEnabled(enabled);
    settle();
}

/// The stream player is where it was sent, after a while that is longer than the engine takes to fall silent.
inline void arrive(PlayerBench &bench)
{
    bench.home.clock().advance(100ms);
    bench.stream().finishSeek();
}

/// What the levels and the desktop show agrees with the player.
inline bool showsPlaying(PlayerBench &bench, bool playing)
{
    return bench.player().isPlaying() == playing && bench.player().isSimulatingLevels() == playing &&
           bench.mediaCenter.publishedPlaying == playing;
}

} // namespace cadorel
