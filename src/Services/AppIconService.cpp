// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AppIconService.h"

#include "Platform/Platform.h"
#include "Platform/SharedServices.h"
#include "Utils/Console.h"

#include <QPointer>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

AppIconService::AppIconService(System &system)
    : m_system(system)
    , m_currentIconName(system.alternateIconName())
{
}

AppIconService &AppIconService::shared()
{
    return sharedService<AppIconService>(
        [] { return std::make_unique<AppIconService>(*processPlatform().system); });
}

void AppIconService::setAppIcon(const std::optional<QString> &name)
{
    if (!m_system.supportsAlternateIcons()) {
        print(u"Alternate icons not supported"_s);
        return;
    }
    const QPointer<AppIconService> self(this);
    m_system.setAlternateIconName(name, [self, name](const std::optional<QString> &error) {
        if (error) {
            print(u"Error setting alternate icon: "_s + *error);
            return;
        }
        if (!self)
            return;
        const auto take = [self, name] { self->setCurrentIconName(name); };
        QMetaObject::invokeMethod(self.data(), take, Qt::QueuedConnection);
    });
}

QUrl AppIconService::picture(const QString &imageName)
{
    const QString path = appIconPicture(imageName);
    return path.isEmpty() ? QUrl() : QUrl("qrc"_L1 + path);
}

void AppIconService::choose(const QString &iconName)
{
    setAppIcon(iconName.isEmpty() ? std::nullopt : std::optional(iconName));
}

int AppIconService::currentIndex() const
{
    const QList<AppIcon> &icons = allAppIcons();
    const auto current = std::ranges::find(icons, plainIconName(), &AppIcon::plainName);
    return current == icons.end() ? -1 : static_cast<int>(current - icons.begin());
}

void AppIconService::setCurrentIconName(const std::optional<QString> &name)
{
    if (name == m_currentIconName)
        return;
    m_currentIconName = name;
    Q_EMIT currentIconNameChanged();
}

} // namespace cadorel
