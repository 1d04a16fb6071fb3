// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeClock.h"

#include <algorithm>

namespace cadorel {

class FakeClock::Timer : public ClockTimer
{
public:
    Timer(std::shared_ptr<Entries> entries, std::shared_ptr<Entry> entry)
        : m_entries(std::move(entries))
        , m_entry(std::move(entry))
    {
    }
    ~Timer() override
    {
        m_entry->cancelled = true;
        m_entries->remove(m_entry);
    }
    Q_DISABLE_COPY_MOVE(Timer)

private:
    std::shared_ptr<Entries> m_entries;
    std::shared_ptr<Entry> m_entry;
};

FakeClock::FakeClock()
    : m_start(QDateTime(QDate(2026, 1, 1), QTime(12, 0), Qt::UTC))
    , m_entries(std::make_shared<Entries>())
{
}

FakeClock::~FakeClock() = default;

QDateTime FakeClock::now() const
{
    return m_start.addMSecs(m_elapsed.count());
}

std::chrono::nanoseconds FakeClock::monotonic() const
{
    // An arbitrary start that is not zero, as a real machine's.
    return std::chrono::hours(1) + m_elapsed;
}

std::unique_ptr<ClockTimer> FakeClock::add(std::chrono::milliseconds delay,
                                           std::chrono::milliseconds interval, std::function<void()> callback)
{
    auto entry = std::make_shared<Entry>(
        Entry{.due = m_elapsed + delay, .interval = interval, .callback = std::move(callback)});
    m_entries->push_back(entry);
    return std::make_unique<Timer>(m_entries, std::move(entry));
}

std::unique_ptr<ClockTimer> FakeClock::repeating(std::chrono::milliseconds interval,
                                                 std::function<void()> callback)
{
    return add(interval, interval, std::move(callback));
}

std::unique_ptr<ClockTimer> FakeClock::singleShot(std::chrono::milliseconds delay,
                                                  std::function<void()> callback)
{
    return add(delay, std::chrono::milliseconds{0}, std::move(callback));
}

void FakeClock::advance(std::chrono::milliseconds duration)
{
    const std::chrono::milliseconds end = m_elapsed + duration;
    while (true) {
        const auto next = std::min_element(m_entries->begin(), m_entries->end(),
                                           [](const auto &a, const auto &b) { return a->due < b->due; });
        if (next == m_entries->end() || (*next)->due > end)
            break;
        const std::shared_ptr<Entry> entry = *next;
        m_elapsed = std::max(m_elapsed, entry->due);
        if (entry->interval.count() > 0)
            entry->due += entry->interval;
        else
            m_entries->erase(next);
        if (!entry->cancelled)
            entry->callback();
    }
    m_elapsed = end;
}

int FakeClock::activeTimers() const
{
    return static_cast<int>(m_entries->size());
}

} // namespace cadorel
