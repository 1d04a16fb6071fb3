// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/CorkWatch.h"

#include <utility>

namespace cadorel {

QSet<std::uint32_t> CorkWatch::triggersOf(const SoundStream &stream, const SoundScene &scene)
{
    QSet<std::uint32_t> triggers;
    for (const SoundStream &other : scene.streams) {
        const bool reaches = scene.triggersReachAllSinks || other.sink == stream.sink;
        const bool sounds = !other.isMuted && !other.isCorked;
        const QByteArray role = other.role.isEmpty() ? QByteArray(SoundScene::noRole) : other.role;
        if (!other.isOurs && reaches && sounds && scene.triggerRoles.contains(role))
            triggers.insert(other.index);
    }
    return triggers;
}

CorkWatch::Known CorkWatch::look(const SoundStream &stream, const SoundScene &scene, const Known *before)
{
    Known now{.triggers = triggersOf(stream, scene), .isMuted = stream.isMuted, .isMutedByServer = false};
    if (!now.isMuted)
        return now;
    if (before && before->isMuted)
        now.isMutedByServer = before->isMutedByServer;
    else // The server mutes at the moment at which a trigger comes, or a stream to a trigger.
        now.isMutedByServer = !now.triggers.isEmpty() && !(before && before->triggers.contains(now.triggers));
    return now;
}

CorkWatch::Change CorkWatch::update(const SoundScene &scene)
{
    const bool wasInterrupted = !m_interrupted.isEmpty();
    const QHash<std::uint32_t, Known> before = std::exchange(m_ours, {});
    for (const SoundStream &stream : scene.streams) {
        if (!stream.isOurs)
            continue;
        const auto known = before.constFind(stream.index);
        const Known now = look(stream, scene, known == before.cend() ? nullptr : &*known);
        if (now.isMutedByServer && !now.triggers.isEmpty())
            m_interrupted.insert(stream.index);
        m_ours.insert(stream.index, now);
    }
    return changeFrom(wasInterrupted);
}

CorkWatch::Change CorkWatch::changeFrom(bool wasInterrupted)
{
    bool isOn = false;
    bool isAudible = false;
    bool isMuted = false;
    for (const std::uint32_t index : std::as_const(m_interrupted)) {
        const auto stream = m_ours.constFind(index);
        if (stream == m_ours.cend())
            continue;
        isOn = isOn || !stream->triggers.isEmpty();
        isAudible = isAudible || !stream->isMuted;
        isMuted = isMuted || stream->isMuted;
    }
    if (isOn)
        return wasInterrupted ? Change::none : Change::began;
    m_interrupted.clear();
    if (!wasInterrupted)
        return Change::none;
    return isAudible && !isMuted ? Change::endedToResume : Change::endedForSilence;
}

CorkWatch::Change CorkWatch::lose()
{
    m_ours.clear();
    const bool wasInterrupted = !std::exchange(m_interrupted, {}).isEmpty();
    return wasInterrupted ? Change::endedForSilence : Change::none;
}

} // namespace cadorel
