// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace cadorel {

/// Fractions of a bar. Screens know it as the singleton "Progress". Any thread.
class Progress : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// @p progress within 0 to 1; 0 for what is no number.
    Q_INVOKABLE static double clamped(double progress);
    /// Where on a bar of @p width a touch at @p x is, from 0 to 1. A bar without a width, as one is before it
    /// has been laid out, gives 0.
    Q_INVOKABLE static double at(double x, double width);
};

} // namespace cadorel
