// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/MisbehavingServer.h"

#include <QTcpSocket>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QByteArray request(const QByteArray &target, const QByteArray &headers = {},
                   const QByteArray &method = "GET"_ba)
{
    return method + ' ' + target + " HTTP/1.1\r\nHost: test\r\n" + headers + "\r\n";
}

/// What the server sends until it ends the connection or has sent @p size bytes.
QByteArray received(QTcpSocket &socket, qint64 size = -1)
{
    QByteArray bytes;
    const auto isDone = [&] {
        bytes += socket.readAll();
        return size >= 0 ? bytes.size() >= size : socket.state() == QAbstractSocket::UnconnectedState;
    };
    return QTest::qWaitFor(isDone, 20000) ? bytes : "(no end)"_ba;
}

} // namespace

class TestMisbehavingServer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sendsWhatWasWritten_data();
    void sendsWhatWasWritten();
    void answersInTurnAndRemembersRequests();
    void asksForBasicAuthentication();
    void holdsUntilReleased();
    void makesLongBodiesWhileTheyAreSent();
    void tricklesPieces();
};

void TestMisbehavingServer::sendsWhatWasWritten_data()
{
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<int>("which");
    QTest::newRow("chunked") << "HTTP/1.1 200 Scripted\r\nContent-Type: text/plain\r\n"
                                "X-End: yes\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n"_ba
                             << 0;
    QTest::newRow("until close") << "HTTP/1.1 200 Scripted\r\nContent-Type: text/plain\r\n"
                                    "Connection: close\r\n\r\nhello"_ba
                                 << 1;
    QTest::newRow("announces more") << "HTTP/1.1 200 Scripted\r\nContent-Type: text/plain\r\n"
                                       "Content-Length: 9\r\n\r\nhello"_ba
                                    << 2;
    QTest::newRow("ends in the middle") << "HTTP/1.1 200 Scripted\r\nContent-Type: text/plain\r\n"
                                           "Content-Length: 5\r\n\r\nhe"_ba
                                        << 3;
    QTest::newRow("garbage") << "\x01\x02 what?\r\n"_ba << 4;
    QTest::newRow("nothing") << ""_ba << 5;
}

void TestMisbehavingServer::sendsWhatWasWritten()
{
    QFETCH(const QByteArray, expected);
    QFETCH(const int, which);
    const ServerAnswer hello = ServerAnswer::ok("hello"_ba, "text/plain"_ba);
    const QList<ServerAnswer> answers{hello.chunked().with("X-End"_ba, "yes"_ba),
                                      hello.untilClose(),
                                      hello.announcing(9),
                                      hello.endingAfter(2),
                                      ServerAnswer::raw("\x01\x02 what?\r\n"_ba),
                                      ServerAnswer::hangUp()};
    MisbehavingServer server;
    server.answer("/a"_ba, answers.at(which));
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, server.port());
    socket.write(request("/a"_ba));
    const bool staysOpen = which == 0;
    QCOMPARE(received(socket, staysOpen ? expected.size() : -1), expected);
}

void TestMisbehavingServer::answersInTurnAndRemembersRequests()
{
    MisbehavingServer server;
    server.answer("/a%20b"_ba, {ServerAnswer::status(500, "no"_ba), ServerAnswer::ok("yes"_ba)});
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, server.port());
    // Two at once over one connection are answered in order.
    socket.write(request("/a%20b?x=1"_ba, "Depth: 1\r\n"_ba) +
                 request("/a%20b"_ba, "Content-Length: 4\r\n"_ba, "PROPFIND"_ba) + "body" +
                 request("/none"_ba));
    QByteArray bytes;
    QTRY_VERIFY((bytes += socket.readAll()).contains(" 404 "));
    QVERIFY(bytes.indexOf(" 500 ") < bytes.indexOf(" 200 "));
    const QList<ServedRequest> requests = server.requests();
    QCOMPARE(requests.size(), 3);
    QCOMPARE(requests[0].target, "/a%20b?x=1"_ba);
    QCOMPARE(requests[0].header("depth"_ba), "1"_ba);
    QVERIFY(!requests[0].hasHeader("Range"_ba));
    QCOMPARE(requests[1].method, "PROPFIND"_ba);
    QCOMPARE(requests[1].body, "body"_ba);
    QCOMPARE(server.requestCount("/a%20b"_ba), 2);
    QCOMPARE(server.connectionCount(), 1);
    QCOMPARE(server.openConnections(), 1);
    server.breakConnections();
    QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(server.openConnections(), 0);
}

void TestMisbehavingServer::asksForBasicAuthentication()
{
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("in"_ba));
    server.requireBasic(u"李"_s, u"p:w"_s);
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, server.port());
    socket.write(request("/"_ba));
    QByteArray bytes;
    QTRY_VERIFY((bytes += socket.readAll()).contains("</html>"));
    QVERIFY(bytes.startsWith("HTTP/1.1 401 "));
    QVERIFY(bytes.contains("WWW-Authenticate: Basic "));
    socket.write(request("/"_ba, "authorization: Basic " + u"李:p:w"_s.toUtf8().toBase64() + "\r\n"));
    QTRY_VERIFY((bytes += socket.readAll()).endsWith("in"));
}

void TestMisbehavingServer::holdsUntilReleased()
{
    MisbehavingServer server;
    server.answer("/middle"_ba, ServerAnswer::ok("abcdef"_ba).holdingAt(2));
    server.answer("/silent"_ba, ServerAnswer::silence());
    QTcpSocket middle;
    QTcpSocket silent;
    for (QTcpSocket *socket : {&middle, &silent})
        socket->connectToHost(QHostAddress::LocalHost, server.port());
    middle.write(request("/middle"_ba));
    silent.write(request("/silent"_ba));
    QByteArray bytes;
    QTRY_VERIFY((bytes += middle.readAll()).endsWith("\r\n\r\nab"));
    QTRY_COMPARE(server.requestCount(), 2);
    QCOMPARE(silent.bytesAvailable(), 0);
    server.release();
    QTRY_VERIFY((bytes += middle.readAll()).endsWith("\r\n\r\nabcdef"));
    QTRY_VERIFY(silent.bytesAvailable() > 0);
}

void TestMisbehavingServer::makesLongBodiesWhileTheyAreSent()
{
    const ServerAnswer answer = ServerAnswer::streamed("<a>"_ba, "<bc/>"_ba, 400'000, "</a>"_ba);
    QCOMPARE(answer.bodySize(), 2'000'007);
    QCOMPARE(answer.body(0, 10), "<a><bc/><b"_ba);
    QCOMPARE(answer.body(11, 7), "/><bc/>"_ba);
    QCOMPARE(answer.body(2'000'000, 100), "c/></a>"_ba);
    MisbehavingServer server;
    server.answer("/"_ba, answer.untilClose());
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, server.port());
    socket.write(request("/"_ba));
    const QByteArray bytes = received(socket);
    QCOMPARE(bytes.mid(bytes.indexOf("\r\n\r\n") + 4), answer.body(0, answer.bodySize()));
    QVERIFY(server.bytesSent() >= answer.bodySize());
}

void TestMisbehavingServer::tricklesPieces()
{
    using namespace std::chrono_literals;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("abcd"_ba).untilClose().trickling(1, 20ms));
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, server.port());
    socket.write(request("/"_ba));
    QElapsedTimer time;
    time.start();
    QVERIFY(received(socket).endsWith("\r\n\r\nabcd"));
    QVERIFY(time.elapsed() >= 60);
}

QTEST_GUILESS_MAIN(TestMisbehavingServer)
#include "tst_misbehaving_server.moc"
