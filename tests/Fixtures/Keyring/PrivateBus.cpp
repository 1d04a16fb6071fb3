// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Keyring/PrivateBus.h"

#include "Fixtures/EndWithParent.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

bool writeFile(const QString &path, const QString &text)
{
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

PrivateBus::~PrivateBus()
{
    stop();
}

void PrivateBus::addService(const QString &name, const QString &command)
{
    const QString text = u"[D-BUS Service]\nName=%1\nExec=%2\n"_s.arg(name, command);
    QDir(m_directory.path()).mkdir(u"services"_s);
    if (!writeFile(m_directory.filePath(u"services/%1.service"_s.arg(name)), text))
        qFatal("cannot write a service file");
}

bool PrivateBus::start()
{
    // Without its own limit the bus refuses more than 128 questions at once, which the session bus of a
    // desktop does not: its configuration allows as many as here.
    const QString configuration = m_directory.filePath(u"bus.conf"_s);
    const QString text = uR"(<busconfig><type>session</type><listen>%1</listen><auth>EXTERNAL</auth>
<servicedir>%2</servicedir>
<policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
</policy>
<limit name="max_replies_per_connection">50000</limit></busconfig>
)"_s.arg(address(), m_directory.filePath(u"services"_s));
    if (!writeFile(configuration, text))
        return false;
    endWithParent(m_daemon);
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(u"dbus-daemon"_s, {u"--config-file="_s + configuration, u"--nofork"_s, u"--nopidfile"_s,
                                      u"--print-address"_s});
    return m_daemon.waitForReadyRead(20'000);
}

void PrivateBus::stop()
{
    for (const QString &name : std::as_const(m_connections))
        QDBusConnection::disconnectFromBus(name);
    m_connections.clear();
    if (m_daemon.state() == QProcess::NotRunning)
        return;
    m_daemon.kill();
    m_daemon.waitForFinished();
}

QString PrivateBus::address() const
{
    return u"unix:path="_s + m_directory.filePath(u"bus"_s);
}

QDBusConnection PrivateBus::connection(const QString &name)
{
    const QString unique = m_directory.path() + u' ' + name;
    if (!m_connections.contains(unique))
        m_connections.append(unique);
    return QDBusConnection::connectToBus(address(), unique);
}

bool PrivateBus::hasService(const QString &name)
{
    return connection(u"watch"_s).interface()->isServiceRegistered(name).value();
}

} // namespace cadorel
