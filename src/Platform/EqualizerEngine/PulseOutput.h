// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/EqualizerEngine/AudioOutput.h"
#include "Platform/EqualizerEngine/PulseLink.h"
#include "Platform/EqualizerEngine/RecentSound.h"
#include "Platform/Pulse/PulsePointers.h"

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace cadorel {

/// Plays on the sound server, PulseAudio or one that speaks its protocol. An eighth of a second is sent
/// ahead; for a pause, or another song, that is overwritten where it has not been heard yet, so that it
/// fades out at once and nothing is lost. Silence closes the stream's tap after a moment, and from then on
/// nothing wakes.
///
/// The clock is the server's: what it has read, less what is still on its way to the ear. If the device
/// runs dry it stands. The stream may be moved from one device to another and goes on.
class PulseOutput : public AudioOutput
{
public:
    /// @param sink name of the device; without one, or when it is not there, the server's usual one
    explicit PulseOutput(std::shared_ptr<PulseLink> link, QByteArray sink = {});
    ~PulseOutput() override;

    void open(const AudioFormat &format, Source source) override;
    bool isOpen() const override { return m_isOpen; }
    void play() override;
    void pause() override;
    void drop() override;
    void wake() override;
    double framesHeard() const override;

private:
    bool connectStream(const char *sink, std::unique_lock<PulseThread> &lock,
                       std::chrono::steady_clock::time_point deadline);
    PulsePtr<pa_stream> newStream() const;
    void stateChanged();
    void pump();
    qint64 fill(qint64 frameCount);
    qint64 startOfNext() const;
    void moveTo(qint64 frame);
    void write(std::span<const float> samples);
    void sendBlock(qint64 frameCount);
    qint64 fallSilent();
    void setCorked(bool corked);
    void corkSoon();
    void corkAgain();
    void cancelCork();
    void askForRest();
    void forgetRest();
    void askForTiming();
    bool hasRunDry() const;
    double position() const;
    double heard() const;
    qint64 framesIn(double seconds) const;

    const std::shared_ptr<PulseLink> m_link;
    const QByteArray m_sink;
    AudioFormat m_format;
    Source m_source;
    std::atomic<bool> m_isOpen = false;

    // What follows is guarded by the lock of the connection's thread.
    std::shared_ptr<PulseConnection> m_connection;
    PulsePtr<pa_stream> m_stream;
    pa_time_event *m_corkTimer = nullptr;
    bool m_isCorked = true;
    bool m_plays = false;
    /// The source had too little.
    bool m_isHungry = false;
    /// The next frame finds its place in the stream when there is one.
    bool m_mustPlace = true;

    // Frames from here on are counted in the stream, from its beginning, but where it says "of the source".
    qint64 m_written = 0;
    /// Steps from there to where the next frame is written.
    qint64 m_seek = 0;
    /// Where the server stands while the tap is closed; nothing until it has told.
    std::optional<qint64> m_rest = 0;
    PulsePtr<pa_operation> m_restAnswer;
    /// End of the last fade-out: nothing is put before it.
    qint64 m_fadeEnd = 0;
    /// m_anchor is where frame m_anchorFrame of the source is in the stream.
    qint64 m_anchor = 0;
    qint64 m_anchorFrame = 0;
    /// Frame of the source that was heard last, or is heard first when it plays again.
    mutable double m_held = 0;
    RecentSound m_recent{1};
    /// Taken back at a pause, to be sent again; the next to send, and the frames that still fade in.
    std::vector<float> m_again;
    std::size_t m_nextAgain = 0;
    qint64 m_fadesIn = 0;
    std::vector<float> m_block;
    pa_usec_t m_timingAsked = 0;
    int m_timingsSinceStart = 0;
};

} // namespace cadorel
