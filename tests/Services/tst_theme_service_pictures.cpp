// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadePicture.h"
#include "Fixtures/Pixels.h"
#include "Services/AppearanceBench.h"
#include "Services/Pictures/PictureForms.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString dancingKey = u"customDancingImage"_s;
const QString backgroundKey = u"customBackgroundImage_classic"_s;

/// Red, green and blue stripes, upright when the picture is wide, else level.
QImage striped(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::green);
    QPainter painter(&image);
    const bool isWide = size.width() > size.height();
    const QSize stripe =
        isWide ? QSize(size.width() / 3, size.height()) : QSize(size.width(), size.height() / 3);
    const QPoint last =
        isWide ? QPoint(size.width() - stripe.width(), 0) : QPoint(0, size.height() - stripe.height());
    painter.fillRect(QRect(QPoint(), stripe), Qt::red);
    painter.fillRect(QRect(last, stripe), Qt::blue);
    return image;
}

QByteArray formatOf(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader(&buffer).format();
}

/// How far a colour goes astray when its picture is written as a JPEG and read again.
constexpr int tolerance = 6;

} // namespace

class TestThemeServicePictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aSquareIsFilledAboutTheMiddle_data();
    void aSquareIsFilledAboutTheMiddle();
    void transparencyStays();
    void theDancingPictureIsStoredSmall();
    void theDancingPictureIsCleared();

    void backgroundsAreMadeSmallerNeverLarger_data();
    void backgroundsAreMadeSmallerNeverLarger();
    void aSmallPictureIsStillStoredAsJpeg();
    void whatIsTransparentBecomesWhite();
    void theStyleIsLeftToTheScreen();
    void whatWasFittedIsNotFittedAgain();

    void noPictureIsNoChange();
    void aPictureThatCannotBeEncodedStaysUntilTheEnd();
    void storedPicturesAreTold_data();
    void storedPicturesAreTold();
    void anyStoredPictureIsShown();
    void everyPictureHasAnAddressOfItsOwn();
    void theSamePictureIsNoChange();
    void picturesAreReadWhenTheyAreAskedFor();
    void aPictureThatNobodyAskedForIsClearedUnread();

private:
    std::unique_ptr<AppearanceBench> m_bench;
};

void TestThemeServicePictures::init()
{
    m_bench = std::make_unique<AppearanceBench>();
}

void TestThemeServicePictures::aSquareIsFilledAboutTheMiddle_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("hasEnds");
    // Of three stripes the outer ones are cut off, to the same width.
    QTest::newRow("wide") << QSize(300, 100) << false;
    QTest::newRow("wide, much larger") << QSize(3000, 1000) << false;
    QTest::newRow("wide, smaller than the square") << QSize(30, 10) << false;
    QTest::newRow("tall") << QSize(100, 300) << false;
    QTest::newRow("not so wide") << QSize(150, 100) << true;
    QTest::newRow("not so tall") << QSize(1000, 1500) << true;
    QTest::newRow("an extreme") << QSize(6000, 1) << false;
}

void TestThemeServicePictures::aSquareIsFilledAboutTheMiddle()
{
    QFETCH(const QSize, size);
    QFETCH(const bool, hasEnds);
    const QImage square = resizeImage(striped(size), {50, 50});
    QCOMPARE(square.size(), QSize(50, 50));
    const bool isWide = size.width() > size.height();
    const auto at = [&](int along, int across) {
        return isWide ? square.pixelColor(along, across) : square.pixelColor(across, along);
    };
    for (const int across : {0, 25, 49}) {
        QVERIFY(isNear(at(25, across), Qt::green, tolerance));
        QVERIFY(isNear(at(4, across), hasEnds ? Qt::red : Qt::green, tolerance));
        QVERIFY(isNear(at(45, across), hasEnds ? Qt::blue : Qt::green, tolerance));
    }
    if (!hasEnds)
        return;
    // A quarter of the square at either end, and as much of the one as of the other.
    QVERIFY(isNear(at(10, 25), Qt::red, tolerance));
    QVERIFY(isNear(at(14, 25), Qt::green, tolerance));
    QVERIFY(isNear(at(39, 25), Qt::blue, tolerance));
    QVERIFY(isNear(at(35, 25), Qt::green, tolerance));
}

void TestThemeServicePictures::transparencyStays()
{
    QImage picture(200, 100, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter(&picture).fillRect(0, 0, 200, 50, QColor(255, 0, 0, 128));
    m_bench->start().setCustomDancingImage(picture);
    const QImage kept = m_bench->start().customDancingImage();
    QVERIFY(isNear(kept.pixelColor(25, 10), QColor(255, 0, 0, 128), tolerance));
    QCOMPARE(kept.pixelColor(25, 40).alpha(), 0);
}

void TestThemeServicePictures::theDancingPictureIsStoredSmall()
{
    ThemeService &service = m_bench->start();
    const auto pictures = changesOf(service, u"customDancingImageSource"_s);
    const auto uses = changesOf(service, u"useCustomImage"_s);
    service.setCustomDancingImage(striped({640, 480}));
    QCOMPARE(pictures->count(), 1);
    QCOMPARE(uses->count(), 1);
    QVERIFY(service.useCustomImage());
    QCOMPARE(service.dancingEmoji(), u"🕺"_s);
    const QByteArray stored = m_bench->preferences.dataValue(dancingKey).value_or(QByteArray());
    QCOMPARE(formatOf(stored), "png");
    QCOMPARE(QImage::fromData(stored).size(), QSize(50, 50));
    QCOMPARE(m_bench->preferences.boolValue(u"useCustomDancingImage"_s), true);
    QCOMPARE(m_bench->start().customDancingImage().size(), QSize(50, 50));
    QVERIFY(m_bench->service->useCustomImage());
}

void TestThemeServicePictures::theDancingPictureIsCleared()
{
    ThemeService &service = m_bench->start();
    service.setCustomDancingImage(striped({64, 48}));
    const auto pictures = changesOf(service, u"customDancingImageSource"_s);
    const auto uses = changesOf(service, u"useCustomImage"_s);
    service.clearCustomDancingImage();
    service.clearCustomDancingImage();
    QCOMPARE(pictures->count(), 1);
    QCOMPARE(uses->count(), 1);
    QVERIFY(service.customDancingImage().isNull());
    QCOMPARE(service.customDancingImageSource(), QString());
    QVERIFY(!service.useCustomImage());
    QVERIFY(!m_bench->preferences.contains(dancingKey));
    QCOMPARE(m_bench->preferences.boolValue(u"useCustomDancingImage"_s), false);
}

void TestThemeServicePictures::backgroundsAreMadeSmallerNeverLarger_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("kept");
    QTest::newRow("wide") << QSize(1600, 900) << QSize(800, 450);
    QTest::newRow("tall") << QSize(1000, 4000) << QSize(200, 800);
    QTest::newRow("square") << QSize(801, 801) << QSize(800, 800);
    QTest::newRow("just fits") << QSize(800, 600) << QSize(800, 600);
    QTest::newRow("small") << QSize(40, 30) << QSize(40, 30);
    QTest::newRow("a line") << QSize(4000, 1) << QSize(800, 1);
}

void TestThemeServicePictures::backgroundsAreMadeSmallerNeverLarger()
{
    QFETCH(const QSize, size);
    QFETCH(const QSize, kept);
    ThemeService &service = m_bench->start();
    const auto changes = changesOf(service, u"customBackgroundImageSource"_s);
    service.setCustomBackgroundImage(striped(size));
    QCOMPARE(changes->count(), 1);
    QCOMPARE(service.customBackgroundImage().size(), kept);
    QCOMPARE(m_bench->start().customBackgroundImage().size(), kept);
}

void TestThemeServicePictures::aSmallPictureIsStillStoredAsJpeg()
{
    const QImage picture = QImage::fromData(madePng(Qt::blue, 64));
    m_bench->start().setCustomBackgroundImage(picture);
    QCOMPARE(m_bench->service->customBackgroundImage().size(), QSize(64, 64));
    const QByteArray stored = m_bench->preferences.dataValue(backgroundKey).value_or(QByteArray());
    QCOMPARE(formatOf(stored), "jpeg");
    constexpr int quality = 70;
    QCOMPARE(stored, jpegData(m_bench->service->customBackgroundImage(), quality));
    QCOMPARE(QImage::fromData(stored).size(), QSize(64, 64));
    QVERIFY(isNear(QImage::fromData(stored).pixelColor(32, 32), Qt::blue, tolerance));
}

void TestThemeServicePictures::whatIsTransparentBecomesWhite()
{
    QImage picture(60, 60, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    m_bench->start().setCustomBackgroundImage(picture);
    QVERIFY(isNear(m_bench->service->customBackgroundImage().pixelColor(30, 30), Qt::white, tolerance));
    QVERIFY(isNear(m_bench->start().customBackgroundImage().pixelColor(30, 30), Qt::white, tolerance));
}

void TestThemeServicePictures::theStyleIsLeftToTheScreen()
{
    ThemeService &service = m_bench->start();
    service.setCustomBackgroundImage(striped({80, 60}));
    QCOMPARE(service.nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::blur);
    service.setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle::customImage);
    service.clearCustomBackgroundImage();
    QCOMPARE(service.nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::customImage);
    QVERIFY(service.customBackgroundImage().isNull());
    QVERIFY(!m_bench->preferences.contains(backgroundKey));
}

void TestThemeServicePictures::whatWasFittedIsNotFittedAgain()
{
    const QImage once = fittedImage(striped({1234, 987}), StoredPicture::longestSide);
    QCOMPARE(fittedImage(once, StoredPicture::longestSide), once);
    m_bench->start().setCustomBackgroundImage(once);
    QCOMPARE(m_bench->service->customBackgroundImage(), once);
}

// MARK: none, damaged and foreign pictures

void TestThemeServicePictures::noPictureIsNoChange()
{
    ThemeService &service = m_bench->start();
    service.setCustomDancingImage(striped({64, 48}));
    service.setCustomBackgroundImage(striped({64, 48}));
    const int writes = m_bench->preferences.writes();
    service.setCustomDancingImage({});
    service.setCustomBackgroundImage({});
    QCOMPARE(m_bench->preferences.writes(), writes);
    QVERIFY(!service.customDancingImage().isNull());
    QVERIFY(!service.customBackgroundImage().isNull());
}

void TestThemeServicePictures::aPictureThatCannotBeEncodedStaysUntilTheEnd()
{
    const auto shown = std::make_shared<CustomPictures>();
    const QByteArray before = madePng(Qt::blue, 20);
    m_bench->preferences.setData(dancingKey, before);
    StoredPicture picture(m_bench->preferences, shown, u"dancing"_s);
    picture.open(dancingKey);
    QVERIFY(picture.set(striped({30, 10}), std::nullopt));
    QCOMPARE(picture.image().size(), QSize(30, 10));
    QCOMPARE(shown->image(u"dancing"_s).size(), QSize(30, 10));
    QCOMPARE(m_bench->preferences.dataValue(dancingKey), before);
    picture.open(dancingKey);
    QCOMPARE(picture.image().size(), QSize(20, 20));
}

void TestThemeServicePictures::storedPicturesAreTold_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("isPicture");
    const QByteArray png = madePng(Qt::blue, 50);
    QTest::newRow("a picture") << png << true;
    QTest::newRow("no bytes") << QByteArray() << false;
    QTest::newRow("a text") << QByteArray("not a picture") << false;
    QTest::newRow("a header alone") << png.left(40) << false;
    QTest::newRow("a bomb") << madePictureBomb(60000) << false;
    QTest::newRow("a drawing") << QByteArray(
                                      R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"/>)")
                               << false;
}

void TestThemeServicePictures::storedPicturesAreTold()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const bool, isPicture);
    for (const QString &key : {dancingKey, backgroundKey})
        m_bench->preferences.setData(key, stored);
    const ThemeService &service = m_bench->start();
    QCOMPARE(!service.customDancingImage().isNull(), isPicture);
    QCOMPARE(!service.customBackgroundImage().isNull(), isPicture);
    QCOMPARE(!service.customDancingImageSource().isEmpty(), isPicture);
    QCOMPARE(!service.customBackgroundImageSource().isEmpty(), isPicture);
    // Whether it is used is another setting.
    QVERIFY(!service.useCustomImage());
}

void TestThemeServicePictures::anyStoredPictureIsShown()
{
    m_bench->preferences.setData(backgroundKey, madePng(Qt::red, 2000));
    m_bench->preferences.setString(dancingKey, u"not data"_s);
    QCOMPARE(m_bench->start().customBackgroundImage().size(), QSize(800, 800));
    QVERIFY(m_bench->service->customDancingImage().isNull());
}

void TestThemeServicePictures::everyPictureHasAnAddressOfItsOwn()
{
    ThemeService &service = m_bench->start();
    QStringList addresses;
    for (const Qt::GlobalColor color : {Qt::red, Qt::green, Qt::blue}) {
        QImage picture(9, 9, QImage::Format_RGB32);
        picture.fill(color);
        service.setCustomBackgroundImage(picture);
        addresses.append(service.customBackgroundImageSource());
    }
    QVERIFY(m_bench->turnTo(ThemeType::neumorphism));
    QCOMPARE(service.customBackgroundImageSource(), QString());
    QVERIFY(m_bench->turnTo(ThemeType::classic));
    addresses.append(service.customBackgroundImageSource());
    QCOMPARE(QSet<QString>(addresses.begin(), addresses.end()).size(), 4);
    for (const QString &address : addresses)
        QVERIFY(address.startsWith(u"image://custom/background?"_s));
}

void TestThemeServicePictures::theSamePictureIsNoChange()
{
    ThemeService &service = m_bench->start();
    const auto changes = changesOf(service, u"customBackgroundImageSource"_s);
    service.setCustomBackgroundImage(striped({64, 48}));
    const QString address = service.customBackgroundImageSource();
    service.setCustomBackgroundImage(striped({64, 48}));
    QCOMPARE(changes->count(), 1);
    QCOMPARE(service.customBackgroundImageSource(), address);
}

void TestThemeServicePictures::picturesAreReadWhenTheyAreAskedFor()
{
    m_bench->preferences.setData(dancingKey, madePng(Qt::red, 50));
    m_bench->preferences.setData(backgroundKey, madeJpeg(Qt::red, 64));
    const ThemeService &service = m_bench->start();
    QVERIFY(!m_bench->preferences.reads.contains(dancingKey));
    QVERIFY(!m_bench->preferences.reads.contains(backgroundKey));
    for (int time = 0; time < 3; ++time) {
        QVERIFY(!service.customDancingImageSource().isEmpty());
        QVERIFY(!service.customBackgroundImage().isNull());
    }
    QCOMPARE(m_bench->preferences.reads.count(dancingKey), 1);
    QCOMPARE(m_bench->preferences.reads.count(backgroundKey), 1);
}

void TestThemeServicePictures::aPictureThatNobodyAskedForIsClearedUnread()
{
    m_bench->preferences.setData(dancingKey, madePng(Qt::red, 50));
    m_bench->preferences.setData(backgroundKey, madeJpeg(Qt::red, 64));
    ThemeService &service = m_bench->start();
    const auto dancing = changesOf(service, u"customDancingImageSource"_s);
    const auto background = changesOf(service, u"customBackgroundImageSource"_s);
    for (int time = 0; time < 2; ++time) {
        service.clearCustomDancingImage();
        service.clearCustomBackgroundImage();
    }
    QVERIFY(!m_bench->preferences.reads.contains(dancingKey));
    QVERIFY(!m_bench->preferences.reads.contains(backgroundKey));
    QCOMPARE(dancing->count(), 1);
    QCOMPARE(background->count(), 1);
    QVERIFY(!m_bench->preferences.contains(dancingKey));
    QVERIFY(!m_bench->preferences.contains(backgroundKey));
    QVERIFY(service.customBackgroundImage().isNull());
}

QTEST_GUILESS_MAIN(TestThemeServicePictures)
#include "tst_theme_service_pictures.moc"
