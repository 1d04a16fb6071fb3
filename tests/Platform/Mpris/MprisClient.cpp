// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpris/MprisClient.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QTest>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr int limitMs = 20'000;
const QString objectPath = u"/org/mpris/MediaPlayer2"_s;
const QString propertiesInterface = u"org.freedesktop.DBus.Properties"_s;

} // namespace

const QString MprisClient::playerInterface = u"org.mpris.MediaPlayer2.Player"_s;
const QString MprisClient::rootInterface = u"org.mpris.MediaPlayer2"_s;

MprisClient::MprisClient(PrivateBus &bus, const QString &service)
    : m_bus(bus)
    , m_service(service)
    , m_connectionName(QUuid::createUuid().toString())
    , m_connection(bus.connection(m_connectionName))
{
    m_connection.connect(QString(), objectPath, propertiesInterface, u"PropertiesChanged"_s, this,
                         SLOT(receive(QDBusMessage)));
    m_connection.connect(QString(), objectPath, playerInterface, u"Seeked"_s, this,
                         SLOT(receive(QDBusMessage)));
}

MprisClient::~MprisClient()
{
    QDBusConnection::disconnectFromBus(m_connection.name());
}

bool MprisClient::findsPlayer()
{
    return QTest::qWaitFor([this] { return m_bus.hasService(m_service); }, limitMs);
}

QDBusMessage MprisClient::call(const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_service, objectPath, interface, method);
    message.setArguments(arguments);
    const QDBusPendingCall pending = m_connection.asyncCall(message);
    if (!QTest::qWaitFor([&pending] { return pending.isFinished(); }, limitMs))
        return QDBusMessage::createError(QDBusError::Timeout, u"no answer"_s);
    return pending.reply();
}

QString MprisClient::play(const QString &method, const QVariantList &arguments)
{
    return call(playerInterface, method, arguments).errorName();
}

QVariant MprisClient::get(const QString &interface, const QString &property)
{
    const QDBusMessage answer = call(propertiesInterface, u"Get"_s, {interface, property});
    return answer.arguments().value(0).value<QDBusVariant>().variant();
}

QVariantMap MprisClient::getAll(const QString &interface)
{
    return qdbus_cast<QVariantMap>(call(propertiesInterface, u"GetAll"_s, {interface}).arguments().value(0));
}

QVariantMap MprisClient::metadata()
{
    return qdbus_cast<QVariantMap>(get(u"Metadata"_s));
}

QString MprisClient::set(const QString &interface, const QString &property, const QVariant &value)
{
    return call(propertiesInterface, u"Set"_s,
                {interface, property, QVariant::fromValue(QDBusVariant(value))})
        .errorName();
}

bool MprisClient::settle()
{
    // What is to be announced is queued: the first turn sends it, and answers come after what was sent
    // before.
    QCoreApplication::processEvents();
    const bool answers =
        call(u"org.freedesktop.DBus.Peer"_s, u"Ping"_s).type() == QDBusMessage::ReplyMessage &&
        get(u"PlaybackStatus"_s).isValid();
    QCoreApplication::processEvents();
    return answers;
}

QList<QVariantMap> MprisClient::takeChanges()
{
    if (!settle())
        return {{{u"no answer"_s, true}}};
    return std::exchange(m_changes, {});
}

QList<qlonglong> MprisClient::takeJumps()
{
    if (!settle())
        return {-1};
    return std::exchange(m_jumps, {});
}

QString MprisClient::signature(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<QDBusArgument>())
        return value.value<QDBusArgument>().currentSignature();
    return QString::fromLatin1(QDBusMetaType::typeToSignature(value.metaType()));
}

void MprisClient::receive(const QDBusMessage &message)
{
    if (message.member() == "Seeked"_L1) {
        m_jumps.append(message.arguments().value(0).toLongLong());
        return;
    }
    QVariantMap changed = qdbus_cast<QVariantMap>(message.arguments().value(1));
    if (message.arguments().value(0).toString() != playerInterface ||
        !message.arguments().value(2).toStringList().isEmpty())
        changed.insert(u"of something else"_s, true);
    if (changed.contains(u"Metadata"_s))
        changed[u"Metadata"_s] = qdbus_cast<QVariantMap>(changed.value(u"Metadata"_s));
    m_changes.append(changed);
}

} // namespace cadorel
