// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QString>

namespace cadorel {

/// An X server of its own without a screen to look at, with software OpenGL.
class VirtualDisplay
{
public:
    /// Ends this process when no display can be started.
    VirtualDisplay();
    ~VirtualDisplay();
    Q_DISABLE_COPY_MOVE(VirtualDisplay)

    /// For DISPLAY.
    QString name() const { return m_name; }
    /// Puts what a program needs to open its windows here, and nowhere else, into its environment.
    void enter(QProcessEnvironment &environment) const;
    /// Runs xdotool with these arguments. @return what it printed; empty when it failed
    QString xdotool(const QStringList &arguments) const;

private:
    QProcess m_server;
    QString m_name;
};

} // namespace cadorel
