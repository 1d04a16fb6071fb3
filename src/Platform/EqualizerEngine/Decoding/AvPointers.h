// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libswresample/swresample.h>
}

namespace cadorel {

/// Frees what the decoding libraries allocate.
struct AvDeleter
{
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVCodecParameters *parameters) const { avcodec_parameters_free(&parameters); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(SwrContext *context) const { swr_free(&context); }
};

template <typename T>
using AvPointer = std::unique_ptr<T, AvDeleter>;

} // namespace cadorel
