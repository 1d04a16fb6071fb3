// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/WindowMemory.h"

#include "Platform/Clock.h"
#include "Platform/Preferences.h"

#include <QRegularExpression>
#include <QScreen>

#include <chrono>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// A window that is being dragged larger is not stored at each step.
constexpr std::chrono::milliseconds rest{500};

/// Wider and higher than any screen; a stored size beyond it is damage.
constexpr int longest = 16'384;

QString textOf(const QSize &size)
{
    return u"%1x%2"_s.arg(size.width()).arg(size.height());
}

} // namespace

WindowMemory::WindowMemory(QWindow &window, Preferences &preferences, Clock &clock)
    : m_window(window)
    , m_preferences(preferences)
    , m_clock(clock)
    , m_isMaximized(preferences.boolValue(QLatin1StringView(windowMaximizedKey)).value_or(false))
{
    const auto stored = preferences.stringValue(QLatin1StringView(windowSizeKey));
    const QSize wanted = sizeOf(stored.value_or(QString())).value_or(window.size());
    const QScreen *screen = window.screen();
    m_size = fitted(wanted, window.minimumSize(), screen ? screen->availableSize() : wanted);
    m_latest = m_size;
    m_window.resize(m_size);
    connect(&m_window, &QWindow::widthChanged, this, &WindowMemory::note);
    connect(&m_window, &QWindow::heightChanged, this, &WindowMemory::note);
    connect(&m_window, &QWindow::visibilityChanged, this, &WindowMemory::note);
}

WindowMemory::~WindowMemory()
{
    if (m_rest)
        store();
}

void WindowMemory::show()
{
    if (m_isMaximized)
        m_window.showMaximized();
    else
        m_window.show();
}

std::optional<QSize> WindowMemory::sizeOf(const QString &stored)
{
    static const QRegularExpression form(u"\\A([0-9]{1,5})x([0-9]{1,5})\\z"_s);
    const QRegularExpressionMatch match = form.match(stored);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (size.isEmpty() || size.width() > longest || size.height() > longest)
        return std::nullopt;
    return size;
}

QSize WindowMemory::fitted(const QSize &wanted, const QSize &minimum, const QSize &available)
{
    return wanted.boundedTo(available).expandedTo(minimum);
}

void WindowMemory::note()
{
    const QWindow::Visibility visibility = m_window.visibility();
    const bool isPlain = visibility == QWindow::Windowed;
    const bool fills = visibility == QWindow::Maximized || visibility == QWindow::FullScreen;
    // A window that is hidden or minimised tells nothing of how the listener wants it.
    if (!isPlain && !fills)
        return;
    // It can get the size of the screen a moment before it is told to fill it.
    const QSize size = isPlain ? m_window.size() : m_size;
    if (size == m_latest && fills == m_isMaximized)
        return;
    m_latest = size;
    m_isMaximized = fills;
    m_rest = m_clock.singleShot(rest, [this] { store(); });
}

void WindowMemory::store()
{
    m_rest.reset();
    m_size = m_latest;
    m_preferences.setString(QLatin1StringView(windowSizeKey), textOf(m_size));
    m_preferences.setBool(QLatin1StringView(windowMaximizedKey), m_isMaximized);
}

} // namespace cadorel
