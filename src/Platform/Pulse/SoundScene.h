// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QSet>

#include <algorithm>
#include <cstdint>

namespace cadorel {

/// Whether something is plugged into a port, as far as the device can tell.
enum class PortAvailability { unknown, unavailable, available };

/// A way in which sound leaves a device: a jack, the built-in speaker.
struct SoundPort
{
    QByteArray name;
    PortAvailability availability = PortAvailability::unknown;

    bool operator==(const SoundPort &) const = default;
};

/// A device that sound is played to.
struct SoundSink
{
    std::uint32_t index = 0;
    std::uint32_t card = 0;  ///< noIndex where there is none
    QByteArray activePort{}; ///< empty where there is none
    QList<SoundPort> ports{};
    QByteArray name{};        ///< as the server is told of it
    QByteArray description{}; ///< as a listener is
    QByteArray formFactor{};  ///< as in "headphone"; empty where nobody knows

    bool operator==(const SoundSink &) const = default;
};

/// What several sinks may belong to, of which some exist only at times.
struct SoundCard
{
    std::uint32_t index = 0;
    QList<SoundPort> ports{};

    bool operator==(const SoundCard &) const = default;
};

/// Something that plays.
struct SoundStream
{
    std::uint32_t index = 0;
    std::uint32_t sink = 0; ///< noIndex on its way from one to another
    QByteArray role{};      ///< as in "music" or "phone"; empty when it has none
    bool isOurs = false;    ///< of this process
    bool isCorked = false;  ///< stands still by the wish of who plays it
    bool isMuted = false;

    bool operator==(const SoundStream &) const = default;
};

/// What a sound server plays at one moment, and on what.
struct SoundScene
{
    /// Where the server has nothing to name: PA_INVALID_INDEX.
    static constexpr std::uint32_t noIndex = 0xffff'ffff;
    /// The role that streams without one have in `triggerRoles`.
    static constexpr auto noRole = "no_role";

    QList<SoundStream> streams;
    QList<SoundSink> sinks;
    QList<SoundCard> cards;
    /// Name of the sink that streams go to which name none; empty where the server has none.
    QByteArray defaultSink;
    /// Streams of these roles make the server ask others for silence; empty when it never asks.
    QSet<QByteArray> triggerRoles;
    /// It asks those on other sinks too.
    bool triggersReachAllSinks = false;

    bool operator==(const SoundScene &) const = default;
};

/// The record of that index in a list of a scene, or null.
template <typename Record>
const Record *recordAt(const QList<Record> &records, std::uint32_t index)
{
    const auto found = std::ranges::find(records, index, &Record::index);
    return found == records.cend() ? nullptr : &*found;
}

/// What is known of the port of that name.
inline PortAvailability availability(const QList<SoundPort> &ports, const QByteArray &name)
{
    const auto found = std::ranges::find(ports, name, &SoundPort::name);
    return found == ports.cend() ? PortAvailability::unknown : found->availability;
}

} // namespace cadorel
