// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Support/Report.h"

#include <QList>

class QQuickWindow;

namespace cadorel {

/// How long frames took, in milliseconds, and what the one in the middle and nearly the longest one are held
/// against.
struct FrameTimes
{
    QString name; ///< of what was drawn
    QList<double> frames;
    std::optional<Reference> middleReference = std::nullopt;
    std::optional<double> middleBar = std::nullopt;
    std::optional<Reference> lateReference = std::nullopt;
    std::optional<double> lateBar = std::nullopt;
};

/// The value that @p fraction (0 to 1) of the values do not exceed; 0 when there are none.
double percentile(QList<double> values, double fraction);
/// The frame in the middle.
double middleFrame(const QList<double> &frames);
/// The frame that one in a hundred exceeds.
double lateFrame(const QList<double> &frames);

/// Two figures: the frame in the middle and the 99th percentile.
void addFrames(Report &report, const FrameTimes &times);

/// Shows a window; ends this process when it is not on the display in time.
void showWindow(QQuickWindow &window);
/// Has a frame drawn and returns when it is on the display, or after a few seconds.
void waitForFrame(QQuickWindow &window);

} // namespace cadorel
