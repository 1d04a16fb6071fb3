// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/MprisObject.h"

#include "Platform/Linux/MprisProperties.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include <array>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr QLatin1StringView propertiesInterface{"org.freedesktop.DBus.Properties"};

constexpr QLatin1StringView introspection{R"(  <interface name="org.mpris.MediaPlayer2">
    <method name="Raise"/>
    <method name="Quit"/>
    <property name="CanQuit" type="b" access="read"/>
    <property name="CanRaise" type="b" access="read"/>
    <property name="HasTrackList" type="b" access="read"/>
    <property name="Identity" type="s" access="read"/>
    <property name="DesktopEntry" type="s" access="read"/>
    <property name="SupportedUriSchemes" type="as" access="read"/>
    <property name="SupportedMimeTypes" type="as" access="read"/>
  </interface>
  <interface name="org.mpris.MediaPlayer2.Player">
    <method name="Next"/>
    <method name="Previous"/>
    <method name="Pause"/>
    <method name="PlayPause"/>
    <method name="Stop"/>
    <method name="Play"/>
    <method name="Seek">
      <arg name="Offset" type="x" direction="in"/>
    </method>
    <method name="SetPosition">
      <arg name="TrackId" type="o" direction="in"/>
      <arg name="Position" type="x" direction="in"/>
    </method>
    <method name="OpenUri">
      <arg name="Uri" type="s" direction="in"/>
    </method>
    <signal name="Seeked">
      <arg name="Position" type="x"/>
    </signal>
    <property name="PlaybackStatus" type="s" access="read"/>
    <property name="LoopStatus" type="s" access="readwrite"/>
    <property name="Rate" type="d" access="readwrite"/>
    <property name="Shuffle" type="b" access="readwrite"/>
    <property name="Metadata" type="a{sv}" access="read"/>
    <property name="Volume" type="d" access="readwrite"/>
    <property name="Position" type="x" access="read">
      <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/>
    </property>
    <property name="MinimumRate" type="d" access="read"/>
    <property name="MaximumRate" type="d" access="read"/>
    <property name="CanGoNext" type="b" access="read"/>
    <property name="CanGoPrevious" type="b" access="read"/>
    <property name="CanPlay" type="b" access="read"/>
    <property name="CanPause" type="b" access="read"/>
    <property name="CanSeek" type="b" access="read"/>
    <property name="CanControl" type="b" access="read">
      <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/>
    </property>
  </interface>
)"};

struct Method
{
    QLatin1StringView interface;
    QLatin1StringView name;
    QLatin1StringView signature;
};

constexpr std::array methods{Method{mpris::rootInterface, "Raise"_L1, ""_L1},
                             Method{mpris::rootInterface, "Quit"_L1, ""_L1},
                             Method{mpris::playerInterface, "Next"_L1, ""_L1},
                             Method{mpris::playerInterface, "Previous"_L1, ""_L1},
                             Method{mpris::playerInterface, "Pause"_L1, ""_L1},
                             Method{mpris::playerInterface, "PlayPause"_L1, ""_L1},
                             Method{mpris::playerInterface, "Stop"_L1, ""_L1},
                             Method{mpris::playerInterface, "Play"_L1, ""_L1},
                             Method{mpris::playerInterface, "Seek"_L1, "x"_L1},
                             Method{mpris::playerInterface, "SetPosition"_L1, "ox"_L1},
                             Method{mpris::playerInterface, "OpenUri"_L1, "s"_L1}};

struct WritableProperty
{
    QLatin1StringView name;
    QMetaType::Type type;
};

constexpr std::array writableProperties{
    WritableProperty{"LoopStatus"_L1, QMetaType::QString}, WritableProperty{"Rate"_L1, QMetaType::Double},
    WritableProperty{"Shuffle"_L1, QMetaType::Bool}, WritableProperty{"Volume"_L1, QMetaType::Double}};

/// A caller may leave out the interface.
bool covers(const QString &asked, QLatin1StringView interface)
{
    return asked.isEmpty() || asked == interface;
}

bool isOurs(const QString &interface)
{
    return covers(interface, mpris::rootInterface) || covers(interface, mpris::playerInterface);
}

QDBusMessage wrongArguments(const QDBusMessage &message)
{
    return message.createErrorReply(QDBusError::InvalidArgs,
                                    u"%1 does not take \"%2\""_s.arg(message.member(), message.signature()));
}

QDBusMessage unknownInterface(const QDBusMessage &message, const QString &name)
{
    return message.createErrorReply(QDBusError::UnknownInterface, u"no interface %1"_s.arg(name));
}

QDBusMessage reply(const QDBusMessage &message, const MprisEndpoint::Result &result)
{
    return result ? message.createReply()
                  : message.createErrorReply(result.error().type, result.error().text);
}

void send(const QDBusMessage &message, const QDBusMessage &answer, const QDBusConnection &connection)
{
    if (message.isReplyRequired())
        connection.send(answer);
}

} // namespace

MprisObject::MprisObject(MprisEndpoint &endpoint)
    : m_endpoint(endpoint)
{
}

QString MprisObject::introspect(const QString &path) const
{
    return path == mpris::objectPath ? QString(introspection) : QString();
}

bool MprisObject::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    const QString interface = message.interface();
    if (interface == propertiesInterface) {
        send(message, answerProperties(message), connection);
        return true;
    }
    for (const Method &method : methods) {
        if (message.member() != method.name || !covers(interface, method.interface))
            continue;
        if (message.signature() != method.signature)
            send(message, wrongArguments(message), connection);
        else
            send(message, reply(message, m_endpoint.call(method.name, message.arguments())), connection);
        return true;
    }
    if (interface != mpris::rootInterface && interface != mpris::playerInterface)
        return false; // the interfaces that every object has are QtDBus's
    send(message,
         message.createErrorReply(QDBusError::UnknownMethod, u"no method %1"_s.arg(message.member())),
         connection);
    return true;
}

QDBusMessage MprisObject::answerProperties(const QDBusMessage &message)
{
    const QString member = message.member();
    const QString signature = message.signature();
    if (member == "Get"_L1)
        return signature == "ss"_L1 ? get(message) : wrongArguments(message);
    if (member == "GetAll"_L1)
        return signature == "s"_L1 ? getAll(message) : wrongArguments(message);
    if (member == "Set"_L1)
        return signature == "ssv"_L1 ? set(message) : wrongArguments(message);
    return message.createErrorReply(QDBusError::UnknownMethod, u"no method %1"_s.arg(member));
}

QDBusMessage MprisObject::get(const QDBusMessage &message) const
{
    const QString interface = message.arguments().constFirst().toString();
    const QString name = message.arguments().constLast().toString();
    if (!isOurs(interface))
        return unknownInterface(message, interface);
    const QVariant value = m_endpoint.properties(interface).value(name);
    if (!value.isValid())
        return message.createErrorReply(QDBusError::UnknownProperty, u"no property %1"_s.arg(name));
    return message.createReply(QVariant::fromValue(QDBusVariant(value)));
}

QDBusMessage MprisObject::getAll(const QDBusMessage &message) const
{
    const QString interface = message.arguments().constFirst().toString();
    if (!isOurs(interface))
        return unknownInterface(message, interface);
    return message.createReply(m_endpoint.properties(interface));
}

QDBusMessage MprisObject::set(const QDBusMessage &message)
{
    const QString interface = message.arguments().constFirst().toString();
    const QString name = message.arguments().at(1).toString();
    if (!isOurs(interface))
        return unknownInterface(message, interface);
    if (!m_endpoint.properties(interface).contains(name))
        return message.createErrorReply(QDBusError::UnknownProperty, u"no property %1"_s.arg(name));
    for (const WritableProperty &property : writableProperties) {
        if (property.name != name)
            continue;
        const QVariant value = message.arguments().constLast().value<QDBusVariant>().variant();
        if (value.typeId() != property.type)
            return message.createErrorReply(QDBusError::InvalidArgs, u"wrong type for %1"_s.arg(name));
        return reply(message, m_endpoint.change(name, value));
    }
    return message.createErrorReply(QDBusError::PropertyReadOnly, u"%1 is read-only"_s.arg(name));
}

} // namespace cadorel
