// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/Frames.h"

#include "Support/RunningPlayer.h"

#include <QQuickWindow>

#include <algorithm>
#include <atomic>
#include <memory>

namespace cadorel {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

double percentile(QList<double> values, double fraction)
{
    std::ranges::sort(values);
    return values.isEmpty()
               ? 0
               : values[static_cast<qsizetype>(fraction * static_cast<double>(values.size() - 1))];
}

double middleFrame(const QList<double> &frames)
{
    constexpr double half = 0.5;
    return percentile(frames, half);
}

double lateFrame(const QList<double> &frames)
{
    constexpr double nearlyAll = 0.99;
    return percentile(frames, nearlyAll);
}

void addFrames(Report &report, const FrameTimes &times)
{
    report.add({.what = u"%1: frame, median of %2"_s.arg(times.name).arg(times.frames.size()),
                .value = middleFrame(times.frames),
                .unit = u"ms"_s,
                .reference = times.middleReference,
                .bar = times.middleBar});
    report.add({.what = u"  99th percentile"_s,
                .value = lateFrame(times.frames),
                .unit = u"ms"_s,
                .reference = times.lateReference,
                .bar = times.lateBar});
}

void showWindow(QQuickWindow &window)
{
    window.show();
    if (!waitFor([&window] { return window.isExposed(); }, 20s))
        qFatal("no window");
}

void waitForFrame(QQuickWindow &window)
{
    // The thread that draws may still be at it when nobody waits any more.
    const auto isSwapped = std::make_shared<std::atomic<bool>>(false);
    const auto note = [isSwapped] { *isSwapped = true; };
    const auto connection =
        QObject::connect(&window, &QQuickWindow::frameSwapped, &window, note, Qt::DirectConnection);
    window.update();
    waitFor([&isSwapped] { return isSwapped->load(); }, 5s);
    QObject::disconnect(connection);
}

} // namespace cadorel
