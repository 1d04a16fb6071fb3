// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Keyring/FakeSecretService.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace cadorel {

/// The struct "Secret" of the Secret Service API.
struct DBusSecret
{
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

QDBusArgument &operator<<(QDBusArgument &argument, const DBusSecret &secret)
{
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DBusSecret &secret)
{
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    return argument;
}

} // namespace cadorel

Q_DECLARE_METATYPE(cadorel::DBusSecret)

namespace cadorel {

namespace {

using Paths = QList<QDBusObjectPath>;

const QDBusObjectPath noPath{u"/"_s};
const QDBusObjectPath itemPath{u"/org/freedesktop/secrets/collection/default/1"_s};
const QDBusObjectPath promptPath{u"/org/freedesktop/secrets/prompt/1"_s};
const QDBusObjectPath sessionPath{u"/org/freedesktop/secrets/session/1"_s};

template <typename T>
QVariant variant(const T &value)
{
    return QVariant::fromValue(value);
}

} // namespace

FakeSecretService::FakeSecretService(PrivateBus &bus)
    : m_connection(bus.connection(u"secrets"_s))
    , m_connectionName(m_connection.name())
{
    qDBusRegisterMetaType<DBusSecret>();
    qDBusRegisterMetaType<QMap<QString, QString>>();
    m_connection.registerVirtualObject(u"/org/freedesktop/secrets"_s, this, QDBusConnection::SubPath);
}

FakeSecretService::~FakeSecretService()
{
    m_connection.unregisterObject(u"/org/freedesktop/secrets"_s, QDBusConnection::UnregisterTree);
}

bool FakeSecretService::appear()
{
    return m_connection.registerService(u"org.freedesktop.secrets"_s);
}

void FakeSecretService::vanish()
{
    m_connection = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(m_connectionName);
}

QString FakeSecretService::introspect(const QString &) const
{
    return {};
}

bool FakeSecretService::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    called.append(message.member());
    if (unanswered.contains(u"*"_s) || unanswered.contains(message.member())) {
        message.setDelayedReply(true);
        return true;
    }
    if (failing.contains(message.member()))
        return connection.send(message.createErrorReply(u"com.example.Failed"_s, u"not today"_s));
    return connection.send(answer(message));
}

QDBusMessage FakeSecretService::answer(const QDBusMessage &message)
{
    const QString method = message.member();
    if (method == u"GetAll") {
        if (message.path() != itemPath.path())
            return message.createReply(QVariantMap());
        return message.createReply(QVariantMap{{u"Locked"_s, isLocked},
                                               {u"Label"_s, u"label"_s},
                                               {u"Attributes"_s, variant(QMap<QString, QString>())},
                                               {u"Created"_s, quint64(0)},
                                               {u"Modified"_s, quint64(0)}});
    }
    if (method == u"OpenSession") {
        if (message.arguments().value(0).toString() != u"plain")
            return message.createErrorReply(QDBusError::NotSupported, u"plain only"_s);
        return message.createReply(QVariantList{variant(QDBusVariant(QString())), variant(sessionPath)});
    }
    if (method == u"SearchItems") {
        const Paths found = hasItem ? Paths{itemPath} : Paths();
        return message.createReply(
            QVariantList{variant(isLocked ? Paths() : found), variant(isLocked ? found : Paths())});
    }
    if (method == u"Unlock") {
        return message.createReply(QVariantList{variant(isLocked ? Paths() : Paths{itemPath}),
                                                variant(isLocked ? promptPath : noPath)});
    }
    if (method == u"Prompt") {
        isPromptOpen = true;
        return message.createReply();
    }
    if (method == u"GetSecret") {
        return message.createReply(variant(DBusSecret{.session = sessionPath,
                                                      .parameters = {},
                                                      .value = secret,
                                                      .contentType = QString::fromUtf8(contentType)}));
    }
    if (method == u"SetSecret") {
        secret = qdbus_cast<DBusSecret>(message.arguments().value(0)).value;
        return message.createReply();
    }
    if (method == u"Delete") {
        hasItem = false;
        return message.createReply(variant(noPath));
    }
    return message.createErrorReply(QDBusError::UnknownMethod, method);
}

void FakeSecretService::endPrompt(bool isDismissed)
{
    isPromptOpen = false;
    if (!isDismissed)
        isLocked = false;
    QDBusMessage completed =
        QDBusMessage::createSignal(promptPath.path(), u"org.freedesktop.Secret.Prompt"_s, u"Completed"_s);
    completed << isDismissed << variant(QDBusVariant(variant(isDismissed ? Paths() : Paths{itemPath})));
    m_connection.send(completed);
}

} // namespace cadorel
