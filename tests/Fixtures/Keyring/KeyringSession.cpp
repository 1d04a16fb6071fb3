// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Keyring/KeyringSession.h"

#include "Fixtures/EndWithParent.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDir>
#include <QStandardPaths>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr QLatin1StringView serviceName{"org.freedesktop.secrets"};
constexpr int limitMs = 20'000;

QDBusMessage serviceCall(QLatin1StringView method)
{
    return QDBusMessage::createMethodCall(serviceName, u"/org/freedesktop/secrets"_s,
                                          u"org.freedesktop.Secret.Service"_s, method);
}

} // namespace

KeyringSession::KeyringSession()
{
    for (const QString &directory : {u"data"_s, u"run"_s})
        QDir(m_home.path()).mkdir(directory);
    QFile::setPermissions(m_home.filePath(u"run"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

KeyringSession::~KeyringSession()
{
    stopKeyring();
}

bool KeyringSession::available()
{
    const QStringList programs{u"dbus-daemon"_s, u"gnome-keyring-daemon"_s};
    return std::ranges::none_of(
        programs, [](const QString &name) { return QStandardPaths::findExecutable(name).isEmpty(); });
}

bool KeyringSession::start()
{
    if (!m_isBusRunning)
        m_isBusRunning = m_bus.start();
    if (!m_isBusRunning)
        return false;
    QProcessEnvironment own = environment();
    own.insert(u"HOME"_s, m_home.path());
    own.insert(u"XDG_DATA_HOME"_s, m_home.filePath(u"data"_s));
    own.insert(u"XDG_RUNTIME_DIR"_s, m_home.filePath(u"run"_s));
    for (const QString &name :
         {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"GNOME_KEYRING_CONTROL"_s, u"SSH_AUTH_SOCK"_s})
        own.remove(name);
    m_keyring = std::make_unique<QProcess>();
    m_keyring->setProcessEnvironment(own);
    m_keyring->setStandardOutputFile(QProcess::nullDevice());
    m_keyring->setStandardErrorFile(m_home.filePath(u"keyring.log"_s));
    endWithParent(*m_keyring);
    m_keyring->start(u"gnome-keyring-daemon"_s,
                     {u"--foreground"_s, u"--unlock"_s, u"--components=secrets"_s});
    m_keyring->write("test\n"); // the password of the keyring, which is made at the first start
    m_keyring->closeWriteChannel();
    return QTest::qWaitFor([this] { return m_bus.hasService(serviceName); }, limitMs);
}

void KeyringSession::stopKeyring()
{
    if (!m_keyring)
        return;
    m_keyring->kill();
    m_keyring->waitForFinished();
    m_keyring.reset();
}

bool KeyringSession::lock()
{
    QDBusMessage message = serviceCall("Lock"_L1);
    message << QVariant::fromValue(
        QList<QDBusObjectPath>{QDBusObjectPath(u"/org/freedesktop/secrets/collection/login"_s)});
    const QDBusMessage reply = m_bus.connection(u"control"_s).call(message, QDBus::Block, limitMs);
    return reply.type() == QDBusMessage::ReplyMessage &&
           qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().value(0)).size() == 1;
}

QProcessEnvironment KeyringSession::environment(const QProcessEnvironment &base) const
{
    QProcessEnvironment environment = base;
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus.address());
    return environment;
}

int KeyringSession::itemCount(const QString &service, const QString &account)
{
    qDBusRegisterMetaType<QMap<QString, QString>>();
    QDBusMessage message = serviceCall("SearchItems"_L1);
    message << QVariant::fromValue(QMap<QString, QString>{
        {u"xdg:schema"_s, u"com.cadorel.password"_s}, {u"service"_s, service}, {u"account"_s, account}});
    const QDBusMessage reply = m_bus.connection(u"control"_s).call(message, QDBus::Block, limitMs);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return -1;
    qsizetype count = 0;
    for (const QVariant &paths : reply.arguments())
        count += qdbus_cast<QList<QDBusObjectPath>>(paths).size();
    return static_cast<int>(count);
}

} // namespace cadorel
