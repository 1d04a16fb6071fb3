// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/MisbehavingServer.h"

#include "Servers/ServerConnection.h"
#include "Servers/TestCertificate.h"

#include <QSslSocket>
#include <QTcpServer>

#include <algorithm>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

/// Accepts connections, on the server's thread.
class ServerListener : public QTcpServer
{
public:
    ServerListener(std::shared_ptr<ServerScript> script, bool isEncrypted)
        : m_script(std::move(script))
        , m_isEncrypted(isEncrypted)
    {
        setListenBacklogSize(backlog);
    }

    void release()
    {
        for (ServerConnection *connection : connections())
            connection->release();
    }
    void breakConnections() { qDeleteAll(connections()); }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto *socket = m_isEncrypted ? new QSslSocket : new QTcpSocket;
        socket->setSocketDescriptor(descriptor);
        if (auto *encrypted = qobject_cast<QSslSocket *>(socket)) {
            encrypted->setLocalCertificate(TestCertificate::shared().certificate);
            encrypted->setPrivateKey(TestCertificate::shared().key);
            encrypted->startServerEncryption();
        }
        new ServerConnection(socket, m_script, this);
    }

private:
    static constexpr int backlog = 200;

    QList<ServerConnection *> connections() const
    {
        return findChildren<ServerConnection *>(QString(), Qt::FindDirectChildrenOnly);
    }

    std::shared_ptr<ServerScript> m_script;
    bool m_isEncrypted = false;
};

MisbehavingServer::MisbehavingServer()
    : MisbehavingServer(Options{})
{
}

MisbehavingServer::MisbehavingServer(const Options &options)
    : m_script(std::make_shared<ServerScript>())
    , m_listener(new ServerListener(m_script, options.isEncrypted))
{
    if (options.isEncrypted)
        TestCertificate::shared();
    if (!m_listener->listen(options.address, options.port))
        qFatal("the server cannot listen: %ls", qUtf16Printable(m_listener->errorString()));
    m_port = m_listener->serverPort();
    m_origin = (options.isEncrypted ? "https://"_ba : "http://"_ba) + options.address.toString().toLatin1() +
               ':' + QByteArray::number(m_port);
    m_thread.setObjectName(u"MisbehavingServer"_s);
    m_listener->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_listener, &QObject::deleteLater);
    m_thread.start();
}

MisbehavingServer::~MisbehavingServer()
{
    m_thread.quit();
    m_thread.wait();
}

QUrl MisbehavingServer::url(const QByteArray &path) const
{
    return QUrl::fromEncoded(m_origin + path);
}

void MisbehavingServer::answer(const QByteArray &path, const ServerAnswer &answer)
{
    m_script->setAnswers(path, {answer});
}

void MisbehavingServer::answer(const QByteArray &path, const QList<ServerAnswer> &answers)
{
    m_script->setAnswers(path, answers);
}

void MisbehavingServer::answer(const QByteArray &path, ServerScript::Handler handler)
{
    m_script->setHandler(path, std::move(handler));
}

void MisbehavingServer::answerEverything(ServerScript::Handler handler)
{
    m_script->setDefault(std::move(handler));
}

void MisbehavingServer::requireBasic(const QString &user, const QString &password)
{
    m_script->requireBasic(user, password);
}

void MisbehavingServer::release()
{
    QMetaObject::invokeMethod(
        m_listener, [listener = m_listener] { listener->release(); }, Qt::BlockingQueuedConnection);
}

void MisbehavingServer::breakConnections()
{
    QMetaObject::invokeMethod(
        m_listener, [listener = m_listener] { listener->breakConnections(); }, Qt::BlockingQueuedConnection);
}

int MisbehavingServer::requestCount(const QByteArray &path) const
{
    const QList<ServedRequest> all = requests();
    return static_cast<int>(std::count_if(
        all.begin(), all.end(), [&path](const ServedRequest &request) { return request.path() == path; }));
}

} // namespace cadorel
