// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/SleepTimerViewModel.h"

#include <algorithm>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

QString SleepTimerViewModel::formatTime(int minutes)
{
    const int hours = minutes / minutesPerHour;
    const int rest = minutes % minutesPerHour;
    if (hours == 0)
        return u"%1 分钟"_s.arg(rest);
    return rest == 0 ? u"%1 小时"_s.arg(hours) : u"%1 小时 %2 分钟"_s.arg(hours).arg(rest);
}

bool SleepTimerViewModel::isCustom() const
{
    return m_sleepTimerMinutes > 0 && !presetOptions().contains(m_sleepTimerMinutes);
}

QString SleepTimerViewModel::timeText() const
{
    return m_sleepTimerMinutes > 0 ? formatTime(m_sleepTimerMinutes) : QString();
}

QString SleepTimerViewModel::footText() const
{
    return m_sleepTimerMinutes > 0 ? u"将在 "_s + formatTime(m_sleepTimerMinutes) + u" 后停止播放"_s
                                   : QString();
}

void SleepTimerViewModel::select(int minutes)
{
    const int wanted = std::max(0, minutes);
    if (std::exchange(m_sleepTimerMinutes, wanted) != wanted)
        Q_EMIT sleepTimerMinutesChanged();
}

void SleepTimerViewModel::setCustomHours(int hours)
{
    if (hours >= 0 && hours < hoursPerDay)
        setCustomTime(hours * minutesPerHour + customMinutes());
}

void SleepTimerViewModel::setCustomMinutes(int minutes)
{
    if (minutes >= 0 && minutes < minutesPerHour)
        setCustomTime(customHours() * minutesPerHour + minutes);
}

QString SleepTimerViewModel::customTimeText() const
{
    return u"共 %1 分钟"_s.arg(m_customMinutes);
}

void SleepTimerViewModel::beginCustom()
{
    setCustomTime(std::min(m_sleepTimerMinutes, hoursPerDay * minutesPerHour - 1));
    setShowsCustomPicker(true);
}

void SleepTimerViewModel::resetCustom()
{
    setCustomTime(0);
}

void SleepTimerViewModel::confirmCustom()
{
    if (!m_showsCustomPicker)
        return;
    select(m_customMinutes);
    setShowsCustomPicker(false);
}

void SleepTimerViewModel::cancelCustom()
{
    setShowsCustomPicker(false);
}

void SleepTimerViewModel::setCustomTime(int minutes)
{
    if (std::exchange(m_customMinutes, minutes) != minutes)
        Q_EMIT customTimeChanged();
}

void SleepTimerViewModel::setShowsCustomPicker(bool shows)
{
    if (std::exchange(m_showsCustomPicker, shows) != shows)
        Q_EMIT showsCustomPickerChanged();
}

} // namespace cadorel
