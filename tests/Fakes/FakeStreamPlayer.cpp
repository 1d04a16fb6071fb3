// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeStreamPlayer.h"

#include <QCoroFuture>

namespace cadorel {

QCoro::Task<std::expected<double, QString>> FakePlayerItem::loadDuration()
{
    co_return co_await m_durationPromise.future();
}

void FakePlayerItem::becomeReady()
{
    m_status = Status::readyToPlay;
    Q_EMIT statusChanged();
}

void FakePlayerItem::fail(const QString &description)
{
    m_status = Status::failed;
    m_error = description;
    Q_EMIT statusChanged();
}

void FakePlayerItem::answerDuration(std::expected<double, QString> seconds)
{
    if (seconds)
        m_duration = *seconds;
    m_durationPromise.addResult(seconds);
    m_durationPromise.finish();
}

std::shared_ptr<PlayerItem> FakeStreamPlayer::makeItem(const MediaAsset &asset)
{
    items.append(std::make_shared<FakePlayerItem>(asset));
    return items.constLast();
}

void FakeStreamPlayer::replaceCurrentItem(std::shared_ptr<PlayerItem> item)
{
    calls.append(QStringLiteral("replace ") +
                 (item ? item->asset().url.fileName() : QStringLiteral("nothing")));
    m_item = std::move(item);
}

void FakeStreamPlayer::play()
{
    calls.append(QStringLiteral("play"));
    setState(1, TimeControlStatus::playing);
}

void FakeStreamPlayer::pause()
{
    calls.append(QStringLiteral("pause"));
    setState(0, TimeControlStatus::paused);
}

void FakeStreamPlayer::setState(double rate, TimeControlStatus status)
{
    const bool rateMoves = rate != m_rate;
    const bool statusMoves = status != m_status;
    m_rate = rate;
    m_status = status;
    if (rateMoves)
        Q_EMIT rateChanged();
    if (statusMoves)
        Q_EMIT timeControlStatusChanged();
}

void FakeStreamPlayer::seek(double time, double toleranceBefore, double toleranceAfter,
                            std::function<void(bool)> completion)
{
    calls.append(QStringLiteral("seek ") + QString::number(time));
    seeks.append({time, toleranceBefore, toleranceAfter, std::move(completion)});
}

void FakeStreamPlayer::finishSeek(bool finished, std::optional<double> landsAt)
{
    const Seek first = seeks.takeFirst();
    if (auto item = std::dynamic_pointer_cast<FakePlayerItem>(m_item); item && finished)
        item->position = landsAt.value_or(first.time);
    if (first.completion)
        first.completion(finished);
}

int FakeStreamPlayer::addPeriodicTimeObserver(std::chrono::milliseconds interval,
                                              std::function<void(double)> callback)
{
    m_observers.emplace(m_nextObserver, Observer{interval, std::move(callback)});
    return m_nextObserver++;
}

void FakeStreamPlayer::removeTimeObserver(int observer)
{
    m_observers.erase(observer);
}

std::chrono::milliseconds FakeStreamPlayer::observerInterval() const
{
    return m_observers.empty() ? std::chrono::milliseconds{0} : m_observers.begin()->second.interval;
}

void FakeStreamPlayer::tick(double seconds)
{
    if (auto item = std::dynamic_pointer_cast<FakePlayerItem>(m_item))
        item->position = seconds;
    const auto observers = m_observers;
    for (const auto &[key, observer] : observers)
        observer.callback(seconds);
}

} // namespace cadorel
