// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakePortal.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr QLatin1StringView service{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView settingsInterface{"org.freedesktop.portal.Settings"};

QList<FakePortal::Filter> readFilters(const QVariant &value)
{
    QList<FakePortal::Filter> filters;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != u"a(sa(us))"_s)
        return filters;
    argument.beginArray();
    while (!argument.atEnd()) {
        FakePortal::Filter filter;
        argument.beginStructure();
        argument >> filter.name;
        argument.beginArray();
        while (!argument.atEnd()) {
            uint kind = 0;
            QString pattern;
            argument.beginStructure();
            argument >> kind >> pattern;
            argument.endStructure();
            filter.patterns.append(u"%1 %2"_s.arg(kind).arg(pattern));
        }
        argument.endArray();
        argument.endStructure();
        filters.append(filter);
    }
    argument.endArray();
    return filters;
}

} // namespace

FakePortal::FakePortal()
    : m_isBusRunning(m_bus.start())
    , m_connection(m_bus.connection(u"portal"_s))
    , m_name(m_connection.name())
{
    m_connection.registerVirtualObject(u"/org/freedesktop/portal/desktop"_s, this, QDBusConnection::SubPath);
}

FakePortal::~FakePortal()
{
    m_connection.unregisterObject(u"/org/freedesktop/portal/desktop"_s);
}

QDBusConnection FakePortal::client()
{
    return m_bus.connection(u"client"_s);
}

bool FakePortal::appear()
{
    return m_connection.registerService(service);
}

void FakePortal::vanish()
{
    m_connection = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(m_name);
}

QString FakePortal::introspect(const QString &) const
{
    return {};
}

bool FakePortal::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (message.member() == u"Get")
        return answerVersion(message, connection);
    if (message.interface() == settingsInterface)
        return readSettings(message, connection);
    return message.interface() == u"org.freedesktop.portal.FileChooser" && message.member() == u"OpenFile" &&
           openFile(message, connection);
}

bool FakePortal::answerVersion(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (isHanging) {
        message.setDelayedReply(true);
        return true;
    }
    if (version == 0)
        return connection.send(
            message.createErrorReply(QDBusError::UnknownInterface, u"no such interface"_s));
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(version))));
}

bool FakePortal::openFile(const QDBusMessage &message, const QDBusConnection &connection)
{
    ++opened;
    if (isRefusing)
        return connection.send(message.createErrorReply(QDBusError::AccessDenied, u"not today"_s));
    parentWindow = message.arguments().value(0).toString();
    title = message.arguments().value(1).toString();
    options = qdbus_cast<QVariantMap>(message.arguments().value(2));
    filters = readFilters(options.value(u"filters"_s));

    const QString sender = message.service().sliced(1).replace(u'.', u'_');
    const QString token = choosesPath ? u"own"_s : options.value(u"handle_token"_s).toString();
    const QString path = u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(sender, token);
    QDBusMessage answer = QDBusMessage::createTargetedSignal(
        message.service(), path, u"org.freedesktop.portal.Request"_s, u"Response"_s);
    answer << response << QVariantMap{{u"uris"_s, uris}};
    const QDBusMessage handle = message.createReply(QVariant::fromValue(QDBusObjectPath(path)));
    if (answersEarly)
        return connection.send(answer) && connection.send(handle);
    return connection.send(handle) && (leavesOpen || connection.send(answer));
}

bool FakePortal::readSettings(const QDBusMessage &message, const QDBusConnection &connection)
{
    ++settingsRead;
    if (keepsSettings) {
        message.setDelayedReply(true);
        return true;
    }
    if (!settings || message.member() != u"ReadAll") {
        return connection.send(
            message.createErrorReply(QDBusError::UnknownInterface, u"no such interface"_s));
    }
    askedSpaces = message.arguments().value(0).toStringList();
    QMap<QString, QVariantMap> asked;
    for (const QString &space : std::as_const(askedSpaces)) {
        if (settings->contains(space))
            asked.insert(space, settings->value(space));
    }
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
    return connection.send(message.createReply(QVariant::fromValue(asked)));
}

void FakePortal::change(const QString &space, const QString &key, const QVariant &value)
{
    (*settings)[space].insert(key, value);
    QDBusMessage signal = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s, settingsInterface,
                                                     u"SettingChanged"_s);
    signal << space << key << QVariant::fromValue(QDBusVariant(value));
    m_connection.send(signal);
}

} // namespace cadorel
