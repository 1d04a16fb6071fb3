// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QList>
#include <QObject>

namespace cadorel {

/// How well one colour is told from another. Screens know it as the singleton "Contrast". Any thread.
class Contrast : public QObject
{
    Q_OBJECT
public:
    /// What text of any size needs; WCAG 2.1, success criterion 1.4.3.
    static constexpr double legible = 4.5;

    using QObject::QObject;

    /// From 1 (the same) to 21 (black and white), by the relative luminance of WCAG 2.1. A translucent
    /// @p foreground lies on @p ground; a translucent ground lies on white.
    Q_INVOKABLE static double ratio(const QColor &foreground, const QColor &ground);
    /// @p color, made darker or lighter within its hue until @p text can be read on it. The nearer way is
    /// taken; a colour that is good enough stays as it is, and a translucent one becomes opaque only where no
    /// other way is left.
    Q_INVOKABLE static QColor groundFor(const QColor &text, const QColor &color);
    /// The same for a text of that colour on @p ground.
    Q_INVOKABLE static QColor textOn(const QColor &ground, const QColor &color);
    /// The same for a text that lies on all of @p grounds, or moves over them: the one that can be read best
    /// on the worst of them, which may still be too little on grounds far apart. Invalid without any.
    static QColor textOnAll(const QList<QColor> &grounds, const QColor &color);
    /// The least ratio() of @p color on any of @p grounds; 21 without any.
    static double leastRatio(const QColor &color, const QList<QColor> &grounds);
    /// What @p upper looks like on an opaque @p lower.
    Q_INVOKABLE static QColor over(const QColor &upper, const QColor &lower);
};

} // namespace cadorel
