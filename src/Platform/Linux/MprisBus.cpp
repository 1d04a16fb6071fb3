// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MprisBus.h"

#include "Platform/Clock.h"
#include "Platform/Linux/LinuxLog.h"
#include "Platform/Linux/MprisProperties.h"
#include "Utils/Tasks.h"

#include <QCoreApplication>
#include <QCoroDBusPendingCall>
#include <QCoroFuture>
#include <QDBusPendingCall>
#include <QPointer>
#include <QUuid>
#include <QtConcurrent>

#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

// What the bus answers to RequestName, and the flag that asks it not to queue us (D-Bus).
constexpr uint primaryOwner = 1;
constexpr uint nameExists = 3;
constexpr uint doNotQueue = 4;

QDBusMessage requestFor(const QString &name)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"RequestName"_s);
    message << name << doNotQueue;
    return message;
}

} // namespace

MprisBus::MprisBus(Connect connect, QDBusVirtualObject &object, const Clock &clock)
    : m_connect(std::move(connect))
    , m_object(object)
    , m_clock(clock)
{
    detach(join());
}

MprisBus::~MprisBus()
{
    leave();
}

void MprisBus::leave()
{
    if (!m_connection)
        return;
    const QString name = m_connection->name();
    m_connection->unregisterObject(mpris::objectPath);
    m_connection.reset();
    QDBusConnection::disconnectFromBus(name);
}

QCoro::Task<void> MprisBus::join()
{
    const QPointer<MprisBus> self(this);
    m_isJoining = true;
    m_lastLook = m_clock.monotonic();
    // A connection of our own: the one that Qt shares does not come back once it is lost.
    const QString name = u"cadorel mpris "_s + QUuid::createUuid().toString(QUuid::Id128);
    QDBusConnection connection = co_await QtConcurrent::run(m_connect, name);
    if (!self || !connection.isConnected()) {
        QDBusConnection::disconnectFromBus(connection.name());
        if (self)
            m_isJoining = false;
        co_return;
    }
    m_isJoining = false;
    m_isLost = false;
    m_connection = connection;
    connection.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s,
                       u"Disconnected"_s, this, SLOT(lose()));
    // The object before the name: who sees the name asks for the properties at once.
    connection.registerVirtualObject(mpris::objectPath, &m_object, QDBusConnection::SingleNode);
    Q_EMIT appeared();
    co_await takeName(connection);
}

QCoro::Task<void> MprisBus::takeName(QDBusConnection connection)
{
    const QString second =
        u"%1.instance%2"_s.arg(busName, QString::number(QCoreApplication::applicationPid()));
    for (const QString &name : {QString(busName), second}) {
        const QDBusPendingCall call = connection.asyncCall(requestFor(name));
        const QDBusMessage answer = co_await call;
        const uint outcome = answer.arguments().value(0).toUInt();
        if (outcome == primaryOwner)
            co_return;
        if (answer.type() == QDBusMessage::ErrorMessage || outcome != nameExists) {
            qCInfo(linuxLog).noquote() << "the bus does not give" << name << answer.errorMessage();
            co_return;
        }
    }
    qCWarning(linuxLog).noquote() << "no media controls:" << second << "is taken";
}

void MprisBus::lose()
{
    leave();
    m_isLost = true;
}

void MprisBus::returnIfLost()
{
    if (m_isLost && !m_isJoining && m_clock.monotonic() - m_lastLook >= lookInterval)
        detach(join());
}

void MprisBus::send(const QDBusMessage &message)
{
    if (m_connection)
        m_connection->send(message);
}

} // namespace cadorel
