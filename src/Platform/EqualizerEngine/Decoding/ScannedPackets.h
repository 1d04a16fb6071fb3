// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/Decoding/PacketSource.h"
#include "Platform/Linux/Tags/MediaInput.h"

#include <vector>

namespace cadorel {

/// A container whose times are coarse or missing, Matroska's milliseconds for instance: all packets are
/// looked at once, and their samples counted.
class ScannedPackets final : public PacketSource
{
public:
    /// Reads @p input to its end.
    ScannedPackets(MediaInput::Request request, std::unique_ptr<MediaInput> input);

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
    };
    struct Trial;

    bool readNext(AVPacket &packet);
    void scan(Trial &trial);
    void count(const Trial &trial);
    bool agreesWithTimes() const;
    void countByTimes();
    std::optional<size_t> find(const AVPacket &packet) const;

    MediaInput::Request m_request;
    std::unique_ptr<MediaInput> m_input;
    AvPointer<AVCodecParameters> m_parameters;
    AVRational m_containerUnit;
    int m_sampleRate = 1;
    std::vector<Entry> m_entries;
    qint64 m_begin = 0;
    qint64 m_end = 0;
    /// The packet that the container gives next, and the first one that is wanted.
    size_t m_next = 0;
    size_t m_wanted = 0;
    AvPointer<AVPacket> m_waiting;
    bool m_hasWaiting = false;
};

} // namespace cadorel
