// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LinuxSystem.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace cadorel {

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

} // namespace cadorel
