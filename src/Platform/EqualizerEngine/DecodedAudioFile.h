// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioFile.h"
#include "Platform/EqualizerEngine/Decoding/FrameDecoder.h"
#include "Platform/EqualizerEngine/Decoding/SampleConverter.h"

#include <deque>
#include <limits>
#include <memory>
#include <vector>

namespace cadorel {

/// A file of any kind that can be imported, decoded to the sample: length() frames come from the beginning to
/// the end, and what comes after a seek is what comes there from the beginning. Rates above what a device
/// plays, one-bit sound before all, are brought down.
class DecodedAudioFile final : public AudioFile
{
public:
    /// Opens a local file and decodes its first frames; reads all of it only where the container does not
    /// tell its length. @throws std::runtime_error, its text for a listener, when it cannot be decoded
    static std::shared_ptr<AudioFile> open(const QUrl &url);

    ~DecodedAudioFile() override;
    const QUrl &url() const override { return m_url; }
    AudioFormat processingFormat() const override { return m_converter->format(); }
    qint64 length() const override { return m_length; }
    void seek(qint64 frame) override;
    qint64 read(float *interleaved, qint64 frameCount) override;

private:
    struct Piece
    {
        AvPointer<AVFrame> frame;
        /// Of its first sample on the song's clock, before rates are brought down.
        qint64 position = 0;
    };

    DecodedAudioFile(const QUrl &url, std::unique_ptr<PacketSource> source);
    void start();
    bool decode();
    void add(AvPointer<AVFrame> frame);
    void decodeFrom(qint64 position);
    bool fill();
    void take(const Piece &piece);
    void addSilence(qint64 frames);

    static constexpr qint64 unknownPosition = std::numeric_limits<qint64>::min();

    QUrl m_url;
    std::unique_ptr<PacketSource> m_source;
    FrameDecoder m_decoder;
    std::unique_ptr<SampleConverter> m_converter;
    /// Decoded and not converted yet.
    std::deque<Piece> m_pieces;
    AvPointer<AVPacket> m_packet;
    /// Where the next frame begins that does not say it.
    qint64 m_nextPosition = 0;
    bool m_drained = false;

    int m_sampleRate = 0;
    /// Decoded frames for each that is given.
    int m_factor = 1;
    /// The song's first sample on the packets' clock.
    qint64 m_begin = 0;
    qint64 m_length = 0;

    /// The frame that the next read() begins with.
    qint64 m_position = 0;
    /// Converted frames, the first of them m_samplesBegin; those before m_position are given already.
    std::vector<float> m_samples;
    qint64 m_samplesBegin = 0;
    bool m_aligned = false;
    bool m_finished = false;
};

} // namespace cadorel
