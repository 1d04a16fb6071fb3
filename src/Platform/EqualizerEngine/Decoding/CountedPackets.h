// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/Decoding/PacketMeasure.h"
#include "Platform/EqualizerEngine/Decoding/PacketSource.h"
#include "Platform/Linux/Tags/MediaInput.h"

#include <vector>

namespace cadorel {

/// A container whose times are coarse, wrong in places or missing: Matroska counts milliseconds, and the
/// times in a page of Ogg are guesses. The samples of all packets are counted, when the container does not
/// tell the length already at the opening, else before the first seek.
class CountedPackets final : public PacketSource
{
public:
    CountedPackets(MediaInput::Request request, std::unique_ptr<MediaInput> input);

    const AVCodecParameters &parameters() const override { return *m_parameters; }
    AVRational timeBase() const override { return {1, m_sampleRate}; }
    bool read(AVPacket &packet) override;
    void seek(qint64 time) override;
    void rewind() override;
    std::optional<qint64> begin() const override { return m_begin; }
    qint64 end(qint64 songBegin) const override;

private:
    struct Entry
    {
        /// Where the container has it: offset in the file, and time in the container's own unit.
        qint64 position = 0;
        qint64 containerTime = 0;
        /// Its first sample, counted.
        qint64 sample = 0;
        int samples = 0;
        /// Tells it from its neighbours.
        quint32 mark = 0;
    };
    struct Trial;

    std::optional<qint64> toldLength() const;
    bool readNext(AVPacket &packet);
    void add(const AVPacket &packet);
    void tryDecoding(Trial &trial);
    void countAll();
    bool agreesWithTimes() const;
    void countByTimes();
    qint64 startOf(size_t i) const;
    std::optional<size_t> find(const AVPacket &packet) const;

    MediaInput::Request m_request;
    std::unique_ptr<MediaInput> m_input;
    AvPointer<AVCodecParameters> m_parameters;
    AVRational m_containerUnit;
    int m_sampleRate = 1;
    /// Of a packet that does not tell it.
    int m_usualSamples = 0;
    PacketMeasure m_measure;
    /// The packets as far as they are known.
    std::vector<Entry> m_entries;
    bool m_complete = false;
    /// Whether the container tells the song's length.
    bool m_isLengthTold = false;
    int m_behindSong = 0;
    qint64 m_begin = 0;
    qint64 m_end = 0;
    /// The packet that the container gives next, and the first one that is wanted.
    size_t m_next = 0;
    size_t m_wanted = 0;
    AvPointer<AVPacket> m_waiting;
    bool m_hasWaiting = false;
};

} // namespace cadorel
