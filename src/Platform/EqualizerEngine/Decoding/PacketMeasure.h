// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/Decoding/AvPointers.h"

struct AVVorbisParseContext;

namespace cadorel {

/// How many samples a packet holds, as far as its codec tells that without decoding. Packets are measured in
/// their order. Belongs to one thread at a time.
class PacketMeasure
{
public:
    explicit PacketMeasure(const AVCodecParameters &parameters);
    /// @return 0 when it does not tell
    int samples(const AVPacket &packet);

private:
    struct VorbisDeleter
    {
        void operator()(AVVorbisParseContext *context) const;
    };

    AvPointer<AVCodecParameters> m_parameters;
    std::unique_ptr<AVVorbisParseContext, VorbisDeleter> m_vorbis;
};

} // namespace cadorel
