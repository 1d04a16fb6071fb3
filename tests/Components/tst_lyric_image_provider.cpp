// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BlurredText.h"
#include "Components/LyricImageProvider.h"
#include "Views/UserInterface.h"

#include <QTest>
#include <QUrl>

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

BlurredText line(const QString &text = u"夜空中最亮的星"_s)
{
    return {.text = text,
            .width = 300,
            .mostLines = 8,
            .pixelSize = 18,
            .isBold = false,
            .alignment = Qt::AlignHCenter,
            .radius = 1.6,
            .color = Qt::white,
            .ratio = 1};
}

/// Share of the picture that is covered, in pixels.
double coverage(const QImage &image)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += qAlpha(image.pixel(x, y)) / 255.0;
    }
    return sum;
}

int strongest(const QImage &image)
{
    int alpha = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            alpha = std::max(alpha, qAlpha(image.pixel(x, y)));
    }
    return alpha;
}

/// What is covered by at least @p least.
QRect bounds(const QImage &image, int least = 24)
{
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) >= least)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

QString query(const BlurredText &text)
{
    return u"width=%1&lines=%2&size=%3&bold=%4&align=%5&radius=%6&ratio=%7&color=%8&text=%9"_s.arg(
        QString::number(text.width), QString::number(text.mostLines), QString::number(text.pixelSize),
        text.isBold ? u"true"_s : u"false"_s, text.alignment == Qt::AlignHCenter ? u"center"_s : u"left"_s,
        QString::number(text.radius), QString::number(text.ratio),
        QString::fromLatin1(QUrl::toPercentEncoding(text.color.name(QColor::HexArgb))),
        QString::fromLatin1(QUrl::toPercentEncoding(text.text)));
}

} // namespace

class TestLyricImageProvider : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { installFonts(); }

    void aBlurIsSofterTheLargerItsRadiusAndKeepsItsInk()
    {
        double inkOfSharp = 0;
        int before = 256;
        for (const double radius : {0.0, 0.8, 1.6, 2.4, 3.0}) {
            BlurredText text = line();
            text.radius = radius;
            const QImage image = text.drawn();
            if (radius == 0)
                inkOfSharp = coverage(image);
            QVERIFY(strongest(image) < before);
            before = strongest(image);
            QVERIFY(std::abs(coverage(image) / inkOfSharp - 1) < 0.02);
        }
    }

    void theBlurFitsIntoThePicture()
    {
        for (const double ratio : {1.0, 1.25, 2.0}) {
            BlurredText text = line();
            text.radius = 3;
            text.ratio = ratio;
            text.width = 120;
            const QImage image = text.drawn();
            for (int x = 0; x < image.width(); ++x) {
                QVERIFY(qAlpha(image.pixel(x, 0)) < 4);
                QVERIFY(qAlpha(image.pixel(x, image.height() - 1)) < 4);
            }
        }
    }

    void aPictureHasThePixelsOfTheScreen()
    {
        const QSize atOne = line().drawn().size();
        for (const double ratio : {1.25, 1.5, 2.0, 3.0}) {
            BlurredText text = line();
            text.ratio = ratio;
            const QImage image = text.drawn();
            QVERIFY(std::abs(image.width() / ratio - atOne.width()) < 6);
            QVERIFY(std::abs(image.height() / ratio - atOne.height()) < 6);
            // The column is in its middle.
            const QRectF ink = bounds(image);
            QVERIFY(std::abs(ink.center().x() - image.width() / 2.0) < 3 * ratio);
        }
    }

    void breaksAreTheSameAtEveryRatio()
    {
        BlurredText text = line(u"我们都有一个家 名字叫中国 兄弟姐妹都很多 景色也不错"_s);
        text.width = 180;
        const double height = text.drawn().height();
        for (const double ratio : {1.25, 1.5, 1.75, 2.0, 2.5}) {
            text.ratio = ratio;
            QVERIFY(std::abs(text.drawn().height() / ratio - height) < 6);
        }
    }

    void theTextStandsAsItIsAligned()
    {
        BlurredText text = line(u"短"_s);
        const QRect centred = bounds(text.drawn());
        text.alignment = Qt::AlignLeft;
        const QRect left = bounds(text.drawn());
        QVERIFY(left.right() < 40);
        QVERIFY(centred.left() > 120 && centred.right() < 190);
    }

    void theColorIsTheOneThatIsAskedFor()
    {
        BlurredText text = line();
        text.color = QColor(200, 40, 120);
        const QImage image = text.drawn();
        int seen = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.alpha() < 100)
                    continue;
                ++seen;
                QVERIFY(std::abs(pixel.red() - 200) < 6 && std::abs(pixel.green() - 40) < 6 &&
                        std::abs(pixel.blue() - 120) < 6);
            }
        }
        QVERIFY(seen > 50);
        // One that lets through what lies beneath does so in the picture.
        const int opaque = strongest(image);
        text.color.setAlpha(128);
        QVERIFY(std::abs(strongest(text.drawn()) - opaque / 2) < 4);
    }

    void emojiKeepTheirColors()
    {
        BlurredText text = line(u"❤️🌟"_s);
        text.pixelSize = 28;
        text.color = Qt::white;
        const QImage image = text.drawn();
        bool isRed = false;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                isRed = isRed || (pixel.alpha() > 150 && pixel.red() > pixel.green() + 80);
                QVERIFY(qRed(image.pixel(x, y)) <= qAlpha(image.pixel(x, y)));
            }
        }
        QVERIFY(isRed);
    }

    void noMoreLinesAreDrawnThanAskedFor()
    {
        BlurredText text = line(u"词 "_s.repeated(500));
        text.mostLines = 1;
        const int one = text.drawn().height();
        text.mostLines = 3;
        const int three = text.drawn().height();
        QVERIFY(three > 2 * one && three < 3 * one);
    }

    void anAddressSaysItAll()
    {
        BlurredText text = line(u"a&b=c#d?e%41+f/.. 词"_s);
        text.color = QColor(1, 2, 3, 4);
        text.isBold = true;
        text.alignment = Qt::AlignLeft;
        text.ratio = 1.5;
        // As it comes by way of an address.
        const QUrl url(u"image://lyric/line?"_s + query(text));
        const QString address = url.toString(QUrl::RemoveScheme | QUrl::RemoveAuthority).mid(1);
        const BlurredText read = BlurredText::ofQuery(address.section(u'?', 1));
        QCOMPARE(read.text, text.text);
        QCOMPARE(read.width, text.width);
        QCOMPARE(read.mostLines, text.mostLines);
        QCOMPARE(read.pixelSize, text.pixelSize);
        QCOMPARE(read.isBold, text.isBold);
        QCOMPARE(read.alignment, text.alignment);
        QCOMPARE(read.radius, text.radius);
        QCOMPARE(read.color, text.color);
        QCOMPARE(read.ratio, text.ratio);
    }

    void addressesOfNoUseAreATransparentPixel_data()
    {
        QTest::addColumn<QString>("query");
        QTest::newRow("nothing") << QString();
        QTest::newRow("no text") << u"width=300&size=18&radius=1"_s;
        QTest::newRow("no width") << u"size=18&radius=1&text=a"_s;
        QTest::newRow("no numbers") << u"width=nan&size=x&radius=inf&ratio=-1&text=a"_s;
    }

    void addressesOfNoUseAreATransparentPixel()
    {
        QFETCH(QString, query);
        LyricImageProvider provider;
        QSize size;
        const QImage image = provider.requestImage(u"line?"_s + query, &size, {});
        QCOMPARE(image.size(), QSize(1, 1));
        QCOMPARE(size, QSize(1, 1));
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    }

    void hugeAddressesAreBounded()
    {
        const QImage image =
            BlurredText::ofQuery(u"width=1e9&size=1e9&radius=1e9&ratio=8&lines=1000&text="_s +
                                 QString::fromLatin1(QUrl::toPercentEncoding(u"词"_s)))
                .drawn();
        QVERIFY(image.width() <= 4500);
        QVERIFY(image.height() <= 4500);
    }

    void drawnPicturesAreKept()
    {
        LyricImageProvider provider;
        const QString address = u"line?"_s + query(line());
        const QImage first = provider.requestImage(address, nullptr, {});
        QCOMPARE(provider.requestImage(address, nullptr, {}).cacheKey(), first.cacheKey());
        QCOMPARE(provider.flags(), QQmlImageProviderBase::ForceAsynchronousImageLoading);
    }
};

QTEST_MAIN(TestLyricImageProvider)
#include "tst_lyric_image_provider.moc"
