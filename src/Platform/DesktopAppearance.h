// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/ColorScheme.h"

#include <QObject>

namespace cadorel {

/// How the listener wants all programs of the desktop to look. It may change at any time. Main thread.
class DesktopAppearance : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool dark READ isDark NOTIFY colorSchemeChanged)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY reducesMotionChanged)
    Q_PROPERTY(double textScale READ textScale NOTIFY textScaleChanged)
public:
    using QObject::QObject;

    virtual ColorScheme colorScheme() const = 0;
    /// Whether things shall appear at their place rather than move there.
    virtual bool reducesMotion() const = 0;
    /// Factor for the size of texts; 1 is the usual size.
    virtual double textScale() const = 0;

    bool isDark() const { return colorScheme() == ColorScheme::dark; }

Q_SIGNALS:
    void colorSchemeChanged();
    void reducesMotionChanged();
    void textScaleChanged();
};

} // namespace cadorel
