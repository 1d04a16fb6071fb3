// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/Decoding/SampleConverter.h"

#include <algorithm>
#include <array>

namespace cadorel {

namespace {

/// The planes of a frame's samples: one for each channel, or one for all.
constexpr size_t mostPlanes = 64;

/// The places of so many channels in the order of an AudioFormat.
AVChannelLayout usualLayout(int channels)
{
    AVChannelLayout layout = {};
    switch (channels) {
    case 3:
        av_channel_layout_from_mask(&layout, AV_CH_LAYOUT_SURROUND);
        break;
    case 4:
        av_channel_layout_from_mask(&layout, AV_CH_LAYOUT_QUAD);
        break;
    default:
        av_channel_layout_default(&layout, channels);
    }
    return layout;
}

void copyLayout(AVChannelLayout &to, const AVFrame &frame)
{
    // Files that do not say which channel is which have them in the usual order.
    if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
        to = usualLayout(frame.ch_layout.nb_channels);
    else
        av_channel_layout_copy(&to, &frame.ch_layout);
}

} // namespace

SampleConverter::SampleConverter(const AVFrame &first, const AudioFormat &format)
    : m_format(format)
{
    // One channel is heard from the middle, and two from left and right, whatever a file calls them.
    if (format.channelCount <= 2)
        copyLayout(m_layout, first);
    else
        m_layout = usualLayout(format.channelCount);
}

SampleConverter::~SampleConverter()
{
    av_channel_layout_uninit(&m_layout);
    av_channel_layout_uninit(&m_inLayout);
}

void SampleConverter::reset()
{
    m_context.reset();
}

void SampleConverter::connect(const AVFrame &frame, AVChannelLayout &layout)
{
    SwrContext *context = nullptr;
    swr_alloc_set_opts2(&context, &m_layout, AV_SAMPLE_FMT_FLT, m_format.sampleRate, &layout,
                        AVSampleFormat(frame.format), frame.sample_rate, 0, nullptr);
    m_context.reset(context);
    if (!m_context || swr_init(m_context.get()) < 0)
        m_context.reset();
}

bool SampleConverter::adapt(const AVFrame &frame)
{
    AVChannelLayout layout = {};
    copyLayout(layout, frame);
    const bool same = m_context && frame.format == m_inFormat && frame.sample_rate == m_inRate &&
                      av_channel_layout_compare(&layout, &m_inLayout) == 0;
    if (!same) {
        connect(frame, layout);
        // Places that nobody knows how to mix: better heard from elsewhere than not at all.
        if (!m_context && layout.nb_channels == m_format.channelCount)
            connect(frame, m_layout);
        m_inFormat = frame.format;
        m_inRate = frame.sample_rate;
        av_channel_layout_copy(&m_inLayout, &layout);
    }
    av_channel_layout_uninit(&layout);
    return m_context != nullptr;
}

void SampleConverter::convert(const AVFrame &frame, int skipped, std::vector<float> &samples)
{
    const auto format = AVSampleFormat(frame.format);
    const bool planar = av_sample_fmt_is_planar(format) != 0;
    const int channels = frame.ch_layout.nb_channels;
    const size_t planeCount = planar ? size_t(channels) : 1;
    if (skipped >= frame.nb_samples || planeCount > mostPlanes || !adapt(frame))
        return;
    const int step = av_get_bytes_per_sample(format) * (planar ? 1 : channels);
    std::array<const uint8_t *, mostPlanes> planes = {};
    for (size_t i = 0; i < planeCount; ++i)
        planes[i] = frame.extended_data[i] + qptrdiff(skipped) * step;
    run(planes.data(), frame.nb_samples - skipped, samples);
}

void SampleConverter::finish(std::vector<float> &samples)
{
    if (m_context && m_inRate != m_format.sampleRate)
        run(nullptr, 0, samples);
}

void SampleConverter::run(const uint8_t **planes, int count, std::vector<float> &samples)
{
    const int room = swr_get_out_samples(m_context.get(), count);
    if (room <= 0)
        return;
    const size_t before = samples.size();
    const auto channels = size_t(m_format.channelCount);
    samples.resize(before + size_t(room) * channels);
    auto *to = reinterpret_cast<uint8_t *>(samples.data() + before);
    const int made = std::max(0, swr_convert(m_context.get(), &to, room, planes, count));
    samples.resize(before + size_t(made) * channels);
}

} // namespace cadorel
