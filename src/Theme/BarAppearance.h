// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QMetaType>
#include <QObject>

namespace cadorel {

class AppTheme;

/// How the tab bar of a plain tab view and the bar over a page are drawn.
struct BarAppearance
{
    Q_GADGET
    Q_PROPERTY(QColor background MEMBER background CONSTANT)
    /// Of titles and large titles.
    Q_PROPERTY(QColor title MEMBER title CONSTANT)
    /// Between a bar and what it lies beside.
    Q_PROPERTY(QColor separator MEMBER separator CONSTANT)
public:
    QColor background;
    QColor title;
    QColor separator;

    bool operator==(const BarAppearance &) const = default;
};

/// The bars of each look. Screens know it as the singleton of this name. Main thread.
class BarAppearances : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Opaque in each look: what lies behind a bar is not blurred, and would be read through it. A null theme
    /// gives transparent bars.
    Q_INVOKABLE static cadorel::BarAppearance setupAppearance(cadorel::AppTheme *theme);
};

} // namespace cadorel
