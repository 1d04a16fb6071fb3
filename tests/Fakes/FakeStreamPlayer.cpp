// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeStreamPlayer.h"

#include <QCoroFuture>

namespace cadorel {

QCoro::Task<std::expected<double, QString>> FakePlayerItem::loadDuration()
{
    // The frame keeps the future alone: it may outlive the item.
    const QFuture<std::expected<double, QString>> answer = m_durationPromise.future();
    co_return co_await answer;
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
    answerDuration(std::unexpected(description));
    Q_EMIT statusChanged();
}

void FakePlayerItem::answerDuration(std::expected<double, QString> seconds)
{
    if (m_durationPromise.future().isFinished())
        return;
    if (seconds)
        m_duration = *seconds;
    m_durationPromise.addResult(seconds);
    m_durationPromise.finish();
}

void FakePlayerItem::abandon()
{
    answerDuration(std::unexpected(QStringLiteral("replaced")));
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
    cancelSeeks();
    if (m_item) {
        m_item->disconnect(this);
        if (auto old = std::dynamic_pointer_cast<FakePlayerItem>(m_item); old && old != item)
            old->abandon();
    }
    m_item = std::move(item);
    if (!m_item)
        return;
    connect(m_item.get(), &PlayerItem::statusChanged, this, [this] {
        if (!itemFailed())
            return;
        cancelSeeks();
        setState(0, TimeControlStatus::paused);
    });
}

void FakeStreamPlayer::play()
{
    calls.append(QStringLiteral("play"));
    if (itemFailed())
        return;
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
    cancelSeeks();
    if (!m_item || itemFailed()) {
        cancelLater(std::move(completion));
        return;
    }
    seeks.append({time, toleranceBefore, toleranceAfter, std::move(completion)});
}

void FakeStreamPlayer::cancelSeeks()
{
    for (Seek &waiting : seeks)
        cancelLater(std::move(waiting.completion));
    seeks.clear();
}

void FakeStreamPlayer::cancelLater(std::function<void(bool)> completion)
{
    if (completion)
        QMetaObject::invokeMethod(
            this, [completion = std::move(completion)] { completion(false); }, Qt::QueuedConnection);
}

void FakeStreamPlayer::reachEnd()
{
    const auto item = std::dynamic_pointer_cast<FakePlayerItem>(m_item);
    if (!item)
        return;
    setState(0, TimeControlStatus::paused);
    item->reachEnd();
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
