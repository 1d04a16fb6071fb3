// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointingDevice>
#include <QQuickWindow>
#include <QTest>

namespace cadorel {

/// A left mouse button, or a finger.
class Pointer
{
public:
    Pointer(QQuickWindow *window, bool isFinger)
        : m_window(window)
        , m_isFinger(isFinger)
    {
    }
    void press(const QPointF &place)
    {
        if (m_isFinger)
            QTest::touchEvent(m_window, finger()).press(0, place.toPoint());
        else
            QTest::mousePress(m_window, Qt::LeftButton, {}, place.toPoint());
    }
    void move(const QPointF &place)
    {
        if (m_isFinger)
            QTest::touchEvent(m_window, finger()).move(0, place.toPoint());
        else
            QTest::mouseMove(m_window, place.toPoint());
    }
    void release(const QPointF &place)
    {
        if (m_isFinger)
            QTest::touchEvent(m_window, finger()).release(0, place.toPoint());
        else
            QTest::mouseRelease(m_window, Qt::LeftButton, {}, place.toPoint());
    }
    void drag(const QPointF &from, const QPointF &to)
    {
        press(from);
        constexpr int steps = 8;
        for (int i = 1; i <= steps; ++i)
            move(from + (to - from) * i / steps);
        release(to);
    }

private:
    static QPointingDevice *finger()
    {
        static QPointingDevice *const device = QTest::createTouchDevice();
        return device;
    }

    QQuickWindow *m_window;
    bool m_isFinger;
};

} // namespace cadorel
