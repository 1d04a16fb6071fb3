// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/Decoding/PacketMeasure.h"

#include <algorithm>

extern "C" {
#include <libavcodec/vorbis_parser.h>
}

namespace cadorel {

void PacketMeasure::VorbisDeleter::operator()(AVVorbisParseContext *context) const
{
    av_vorbis_parse_free(&context);
}

PacketMeasure::PacketMeasure(const AVCodecParameters &parameters)
    : m_parameters(avcodec_parameters_alloc())
{
    avcodec_parameters_copy(m_parameters.get(), &parameters);
    if (parameters.codec_id == AV_CODEC_ID_VORBIS)
        m_vorbis.reset(av_vorbis_parse_init(parameters.extradata, parameters.extradata_size));
}

int PacketMeasure::samples(const AVPacket &packet)
{
    if (m_vorbis)
        return std::max(0, av_vorbis_parse_frame(m_vorbis.get(), packet.data, packet.size));
    // Of others the library guesses from their bit rate.
    const AVCodecID id = m_parameters->codec_id;
    const bool linear = id >= AV_CODEC_ID_PCM_S16LE && id < AV_CODEC_ID_AMR_NB;
    return linear ? std::max(0, av_get_audio_frame_duration2(m_parameters.get(), packet.size)) : 0;
}

} // namespace cadorel
