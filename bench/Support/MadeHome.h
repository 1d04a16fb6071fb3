// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"

#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace cadorel {

/// A home directory that is thrown away, and the player's directories in it.
class MadeHome
{
public:
    MadeHome();

    QString path(const QString &name) const { return m_home.filePath(name); }
    /// The same that the program finds in environment().
    const Directories &directories() const { return m_directories; }
    /// For a program that lives in this home.
    QProcessEnvironment environment() const;
    /// Parts of the real machine, but preferences in memory.
    Platform platform() const;

private:
    QTemporaryDir m_home;
    Directories m_directories;
};

/// Lets scripts/demo-songs make small songs; ends this process when that fails.
void makeDemoSongs(int count, const QString &directory);

/// A program of this build.
QString builtProgram(const QString &name);

} // namespace cadorel
