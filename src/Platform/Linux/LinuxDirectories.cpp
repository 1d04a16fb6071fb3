// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LinuxDirectories.h"

#include "Platform/Linux/LinuxLog.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

/// A base directory by the XDG rules, to which a relative path counts as unset.
QString baseDirectory(QStandardPaths::StandardLocation location, const QString &fallback)
{
    const QString path = QStandardPaths::writableLocation(location);
    return QDir::cleanPath(QDir::isAbsolutePath(path) ? path : QDir::home().filePath(fallback));
}

QString musicDirectory()
{
    QString path = QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::MusicLocation));
    // The home directory itself stands in user-dirs.dirs for a directory that is switched off.
    if (!QDir::isAbsolutePath(path) || path == QDir::cleanPath(QDir::homePath()))
        return QDir::cleanPath(QDir::home().filePath(u"Music"_s));
    return path;
}

/// Makes a directory and the missing ones above it for this user alone, as the XDG rules ask.
bool makePrivate(const QString &path)
{
    if (QFileInfo(path).isDir())
        return true;
    return makePrivate(QFileInfo(path).path()) &&
           (QDir().mkdir(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner) ||
            QFileInfo(path).isDir());
}

void makePrivateOrTell(const QString &path)
{
    if (!makePrivate(path))
        qCWarning(linuxLog).noquote() << "cannot make the directory" << path;
}

} // namespace

Directories makeDirectories()
{
    Directories directories{
        .documents = musicDirectory() + u"/Cadorel"_s,
        .applicationSupport =
            baseDirectory(QStandardPaths::GenericDataLocation, u".local/share"_s) + u"/cadorel"_s,
        .caches = baseDirectory(QStandardPaths::GenericCacheLocation, u".cache"_s) + u"/cadorel"_s,
    };
    makePrivateOrTell(directories.applicationSupport);
    makePrivateOrTell(directories.caches);
    if (!QDir().mkpath(directories.documents)) {
        const QString fallback = directories.applicationSupport + u"/Music"_s;
        qCWarning(linuxLog).noquote()
            << "cannot make the directory" << directories.documents << "and keeps the music in" << fallback;
        directories.documents = fallback;
        makePrivateOrTell(fallback);
    }
    return directories;
}

} // namespace cadorel
