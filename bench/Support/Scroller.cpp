// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/Scroller.h"

#include "Support/RunningPlayer.h"

#include <QEvent>
#include <QQuickItem>
#include <QQuickWindow>

#include <cmath>

namespace cadorel {

namespace {

constexpr double nsPerMs = 1e6;

} // namespace

Scroller::Scroller(QQuickWindow &window, QQuickItem &list, double pixelsPerFrame)
    : m_window(window)
    , m_list(list)
    , m_step(pixelsPerFrame)
{
    m_clock.start();
    window.installEventFilter(this);
    const auto finish = [this] { finishFrame(); };
    connect(&window, &QQuickWindow::frameSwapped, this, finish, Qt::DirectConnection);
}

QList<double> Scroller::run(std::chrono::seconds length)
{
    m_list.setProperty("contentY", 0);
    m_window.update();
    letPass(length);
    m_stopped = true;
    return m_frameMs;
}

bool Scroller::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::UpdateRequest && !m_stopped) {
        const double height = m_list.property("contentHeight").toDouble() - m_list.height();
        m_position = std::fmod(m_position + m_step, height);
        m_startNs = m_clock.nsecsElapsed();
        m_list.setProperty("contentY", m_position);
    }
    return QObject::eventFilter(object, event);
}

void Scroller::finishFrame()
{
    const double ms = static_cast<double>(m_clock.nsecsElapsed() - m_startNs) / nsPerMs;
    const auto note = [this, ms] {
        m_frameMs.append(ms);
        if (!m_stopped)
            m_window.update();
    };
    QMetaObject::invokeMethod(this, note, Qt::QueuedConnection);
}

} // namespace cadorel
