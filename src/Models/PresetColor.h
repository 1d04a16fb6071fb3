// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QMetaType>
#include <QObject>
#include <QString>

namespace cadorel {

/// A colour that is offered by name.
struct PresetColor
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QColor color MEMBER color CONSTANT)
public:
    QString name;
    QColor color;

    bool operator==(const PresetColor &) const = default;
};

} // namespace cadorel
