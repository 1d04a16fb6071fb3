// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/AppIcon.h"
#include "Platform/System.h"

#include <QObject>
#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

/// The icon that the desktop shows the application with. Its choice is kept by the system and nowhere else.
/// Main thread.
class AppIconService : public QObject
{
    Q_OBJECT
    /// Empty for the default icon.
    Q_PROPERTY(QString currentIconName READ plainIconName NOTIFY currentIconNameChanged)
    Q_PROPERTY(int currentIndex READ currentIndex NOTIFY currentIconNameChanged)
    Q_PROPERTY(int count READ count CONSTANT)
public:
    /// @param system outlives the service
    explicit AppIconService(System &system);

    static AppIconService &shared();

    /// None means the default icon.
    const std::optional<QString> &currentIconName() const { return m_currentIconName; }
    /// Asks the system for that icon, none being the default one. The current name changes once the system
    /// has done it; a failure is a line of the log.
    void setAppIcon(const std::optional<QString> &name);

    /// Which of iconAt() is the current one; -1 when the system shows one that is not offered.
    int currentIndex() const;
    /// Number of icons to choose from.
    static int count() { return static_cast<int>(allAppIcons().size()); }
    /// One of them, in the order in which they are offered.
    Q_INVOKABLE static cadorel::AppIcon iconAt(int index) { return allAppIcons().value(index); }
    /// Address of the picture that shows an icon, see appIconPicture().
    Q_INVOKABLE static QUrl picture(const QString &imageName);
    /// setAppIcon() for screens, where the empty text stands for the default icon.
    Q_INVOKABLE void choose(const QString &iconName);

Q_SIGNALS:
    void currentIconNameChanged();

private:
    QString plainIconName() const { return m_currentIconName.value_or(QString()); }
    void setCurrentIconName(const std::optional<QString> &name);

    System &m_system;
    std::optional<QString> m_currentIconName;
};

} // namespace cadorel
