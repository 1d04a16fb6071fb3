// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/CoverImageProvider.h"
#include "Components/CoverPainter.h"
#include "Components/CoverRequest.h"
#include "Fakes/TestPlatform.h"
#include "Fixtures/MadePicture.h"
#include "Models/OnlineSong.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/RemoteCovers.h"
#include "Views/UserInterface.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QSize size(80, 80);

QUrl coverUrl(const QString &id)
{
    return QUrl(u"https://api.example/api/?source=netease&id="_s + id + u"&type=pic"_s);
}

OnlineSong songOf(const QString &id)
{
    return {.id = id,
            .name = {},
            .artist = {},
            .album = {},
            .platform = MusicPlatform::netease,
            .picUrl = {},
            .lrcUrl = {}};
}

QImage placeholder()
{
    return drawCover({}, size.width(), 0);
}

/// Covers of a web that answers when the test says so, and their way to a screen.
class Bench
{
public:
    TestPlatform home;
    RemoteCovers covers{*home.platform.httpClient, *home.platform.clock};
    CoverRegistry registry;
    std::unique_ptr<CoverImageProvider> provider = std::make_unique<CoverImageProvider>(registry, &covers);

    QString address(const QString &id)
    {
        return coverAddress(registry.source(songOf(id), coverUrl(id))) + u"?radius=0"_s;
    }
    std::unique_ptr<CoverRequest> ask(const QString &id, const QSize &asked = size)
    {
        auto request = std::make_unique<CoverRequest>(*provider, address(id), asked);
        settle();
        return request;
    }
    bool answer(const QString &id, const QByteArray &body, int status = 200)
    {
        const bool isPending = home.web().answer(
            u"id="_s + id + u'&', HttpResponse{.url = {}, .status = status, .headers = {}, .body = body});
        settle();
        return isPending;
    }
    qsizetype sent() { return home.web().sent.size(); }
};

} // namespace

/// Covers of servers from the answer to the drawn picture.
class RemoteCoverImagesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aCoverIsDrawnWhenItArrives();
    void sizesOfOneCoverShareARequest();
    void aDrawnCoverIsAskedForNoMore();
    void whatIsNoCoverIsThePlaceholder_data();
    void whatIsNoCoverIsThePlaceholder();
    void aCancelledWishEndsAtOnce();
    void rowsThatWereScrolledAwayAreNeverAsked();
    void withoutAWebThereIsThePlaceholder();
    void aThousandCoversLeaveBoundedMemory();
    void aProviderThatGoesLeavesItsWishes();
    void anEngineThatGoesLeavesNothingRunning();
};

void RemoteCoverImagesTest::aCoverIsDrawnWhenItArrives()
{
    Bench bench;
    for (const QByteArray &picture : {madeJpeg(Qt::red, 500), madePng(Qt::red, 20)}) {
        const QString id = QString::number(picture.size());
        const auto request = bench.ask(id);
        QCOMPARE(request->answers(), 0);
        QVERIFY(bench.answer(id, picture));
        const QImage image = request->wait();
        QCOMPARE(image.size(), size);
        QVERIFY(isOfCover(image.pixelColor(40, 40), Qt::red));
        QCOMPARE(request->answers(), 1);
    }
}

void RemoteCoverImagesTest::sizesOfOneCoverShareARequest()
{
    Bench bench;
    const auto small = bench.ask(u"1"_s, {48, 48});
    const auto large = bench.ask(u"1"_s, {300, 300});
    QCOMPARE(bench.sent(), 1);
    bench.answer(u"1"_s, madePng());
    QCOMPARE(small->wait().size(), QSize(48, 48));
    QCOMPARE(large->wait().size(), QSize(300, 300));
}

void RemoteCoverImagesTest::aDrawnCoverIsAskedForNoMore()
{
    Bench bench;
    const auto first = bench.ask(u"1"_s);
    bench.answer(u"1"_s, madePng());
    const QImage image = first->wait();
    QCOMPARE(bench.ask(u"1"_s)->wait(), image);
    QVERIFY(isOfCover(bench.ask(u"1"_s, {30, 30})->wait().pixelColor(15, 15), Qt::blue));
    QCOMPARE(bench.sent(), 1);
}

void RemoteCoverImagesTest::whatIsNoCoverIsThePlaceholder_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("status");
    QTest::newRow("JSON error") << "{\"code\":404,\"message\":\"not found\"}"_ba << 200;
    QTest::newRow("HTML") << "<!DOCTYPE html><html><body>Sign in</body></html>"_ba << 200;
    QTest::newRow("nothing") << QByteArray() << 200;
    QTest::newRow("404 with a picture") << madePng() << 404;
    QTest::newRow("drawing") << R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"/>)"_ba << 200;
    QTest::newRow("30,000 pixels wide") << madePictureBomb(30'000) << 200;
    QTest::newRow("6,000 pixels wide") << madePictureBomb(6'000) << 200;
    QTest::newRow("cut in its head") << madePng().left(20) << 200;
    QTest::newRow("an audio file") << "ID3\x04\x00"_ba + QByteArray(1000, 'x') << 200;
}

void RemoteCoverImagesTest::whatIsNoCoverIsThePlaceholder()
{
    QFETCH(QByteArray, body);
    QFETCH(int, status);
    Bench bench;
    const auto first = bench.ask(u"1"_s);
    QVERIFY(bench.answer(u"1"_s, body, status));
    QCOMPARE(first->wait(), placeholder());
    settle();
    QCOMPARE(bench.covers.cachedBytes(), 0);
    // Scrolled away and back: its server is left alone.
    QCOMPARE(bench.ask(u"1"_s)->wait(), placeholder());
    QCOMPARE(bench.sent(), 1);
    // Later it may be had.
    bench.home.clock().advance(6min);
    const auto later = bench.ask(u"1"_s);
    QVERIFY(bench.answer(u"1"_s, madePng()));
    QVERIFY(isOfCover(later->wait().pixelColor(40, 40), Qt::blue));
}

void RemoteCoverImagesTest::aCancelledWishEndsAtOnce()
{
    Bench bench;
    const auto request = bench.ask(u"1"_s);
    request->cancel();
    QTRY_COMPARE(request->answers(), 1);
    bench.answer(u"1"_s, madePng());
    // A second answer would come within the next turns of the event loop, or when the picture is drawn.
    QVERIFY(isOfCover(bench.ask(u"1"_s)->wait().pixelColor(40, 40), Qt::blue));
    QCOMPARE(request->answers(), 1);
}

void RemoteCoverImagesTest::rowsThatWereScrolledAwayAreNeverAsked()
{
    Bench bench;
    std::vector<std::unique_ptr<CoverRequest>> rows;
    for (int row = 0; row < 200; ++row) {
        rows.push_back(bench.ask(QString::number(row)));
        if (row >= 8)
            rows.at(static_cast<std::size_t>(row - 8))->cancel();
    }
    settle();
    while (!bench.home.web().pending.empty()) {
        bench.home.web().answer(HttpResponse{.url = {}, .status = 200, .headers = {}, .body = madePng()});
        settle();
    }
    for (const auto &row : rows) {
        row->wait();
        QCOMPARE(row->answers(), 1);
    }
    for (std::size_t row = 192; row < 200; ++row)
        QVERIFY(isOfCover(rows.at(row)->wait().pixelColor(40, 40), Qt::blue));
    QVERIFY2(bench.sent() < 206, qPrintable(QString::number(bench.sent())));
    QCOMPARE(bench.covers.waitingCovers(), 0);
}

void RemoteCoverImagesTest::withoutAWebThereIsThePlaceholder()
{
    CoverRegistry registry;
    CoverImageProvider provider(registry);
    const QString address = coverAddress(registry.source(songOf(u"1"_s), coverUrl(u"1"_s)));
    QCOMPARE(CoverRequest(provider, address + u"?radius=0"_s, size).wait(), placeholder());
}

void RemoteCoverImagesTest::aThousandCoversLeaveBoundedMemory()
{
    Bench bench;
    // Bytes behind the end of a picture are no harm to it, and make it as large as photographs are.
    const QByteArray picture = madePng(Qt::blue, 8) + QByteArray(100'000, '\0');
    for (int i = 0; i < 1000; ++i) {
        const auto request = bench.ask(QString::number(i), {48, 48});
        QVERIFY(bench.answer(QString::number(i), picture));
        QVERIFY(isOfCover(request->wait().pixelColor(20, 20), Qt::blue));
    }
    QVERIFY(bench.covers.cachedBytes() <= RemoteCovers::cacheBytes);
    QVERIFY(bench.covers.cachedBytes() > RemoteCovers::cacheBytes / 2);
}

void RemoteCoverImagesTest::aProviderThatGoesLeavesItsWishes()
{
    Bench bench;
    const auto underWay = bench.ask(u"1"_s);
    const auto posted = std::make_unique<CoverRequest>(*bench.provider, bench.address(u"2"_s), size);
    bench.provider.reset();
    settle();
    QVERIFY(bench.answer(u"1"_s, madePng()));
    QVERIFY(bench.answer(u"2"_s, madePng()));
    QCOMPARE(bench.covers.runningRequests(), 0);
}

void RemoteCoverImagesTest::anEngineThatGoesLeavesNothingRunning()
{
    TestPlatform home;
    {
        RemoteCovers covers(*home.platform.httpClient, *home.platform.clock);
        QQmlEngine engine;
        installUserInterface(engine, {.remoteCovers = &covers});
        std::vector<std::unique_ptr<QObject>> pictures;
        const auto show = [&](const QString &source) {
            QQmlComponent component(&engine);
            const QString item = u"import QtQuick\nimport Cadorel\nArtworkImageView { source: \"%1\" }"_s;
            component.setData(item.arg(source).toUtf8(), {});
            QVERIFY2(component.isReady(), qPrintable(component.errorString()));
            pictures.emplace_back(component.create());
        };
        for (int i = 0; i < 20; ++i) {
            const QString id = QString::number(i);
            show(CoverRegistry::shared().source(songOf(id), coverUrl(id)));
        }
        QTRY_COMPARE(home.web().pending.size(), 4U);
        QTRY_COMPARE(covers.waitingCovers(), 16);
        // One arrives; some are scrolled away.
        home.web().answer(HttpResponse{.url = {}, .status = 200, .headers = {}, .body = madePng()});
        constexpr int ready = 1; // Image.Ready
        const auto isShown = [](const std::unique_ptr<QObject> &picture) {
            const QObject *image = picture->findChild<QObject *>(u"picture"_s);
            return image && image->property("status").toInt() == ready;
        };
        QTRY_VERIFY(std::ranges::any_of(pictures, isShown));
        pictures.resize(10);
        QTRY_VERIFY(covers.waitingCovers() < 12);
    }
    settle();
    QVERIFY(home.web().pending.empty());
}

QTEST_MAIN(RemoteCoverImagesTest)
#include "tst_remote_cover_images.moc"
