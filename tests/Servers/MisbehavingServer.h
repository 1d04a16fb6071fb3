// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Servers/ServedRequest.h"
#include "Servers/ServerAnswer.h"
#include "Servers/ServerScript.h"

#include <QHostAddress>
#include <QThread>
#include <QUrl>

#include <memory>

namespace cadorel {

class ServerListener;

/// A web server on loopback that answers what the test tells it to, well or badly, and remembers what it was
/// asked. It runs on a thread of its own, so that it goes on while the test waits. What has no answer gets
/// 404.
///
///     MisbehavingServer server;
///     server.answer("/dav/", ServerAnswer::ok(listing, "application/xml"));
///     server.answer("/dav/a.mp3", {ServerAnswer::status(500), ServerAnswer::ok(bytes)}); // second time:
///     fine server.answer("/dav/b.mp3", ServerAnswer::ok(bytes).holdingAt(100));  // 100 bytes, then waits …
///     service.scan(server.url("/dav/"));
///     QTRY_COMPARE(server.requestCount("/dav/b.mp3"), 1);
///     server.release();                                                     // … and goes on
///     QVERIFY(server.requests().constLast().hasBasicCredentials(user, password));
///
/// Paths are percent-encoded, as they come over the wire, without the query. Any thread, unless said
/// otherwise.
class MisbehavingServer
{
public:
    struct Options
    {
        /// With a certificate that no client trusts of itself: TestCertificate.
        bool isEncrypted = false;
        QHostAddress address = QHostAddress::LocalHost;
        /// 0 takes a free one.
        quint16 port = 0;
    };

    /// Listens when the constructor returns. Fails fatally when it cannot.
    MisbehavingServer();
    explicit MisbehavingServer(const Options &options);
    /// Ends every connection; the port refuses from then on.
    ~MisbehavingServer();
    Q_DISABLE_COPY_MOVE(MisbehavingServer)

    quint16 port() const { return m_port; }
    /// The address of @p path, which is percent-encoded and may have a query.
    QUrl url(const QByteArray &path = "/") const;

    void answer(const QByteArray &path, const ServerAnswer &answer);
    /// One after the other; the last one stays.
    void answer(const QByteArray &path, const QList<ServerAnswer> &answers);
    /// Computes each answer, on the server's thread.
    void answer(const QByteArray &path, ServerScript::Handler handler);
    /// Computes the answer to what has none of its own, on the server's thread.
    void answerEverything(ServerScript::Handler handler);
    /// From now on whoever does not send Basic authentication of this user gets 401.
    void requireBasic(const QString &user, const QString &password);

    /// Sends what the answers under way hold back; later ones hold again.
    void release();
    /// Ends every connection without a word; new ones are answered as before.
    void breakConnections();

    /// Every request so far, in the order of arrival.
    QList<ServedRequest> requests() const { return m_script->requests(); }
    int requestCount() const { return static_cast<int>(requests().size()); }
    int requestCount(const QByteArray &path) const;
    /// Connections accepted so far, and of them those that are still open.
    int connectionCount() const { return m_script->connectionCount(); }
    int openConnections() const { return m_script->openConnections(); }
    /// The most that were open at one time.
    int mostOpenConnections() const { return m_script->mostOpenConnections(); }
    /// Bytes given to the system for sending so far, heads and bodies.
    qint64 bytesSent() const { return m_script->bytesSent(); }

private:
    std::shared_ptr<ServerScript> m_script;
    QByteArray m_origin;
    quint16 m_port = 0;
    QThread m_thread;
    ServerListener *m_listener = nullptr;
};

} // namespace cadorel
