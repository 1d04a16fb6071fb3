// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>

#include <atomic>
#include <chrono>

class QQuickItem;
class QQuickWindow;

namespace cadorel {

/// Moves a list a little before each frame and notes how long the frame takes: making rows, laying them out,
/// drawing and handing over.
class Scroller : public QObject
{
public:
    /// @param pixelsPerFrame how far the list moves between two frames
    Scroller(QQuickWindow &window, QQuickItem &list, double pixelsPerFrame);

    /// Scrolls from the top, and from there again after the end. @return the time of each frame in
    /// milliseconds
    QList<double> run(std::chrono::seconds length);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    /// On the thread that draws.
    void finishFrame();

    QQuickWindow &m_window;
    QQuickItem &m_list;
    QElapsedTimer m_clock;
    std::atomic<qint64> m_startNs = 0;
    double m_step;
    double m_position = 0;
    QList<double> m_frameMs;
    bool m_stopped = false;
};

} // namespace cadorel
