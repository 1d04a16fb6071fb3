// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/VirtualDisplay.h"

#include <QElapsedTimer>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int limitMs = 20000;
/// No key of the usual layout has this code or a higher one.
constexpr int firstFreeKey = 240;

} // namespace

VirtualDisplay::~VirtualDisplay()
{
    if (m_server.state() == QProcess::NotRunning)
        return;
    m_server.terminate();
    if (!m_server.waitForFinished(limitMs))
        m_server.kill();
    m_server.waitForFinished(limitMs);
}

bool VirtualDisplay::start()
{
    // The server chooses a free number itself and says it once it takes connections.
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"800x1000x24"_s,
                               u"-nolisten"_s, u"tcp"_s, u"-noreset"_s});
    QElapsedTimer waited;
    waited.start();
    QByteArray number;
    while (!number.contains('\n') && waited.elapsed() < limitMs && m_server.state() != QProcess::NotRunning) {
        m_server.waitForReadyRead(100);
        number += m_server.readAllStandardOutput();
    }
    m_name = u':' + QString::fromLatin1(number.trimmed());
    return number.contains('\n');
}

bool VirtualDisplay::addKeys(const QString &characters)
{
    QStringList arguments{u"-display"_s, m_name};
    for (int i = 0; i < characters.size(); ++i)
        arguments +=
            {u"-e"_s,
             u"keycode %1 = U%2"_s.arg(firstFreeKey + i).arg(characters[i].unicode(), 4, 16, QChar(u'0'))};
    QProcess tool;
    tool.start(u"xmodmap"_s, arguments);
    return tool.waitForFinished(limitMs) && tool.exitCode() == 0;
}

} // namespace cadorel
