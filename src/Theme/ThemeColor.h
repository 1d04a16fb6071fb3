// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/DesktopAppearance.h"
#include "Services/ThemeService.h"

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace cadorel {

/// The listener's accent colour and what goes with it, for everything that can be pressed or is selected; by
/// the names that the desktop's own accent has in SystemColors. Main thread.
class ThemeColor : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor accent READ accent NOTIFY accentChanged)
    /// The accent as a text, on the grounds of SystemColors or on the tint. A look has grounds of its own,
    /// which may not follow the desktop's scheme: there it is Surfaces.textOn(theme, surface,
    /// ThemeColor.accent), by the surface that the text lies on.
    Q_PROPERTY(QColor accentText READ accentText NOTIFY accentChanged)
    /// The accent as the ground of a text of the colour of the ink: white, but for accents so light that they
    /// would be lost beneath it.
    Q_PROPERTY(QColor accentFill READ accentFill NOTIFY accentChanged)
    Q_PROPERTY(QColor accentInk READ accentInk NOTIFY accentChanged)
    /// Laid over what is selected.
    Q_PROPERTY(QColor accentTint READ accentTint NOTIFY accentChanged)
public:
    /// Without a service the accent is the one that nobody chose. The appearance outlives this object.
    ThemeColor(ThemeService *service, DesktopAppearance &appearance);

    /// Of the parts that the engine's user interface was installed with.
    static ThemeColor *create(QQmlEngine *engine, QJSEngine *);

    QColor accent() const { return m_colors.accent; }
    QColor accentText() const { return m_colors.text; }
    QColor accentFill() const { return m_colors.fill; }
    QColor accentInk() const { return m_colors.ink; }
    QColor accentTint() const { return m_colors.tint; }

Q_SIGNALS:
    void accentChanged();

private:
    struct Colors
    {
        QColor accent;
        QColor text;
        QColor fill;
        QColor ink;
        QColor tint;
        bool operator==(const Colors &) const = default;
    };

    Colors colors() const;
    void update();

    const QPointer<ThemeService> m_service;
    DesktopAppearance &m_appearance;
    Colors m_colors;
};

} // namespace cadorel
