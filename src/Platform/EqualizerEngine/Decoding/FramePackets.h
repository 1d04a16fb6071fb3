// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/Decoding/PacketSource.h"
#include "Platform/Linux/Tags/AudioSignature.h"
#include "Platform/Linux/Tags/MpegFrames.h"

#include <vector>

namespace cadorel {

/// MPEG audio and AAC in ADTS: files that are nothing but frames. Found by their headers alone, so that a
/// place in the middle is known to the sample and a damaged stretch costs only its own frames.
class FramePackets final : public PacketSource
{
public:
    /// @param signature of kind mpegAudio or adts
    FramePackets(std::shared_ptr<FileBytes> file, const AudioSignature &signature);

    const AVCodecParameters &parameters() const override { return *m_parameters; }
    AVRational timeBase() const override { return {1, m_first.sampleRate}; }
    bool read(AVPacket &packet) override;
    void seek(qint64 time) override;
    void rewind() override;
    std::optional<qint64> begin() const override { return m_begin; }
    qint64 end(qint64 songBegin) const override;

private:
    struct Place
    {
        qint64 offset = 0;
        qint64 sample = 0;
    };

    void readHeader(const AudioSignature &signature);

    std::shared_ptr<FileBytes> m_file;
    MpegFrames m_frames;
    AvPointer<AVCodecParameters> m_parameters;
    FrameHeader m_first;
    qint64 m_begin = 0;
    qint64 m_end = 0;
    Place m_next;
    /// Every so many frames the place of one, as far as somebody asked.
    std::vector<Place> m_places;
};

} // namespace cadorel
