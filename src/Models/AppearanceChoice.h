// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

namespace cadorel {

/// One row of a picker in the settings of the appearance.
struct AppearanceChoice
{
    Q_GADGET
    /// The case of its enumeration.
    Q_PROPERTY(int value MEMBER value CONSTANT)
    Q_PROPERTY(QString rawValue MEMBER rawValue CONSTANT)
    Q_PROPERTY(QString displayName MEMBER displayName CONSTANT)
    /// Name of its symbol, where it has one.
    Q_PROPERTY(QString icon MEMBER icon CONSTANT)
    /// Name of its picture, where it has one.
    Q_PROPERTY(QString imageName MEMBER imageName CONSTANT)
public:
    int value = 0;
    QString rawValue;
    QString displayName;
    QString icon;
    QString imageName;

    bool operator==(const AppearanceChoice &) const = default;
};

} // namespace cadorel
