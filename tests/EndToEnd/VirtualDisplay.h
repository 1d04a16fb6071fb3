// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QString>

namespace cadorel {

/// An X server of a test's own that nobody sees, with one screen of 800 by 1000 pixels and no window manager:
/// a window lies at its upper left corner.
class VirtualDisplay
{
public:
    VirtualDisplay() = default;
    ~VirtualDisplay();
    Q_DISABLE_COPY_MOVE(VirtualDisplay)

    bool start();
    /// Gives each of these characters a key of its own; before a program takes the keyboard's layout over.
    bool addKeys(const QString &characters);
    /// Name for the environment variable DISPLAY.
    QString name() const { return m_name; }

private:
    QProcess m_server;
    QString m_name;
};

} // namespace cadorel
