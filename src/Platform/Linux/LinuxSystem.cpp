// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LinuxSystem.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace cadorel {

LinuxSystem::LinuxSystem(const QString &applicationSupport)
{
    if (QGuiApplication::platformName() == "xcb"_L1)
        m_icon.emplace(applicationSupport + "/alternate-icon"_L1);
}

bool LinuxSystem::open(const QUrl &url)
{
    if (!url.isValid() || url.isEmpty() || (url.isLocalFile() && !QFileInfo::exists(url.toLocalFile())))
        return false;
    return QDesktopServices::openUrl(url);
}

QString LinuxSystem::deviceModel() const
{
    return QSysInfo::currentCpuArchitecture();
}

QString LinuxSystem::systemVersion() const
{
    QString name = QSysInfo::prettyProductName();
    if (!name.isEmpty() && name != u"unknown"_s)
        return name;
    return u"%1 %2"_s.arg(QSysInfo::kernelType(), QSysInfo::kernelVersion());
}

QString LinuxSystem::applicationVersion() const
{
    return QString::fromLatin1(CADOREL_VERSION);
}

std::optional<QString> LinuxSystem::alternateIconName() const
{
    return m_icon ? m_icon->name() : std::nullopt;
}

void LinuxSystem::setAlternateIconName(const std::optional<QString> &name, IconCompletion completion)
{
    if (!m_icon) {
        completion(u"this desktop takes the icon from the desktop entry"_s);
        return;
    }
    const auto done = m_icon->setName(name);
    completion(done ? std::nullopt : std::optional(done.error()));
}

} // namespace cadorel
