// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/VirtualDisplay.h"

#include <QProcessEnvironment>

namespace cadorel {

using namespace Qt::StringLiterals;

VirtualDisplay::VirtualDisplay()
{
    constexpr int limitMs = 20'000;
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x1024x24"_s,
                               u"-nolisten"_s, u"tcp"_s, u"-noreset"_s});
    while (!m_server.canReadLine()) {
        if (!m_server.waitForReadyRead(limitMs))
            qFatal("Xvfb does not start");
    }
    m_name = u':' + QString::fromLatin1(m_server.readLine()).trimmed();
}

VirtualDisplay::~VirtualDisplay()
{
    m_server.terminate();
    m_server.waitForFinished();
}

void VirtualDisplay::enter(QProcessEnvironment &environment) const
{
    environment.insert(u"DISPLAY"_s, m_name);
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"LIBGL_ALWAYS_SOFTWARE"_s, u"1"_s);
    environment.insert(u"QT_FORCE_STDERR_LOGGING"_s, u"1"_s);
    environment.remove(u"QT_QUICK_BACKEND"_s);
}

QString VirtualDisplay::xdotool(const QStringList &arguments) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, m_name);
    process.setProcessEnvironment(environment);
    process.start(u"xdotool"_s, arguments);
    process.waitForFinished();
    return process.exitCode() == 0 ? QString::fromUtf8(process.readAllStandardOutput()).trimmed() : QString();
}

} // namespace cadorel
