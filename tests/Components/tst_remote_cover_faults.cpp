// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/CoverImageProvider.h"
#include "Components/CoverPainter.h"
#include "Components/CoverRequest.h"
#include "Fakes/FakeClock.h"
#include "Fixtures/MadePicture.h"
#include "Models/OnlineSong.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/MisbehavingServer.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/RemoteCovers.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QSize size(80, 80);

/// Covers of a real server, on their way to a screen.
class Bench
{
public:
    MisbehavingServer server;
    std::unique_ptr<NetworkHttpClient> client = std::make_unique<NetworkHttpClient>();
    FakeClock clock;
    std::unique_ptr<RemoteCovers> covers = std::make_unique<RemoteCovers>(*client, clock);
    CoverRegistry registry;
    std::unique_ptr<CoverImageProvider> provider =
        std::make_unique<CoverImageProvider>(registry, covers.get());

    std::unique_ptr<CoverRequest> ask(const QUrl &url)
    {
        const OnlineSong song{.id = url.path(),
                              .name = {},
                              .artist = {},
                              .album = {},
                              .platform = MusicPlatform::qq,
                              .picUrl = {},
                              .lrcUrl = {}};
        return std::make_unique<CoverRequest>(
            *provider, coverAddress(registry.source(song, url)) + u"?radius=0"_s, size);
    }
    std::unique_ptr<CoverRequest> ask(const QByteArray &path) { return ask(server.url(path)); }
};

bool isBlue(const QImage &image)
{
    return image.size() == size && isOfCover(image.pixelColor(40, 40), Qt::blue);
}

} // namespace

/// Covers of servers that behave badly, over real connections.
class RemoteCoverFaultsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void redirectsAreFollowed();
    void whatIsNoCoverIsThePlaceholder_data();
    void whatIsNoCoverIsThePlaceholder();
    void anAddressThatCannotBeAskedIsThePlaceholder_data();
    void anAddressThatCannotBeAskedIsThePlaceholder();
    void aLargeBodyIsNotTakenWhole();
    void aSilentServerHoldsUpNeitherTheOthersNorTheEnd();
    void fewConnectionsAreUsed();
    void theProgramMayEndAtAnyTime();
};

void RemoteCoverFaultsTest::redirectsAreFollowed()
{
    Bench bench;
    MisbehavingServer other;
    other.answer("/there.png", ServerAnswer::ok(madePng(), "text/html"));
    bench.server.answer("/pic", ServerAnswer::redirect(302, other.url("/there.png").toEncoded()));
    QVERIFY(isBlue(bench.ask("/pic?t=signature")->wait()));
    // Whoever it leads to learns nothing of where it came from.
    const ServedRequest request = other.requests().constFirst();
    for (const auto &[name, value] : request.headers)
        QVERIFY2(!value.contains("signature"), name);
    QCOMPARE(request.target, "/there.png"_ba);
}

void RemoteCoverFaultsTest::whatIsNoCoverIsThePlaceholder_data()
{
    QTest::addColumn<ServerAnswer>("answer");
    const QByteArray picture = madePng(Qt::blue, 200);
    const ServerAnswer whole = ServerAnswer::ok(picture, "image/png");
    for (const int status : {204, 400, 401, 403, 404, 429, 500, 503})
        QTest::addRow("%d", status) << ServerAnswer::status(status);
    QTest::newRow("JSON error") << ServerAnswer::ok(R"({"code":404})", "application/json");
    QTest::newRow("JSON that says image") << ServerAnswer::ok(R"({"code":404})", "image/jpeg");
    QTest::newRow("HTML") << ServerAnswer::ok("<html><body>Sign in</body></html>", "text/html");
    QTest::newRow("nothing") << ServerAnswer::ok({}, "image/png");
    QTest::newRow("endless redirects") << ServerAnswer::redirect(302, "/pic");
    QTest::newRow("redirect to a file") << ServerAnswer::redirect(302, "file:///etc/hostname");
    QTest::newRow("redirect to nowhere") << ServerAnswer::redirect(302, "http://127.0.0.1:1/");
    QTest::newRow("stops in the middle") << whole.endingAfter(picture.size() / 2);
    QTest::newRow("hangs up") << ServerAnswer::hangUp();
    QTest::newRow("no HTTP") << ServerAnswer::raw("\x16\x03\x01\x02");
    QTest::newRow("a bomb") << ServerAnswer::ok(madePictureBomb(30'000), "image/png");
    QTest::newRow("a large picture") << ServerAnswer::ok(madePictureBomb(6'000), "image/png");
    QTest::newRow("noise") << ServerAnswer::streamed("\xff\xd8\xff\xe0", QByteArray(1000, '\x5a'), 1000, {},
                                                     "image/jpeg");
}

void RemoteCoverFaultsTest::whatIsNoCoverIsThePlaceholder()
{
    QFETCH(ServerAnswer, answer);
    Bench bench;
    bench.server.answer("/pic", {answer});
    const QImage placeholder = drawCover({}, size.width(), 0);
    QCOMPARE(bench.ask("/pic")->wait(), placeholder);
    QTRY_COMPARE(bench.covers->cachedBytes(), 0);
    const int asked = bench.server.requestCount();
    bench.server.answer("/pic", ServerAnswer::ok(madePng(), "image/png"));
    QCOMPARE(bench.ask("/pic")->wait(), placeholder);
    QCOMPARE(bench.server.requestCount(), asked);
    bench.clock.advance(5min);
    QVERIFY(isBlue(bench.ask("/pic")->wait()));
}

void RemoteCoverFaultsTest::anAddressThatCannotBeAskedIsThePlaceholder_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::newRow("nobody listens") << QUrl(u"http://127.0.0.1:1/pic"_s);
    QTest::newRow("no such host") << QUrl(u"http://nothing.invalid/pic"_s);
    QTest::newRow("no host") << QUrl(u"http:///pic"_s);
}

void RemoteCoverFaultsTest::anAddressThatCannotBeAskedIsThePlaceholder()
{
    QFETCH(QUrl, url);
    Bench bench;
    QCOMPARE(bench.ask(url)->wait(), drawCover({}, size.width(), 0));
}

void RemoteCoverFaultsTest::aLargeBodyIsNotTakenWhole()
{
    Bench bench;
    const ServerAnswer endless =
        ServerAnswer::streamed(madePng(), QByteArray(1 << 20, '\0'), 500, {}, "image/png");
    // Told beforehand, and found out.
    bench.server.answer("/told", endless);
    bench.server.answer("/found", endless.chunked());
    for (const QByteArray &path : {"/told"_ba, "/found"_ba}) {
        QCOMPARE(bench.ask(path)->wait(), drawCover({}, size.width(), 0));
        QCOMPARE(bench.covers->cachedBytes(), 0);
    }
    QTRY_COMPARE(bench.server.openConnections(), 0);
    QVERIFY2(bench.server.bytesSent() < 60'000'000, qPrintable(QString::number(bench.server.bytesSent())));
}

void RemoteCoverFaultsTest::aSilentServerHoldsUpNeitherTheOthersNorTheEnd()
{
    Bench bench;
    bench.server.answer("/silent", ServerAnswer::silence());
    bench.server.answer("/slow", ServerAnswer::ok(madePng(), "image/png").holdingAt(10));
    bench.server.answer("/quick", ServerAnswer::ok(madePng(), "image/png"));
    const auto silent = bench.ask("/silent");
    const auto slow = bench.ask("/slow");
    QTRY_COMPARE(bench.server.requestCount(), 2);
    QVERIFY(isBlue(bench.ask("/quick")->wait()));
    QCOMPARE(silent->answers(), 0);
    bench.server.release();
    QVERIFY(isBlue(slow->wait()));
    auto last = bench.ask("/silent?last");
    QTRY_COMPARE(bench.server.requestCount("/silent"), 2);
    last.reset();
    bench.provider.reset();
    bench.covers.reset();
    bench.client.reset();
    QTRY_COMPARE(bench.server.openConnections(), 0);
}

void RemoteCoverFaultsTest::fewConnectionsAreUsed()
{
    Bench bench;
    bench.server.answerEverything(
        [](const ServedRequest &) { return ServerAnswer::ok(madePng(), "image/png"); });
    std::vector<std::unique_ptr<CoverRequest>> rows;
    for (int row = 0; row < 200; ++row)
        rows.push_back(bench.ask("/" + QByteArray::number(row)));
    for (const auto &row : rows)
        QVERIFY(isBlue(row->wait()));
    QCOMPARE(bench.server.requestCount(), 200);
    QVERIFY2(bench.server.connectionCount() <= 6,
             qPrintable(QString::number(bench.server.connectionCount())));
}

void RemoteCoverFaultsTest::theProgramMayEndAtAnyTime()
{
    for (int turn = 0; turn < 30; ++turn) {
        Bench bench;
        bench.server.answerEverything([turn](const ServedRequest &) {
            const ServerAnswer picture = ServerAnswer::ok(madePng(), "image/png");
            return turn % 3 == 0 ? picture.holdingAt(20) : picture;
        });
        std::vector<std::unique_ptr<CoverRequest>> rows;
        for (int row = 0; row < 20; ++row)
            rows.push_back(bench.ask("/" + QByteArray::number(row)));
        QVERIFY(QTest::qWaitFor([&] { return bench.server.requestCount() > turn % 4; }));
        // QML lets go of its pictures before its providers go.
        rows.resize(static_cast<std::size_t>(turn % 5));
        rows.clear();
        bench.provider.reset();
        bench.covers.reset();
        bench.client.reset();
    }
}

QTEST_MAIN(RemoteCoverFaultsTest)
#include "tst_remote_cover_faults.moc"
