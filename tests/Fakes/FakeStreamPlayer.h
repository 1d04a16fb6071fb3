// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/StreamPlayer.h"

#include <QList>
#include <QPromise>

#include <cmath>
#include <limits>
#include <map>

namespace cadorel {

/// An item whose fate a test decides.
class FakePlayerItem : public PlayerItem
{
    Q_OBJECT
public:
    explicit FakePlayerItem(const MediaAsset &asset)
        : m_asset(asset)
    {
        m_durationPromise.start();
    }
    ~FakePlayerItem() override { answerDuration(std::unexpected(QString())); }

    const MediaAsset &asset() const override { return m_asset; }
    Status status() const override { return m_status; }
    QString errorDescription() const override { return m_error; }
    double currentTime() const override { return position; }
    double duration() const override { return m_duration; }
    int timescale() const override { return itemTimescale; }
    std::optional<SeekableRange> seekableRange() const override { return seekable; }
    QCoro::Task<std::expected<double, QString>> loadDuration() override;

    double position = 0;
    int itemTimescale = 0;
    std::optional<SeekableRange> seekable;

    void becomeReady();
    void fail(const QString &description);
    /// Answers loadDuration(), now or when it is asked; only the first answer counts.
    void answerDuration(std::expected<double, QString> seconds);
    bool isDurationAnswered() const { return m_durationPromise.future().isFinished(); }
    void reachEnd() { Q_EMIT didPlayToEnd(); }

private:
    friend class FakeStreamPlayer;
    /// Another item took its place: its length is told to nobody any more.
    void abandon();

    MediaAsset m_asset;
    Status m_status = Status::unknown;
    QString m_error;
    double m_duration = std::numeric_limits<double>::quiet_NaN();
    QPromise<std::expected<double, QString>> m_durationPromise;
};

/// A stream player that plays nothing and remembers everything: `calls` in order, one text each.
class FakeStreamPlayer : public StreamPlayer
{
    Q_OBJECT
public:
    QStringList calls;
    float volume = -1;
    bool waitsToMinimizeStalling = false;
    /// Every item that was made.
    QList<std::shared_ptr<FakePlayerItem>> items;
    struct Seek
    {
        double time;
        double toleranceBefore;
        double toleranceAfter;
        std::function<void(bool)> completion;
    };
    /// Those that wait. One that another seek, another item or a failure overtakes leaves the list, and its
    /// completion is called with false from the event loop.
    QList<Seek> seeks;

    std::shared_ptr<PlayerItem> makeItem(const MediaAsset &asset) override;
    void replaceCurrentItem(std::shared_ptr<PlayerItem> item) override;
    std::shared_ptr<PlayerItem> currentItem() const override { return m_item; }
    void play() override;
    void pause() override;
    double rate() const override { return m_rate; }
    TimeControlStatus timeControlStatus() const override { return m_status; }
    void setVolume(float value) override { volume = value; }
    void setAutomaticallyWaitsToMinimizeStalling(bool waits) override { waitsToMinimizeStalling = waits; }
    void seek(double time, double toleranceBefore, double toleranceAfter,
              std::function<void(bool)> completion) override;
    int addPeriodicTimeObserver(std::chrono::milliseconds interval,
                                std::function<void(double)> callback) override;
    void removeTimeObserver(int observer) override;

    std::shared_ptr<FakePlayerItem> lastItem() const { return items.isEmpty() ? nullptr : items.constLast(); }
    int timeObservers() const { return static_cast<int>(m_observers.size()); }
    std::chrono::milliseconds observerInterval() const;
    /// The position moves and every time observer is told.
    void tick(double seconds);
    /// Completes the oldest seek that waits, at @p landsAt or at the time that was asked.
    void finishSeek(bool finished = true, std::optional<double> landsAt = {});
    /// The current item plays to its end.
    void reachEnd();
    /// What the player's own state does, without a command.
    void setState(double rate, TimeControlStatus status);

private:
    void cancelSeeks();
    void cancelLater(std::function<void(bool)> completion);
    bool itemFailed() const { return m_item && m_item->status() == PlayerItem::Status::failed; }

    struct Observer
    {
        std::chrono::milliseconds interval;
        std::function<void(double)> callback;
    };
    std::shared_ptr<PlayerItem> m_item;
    double m_rate = 0;
    TimeControlStatus m_status = TimeControlStatus::paused;
    std::map<int, Observer> m_observers;
    int m_nextObserver = 1;
};

} // namespace cadorel
