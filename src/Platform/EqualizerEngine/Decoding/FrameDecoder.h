// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/Decoding/PacketSource.h"

namespace cadorel {

/// One decoder of libavcodec. Belongs to one thread at a time.
class FrameDecoder
{
public:
    /// Begins afresh, without memory of what was decoded before. @return whether there is such a decoder
    bool start(const AVCodecParameters &parameters, AVRational timeBase);

    /// Hands a packet over; null says that it was the last. A packet that cannot be decoded is dropped.
    void send(const AVPacket *packet);
    /// The next decoded frame. Nothing is cut off at the song's ends. @return false when it needs another
    /// packet
    bool receive(AVFrame &frame);

private:
    AvPointer<AVCodecContext> m_context;
};

/// Whether a frame holds sound in a shape that can be handed on.
bool isSound(const AVFrame &frame);

/// How many samples at the beginning of @p frame belong to the encoder and not to the song.
int samplesBeforeSong(const AVFrame &frame);

} // namespace cadorel
