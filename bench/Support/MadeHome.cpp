// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/MadeHome.h"

#include "Fakes/FakePreferences.h"
#include "Platform/Linux/LinuxSystem.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/SystemRandom.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Platform/Mpv/MpvStreamPlayer.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// In memory unless TMPDIR says otherwise: on a disk, what else goes on there would be measured too.
QString temporaryTemplate()
{
    const QString memory = u"/dev/shm"_s;
    const bool useMemory = !qEnvironmentVariableIsSet("TMPDIR") && QFileInfo(memory).isWritable();
    return (useMemory ? memory : QDir::tempPath()) + "/cadorel-bench-XXXXXX"_L1;
}

} // namespace

MadeHome::MadeHome()
    : MadeHome(QString())
{
}

MadeHome::MadeHome(const QString &root)
    : m_own(root.isEmpty() ? std::make_unique<QTemporaryDir>(temporaryTemplate()) : nullptr)
    , m_root(m_own ? m_own->path() : root)
    , m_directories{.documents = path(u"Music/Cadorel"_s),
                    .applicationSupport = path(u".local/share/cadorel"_s),
                    .caches = path(u".cache/cadorel"_s)}
{
    for (const QString &directory :
         {m_directories.documents, m_directories.applicationSupport, m_directories.caches})
        QDir().mkpath(directory);
    QDir().mkdir(path(u"run"_s), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

QProcessEnvironment MadeHome::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, m_root);
    environment.insert(u"XDG_RUNTIME_DIR"_s, path(u"run"_s));
    for (const auto *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_MUSIC_DIR",
                             "DBUS_SESSION_BUS_ADDRESS", "WAYLAND_DISPLAY"})
        environment.remove(QString::fromLatin1(name));
    return environment;
}

Platform MadeHome::platform() const
{
    Platform platform;
    platform.directories = m_directories;
    platform.preferences = std::make_unique<FakePreferences>();
    platform.clock = std::make_unique<SystemClock>();
    platform.random = std::make_unique<SystemRandom>();
    platform.system = std::make_unique<LinuxSystem>(m_directories.applicationSupport);
    platform.assetReader = std::make_unique<FileAssetReader>();
    platform.makeStreamPlayer = [&reader = *platform.assetReader] {
        return std::make_unique<MpvStreamPlayer>(reader);
    };
    return platform;
}

void makeDemoSongs(int count, const QString &directory)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral(CADOREL_SOURCE_DIR) + "/scripts/demo-songs"_L1,
                  {u"--count"_s, QString::number(count), directory});
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        qFatal("the songs to measure with could not be made");
}

QString builtProgram(const QString &name)
{
    return QStringLiteral(CADOREL_BUILD_DIR) + u'/' + name;
}

} // namespace cadorel
