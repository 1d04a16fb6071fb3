// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/EqualizerService.h"
#include "ViewModels/EqualizerViewModel.h"
#include "Views/ScreenTest.h"

#include <QSignalSpy>
#include <QWheelEvent>

namespace cadorel {

/// What the tests of the equalizer's sheet do in the window.
class EqualizerScreenTest : public ScreenTest
{
    Q_OBJECT
protected:
    EqualizerService &service() const { return *t->equalizerService; }
    bool isSheetOpen() const
    {
        const QObject *sheet = t->object(QStringLiteral("equalizerView"));
        return sheet && sheet->property("opened").toBool();
    }
    bool isSheetGone() const
    {
        const QObject *sheet = t->object(QStringLiteral("equalizerView"));
        return !sheet || !sheet->property("visible").toBool();
    }
    /// Shows the window and in it the sheet, risen.
    void showSheet(QSize size = {390, 844})
    {
        QVERIFY(t->show());
        t->window->resize(size);
        QTRY_COMPARE(t->window->contentItem()->size().toSize(), size);
        t->equalizer->open();
        QTRY_VERIFY(isSheetOpen());
    }
    static QString bandName(int band) { return QStringLiteral("band%1").arg(band); }
    /// Where a slider's handle stands at this gain.
    QPoint onSlider(const QString &name, double gain) const
    {
        const QQuickItem *slider = t->item(name);
        const auto *handle = slider->property("handle").value<QQuickItem *>();
        const bool isUpright = slider->property("orientation").toInt() == Qt::Vertical;
        const double fraction = (gain + 12) / 24;
        if (isUpright) {
            const qreal room = slider->height() - handle->height();
            return slider
                ->mapToScene(QPointF(slider->width() / 2, handle->height() / 2 + (1 - fraction) * room))
                .toPoint();
        }
        const qreal room = slider->width() - handle->width();
        return slider->mapToScene(QPointF(handle->width() / 2 + fraction * room, slider->height() / 2))
            .toPoint();
    }
    void touchDrag(QPoint from, QPoint to) const
    {
        constexpr int steps = 8;
        QTest::touchEvent(t->window, m_touch).press(0, from, t->window);
        const QSignalSpy frames(t->window, &QQuickWindow::afterAnimating);
        for (int step = 1; step <= steps; ++step) {
            QTest::touchEvent(t->window, m_touch).move(0, from + (to - from) * step / steps, t->window);
            // Moves between two frames count as one.
            const auto shown = frames.size();
            t->window->update();
            QVERIFY(QTest::qWaitFor([&frames, shown] { return frames.size() > shown; }));
        }
        QTest::touchEvent(t->window, m_touch).release(0, to, t->window);
    }
    void tap(QPoint place) const
    {
        QTest::touchEvent(t->window, m_touch).press(0, place, t->window);
        QTest::touchEvent(t->window, m_touch).release(0, place, t->window);
    }
    void turnWheel(QPoint place, int delta) const
    {
        QWheelEvent event(place, t->window->mapToGlobal(QPointF(place)), {}, QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QGuiApplication::sendEvent(t->window, &event);
    }
    double valueOf(const QString &name) const { return t->item(name)->property("value").toDouble(); }
    QString textOf(const QString &name) const { return t->item(name)->property("text").toString(); }
    /// Whether the sliders stand where the gains are.
    bool slidersShow(const EqualizerGains &gains) const
    {
        for (int band = 0; band < equalizerBandCount; ++band) {
            if (valueOf(bandName(band)) != static_cast<double>(gains.at(static_cast<std::size_t>(band))))
                return false;
        }
        return true;
    }
    QAccessibleInterface *accessible(const QString &name) const
    {
        return QAccessible::queryAccessibleInterface(t->item(name));
    }

private:
    QPointingDevice *m_touch = QTest::createTouchDevice();
};

} // namespace cadorel
