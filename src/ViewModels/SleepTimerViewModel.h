// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace cadorel {

/// The sheet that asks in how many minutes the music shall end. It only writes the number down, for as long
/// as the player's screen is shown: no timer runs, and nothing stops. Main thread.
class SleepTimerViewModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int sleepTimerMinutes READ sleepTimerMinutes NOTIFY sleepTimerMinutesChanged)
    Q_PROPERTY(QList<int> presetOptions READ presetOptions CONSTANT)
    Q_PROPERTY(bool isCustom READ isCustom NOTIFY sleepTimerMinutesChanged)
    Q_PROPERTY(QString timeText READ timeText NOTIFY sleepTimerMinutesChanged)
    Q_PROPERTY(QString footText READ footText NOTIFY sleepTimerMinutesChanged)
    Q_PROPERTY(bool showsCustomPicker READ showsCustomPicker NOTIFY showsCustomPickerChanged)
    Q_PROPERTY(int customHours READ customHours WRITE setCustomHours NOTIFY customTimeChanged)
    Q_PROPERTY(int customMinutes READ customMinutes WRITE setCustomMinutes NOTIFY customTimeChanged)
    Q_PROPERTY(int hourCount READ hourCount CONSTANT)
    Q_PROPERTY(int minuteCount READ minuteCount CONSTANT)
    Q_PROPERTY(QString customTimeText READ customTimeText NOTIFY customTimeChanged)

public:
    using QObject::QObject;

    /// 0 is off.
    int sleepTimerMinutes() const { return m_sleepTimerMinutes; }
    /// Minutes to choose at once.
    static QList<int> presetOptions() { return {30, 45, 60, 90, 120}; }
    /// A time that is none of presetOptions().
    bool isCustom() const;
    /// The minutes as formatTime() tells them; empty while it is off.
    QString timeText() const;
    /// What is said at the foot of the sheet; empty while it is off.
    QString footText() const;
    /// "45 分钟", "1 小时", "1 小时 30 分钟".
    Q_INVOKABLE static QString formatTime(int minutes);

    /// Writes the minutes down; what is below 0 is 0.
    Q_INVOKABLE void select(int minutes);

    /// The picker of hours and minutes is open, and what stands on its wheels: nothing is written down before
    /// confirmCustom(). What is not on a wheel changes nothing.
    bool showsCustomPicker() const { return m_showsCustomPicker; }
    int customHours() const { return m_customMinutes / minutesPerHour; }
    void setCustomHours(int hours);
    int customMinutes() const { return m_customMinutes % minutesPerHour; }
    void setCustomMinutes(int minutes);
    /// How many places the wheels have, the first being 0.
    static int hourCount() { return hoursPerDay; }
    static int minuteCount() { return minutesPerHour; }
    /// "共 90 分钟".
    QString customTimeText() const;

    /// Opens the picker, with what is written down on its wheels.
    Q_INVOKABLE void beginCustom();
    /// Both wheels go to 0.
    Q_INVOKABLE void resetCustom();
    Q_INVOKABLE void confirmCustom();
    Q_INVOKABLE void cancelCustom();

Q_SIGNALS:
    void sleepTimerMinutesChanged();
    void showsCustomPickerChanged();
    void customTimeChanged();

private:
    static constexpr int minutesPerHour = 60;
    static constexpr int hoursPerDay = 24;

    void setCustomTime(int minutes);
    void setShowsCustomPicker(bool shows);

    int m_sleepTimerMinutes = 0;
    /// On the wheels, hours included.
    int m_customMinutes = 0;
    bool m_showsCustomPicker = false;
};

} // namespace cadorel
