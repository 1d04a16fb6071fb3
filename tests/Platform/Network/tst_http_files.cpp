// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/UnprivilegedScope.h"
#include "Platform/Network/HttpFailure.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Platform/Network/WebTest.h"
#include "Servers/MisbehavingServer.h"
#include "Servers/TestCertificate.h"

#include <QScopeGuard>
#include <QSslConfiguration>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

HttpRequest download(const QUrl &url, const QString &path)
{
    HttpRequest request;
    request.url = url;
    request.outputFile = path;
    return request;
}

} // namespace

/// Bodies that go into files.
class TestHttpFiles : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void theBodyGoesIntoANewFile_data();
    void theBodyGoesIntoANewFile();
    void theFileIsItsOwnersAlone();
    void whatIsThereStaysUntouched();
    void aLinkIsNotFollowed();
    void afterAFailureTheFileIsGone_data();
    void afterAFailureTheFileIsGone();
    void theFileGrowsWhileTheBodyArrives();
    void otherAnswersGoIntoMemory_data();
    void otherAnswersGoIntoMemory();
    void ofALongPageTheBeginningIsKept();
    void theFileIsMadeWhereTheRedirectsEnd();
    void aFolderThatIsNotThere();
    void aFolderThatIsNotWritable();
    void aFullDiskFailsTheRequest();
    void theReasonIsTold();
    void aChunkedBodyThatBreaksOffIsNoFile_data();
    void aChunkedBodyThatBreaksOffIsNoFile();
    void aWholeChunkedBodyIsAFile_data();
    void aWholeChunkedBodyIsAFile();
    void theEndIsCheckedBehindEncryptionToo();
    void aServerThatHangsUpOnHeadGivesItsFile();
    void aServerThatAnnouncesToCloseGivesItsFile_data();
    void aServerThatAnnouncesToCloseGivesItsFile();
    void afterABrokenChunkedBodyTheLengthDecides_data();
    void afterABrokenChunkedBodyTheLengthDecides();
};

void TestHttpFiles::theBodyGoesIntoANewFile_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("isOwn");
    for (const bool isOwn : {false, true}) {
        for (const qint64 size : {0, 1, 1'000'000, 50'000'000})
            QTest::addRow("%lld, %s", static_cast<long long>(size), isOwn ? "own" : "shared")
                << size << isOwn;
    }
}

void TestHttpFiles::theBodyGoesIntoANewFile()
{
    QFETCH(const qint64, size);
    QFETCH(const bool, isOwn);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"音乐 1.part"_s);
    QByteArray body(size, 'm');
    for (qint64 i = 0; i < size; i += 997)
        body[i] = static_cast<char>(i / 997);
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(body, "audio/mpeg"_ba));
    NetworkHttpClient client;
    HttpRequest request = download(server.url(), path);
    request.ownConnection = isOwn;
    const HttpResult result = fetch(client, request);
    COMPARE_STATUS(result, 200);
    QVERIFY(result->body.isEmpty());
    QCOMPARE(result->bodySize, size);
    QCOMPARE(result->mimeType(), u"audio/mpeg"_s);
    QVERIFY(fileContent(path) == body);
}

void TestHttpFiles::theFileIsItsOwnersAlone()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"song"_s);
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    COMPARE_STATUS(fetch(client, download(server.url(), path)), 200);
    struct stat info = {};
    QCOMPARE(::stat(QFile::encodeName(path).constData(), &info), 0);
    QCOMPARE(info.st_mode & 07777, 0600U);
}

void TestHttpFiles::whatIsThereStaysUntouched()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"song"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("mine");
    file.close();
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, download(server.url(), path));
    COMPARE_FAILURE(result, file);
    QCOMPARE(result.error().description, u"无法写入文件：文件已存在"_s);
    QCOMPARE(fileContent(path), "mine"_ba);
}

void TestHttpFiles::aLinkIsNotFollowed()
{
    const QTemporaryDir folder;
    const QString target = folder.filePath(u"elsewhere"_s);
    const QString path = folder.filePath(u"song"_s);
    QVERIFY(QFile::link(target, path));
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    COMPARE_FAILURE(fetch(client, download(server.url(), path)), file);
    QVERIFY(!QFile::exists(target));
    QVERIFY(QFileInfo(path).isSymLink());
}

void TestHttpFiles::afterAFailureTheFileIsGone_data()
{
    QTest::addColumn<int>("which");
    QTest::newRow("ends early") << 0;
    QTest::newRow("silent") << 1;
    QTest::newRow("too large") << 2;
    QTest::newRow("too large, chunked") << 3;
    QTest::newRow("cancelled") << 4;
}

void TestHttpFiles::afterAFailureTheFileIsGone()
{
    using Kind = HttpError::Kind;
    QFETCH(const int, which);
    const ServerAnswer song = ServerAnswer::ok(QByteArray(2'000'000, 'm'));
    const ServerAnswer held = song.holdingAt(300'000);
    const QList<ServerAnswer> answers{song.endingAfter(300'000), held, song, song.chunked(), held};
    const QList<Kind> kinds{Kind::connection, Kind::timeout, Kind::tooLarge, Kind::tooLarge, Kind::cancelled};
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, answers.at(which));
    NetworkHttpClient client;
    HttpRequest request = download(server.url(), folder.filePath(u"song"_s));
    if (kinds.at(which) == Kind::timeout)
        request.idleTimeout = std::chrono::milliseconds(300);
    if (kinds.at(which) == Kind::tooLarge)
        request.sizeLimit = 1'000'000;
    const SentRequest sent = sendRequest(client, request);
    if (kinds.at(which) == Kind::cancelled) {
        QTRY_VERIFY(QFile::exists(request.outputFile));
        sent.transfer->cancel();
    }
    const auto result = sent.wait();
    QVERIFY(result.has_value());
    QVERIFY2(!result->has_value() && result->error().kind == kinds.at(which), qPrintable(described(*result)));
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TestHttpFiles::theFileGrowsWhileTheBodyArrives()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(2'000'000, 'm')).holdingAt(1'500'000));
    NetworkHttpClient client;
    const QString path = folder.filePath(u"song"_s);
    const SentRequest sent = sendRequest(client, download(server.url(), path));
    QTRY_COMPARE(QFileInfo(path).size(), 1'500'000);
    QVERIFY(!sent.hasEnded());
    server.release();
    const auto result = sent.wait();
    QVERIFY(result.has_value());
    COMPARE_STATUS(*result, 200);
    QCOMPARE(QFileInfo(path).size(), 2'000'000);
}

void TestHttpFiles::otherAnswersGoIntoMemory_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {300, 304, 400, 401, 404, 416, 500})
        QTest::addRow("%d", status) << status;
}

void TestHttpFiles::otherAnswersGoIntoMemory()
{
    QFETCH(const int, status);
    const QTemporaryDir folder;
    MisbehavingServer server;
    const QByteArray page = status == 304 ? QByteArray() : "the page"_ba;
    server.answer("/"_ba, ServerAnswer::status(status, page));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, download(server.url(), folder.filePath(u"song"_s)));
    COMPARE_STATUS(result, status);
    QCOMPARE(result->body, page);
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TestHttpFiles::ofALongPageTheBeginningIsKept()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::status(404, QByteArray(50'000'000, 'p')));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, download(server.url(), folder.filePath(u"song"_s)));
    COMPARE_STATUS(result, 404);
    QCOMPARE(result->body, QByteArray(64 * 1024, 'p'));
    QCOMPARE(result->bodySize, 64 * 1024);
    QTRY_COMPARE(server.openConnections(), 0);
}

void TestHttpFiles::theFileIsMadeWhereTheRedirectsEnd()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/a"_ba, ServerAnswer::redirect(302, "/b"_ba));
    server.answer("/b"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    const QString path = folder.filePath(u"song"_s);
    const HttpResult result = fetch(client, download(server.url("/a"_ba), path));
    COMPARE_STATUS(result, 200);
    QCOMPARE(result->bodySize, 5);
    QCOMPARE(fileContent(path), "music"_ba);
}

void TestHttpFiles::aFolderThatIsNotThere()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    const HttpResult result = fetch(client, download(server.url(), folder.filePath(u"none/song"_s)));
    COMPARE_FAILURE(result, file);
    QCOMPARE(result.error().description, u"无法写入文件：文件夹不存在"_s);
}

void TestHttpFiles::aFolderThatIsNotWritable()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok("music"_ba));
    NetworkHttpClient client;
    QCOMPARE(::chmod(QFile::encodeName(folder.path()).constData(), 0500), 0);
    const auto restore =
        qScopeGuard([&folder] { ::chmod(QFile::encodeName(folder.path()).constData(), 0700); });
    const UnprivilegedScope unprivileged;
    QVERIFY(unprivileged.isActive());
    const HttpResult result = fetch(client, download(server.url(), folder.filePath(u"song"_s)));
    COMPARE_FAILURE(result, file);
    QCOMPARE(result.error().description, u"无法写入文件：没有写入权限"_s);
}

void TestHttpFiles::aFullDiskFailsTheRequest()
{
    // A limit on the size of files stands for a disk without room.
    rlimit before = {};
    QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const auto restore = qScopeGuard([before, handler] {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    });
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, ServerAnswer::ok(QByteArray(2'000'000, 'm')));
    NetworkHttpClient client;
    const rlimit small{.rlim_cur = 1'000'000, .rlim_max = before.rlim_max};
    QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const HttpResult result = fetch(client, download(server.url(), folder.filePath(u"song"_s)));
    COMPARE_FAILURE(result, file);
    QCOMPARE(result.error().description, u"无法写入文件：文件过大"_s);
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TestHttpFiles::aChunkedBodyThatBreaksOffIsNoFile_data()
{
    QTest::addColumn<qint64>("end");
    QTest::addColumn<QString>("host");
    // A name is looked up first, and may have addresses of two kinds.
    for (const char *host : {"127.0.0.1", "localhost"}) {
        for (const qint64 end : {0, 1, 1000, 65'536, 300'000, 1'000'000})
            QTest::addRow("%lld, %s", static_cast<long long>(end), host) << end << QString::fromLatin1(host);
    }
}

void TestHttpFiles::aChunkedBodyThatBreaksOffIsNoFile()
{
    QFETCH(const qint64, end);
    QFETCH(const QString, host);
    const ServerAnswer broken = ServerAnswer::ok(QByteArray(2'000'000, 'm')).chunked().endingAfter(end);
    // Whether Qt notices is a matter of chance.
    for (int i = 0; i < 5; ++i) {
        const QTemporaryDir folder;
        MisbehavingServer server;
        server.answer("/"_ba, broken);
        NetworkHttpClient client;
        HttpRequest request = download(server.url(), folder.filePath(u"song"_s));
        request.url.setHost(host);
        request.mustBeWhole = true;
        COMPARE_FAILURE(fetch(client, request), connection);
        QVERIFY(QDir(folder.path()).isEmpty());
    }
}

void TestHttpFiles::aWholeChunkedBodyIsAFile_data()
{
    QTest::addColumn<qint64>("size");
    for (const qint64 size : {0, 1, 65'536, 2'000'000})
        QTest::addRow("%lld", static_cast<long long>(size)) << size;
}

void TestHttpFiles::aWholeChunkedBodyIsAFile()
{
    QFETCH(const qint64, size);
    for (int i = 0; i < 5; ++i) {
        const QTemporaryDir folder;
        MisbehavingServer server;
        server.answer("/"_ba, ServerAnswer::ok(QByteArray(size, 'm')).chunked());
        NetworkHttpClient client;
        HttpRequest request = download(server.url(), folder.filePath(u"song"_s));
        request.mustBeWhole = true;
        const HttpResult result = fetch(client, request);
        COMPARE_STATUS(result, 200);
        QCOMPARE(result->bodySize, size);
        QCOMPARE(fileContent(request.outputFile).size(), size);
    }
}

void TestHttpFiles::theEndIsCheckedBehindEncryptionToo()
{
    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    const auto restore = qScopeGuard([&before] { QSslConfiguration::setDefaultConfiguration(before); });
    QSslConfiguration trusting = before;
    trusting.addCaCertificate(TestCertificate::shared().certificate);
    QSslConfiguration::setDefaultConfiguration(trusting);
    const ServerAnswer whole = ServerAnswer::ok(QByteArray(300'000, 'm')).chunked();
    for (int i = 0; i < 10; ++i) {
        const QTemporaryDir folder;
        MisbehavingServer server({.isEncrypted = true});
        server.answer("/whole"_ba, whole);
        server.answer("/broken"_ba, whole.endingAfter(100'000));
        NetworkHttpClient client;
        HttpRequest request = download(server.url("/broken"_ba), folder.filePath(u"song"_s));
        request.mustBeWhole = true;
        COMPARE_FAILURE(fetch(client, request), connection);
        request.url = server.url("/whole"_ba);
        COMPARE_STATUS(fetch(client, request), 200);
        QCOMPARE(QFileInfo(request.outputFile).size(), 300'000);
    }
}

void TestHttpFiles::aServerThatHangsUpOnHeadGivesItsFile()
{
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, {ServerAnswer::ok("music"_ba).chunked(), ServerAnswer::hangUp()});
    NetworkHttpClient client;
    HttpRequest request = download(server.url(), folder.filePath(u"song"_s));
    request.mustBeWhole = true;
    COMPARE_STATUS(fetch(client, request), 200);
    QCOMPARE(fileContent(request.outputFile), "music"_ba);
    QVERIFY(server.requestCount() > 1);
}

void TestHttpFiles::aServerThatAnnouncesToCloseGivesItsFile_data()
{
    QTest::addColumn<ServerAnswer>("head");
    QTest::addColumn<bool>("isWhole");
    QTest::newRow("no length") << ServerAnswer::ok("music"_ba).chunked() << true;
    QTest::newRow("its length") << ServerAnswer::ok("music"_ba) << true;
    QTest::newRow("another length") << ServerAnswer::ok("music that goes on"_ba) << false;
}

void TestHttpFiles::aServerThatAnnouncesToCloseGivesItsFile()
{
    QFETCH(const ServerAnswer, head);
    QFETCH(const bool, isWhole);
    const QTemporaryDir folder;
    MisbehavingServer server;
    server.answer("/"_ba, {ServerAnswer::ok("music"_ba).chunked().with("Connection"_ba, "Close"_ba), head});
    NetworkHttpClient client;
    HttpRequest request = download(server.url(), folder.filePath(u"song"_s));
    request.mustBeWhole = true;
    const HttpResult result = fetch(client, request);
    QVERIFY2(result.has_value() == isWhole, qPrintable(described(result)));
    QCOMPARE(QFile::exists(request.outputFile), isWhole);
}

void TestHttpFiles::afterABrokenChunkedBodyTheLengthDecides_data()
{
    QTest::addColumn<ServerAnswer>("head");
    QTest::newRow("longer") << ServerAnswer::ok("music that goes on"_ba);
    QTest::newRow("none said") << ServerAnswer::ok(""_ba);
    QTest::newRow("unknown") << ServerAnswer::status(404);
}

void TestHttpFiles::afterABrokenChunkedBodyTheLengthDecides()
{
    QFETCH(const ServerAnswer, head);
    for (int i = 0; i < 5; ++i) {
        const QTemporaryDir folder;
        MisbehavingServer server;
        server.answer("/"_ba, {ServerAnswer::ok("music that goes on"_ba).chunked().endingAfter(5), head});
        NetworkHttpClient client;
        HttpRequest request = download(server.url(), folder.filePath(u"song"_s));
        request.mustBeWhole = true;
        COMPARE_FAILURE(fetch(client, request), connection);
        QVERIFY(QDir(folder.path()).isEmpty());
    }
}

void TestHttpFiles::theReasonIsTold()
{
    QCOMPARE(fileFailure(ENOSPC).description, u"无法写入文件：磁盘空间不足"_s);
    QCOMPARE(fileFailure(EROFS).description, u"无法写入文件：磁盘是只读的"_s);
    QVERIFY(fileFailure(EMEDIUMTYPE).description.size() > u"无法写入文件："_s.size());
}

QTEST_GUILESS_MAIN(TestHttpFiles)
#include "tst_http_files.moc"
