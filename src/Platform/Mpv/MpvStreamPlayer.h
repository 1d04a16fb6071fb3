// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Mpv/DurationScanner.h"
#include "Platform/Mpv/MpvHandle.h"
#include "Platform/Mpv/MpvPlayerItem.h"
#include "Platform/Mpv/ResourceProtocol.h"
#include "Platform/Mpv/TimeObservers.h"
#include "Platform/OutputDevices.h"
#include "Platform/StreamPlayer.h"

#include <QTimer>

#include <atomic>

namespace cadorel {

/// The stream player over one libmpv core. docs/playback.md tells its states and threads.
///
/// libmpv requires that LC_NUMERIC is "C" when the player is made; otherwise every item fails with a text.
/// Not to be deleted inside a callback or a slot of its own: deleteLater().
class MpvStreamPlayer : public StreamPlayer
{
    Q_OBJECT
public:
    /// @param reader counts exact lengths, on other threads; outlives the player
    /// @param extraOptions of libmpv, after the player's own; tests choose another sound output
    explicit MpvStreamPlayer(const AssetReader &reader, const QList<MpvHandle::Option> &extraOptions = {});
    ~MpvStreamPlayer() override;

    std::shared_ptr<PlayerItem> makeItem(const MediaAsset &asset) override;
    /// Only takes items that a MpvStreamPlayer made; any other unloads.
    void replaceCurrentItem(std::shared_ptr<PlayerItem> item) override;
    std::shared_ptr<PlayerItem> currentItem() const override { return m_item; }

    /// Without effect on a failed item.
    void play() override;
    void pause() override;
    double rate() const override { return m_rate; }
    /// Also `waitingToPlay` while the rate is 1 without an item.
    TimeControlStatus timeControlStatus() const override;

    void setVolume(float volume) override;
    void setAutomaticallyWaitsToMinimizeStalling(bool waits) override;

    void seek(double time, double toleranceBefore, double toleranceAfter,
              std::function<void(bool finished)> completion) override;

    int addPeriodicTimeObserver(std::chrono::milliseconds interval,
                                std::function<void(double seconds)> callback) override;
    void removeTimeObserver(int observer) override;

    /// Plays on what the listener has chosen of @p devices, from now on and at each change. What sounds is
    /// the devices' own to move: here it would stop and begin anew, so it is the next load that opens another
    /// device.
    void follow(const OutputDevices &devices);

    /// Whether the timer of the time observers runs; it may not while nothing plays.
    bool timerActive() const { return m_observers.timerActive(); }

private:
    static constexpr auto defaultOutputDevice = "auto";

    /// Where the load of the current item stands.
    enum class Phase {
        none,      ///< no item
        scheduled, ///< the load is sent when control returns to the event loop
        loading,   ///< libmpv works on it
        open,      ///< the file is open, its first sound is not there yet
        ready,     ///< it can play, or plays
        ended,     ///< its last sample is out; play() loads it again
        failed,
    };
    struct PendingSeek
    {
        enum class Stage {
            withLoad,      ///< the load itself begins there
            afterLoad,     ///< sent as soon as the file is open
            sent,          ///< libmpv has not taken it yet
            taken,         ///< libmpv will go there
            underWay,      ///< it has left the old position
            readsPosition, ///< it has arrived, and is asked where
        };
        Stage stage = Stage::afterLoad;
        /// Of those sent to libmpv.
        quint64 number = 0;
        double time = 0;
        bool exact = true;
        std::function<void(bool)> completion;
    };

    // Loads: MpvStreamPlayer.cpp
    void setOutputDevice(const QString &device);
    void applyOutputDevice();
    void scheduleLoad(double startTime);
    void flushLoad();
    QByteArray publishedAddress();
    QByteArray loadOptions() const;
    void setRate(double rate);
    void refreshStatus();
    void sendSeek();
    void cancelSeek();
    void completeLater(std::function<void(bool)> completion, bool finished);
    void callCompletions();
    void requestPosition(bool jumped);
    void requestHeardPosition(bool jumped);
    void setAdvancing(bool advancing);

    // What libmpv tells: MpvStreamPlayerEvents.cpp
    static void wake(void *player);
    void drainEvents();
    void handle(const mpv_event &event);
    void commandReplied(const mpv_event &event);
    void fileStarted(qint64 entry);
    void fileOpened();
    void seekBegan();
    void playbackRestarted();
    void fileEnded(const mpv_event_end_file &end);
    void reachEnd();
    bool failedToLoad();
    void fail(int mpvError);
    void failItem(const QString &description);
    void propertyReplied(const mpv_event &event);
    void propertyChanged(const mpv_event &event);
    std::optional<double> newestPosition(const mpv_event &reply);
    void positionTold(std::optional<double> seconds, bool jumped);
    void settleSeek(bool finished);
    void requestDuration();
    /// Whether events of libmpv that name no file speak of the current load.
    bool eventsAreOurs() const { return m_entry >= 0 && m_startedEntry == m_entry; }

    DurationScanner m_scanner;
    // Outlives the core, whose threads call it.
    ResourceProtocol m_protocol;
    MpvHandle m_mpv;
    std::atomic<bool> m_drainQueued = false;

    std::shared_ptr<MpvPlayerItem> m_item;
    Phase m_phase = Phase::none;
    double m_rate = 0;
    TimeControlStatus m_announcedStatus = TimeControlStatus::paused;
    bool m_pausedForCache = false;
    /// As libmpv names them: the one that is wanted, and the one that it was told.
    QByteArray m_outputDevice = defaultOutputDevice;
    QByteArray m_toldOutputDevice = defaultOutputDevice;
    /// The sound device is open for the current load.
    bool m_outputOpen = false;
    /// Where the next load of the item begins, in seconds.
    double m_startTime = 0;
    bool m_loadSentPaused = false;
    std::optional<PendingSeek> m_seek;
    quint64 m_seeksSent = 0;
    /// Of settled seeks, in their order, waiting for the event loop.
    QList<std::function<void()>> m_completions;
    /// libmpv drops a seek in a source that turns out not to seek, without a word.
    QTimer m_seekGuard;
    TimeObservers m_observers;
    bool m_tickRequested = false;
    /// Told ahead of the next answer to a request for the position, which it is better than.
    std::optional<double> m_heardPosition;
    /// Where a paused player was sought to: it goes on from there, and nothing from before is heard.
    double m_heardFrom = 0;

    /// Number of the current load: replies that carry another are late.
    quint64 m_load = 0;
    /// libmpv's number of the current load, and of the file that it started last; -1 for none.
    qint64 m_entry = -1;
    qint64 m_startedEntry = -1;
};

} // namespace cadorel
