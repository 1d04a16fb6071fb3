// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioFile.h"
#include "Platform/EqualizerEngine/Decoding/AvPointers.h"

#include <vector>

namespace cadorel {

/// Makes interleaved floats of one shape of decoded frames. Belongs to one thread at a time.
class SampleConverter
{
public:
    /// @param first a frame of the song: channels whose places differ from those of @p format are mixed into
    /// them
    SampleConverter(const AVFrame &first, const AudioFormat &format);
    ~SampleConverter();
    SampleConverter(const SampleConverter &) = delete;
    SampleConverter &operator=(const SampleConverter &) = delete;

    const AudioFormat &format() const { return m_format; }

    /// Forgets what it holds back.
    void reset();
    /// Appends a frame without its first @p skipped samples to @p samples. A frame of another shape than the
    /// song's first is brought into that.
    void convert(const AVFrame &frame, int skipped, std::vector<float> &samples);
    /// Appends what was held back.
    void finish(std::vector<float> &samples);

private:
    bool adapt(const AVFrame &frame);
    void connect(const AVFrame &frame, AVChannelLayout &layout);
    void run(const uint8_t **planes, int count, std::vector<float> &samples);

    AudioFormat m_format;
    AVChannelLayout m_layout = {};
    AvPointer<SwrContext> m_context;
    /// What the context is made for.
    AVChannelLayout m_inLayout = {};
    int m_inFormat = -1;
    int m_inRate = 0;
};

} // namespace cadorel
