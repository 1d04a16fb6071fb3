// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Pulse/SoundScene.h"

#include <QHash>
#include <QSet>

namespace cadorel {

/// Tells from what a server plays whether it has asked this process for silence. The request itself goes to
/// the stream, which belongs to a library here; but the server mutes the stream as well, as soon as something
/// of a trigger's role plays beside it, and takes that back at its end. A mute that comes at another time is
/// the listener's own.
class CorkWatch
{
public:
    enum class Change {
        none,
        began,
        endedToResume,  ///< the other has ended, and the server lets us sound again
        endedForSilence ///< it is over, but nobody asked for sound
    };

    /// Takes the next scene.
    Change update(const SoundScene &scene);
    /// The server has gone, and its wishes with it.
    Change lose();

private:
    /// What was last seen of a stream of ours.
    struct Known
    {
        QSet<std::uint32_t> triggers;
        bool isMuted = false;
        bool isMutedByServer = false;
    };

    static QSet<std::uint32_t> triggersOf(const SoundStream &stream, const SoundScene &scene);
    static Known look(const SoundStream &stream, const SoundScene &scene, const Known *before);
    Change changeFrom(bool wasInterrupted);

    QHash<std::uint32_t, Known> m_ours;
    /// Streams that the interruption under way is of; empty when there is none.
    QSet<std::uint32_t> m_interrupted;
};

} // namespace cadorel
