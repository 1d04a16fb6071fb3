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
    /// A home that another process has made and throws away.
    explicit MadeHome(const QString &root);

    const QString &root() const { return m_root; }
    QString path(const QString &name) const { return m_root + QLatin1Char('/') + name; }
    /// The same that the program finds in environment().
    const Directories &directories() const { return m_directories; }
    /// For a program that lives in this home.
    QProcessEnvironment environment() const;
    /// Parts of the real machine, but preferences in memory.
    Platform platform() const;

private:
    std::unique_ptr<QTemporaryDir> m_own;
    QString m_root;
    Directories m_directories;
};

/// Lets scripts/demo-songs make small songs; ends this process when that fails.
void makeDemoSongs(int count, const QString &directory);

/// A program of this build.
QString builtProgram(const QString &name);

} // namespace cadorel
