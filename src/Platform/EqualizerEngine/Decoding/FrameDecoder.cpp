// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/Decoding/FrameDecoder.h"

#include <QtEndian>

namespace cadorel {

namespace {

constexpr int mostErrors = 100;

const AVCodec *decoderFor(AVCodecID id)
{
    // The built-in decoder of Speex clips.
    const AVCodec *preferred = id == AV_CODEC_ID_SPEEX ? avcodec_find_decoder_by_name("libspeex") : nullptr;
    return preferred ? preferred : avcodec_find_decoder(id);
}

} // namespace

bool FrameDecoder::start(const AVCodecParameters &parameters, AVRational timeBase)
{
    const AVCodec *codec = decoderFor(parameters.codec_id);
    if (!codec)
        return false;
    m_context.reset(avcodec_alloc_context3(codec));
    if (!m_context || avcodec_parameters_to_context(m_context.get(), &parameters) < 0)
        return false;
    m_context->pkt_timebase = timeBase;
    m_context->thread_count = 1;
    // What is not part of the song is cut off by its place, which holds after a seek as well.
    m_context->flags2 |= AV_CODEC_FLAG2_SKIP_MANUAL;
    return avcodec_open2(m_context.get(), codec, nullptr) >= 0;
}

void FrameDecoder::send(const AVPacket *packet)
{
    avcodec_send_packet(m_context.get(), packet);
}

bool FrameDecoder::receive(AVFrame &frame)
{
    // An error concerns one packet, and what the decoder has left of it; it goes on to ask for the next one.
    for (int i = 0; i < mostErrors; ++i) {
        const int result = avcodec_receive_frame(m_context.get(), &frame);
        if (result >= 0 && isSound(frame))
            return true;
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return false;
    }
    return false;
}

bool isSound(const AVFrame &frame)
{
    return frame.nb_samples > 0 && frame.sample_rate > 0 && frame.ch_layout.nb_channels > 0;
}

int samplesBeforeSong(const AVFrame &frame)
{
    const AVFrameSideData *data = av_frame_get_side_data(&frame, AV_FRAME_DATA_SKIP_SAMPLES);
    return data && data->size >= 4 ? int(qFromLittleEndian<quint32>(data->data)) : 0;
}

} // namespace cadorel
