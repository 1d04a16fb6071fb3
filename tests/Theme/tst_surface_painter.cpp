// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/SurfacePainter.h"
#include "Theme/ThemeFactory.h"
#include "Theme/ThemedSurfaces.h"

#include <QPainter>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

Surface plain(const QColor &fill, double radius, const QList<SurfaceShadow> &shadows = {},
              const QList<SurfaceStroke> &strokes = {})
{
    return {.fill = fill, .gradient = {}, .cornerRadius = radius, .shadows = shadows, .strokes = strokes};
}

SurfaceStroke line(const QColor &color, double width)
{
    return {.color = color, .gradient = {}, .width = width};
}

AppTheme *embossed()
{
    return &ThemeFactory::create(ThemeType::neumorphism);
}

/// All surfaces of all looks.
QList<Surface> allSurfaces()
{
    QList<Surface> all;
    for (const ThemeType type : allThemeTypes()) {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            AppTheme *theme = &ThemeFactory::create(type, scheme);
            using S = ThemedSurfaces;
            all << S::neumorphismRaised(theme) << S::neumorphismPressed(theme) << S::kawaiiCard(theme)
                << S::themedRow(theme) << S::themedRowArtwork(theme) << S::themedSegmentedPicker(theme)
                << S::albumCoverShadow(theme) << S::albumCoverStroke(theme) << S::kawaiiButton(theme, false)
                << S::searchBar(theme) << S::playButton(theme, 60) << S::controlButton(theme, 44)
                << S::settingsIcon(theme, Qt::green) << S::progressTrack(theme) << S::progressKnob(theme, 16)
                << S::previewBlock(theme) << S::background(theme);
        }
    }
    return all;
}

int differenceOf(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other)), std::abs(qAlpha(one) - qAlpha(other))});
}

/// Pixels as they are stored: premultiplied.
QRgb raw(const QImage &image, int x, int y)
{
    return reinterpret_cast<const QRgb *>(image.constScanLine(y))[x];
}

int largestDifference(const QImage &one, const QImage &other)
{
    if (one.size() != other.size())
        return 256;
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            largest = std::max(largest, differenceOf(raw(one, x, y), raw(other, x, y)));
    }
    return largest;
}

/// What a screen shows of it on a ground of that colour.
QImage on(const QColor &ground, const QImage &picture)
{
    QImage screen(picture.size(), QImage::Format_RGB32);
    screen.fill(ground);
    QPainter(&screen).drawImage(0, 0, picture);
    return screen;
}

/// A small picture stretched by its borders to that size.
QImage stretched(const QImage &small, int border, QSize size)
{
    const auto source = [border](int place, int length, int smallLength) {
        if (place < border)
            return place;
        return place >= length - border ? place - length + smallLength : smallLength / 2;
    };
    QImage image(size, small.format());
    for (int y = 0; y < size.height(); ++y) {
        auto *out = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            out[x] =
                raw(small, source(x, size.width(), small.width()), source(y, size.height(), small.height()));
        }
    }
    return image;
}

} // namespace

class SurfacePainterTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void middleHasTheExactColor();
    void pictureIsTheShapeAndItsMargins();
    void evenSurfaceIsSymmetric();
    void marginEndsTransparent();
    void cornersAreRoundAndSmooth();
    void radiusIsAtMostHalfOfASide();
    void blurIsAGaussianOfHalfItsRadius();
    void shadowLiesWhereItsOffsetSays();
    void raisedAndPressedAreLitFromOpposite();
    void strokeLiesWithinTheEdge();
    void frameLeavesItsMiddleFree();
    void shadowShowsThroughATranslucentFill();
    void gradientRunsFromCornerToCorner();
    void slowGradientShowsNoBands();
    void stretchedPictureIsTheExactOne_data();
    void stretchedPictureIsTheExactOne();
    void ratioScalesTheDrawing();
    void tinySizes_data();
    void tinySizes();
    void absurdNumbersDrawSomethingBounded();
    void addressHoldsTheSurface();
};

void SurfacePainterTest::middleHasTheExactColor()
{
    for (const QColor &color :
         {QColor(224, 229, 236), QColor(242, 242, 247), QColor(10, 132, 255), QColor(1, 2, 3)})
        QCOMPARE(paintSurface(plain(color, 12, {{Qt::black, 6, 2, 2}}), {80, 60}, 1).pixelColor(49, 39),
                 color);
    QColor translucent(255, 45, 85);
    translucent.setAlpha(51);
    const QColor seen = on(Qt::white, paintSurface(plain(translucent, 12), {80, 60}, 1)).pixelColor(40, 30);
    QVERIFY(differenceOf(seen.rgb(), qRgb(255, 213, 221)) <= 1);
}

void SurfacePainterTest::pictureIsTheShapeAndItsMargins()
{
    for (const Surface &surface : allSurfaces()) {
        for (const double ratio : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
            // Whole pixels of the screen, or edges would be blurred.
            QCOMPARE(surface.margin() * ratio, std::floor(surface.margin() * ratio));
            QCOMPARE(surface.border() * ratio, std::floor(surface.border() * ratio));
            const QImage image = paintSurface(surface, {70, 50}, ratio);
            const int margin = scaledLength(surface.margin(), ratio);
            QCOMPARE(image.size(), QSize(70 + 2 * margin, 50 + 2 * margin));
        }
    }
}

void SurfacePainterTest::evenSurfaceIsSymmetric()
{
    const Surface surface = plain(QColor(200, 100, 50), 12, {{QColor(0, 0, 0, 128), 8, 0, 0}},
                                  {line(QColor(255, 255, 255, 90), 1.5)});
    for (const QSize size : {QSize(60, 60), QSize(61, 45), QSize(200, 33), QSize(9, 150)}) {
        for (const double ratio : {1.0, 1.5, 2.0}) {
            const QImage image = paintSurface(surface, size, ratio);
            QVERIFY(largestDifference(image, image.mirrored(true, false)) <= 1);
            QVERIFY(largestDifference(image, image.mirrored(false, true)) <= 1);
        }
    }
}

void SurfacePainterTest::marginEndsTransparent()
{
    // A shadow that is cut off at the picture's edge is seen as a line.
    for (const Surface &surface : allSurfaces()) {
        if (surface.margin() == 0)
            continue;
        for (const double ratio : {1.0, 1.5, 2.0}) {
            const QImage image = paintSurface(surface, {90, 70}, ratio);
            for (int x = 0; x < image.width(); ++x) {
                QVERIFY(qAlpha(raw(image, x, 0)) <= 1);
                QVERIFY(qAlpha(raw(image, x, image.height() - 1)) <= 1);
            }
            for (int y = 0; y < image.height(); ++y) {
                QVERIFY(qAlpha(raw(image, 0, y)) <= 1);
                QVERIFY(qAlpha(raw(image, image.width() - 1, y)) <= 1);
            }
        }
    }
}

void SurfacePainterTest::cornersAreRoundAndSmooth()
{
    for (const int radius : {2, 8, 12, 25}) {
        const QImage image = paintSurface(plain(Qt::black, radius), {50, 50}, 1);
        double covered = 0;
        int partly = 0;
        for (int y = 0; y < 25; ++y) {
            for (int x = 0; x < 25; ++x) {
                const int alpha = qAlpha(raw(image, x, y));
                covered += alpha / 255.0;
                partly += alpha > 0 && alpha < 255;
                const double distance =
                    std::hypot(std::max(radius - x - 0.5, 0.0), std::max(radius - y - 0.5, 0.0));
                if (distance < radius - 1)
                    QCOMPARE(alpha, 255);
                if (distance > radius + 1)
                    QCOMPARE(alpha, 0);
            }
        }
        const double area = 625 - (1 - std::numbers::pi / 4) * radius * radius;
        QVERIFY2(std::abs(covered - area) < 0.02 * radius + 0.1, qPrintable(QString::number(covered - area)));
        QVERIFY(partly >= radius);
    }
    const QImage square = paintSurface(plain(Qt::black, 0), {10, 10}, 1);
    QCOMPARE(qAlpha(raw(square, 0, 0)), 255);
    QCOMPARE(qAlpha(raw(square, 9, 9)), 255);
}

void SurfacePainterTest::radiusIsAtMostHalfOfASide()
{
    QCOMPARE(largestDifference(paintSurface(plain(Qt::black, 1e9), {40, 40}, 1),
                               paintSurface(plain(Qt::black, 20), {40, 40}, 1)),
             0);
    const QImage pill = paintSurface(plain(Qt::black, 1e9), {80, 20}, 1);
    QCOMPARE(qAlpha(raw(pill, 0, 0)), 0);
    QVERIFY(qAlpha(raw(pill, 0, 10)) > 230);
    QCOMPARE(qAlpha(raw(pill, 40, 0)), 255);
}

void SurfacePainterTest::blurIsAGaussianOfHalfItsRadius()
{
    // Across a long straight edge a blurred shape is the integral of the Gaussian.
    const Surface surface = plain({}, 0, {{Qt::black, 8, 0, 0}});
    const QImage image = paintSurface(surface, {200, 200}, 1);
    const int margin = surface.margin();
    for (int outside = 1; outside <= margin; ++outside) {
        const double expected = 0.5 * std::erfc((outside - 0.5) / (4 * std::numbers::sqrt2));
        const int alpha = qAlpha(raw(image, margin - outside, margin + 100));
        QVERIFY2(std::abs(alpha - 255 * expected) <= 2, qPrintable(QString::number(outside)));
    }
}

void SurfacePainterTest::shadowLiesWhereItsOffsetSays()
{
    const Surface surface = plain(Qt::white, 8, {{Qt::black, 4, 0, 3}});
    const QImage image = paintSurface(surface, {60, 40}, 1);
    const int m = surface.margin();
    const int above = qAlpha(raw(image, m + 30, m - 1));
    const int below = qAlpha(raw(image, m + 30, m + 40));
    const int left = qAlpha(raw(image, m - 1, m + 20));
    const int right = qAlpha(raw(image, m + 60, m + 20));
    QVERIFY(below > left + 60);
    QVERIFY(left > above + 60);
    QVERIFY(std::abs(left - right) <= 1);
}

void SurfacePainterTest::raisedAndPressedAreLitFromOpposite()
{
    const QColor ground = embossed()->backgroundColor();
    const Surface raised = ThemedSurfaces::neumorphismRaised(embossed());
    const QImage up = on(ground, paintSurface(raised, {80, 80}, 2));
    const int m = raised.margin() * 2;
    const auto lightness = [](const QImage &image, int x, int y) {
        return image.pixelColor(x, y).lightness();
    };
    // Outside of the edges: light at the upper left, dark at the lower right.
    QVERIFY(lightness(up, m + 40, m - 3) > ground.lightness() + 5);
    QVERIFY(lightness(up, m - 3, m + 40) > ground.lightness() + 5);
    QVERIFY(lightness(up, m + 40, m + 82) < ground.lightness() - 5);
    QVERIFY(lightness(up, m + 82, m + 40) < ground.lightness() - 5);
    QCOMPARE(up.pixelColor(m + 40, m + 40), ground);

    // Within them: shade at the upper left, light at the lower right.
    const Surface pressed = ThemedSurfaces::neumorphismPressed(embossed());
    const QImage down = on(ground, paintSurface(pressed, {80, 80}, 2));
    const int p = pressed.margin() * 2;
    QVERIFY(lightness(down, p + 40, p) < ground.lightness());
    QVERIFY(lightness(down, p, p + 40) < ground.lightness());
    QVERIFY(lightness(down, p + 40, p + 79) > ground.lightness());
    QVERIFY(lightness(down, p + 79, p + 40) > ground.lightness());
    QCOMPARE(down.pixelColor(p + 40, p + 40), ground);

    // The groove, whose edges are drawn in full strength.
    const QImage groove = on(ground, paintSurface(ThemedSurfaces::progressTrack(embossed()), {80, 4}, 1));
    QVERIFY(lightness(groove, 40, 0) < ground.lightness() - 5);
    QVERIFY(lightness(groove, 40, 3) > ground.lightness());
}

void SurfacePainterTest::strokeLiesWithinTheEdge()
{
    const QImage image = paintSurface(plain({}, 12, {}, {line(Qt::red, 2)}), {60, 60}, 1);
    QCOMPARE(image.size(), QSize(60, 60));
    for (const int edge : {0, 1, 58, 59}) {
        QCOMPARE(image.pixelColor(30, edge), QColor(Qt::red));
        QCOMPARE(image.pixelColor(edge, 30), QColor(Qt::red));
    }
    QCOMPARE(qAlpha(raw(image, 30, 2)), 0);
    QCOMPARE(qAlpha(raw(image, 2, 30)), 0);
    // As wide at the corners: along the diagonal it begins 12 (√2 - 1) from the corner.
    double crossed = 0;
    for (int i = 0; i < 15; ++i)
        crossed += qAlpha(raw(image, i, i)) / 255.0 * std::numbers::sqrt2;
    QVERIFY2(std::abs(crossed - 2) < 0.4, qPrintable(QString::number(crossed)));
    // One and a half pixels are a whole and a half one.
    const QImage half = paintSurface(plain({}, 12, {}, {line(Qt::black, 1.5)}), {60, 60}, 1);
    QCOMPARE(qAlpha(raw(half, 30, 0)), 255);
    QVERIFY(std::abs(qAlpha(raw(half, 30, 1)) - 128) <= 1);
    // At a ratio of 2 it is 3 whole ones.
    const QImage fine = paintSurface(plain({}, 12, {}, {line(Qt::black, 1.5)}), {120, 120}, 2);
    QCOMPARE(qAlpha(raw(fine, 60, 2)), 255);
    QCOMPARE(qAlpha(raw(fine, 60, 3)), 0);
}

void SurfacePainterTest::frameLeavesItsMiddleFree()
{
    for (const ThemeType type : allThemeTypes()) {
        const Surface shadow = ThemedSurfaces::albumCoverShadow(&ThemeFactory::create(type));
        const QImage image = paintSurface(shadow, {100, 100}, 1);
        const int m = shadow.margin();
        for (int y = m + 4; y < m + 96; ++y) {
            for (int x = m + 4; x < m + 96; ++x)
                QCOMPARE(qAlpha(raw(image, x, y)), 0);
        }
        QVERIFY(qAlpha(raw(image, m + 50, m + 101)) > 10);
    }
}

void SurfacePainterTest::shadowShowsThroughATranslucentFill()
{
    QColor half(Qt::white);
    half.setAlphaF(0.5F);
    const Surface surface = plain(half, 4, {{Qt::black, 4, 0, 0}});
    const QColor middle = on(Qt::white, paintSurface(surface, {60, 60}, 1))
                              .pixelColor(30 + surface.margin(), 30 + surface.margin());
    // Half as strong as the shadow of something opaque, half let through, and half hidden.
    QVERIFY2(std::abs(middle.red() - 223) <= 1, qPrintable(middle.name()));
    QCOMPARE(on(Qt::white, paintSurface(plain(Qt::white, 4, {{Qt::black, 4, 0, 0}}), {60, 60}, 1))
                 .pixelColor(36, 36),
             QColor(Qt::white));
}

void SurfacePainterTest::gradientRunsFromCornerToCorner()
{
    Surface surface;
    surface.gradient = {.stops = {{0, Qt::black}, {0.5, Qt::red}, {1, Qt::white}}};
    const QImage image = paintSurface(surface, {101, 101}, 1);
    QVERIFY(differenceOf(image.pixel(0, 0), qRgb(0, 0, 0)) <= 4);
    QVERIFY(differenceOf(image.pixel(50, 50), qRgb(255, 0, 0)) <= 1);
    QVERIFY(differenceOf(image.pixel(100, 100), qRgb(255, 255, 255)) <= 4);
    QVERIFY(differenceOf(image.pixel(25, 25), qRgb(128, 0, 0)) <= 3);
    // Of a wide one, too, each line of one colour stands upright on the way.
    const QImage wide = paintSurface(surface, {201, 101}, 1);
    QVERIFY(differenceOf(wide.pixel(100, 50), qRgb(255, 0, 0)) <= 1);
    QVERIFY(differenceOf(wide.pixel(120, 10), wide.pixel(100, 50)) <= 2);
    // Colours and opacities change together.
    Surface faint;
    faint.gradient = {.stops = {{0, QColor(255, 0, 0, 0)}, {1, QColor(255, 0, 0, 255)}}};
    const QColor middle = paintSurface(faint, {101, 101}, 1).pixelColor(50, 50);
    QVERIFY(middle.red() >= 254 && std::abs(middle.alpha() - 128) <= 2);
}

void SurfacePainterTest::slowGradientShowsNoBands()
{
    const Surface surface = ThemedSurfaces::background(&ThemeFactory::create(ThemeType::kawaiiPink));
    const QImage image = paintSurface(surface, {600, 1000}, 1);
    QCOMPARE(image.pixelColor(0, 0).alpha(), 255);
    // Over white: pink at 0.1 at one end, at 0.2 in the middle, purple at 0.1 at the other.
    QVERIFY(differenceOf(image.pixel(2, 2), qRgb(255, 234, 238)) <= 2);
    QVERIFY(differenceOf(image.pixel(300, 500), qRgb(255, 213, 221)) <= 2);
    QVERIFY(differenceOf(image.pixel(597, 997), qRgb(247, 238, 252)) <= 2);
    // A band is a long run of one colour beside one of the next: no pixel differs much from its neighbour,
    // and along the way no colour stands alone for long.
    int longest = 0;
    int run = 0;
    for (int y = 1; y < image.height(); ++y) {
        const int x = y * 6 / 10;
        QVERIFY(differenceOf(image.pixel(x, y), image.pixel(x, y - 1)) <= 2);
        run = image.pixel(x, y) == image.pixel((y - 1) * 6 / 10, y - 1) ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    QVERIFY2(longest < 24, qPrintable(QString::number(longest)));
}

void SurfacePainterTest::stretchedPictureIsTheExactOne_data()
{
    QTest::addColumn<double>("ratio");
    for (const double ratio : {1.0, 1.25, 1.5, 2.0})
        QTest::addRow("%g", ratio) << ratio;
}

void SurfacePainterTest::stretchedPictureIsTheExactOne()
{
    QFETCH(double, ratio);
    for (const Surface &surface : allSurfaces()) {
        if (!surface.isStretched())
            continue;
        const QImage small = paintStretchableSurface(surface, ratio);
        const int border = scaledLength(surface.border(), ratio);
        QCOMPARE(small.width(), small.height());
        QVERIFY(small.width() > 2 * border);
        const QSize shape(300, 220);
        const QImage exact = paintSurface(surface, shape, ratio);
        QVERIFY(largestDifference(exact, stretched(small, border, exact.size())) <= 1);
    }
}

void SurfacePainterTest::ratioScalesTheDrawing()
{
    const Surface surface = ThemedSurfaces::neumorphismRaised(embossed());
    const QImage once = paintSurface(surface, {80, 60}, 1);
    const QImage twice = paintSurface(surface, {160, 120}, 2)
                             .scaled(once.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QColor ground = embossed()->backgroundColor();
    const int difference = largestDifference(on(ground, once), on(ground, twice));
    QVERIFY2(difference <= 6, qPrintable(QString::number(difference)));
}

void SurfacePainterTest::tinySizes_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize size : {QSize(0, 0), QSize(0, 10), QSize(10, 0), QSize(-1, 5), QSize(1, 1), QSize(2, 1),
                             QSize(3, 400), QSize(400, 1)})
        QTest::addRow("%d by %d", size.width(), size.height()) << size;
}

void SurfacePainterTest::tinySizes()
{
    QFETCH(QSize, size);
    for (const Surface &surface : allSurfaces()) {
        for (const double ratio : {1.0, 1.5}) {
            const QImage image = paintSurface(surface, size, ratio);
            QCOMPARE(image.isNull(), size.isEmpty() || surface.address().isEmpty());
            if (image.isNull())
                continue;
            QVERIFY(largestDifference(image, image.convertToFormat(QImage::Format_ARGB32)
                                                 .convertToFormat(QImage::Format_ARGB32_Premultiplied)) <= 1);
        }
    }
}

void SurfacePainterTest::absurdNumbersDrawSomethingBounded()
{
    constexpr double endless = std::numeric_limits<double>::infinity();
    for (const double absurd : {noNumber, endless, -endless, 1e300, -1e300, -5.0}) {
        Surface surface =
            plain(Qt::red, absurd, {{Qt::black, absurd, absurd, absurd}}, {line(Qt::blue, absurd)});
        surface.strokes.append(
            {.color = Qt::green, .gradient = {}, .width = absurd, .blur = absurd, .x = absurd});
        QVERIFY(surface.margin() >= 0 && surface.margin() <= 256);
        QVERIFY(surface.border() >= surface.margin() && surface.border() <= 8192);
        const QImage image = paintSurface(surface, {20, 20}, 1);
        QCOMPARE(image.width(), 20 + 2 * surface.margin());
        QVERIFY(Surface::ofAddress(surface.address()).fill.isValid());
        QVERIFY(!paintSurface(plain(Qt::red, 4), {20, 20}, absurd).isNull());
        Surface gradient;
        gradient.gradient = {
            .stops = {{0, Qt::red}, {1, Qt::blue}}, .start = {absurd, 0}, .end = {0, absurd}};
        QVERIFY(!paintSurface(gradient, {20, 20}, 1).isNull());
    }
    // A picture that nobody has the memory for.
    QVERIFY(paintSurface(plain(Qt::red, 4), {1'000'000, 1'000'000}, 1).isNull());
    QVERIFY(paintSurface(plain(Qt::red, 4), {std::numeric_limits<int>::max(), 1}, 1).isNull());
}

void SurfacePainterTest::addressHoldsTheSurface()
{
    for (const Surface &surface : allSurfaces()) {
        const QString address = surface.address();
        // It is part of a URL and is not to be escaped.
        for (const QChar c : address)
            QVERIFY(c.isLetterOrNumber() || u";,.-"_s.contains(c));
        const Surface again = Surface::ofAddress(address);
        if (surface.address().isEmpty())
            continue;
        QCOMPARE(largestDifference(paintSurface(surface, {80, 60}, 1), paintSurface(again, {80, 60}, 1)), 0);
    }
}

QTEST_APPLESS_MAIN(SurfacePainterTest)
#include "tst_surface_painter.moc"
