// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/Decoding/AvPointers.h"

#include <QtGlobal>

#include <optional>

namespace cadorel {

/// The coded packets of one song in their order, each with its exact place in time. Belongs to one thread at
/// a time.
class PacketSource
{
public:
    virtual ~PacketSource() = default;

    /// What a decoder has to know.
    virtual const AVCodecParameters &parameters() const = 0;
    /// The unit of every time below, and of the packets' times.
    virtual AVRational timeBase() const = 0;

    /// The next packet, whose pts is the time of its first sample where that is known.
    /// @return false at the end, or where the rest cannot be read
    virtual bool read(AVPacket &packet) = 0;
    /// Goes on with a packet that begins at @p time or before, the first one if there is no such.
    virtual void seek(qint64 time) = 0;
    /// Goes on with the first packet, as if nothing had been read.
    virtual void rewind() = 0;

    /// Where the song begins when the encoder's delay is told by other means than by the first packets.
    virtual std::optional<qint64> begin() const { return std::nullopt; }
    /// Where the song ends. @param songBegin where it begins, as the first packets say
    virtual qint64 end(qint64 songBegin) const = 0;
};

} // namespace cadorel
