// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BackdropColors.h"
#include "Components/BackdropImageProvider.h"
#include "Components/BackdropPainter.h"
#include "Components/CoverRequest.h"
#include "Fakes/PlayerBench.h"
#include "Fakes/TestPlatform.h"
#include "Fixtures/MadePicture.h"
#include "Models/OnlineSong.h"
#include "Services/Pictures/CustomPictures.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/RemoteCovers.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QSize anySize;

QString blurred(const QString &source, double blur = BackdropImageProvider::largestBlur)
{
    return BackdropImageProvider::addressOf(source, blur).mid(u"image://backdrop/"_s.size());
}

/// A provider on a web that answers when the test says so.
class Bench
{
public:
    TestPlatform home;
    QTemporaryDir folder;
    RemoteCovers covers{*home.platform.httpClient, *home.platform.clock};
    CoverRegistry registry;
    std::shared_ptr<CustomPictures> pictures = std::make_shared<CustomPictures>();
    std::unique_ptr<BackdropImageProvider> provider =
        std::make_unique<BackdropImageProvider>(registry, &covers, pictures);

    QString coverOf(const QString &id, const QByteArray &bytes)
    {
        Song song = fileSong(id);
        song.setArtworkData(ArtworkData(bytes));
        return registry.source(song);
    }
    /// In a file.
    QString path(const QString &id) const { return folder.filePath(id); }
    QString coverInFile(const QString &id, const QByteArray &bytes)
    {
        QFile file(path(id));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("no file");
        Song song = fileSong(id);
        song.setArtworkData(ArtworkData::inFile(file.fileName().toUtf8(), bytes.size()));
        return registry.source(song);
    }
    QString onlineCover(const QString &id)
    {
        const OnlineSong song{.id = id,
                              .name = {},
                              .artist = {},
                              .album = {},
                              .platform = MusicPlatform::netease,
                              .picUrl = {},
                              .lrcUrl = {}};
        return registry.source(song, QUrl(u"https://api.example/api/?type=pic&id="_s + id));
    }
    QImage draw(const QString &address) { return CoverRequest(*provider, address, anySize).wait(); }
};

QList<QColor> colorsOf(const QString &address)
{
    return BackdropColors::shared().colors(address);
}

} // namespace

/// Pictures behind screens, from the cover to what is drawn.
class BackdropImagesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void addressesNameThePictureAndItsBlur_data();
    void addressesNameThePictureAndItsBlur();
    void aCoverIsDrawnSmallAndLeavesItsColors();
    void aCoverIsReadOnce();
    void aCoverOfAServerIsFetched();
    void whatIsNoCoverIsATransparentPixel_data();
    void whatIsNoCoverIsATransparentPixel();
    void aCoverThatCannotBeHadMayBeHadLater();
    void theListenersPictureIsBlurredAsTheyWish();
    void withoutAPictureOfTheListenersThereIsNone();
    void aCancelledWishEndsAtOnce();
    void aThousandCoversLeaveBoundedMemory();
    void aProviderThatGoesLeavesNothingRunning();
};

void BackdropImagesTest::addressesNameThePictureAndItsBlur_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<double>("blur");
    QTest::addColumn<QString>("address");
    QTest::newRow("cover") << u"image://cover/abc"_s << 50.0 << u"image://backdrop/cover/abc?blur=50"_s;
    QTest::newRow("custom") << u"image://custom/background?3"_s << 30.4
                            << u"image://backdrop/custom/background?3&blur=30"_s;
    QTest::newRow("beyond") << u"image://cover/abc"_s << 900.0 << u"image://backdrop/cover/abc?blur=50"_s;
    QTest::newRow("below") << u"image://cover/abc"_s << -1.0 << u"image://backdrop/cover/abc?blur=0"_s;
    QTest::newRow("no number") << u"image://cover/abc"_s << qQNaN() << u"image://backdrop/cover/abc?blur=0"_s;
    QTest::newRow("no cover") << u"image://cover/none"_s << 50.0 << QString();
    QTest::newRow("nothing") << QString() << 50.0 << QString();
    QTest::newRow("file") << u"file:///etc/passwd"_s << 50.0 << QString();
    QTest::newRow("other provider") << u"image://symbol/heart"_s << 50.0 << QString();
}

void BackdropImagesTest::addressesNameThePictureAndItsBlur()
{
    QFETCH(QString, source);
    QFETCH(double, blur);
    QTEST(BackdropImageProvider::addressOf(source, blur), "address");
}

void BackdropImagesTest::aCoverIsDrawnSmallAndLeavesItsColors()
{
    Bench bench;
    const QString address = blurred(bench.coverOf(u"a"_s, madeJpeg(Qt::red, 600)));
    const QImage image = bench.draw(address);
    QCOMPARE(image.size(), QSize(68, 68));
    QVERIFY(isOfCover(image.pixelColor(30, 30), Qt::red));
    QVERIFY(!image.hasAlphaChannel());
    QCOMPARE(colorsOf(address).size(), backdropColorCount);
    QVERIFY(isOfCover(colorsOf(address).constFirst(), Qt::red));
}

void BackdropImagesTest::aCoverIsReadOnce()
{
    Bench bench;
    const QString address = blurred(bench.coverInFile(u"a"_s, madePng(Qt::blue, 300)));
    const QImage first = bench.draw(address);
    QVERIFY(QFile::remove(bench.path(u"a"_s)));
    BackdropColors::shared().keep(address, {});
    QCOMPARE(bench.draw(address), first);
    QVERIFY(isOfCover(colorsOf(address).value(0), Qt::blue));
}

void BackdropImagesTest::aCoverOfAServerIsFetched()
{
    Bench bench;
    const QString address = blurred(bench.onlineCover(u"1"_s));
    CoverRequest request(*bench.provider, address, anySize);
    QTRY_COMPARE(bench.home.web().pending.size(), 1U);
    bench.home.web().answer(
        HttpResponse{.url = {}, .status = 200, .headers = {}, .body = madePng(Qt::green, 90)});
    QVERIFY(isOfCover(request.wait().pixelColor(4, 4), Qt::green));
    QCOMPARE(colorsOf(address).size(), backdropColorCount);
    bench.draw(address);
    QCOMPARE(bench.home.web().sent.size(), 1);
}

void BackdropImagesTest::whatIsNoCoverIsATransparentPixel_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("text") << "this is no picture"_ba;
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("cut in its head") << madePng().left(20);
    QTest::newRow("an audio file") << "ID3\x04\x00"_ba + QByteArray(1000, 'x');
}

void BackdropImagesTest::whatIsNoCoverIsATransparentPixel()
{
    QFETCH(QByteArray, bytes);
    Bench bench;
    const QString own = blurred(bench.coverOf(u"a"_s, bytes));
    BackdropColors::shared().keep(own, {Qt::red});
    const QImage image = bench.draw(own);
    QCOMPARE(image.size(), QSize(1, 1));
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    QVERIFY(colorsOf(own).isEmpty());
    const QString online = blurred(bench.onlineCover(u"1"_s));
    CoverRequest request(*bench.provider, online, anySize);
    QTRY_COMPARE(bench.home.web().pending.size(), 1U);
    bench.home.web().answer(HttpResponse{.url = {}, .status = 200, .headers = {}, .body = bytes});
    QCOMPARE(request.wait().size(), QSize(1, 1));
}

void BackdropImagesTest::aCoverThatCannotBeHadMayBeHadLater()
{
    Bench bench;
    const QByteArray picture = madePng(Qt::blue, 40);
    const QString source = bench.coverInFile(u"a"_s, picture);
    QVERIFY(QFile::remove(bench.path(u"a"_s)));
    QCOMPARE(bench.draw(blurred(source)).size(), QSize(1, 1));
    bench.coverInFile(u"a"_s, picture);
    QVERIFY(isOfCover(bench.draw(blurred(source)).pixelColor(4, 4), Qt::blue));
}

void BackdropImagesTest::theListenersPictureIsBlurredAsTheyWish()
{
    Bench bench;
    QImage picture(400, 600, QImage::Format_RGB32);
    picture.fill(Qt::black);
    for (int y = 0; y < 600; ++y) {
        for (int x = 200; x < 400; ++x)
            picture.setPixelColor(x, y, Qt::white);
    }
    bench.pictures->setImage(u"background"_s, picture);
    const QImage sharp = bench.draw(blurred(u"image://custom/background?1"_s, 0));
    QCOMPARE(sharp.size(), picture.size());
    QCOMPARE(sharp.pixelColor(190, 300), QColor(Qt::black));
    const QImage soft = bench.draw(blurred(u"image://custom/background?1"_s, 30));
    QVERIFY(soft.height() < 200);
    const QColor middle = soft.pixelColor(soft.width() / 2, soft.height() / 2);
    QVERIFY(middle.red() > 90 && middle.red() < 170);
}

void BackdropImagesTest::withoutAPictureOfTheListenersThereIsNone()
{
    Bench bench;
    QCOMPARE(bench.draw(blurred(u"image://custom/background?1"_s)).size(), QSize(1, 1));
    BackdropImageProvider alone(bench.registry);
    QCOMPARE(CoverRequest(alone, blurred(u"image://custom/background?1"_s), anySize).wait().size(),
             QSize(1, 1));
    QCOMPARE(CoverRequest(alone, blurred(bench.onlineCover(u"1"_s)), anySize).wait().size(), QSize(1, 1));
    QCOMPARE(bench.draw(u"something/else"_s).size(), QSize(1, 1));
}

void BackdropImagesTest::aCancelledWishEndsAtOnce()
{
    Bench bench;
    CoverRequest request(*bench.provider, blurred(bench.onlineCover(u"1"_s)), anySize);
    QTRY_COMPARE(bench.home.web().pending.size(), 1U);
    request.cancel();
    QTRY_COMPARE(request.answers(), 1);
}

void BackdropImagesTest::aThousandCoversLeaveBoundedMemory()
{
    Bench bench;
    constexpr int count = 1000;
    const QByteArray picture = madePng(Qt::blue, 100);
    QStringList addresses;
    for (int i = 0; i < count; ++i)
        addresses << blurred(bench.coverInFile(QString::number(i), picture));
    for (const QString &address : addresses)
        QCOMPARE(bench.draw(address).size(), QSize(68, 68));
    for (int i = 0; i < count; ++i)
        QVERIFY(QFile::remove(bench.path(QString::number(i))));
    // What is still there needs no file.
    int kept = 0;
    for (const QString &address : addresses)
        kept += bench.draw(address).width() > 1 ? 1 : 0;
    constexpr int bytesEach = 68 * 68 * 4;
    QVERIFY2(kept > 100 && kept * bytesEach <= 8 * 1024 * 1024, qPrintable(QString::number(kept)));
    QVERIFY(bench.draw(addresses.constLast()).width() > 1);
}

void BackdropImagesTest::aProviderThatGoesLeavesNothingRunning()
{
    Bench bench;
    const CoverRequest online(*bench.provider, blurred(bench.onlineCover(u"1"_s)), anySize);
    const CoverRequest own(*bench.provider, blurred(bench.coverOf(u"a"_s, madeJpeg(Qt::red, 900))), anySize);
    QTRY_COMPARE(bench.home.web().pending.size(), 1U);
    bench.provider.reset();
    bench.home.web().answer(HttpResponse{.url = {}, .status = 200, .headers = {}, .body = madePng()});
    QTRY_COMPARE(bench.covers.runningRequests(), 0);
}

QTEST_MAIN(BackdropImagesTest)
#include "tst_backdrop_images.moc"
