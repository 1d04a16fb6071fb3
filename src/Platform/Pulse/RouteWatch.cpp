// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/RouteWatch.h"

#include <algorithm>
#include <utility>

namespace cadorel {

RouteWatch::Fate RouteWatch::fate(const Use &use, const SoundScene &scene)
{
    const SoundSink &old = use.sink;
    const SoundStream *stream = recordAt(scene.streams, use.stream);
    const bool wasUnplugged = availability(old.ports, old.activePort) == PortAvailability::unavailable;
    // A sink that is not listed any more went while the lists were made.
    const bool isStranded =
        stream && stream->sink != SoundScene::noIndex && !recordAt(scene.sinks, stream->sink);
    if (const SoundSink *sink = recordAt(scene.sinks, old.index); sink && !isStranded) {
        if (!wasUnplugged && availability(sink->ports, old.activePort) == PortAvailability::unavailable)
            return Fate::gone;
        const bool hasMoved = stream && stream->sink != SoundScene::noIndex && stream->sink != old.index;
        return hasMoved ? Fate::moved : Fate::unchanged;
    }
    // A card that is set up anew replaces its sinks: the loudspeaker is the same, or the listener chose.
    const SoundCard *card = recordAt(scene.cards, old.card);
    const bool isUnplugged =
        !card || availability(card->ports, old.activePort) == PortAvailability::unavailable;
    if (isUnplugged || isStranded || !stream)
        return Fate::gone;
    if (stream->sink == SoundScene::noIndex)
        return Fate::undecided;
    const SoundSink *sink = recordAt(scene.sinks, stream->sink);
    return sink && sink->card == old.card ? Fate::moved : Fate::gone;
}

bool RouteWatch::isNewIn(const SoundScene &scene, const SoundScene &before)
{
    return std::ranges::any_of(scene.sinks, [&before](const SoundSink &sink) {
        const SoundSink *old = recordAt(before.sinks, sink.index);
        return !old || std::ranges::any_of(sink.ports, [old](const SoundPort &port) {
            return port.availability != PortAvailability::unavailable &&
                   availability(old->ports, port.name) == PortAvailability::unavailable;
        });
    });
}

QList<RouteWatch::Use> RouteWatch::usesOf(const SoundScene &scene)
{
    QList<Use> sounding;
    QList<Use> still;
    for (const SoundStream &stream : scene.streams) {
        const SoundSink *sink = recordAt(scene.sinks, stream.sink);
        if (stream.isOurs && sink)
            (stream.isCorked ? still : sounding).append({.stream = stream.index, .sink = *sink});
    }
    return sounding.isEmpty() ? still : sounding;
}

QList<RouteWatch::Reason> RouteWatch::update(const SoundScene &scene)
{
    bool isGone = false;
    bool hasMoved = false;
    QList<Use> kept;
    QList<Use> undecided;
    for (const Use &use : std::as_const(m_uses)) {
        const Fate found = fate(use, scene);
        isGone = isGone || found == Fate::gone;
        hasMoved = hasMoved || found == Fate::moved;
        if (const SoundSink *sink = recordAt(scene.sinks, use.sink.index); sink && found != Fate::gone)
            kept.append({.stream = use.stream, .sink = *sink});
        if (found == Fate::undecided)
            undecided.append(use);
    }
    QList<Reason> reasons;
    if (isGone)
        reasons.append(Reason::oldDeviceUnavailable);
    if (hasMoved)
        reasons.append(Reason::override);
    if (m_last && isNewIn(scene, *m_last))
        reasons.append(Reason::newDeviceAvailable);
    // Between two songs nothing sounds, and the device in use is still the last one.
    const QList<Use> uses = usesOf(scene);
    m_uses = (uses.isEmpty() ? kept : uses) + undecided;
    m_last = scene;
    return reasons;
}

void RouteWatch::lose()
{
    m_last.reset();
    m_uses.clear();
}

} // namespace cadorel
