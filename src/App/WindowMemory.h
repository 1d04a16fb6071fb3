// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSize>
#include <QWindow>

#include <memory>
#include <optional>

namespace cadorel {

class Clock;
class ClockTimer;
class Preferences;

/// Gives the window the size that it had last, and keeps it from then on. The window has its minimum size and
/// its first one already, and is not shown yet. Main thread.
class WindowMemory : public QObject
{
    Q_OBJECT
public:
    /// "<width>x<height>" in device-independent pixels, of a window that does not fill the screen.
    static constexpr auto windowSizeKey = "windowSize";
    /// Whether it filled the screen.
    static constexpr auto windowMaximizedKey = "windowMaximized";

    /// All of them outlive this object.
    WindowMemory(QWindow &window, Preferences &preferences, Clock &clock);
    /// What has changed a moment ago is stored.
    ~WindowMemory() override;
    Q_DISABLE_COPY_MOVE(WindowMemory)

    /// Shows the window as it was.
    void show();

    /// The size of a stored text; nothing for a text that is none, or a size that no screen has.
    static std::optional<QSize> sizeOf(const QString &stored);
    /// @p wanted with room on a screen of @p available; never smaller than @p minimum, where a screen is.
    static QSize fitted(const QSize &wanted, const QSize &minimum, const QSize &available);

private:
    void note();
    void store();

    QWindow &m_window;
    Preferences &m_preferences;
    Clock &m_clock;
    /// As stored, and as it is now.
    QSize m_size;
    QSize m_latest;
    bool m_isMaximized = false;
    std::unique_ptr<ClockTimer> m_rest;
};

} // namespace cadorel
