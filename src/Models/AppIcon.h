// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Utils/ArtworkFiles.h"

#include <QList>
#include <QMetaType>
#include <QString>

#include <functional>
#include <optional>

namespace cadorel {

/// An icon that the application can show itself with. Any thread.
struct AppIcon
{
    Q_GADGET
    /// Empty for the default icon.
    Q_PROPERTY(QString iconName READ plainName CONSTANT)
    Q_PROPERTY(QString displayName MEMBER displayName CONSTANT)
    Q_PROPERTY(QString imageName MEMBER imageName CONSTANT)
public:
    /// Its name as an alternate icon; none is the default icon.
    std::optional<QString> iconName;
    /// Name as a listener reads it.
    QString displayName;
    /// Name of the picture asset that shows it.
    QString imageName;

    QString plainName() const { return iconName.value_or(QString()); }

    bool operator==(const AppIcon &) const = default;
};

/// All of them in the order in which they are offered, the default one first.
const QList<AppIcon> &allAppIcons();
/// The icon of that name, none being the default one; nothing for a name that no icon has.
std::optional<AppIcon> appIconOf(const std::optional<QString> &iconName);

/// From the name of a picture asset to its file; empty for an unknown one.
using ArtworkLookup = std::function<QString(const QString &imageName)>;
/// File of the picture that shows an icon: that of twice the size where there is one. Empty when there is
/// none.
QString appIconPicture(const QString &imageName, const ArtworkLookup &lookUp = &artworkPath);

} // namespace cadorel
