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

/// The listener's accent colour and what goes with it, for everything that can be pressed or is selected.
/// Main thread.
class ThemeColor : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor accent READ accent NOTIFY accentChanged)
    Q_PROPERTY(QColor accentInk READ accentInk NOTIFY accentChanged)
    Q_PROPERTY(QColor accentTint READ accentTint NOTIFY accentChanged)
public:
    /// Without a service the accent is the one that nobody chose. Both outlive this object.
    ThemeColor(ThemeService *service, DesktopAppearance &appearance);

    /// Of the parts that the engine's user interface was installed with.
    static ThemeColor *create(QQmlEngine *engine, QJSEngine *);

    QColor accent() const;
    /// Of symbols and large texts on the accent: white, unless that could not be told from it.
    QColor accentInk() const;
    /// A ground that the accent can be read on.
    QColor accentTint() const;

Q_SIGNALS:
    void accentChanged();

private:
    QPointer<ThemeService> m_service;
    QPointer<DesktopAppearance> m_appearance;
};

} // namespace cadorel
