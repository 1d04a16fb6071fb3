// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Mpv/DurationScanner.h"
#include "Platform/StreamPlayer.h"

#include <QPromise>

#include <chrono>
#include <limits>

namespace cadorel {

/// An item of MpvStreamPlayer, which alone moves its state. It may outlive its player. Main thread.
class MpvPlayerItem : public PlayerItem
{
    Q_OBJECT
public:
    MpvPlayerItem(MediaAsset asset, DurationScanner scanner);
    ~MpvPlayerItem() override;

    const MediaAsset &asset() const override { return m_asset; }
    Status status() const override { return m_status; }
    QString errorDescription() const override { return m_error; }
    /// As of the last tick of a time observer, start, stop or jump, and as much further as it has played
    /// since.
    double currentTime() const override;
    /// The exact length once loadDuration() has counted it, before that libmpv's.
    double duration() const override;
    int timescale() const override { return m_timescale; }
    std::optional<SeekableRange> seekableRange() const override;
    /// Also fails when the item is replaced or destroyed meanwhile.
    QCoro::Task<std::expected<double, QString>> loadDuration() override;

    bool isLocal() const { return !usesLoader() && m_asset.url.isLocalFile(); }
    /// Its bytes come from the asset's loader.
    bool usesLoader() const { return m_asset.resourceLoader != nullptr; }
    /// Expires with that loader.
    const std::weak_ptr<const void> &loaderLifetime() const { return m_loaderLifetime; }

private:
    friend class MpvStreamPlayer;
    using DurationResult = std::expected<double, QString>;

    /// A load begins: what the last one told is forgotten.
    void beginLoading();
    void becomeReady();
    void fail(const QString &description);
    /// Neither beyond a known length nor before the start.
    void setCurrentTime(double seconds);
    /// Whether its sound goes on as time does.
    void setAdvancing(bool advancing);
    void setTimescale(int ticksPerSecond) { m_timescale = ticksPerSecond; }
    bool isSeekable() const { return m_seekable; }
    void setSeekable(bool seekable) { m_seekable = seekable; }
    /// @p seconds of 0 or less is an unknown length.
    void setEngineDuration(double seconds);
    /// libmpv will tell no more of this load: without a length by now, there is none.
    void endEngineDuration();
    /// The item plays no longer: who still waits for its length waits in vain.
    void abandonDuration(const QString &reason);

    /// What the loader has given when libmpv knows the file: all of it, or nothing while more is to come.
    void takeLoadedBytes(const QByteArray &bytes);
    /// Whether a scan is going to tell the length, or has told it.
    bool scanCounts() const;
    void watchScan(const QFuture<DurationResult> &scan);
    void answerDuration(const DurationResult &result);
    double withinLength(double seconds) const;
    bool durationAnswered() const { return m_durationPromise.future().isFinished(); }

    static constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

    MediaAsset m_asset;
    std::weak_ptr<const void> m_loaderLifetime;
    DurationScanner m_scanner;
    enum class Scan { none, underWay, failed, done };
    Scan m_scan = Scan::none;
    Status m_status = Status::unknown;
    QString m_error;
    double m_currentTime = unknown;
    std::chrono::steady_clock::time_point m_timeTold; ///< when that was the position
    bool m_advancing = false;
    double m_engineDuration = unknown;
    bool m_engineDurationFinal = false;
    double m_preciseDuration = unknown;
    int m_timescale = 0;
    bool m_seekable = false;
    QPromise<DurationResult> m_durationPromise;
};

} // namespace cadorel
