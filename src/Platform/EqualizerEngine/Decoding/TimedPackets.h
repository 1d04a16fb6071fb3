// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/Decoding/PacketSource.h"
#include "Platform/Linux/Tags/MediaInput.h"

namespace cadorel {

/// A container that tells its length and the place of each packet to the sample.
class TimedPackets final : public PacketSource
{
public:
    /// Whether @p input is such a container.
    static bool suits(const MediaInput &input);
    TimedPackets(MediaInput::Request request, std::unique_ptr<MediaInput> input);

    const AVCodecParameters &parameters() const override { return *m_parameters; }
    AVRational timeBase() const override { return m_timeBase; }
    bool read(AVPacket &packet) override;
    void seek(qint64 time) override;
    void rewind() override;
    qint64 end(qint64 songBegin) const override;

private:
    bool readNext(AVPacket &packet);

    MediaInput::Request m_request;
    std::unique_ptr<MediaInput> m_input;
    AvPointer<AVCodecParameters> m_parameters;
    AVRational m_timeBase;
    qint64 m_end;
    /// How long an MP4 is without its list of edits.
    std::optional<qint64> m_recordedLength;
    std::optional<qint64> m_gaplessLength;
    qint64 m_firstTime = 0;
    qint64 m_soundOffset = -1;
    /// The first packet after a seek, read already.
    AvPointer<AVPacket> m_waiting;
    bool m_hasWaiting = false;
};

} // namespace cadorel
