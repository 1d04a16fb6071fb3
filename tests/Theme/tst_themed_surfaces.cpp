// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeTheme.h"
#include "Theme/ThemeFactory.h"
#include "Theme/ThemedSurfaces.h"

#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// A colour as it is told: red, green and blue of 255, and its opacity.
QColor rgba(int red, int green, int blue, double opacity = 1)
{
    QColor color(red, green, blue);
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

/// Equal within the precision of a colour's numbers.
bool isNear(const QColor &one, const QColor &other)
{
    constexpr double tolerance = 1e-4;
    const QColor a = one.toRgb();
    const QColor b = other.toRgb();
    const auto differs = [](float x, float y) { return std::abs(static_cast<double>(x - y)) > tolerance; };
    return !differs(a.redF(), b.redF()) && !differs(a.greenF(), b.greenF()) &&
           !differs(a.blueF(), b.blueF()) && !differs(a.alphaF(), b.alphaF());
}

bool isNear(const LinearGradient &one, const LinearGradient &other)
{
    return one.start == other.start && one.end == other.end &&
           std::ranges::equal(one.stops, other.stops, [](const QGradientStop &a, const QGradientStop &b) {
               return a.first == b.first && isNear(a.second, b.second);
           });
}

bool isNear(const SurfaceShadow &one, const SurfaceShadow &other)
{
    return isNear(one.color, other.color) && one.radius == other.radius && one.x == other.x &&
           one.y == other.y;
}

QString text(const QColor &color)
{
    return u"(%1 %2 %3 %4)"_s.arg(color.red()).arg(color.green()).arg(color.blue()).arg(color.alphaF());
}

QString text(const Surface &surface)
{
    QString all = u"fill %1 radius %2"_s.arg(text(surface.fill)).arg(surface.cornerRadius);
    for (const QGradientStop &stop : surface.gradient.stops)
        all += u" stop %1 %2"_s.arg(stop.first).arg(text(stop.second));
    for (const SurfaceShadow &shadow : surface.shadows)
        all +=
            u" shadow %1 %2 %3 %4"_s.arg(text(shadow.color)).arg(shadow.radius).arg(shadow.x).arg(shadow.y);
    for (const SurfaceStroke &stroke : surface.strokes) {
        all += u" stroke %1 %2 %3 %4"_s.arg(text(stroke.color)).arg(stroke.width).arg(stroke.x).arg(stroke.y);
        for (const QGradientStop &stop : stroke.gradient.stops)
            all += u" stop %1 %2"_s.arg(stop.first).arg(text(stop.second));
    }
    return all;
}

/// How strong a blur is, and how far, is not told: it is only asked for where @p expected has one.
bool isNear(const SurfaceStroke &one, const SurfaceStroke &expected)
{
    const bool hasColor = expected.gradient.isEmpty();
    return (!hasColor || isNear(one.color, expected.color)) && isNear(one.gradient, expected.gradient) &&
           one.width == expected.width && (one.blur > 0) == (expected.blur > 0) && one.x == expected.x &&
           one.y == expected.y;
}

bool isNear(const Surface &one, const Surface &expected)
{
    const auto near = [](const auto &a, const auto &b) { return isNear(a, b); };
    return (one.fill.isValid() == expected.fill.isValid()) &&
           (!expected.fill.isValid() || isNear(one.fill, expected.fill)) &&
           isNear(one.gradient, expected.gradient) && one.cornerRadius == expected.cornerRadius &&
           std::ranges::equal(one.shadows, expected.shadows, near) &&
           std::ranges::equal(one.strokes, expected.strokes, near);
}

/// A look in a colour scheme, and its colours as they are told.
struct Look
{
    AppTheme *theme;
    QString name;
    QColor surface;
    QColor primary;
    QColor light;
    QColor dark;

    QColor surfaceAt(double opacity) const { return at(surface, opacity); }
    QColor primaryAt(double opacity) const { return at(primary, opacity); }
    QColor lightAt(double opacity) const { return at(light, opacity); }
    QColor darkAt(double opacity) const { return at(dark, opacity); }

private:
    static QColor at(QColor color, double opacity)
    {
        color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
        return color;
    }
};

QList<Look> looks()
{
    const auto theme = [](ThemeType type, ColorScheme scheme) { return &ThemeFactory::create(type, scheme); };
    const QColor clear = rgba(0, 0, 0, 0);
    const auto neumorphism = [&](ColorScheme scheme, const QString &name) {
        return Look{theme(ThemeType::neumorphism, scheme),
                    name,
                    rgba(224, 229, 236),
                    rgba(0x00, 0x7A, 0xFF),
                    rgba(255, 255, 255, 0.6),
                    rgba(0, 0, 0, 0.2)};
    };
    return {{theme(ThemeType::classic, ColorScheme::light), u"classic light"_s, rgba(0xF2, 0xF2, 0xF7),
             rgba(0x00, 0x7A, 0xFF), clear, rgba(0, 0, 0, 0.1)},
            {theme(ThemeType::classic, ColorScheme::dark), u"classic dark"_s, rgba(0x1C, 0x1C, 0x1E),
             rgba(0x0A, 0x84, 0xFF), clear, rgba(0, 0, 0, 0.1)},
            neumorphism(ColorScheme::light, u"neumorphism light"_s),
            neumorphism(ColorScheme::dark, u"neumorphism dark"_s),
            {theme(ThemeType::kawaiiPink, ColorScheme::light), u"kawaii light"_s,
             QColor::fromRgbF(1, 0.92F, 0.95F), rgba(0xFF, 0x2D, 0x55), rgba(0xFF, 0x2D, 0x55, 0.4), clear},
            {theme(ThemeType::kawaiiPink, ColorScheme::dark), u"kawaii dark"_s, rgba(0x1C, 0x1C, 0x1E),
             rgba(0xFF, 0x37, 0x5F), rgba(0xFF, 0x37, 0x5F, 0.4), clear}};
}

using Shadows = QList<SurfaceShadow>;
using Strokes = QList<SurfaceStroke>;

Surface filled(const QColor &fill, double radius, const Shadows &shadows, const Strokes &strokes = {})
{
    return {.fill = fill, .gradient = {}, .cornerRadius = radius, .shadows = shadows, .strokes = strokes};
}

SurfaceStroke line(const QColor &color, double width)
{
    return {.color = color, .gradient = {}, .width = width};
}

SurfaceStroke diagonalLine(const QColor &from, const QColor &to, double width)
{
    return {.color = {},
            .gradient = {.stops = {{0, from}, {1, to}}, .start = {0, 0}, .end = {1, 1}},
            .width = width};
}

SurfaceStroke blurred(const QColor &color, double width, double offset)
{
    return {.color = color, .gradient = {}, .width = width, .blur = 1, .x = offset, .y = offset};
}

Surface card(const Look &l, double radius)
{
    return filled(l.surface, radius, {{l.light, 8, 0, 4}}, {line(l.primaryAt(0.3), 1)});
}

Surface raised(const Look &l, double radius)
{
    return filled(l.surface, radius, {{l.light, 6, -2, -2}, {l.dark, 6, 2, 2}});
}

Surface pressed(const Look &l, double radius)
{
    return filled(l.surface, radius, {{l.darkAt(0.15), 3, 2, 2}, {l.lightAt(0.15), 3, -2, -2}},
                  {blurred(l.darkAt(0.1), 1, 1), blurred(l.lightAt(0.3), 1, -1)});
}

Surface kawaiiButton(const Look &l, bool isPressed)
{
    return filled(l.primaryAt(isPressed ? 0.3 : 0.15), 12, {{l.primaryAt(isPressed ? 0.1 : 0.2), 4, 0, 2}},
                  {line(l.primaryAt(0.4), 1.5)});
}

} // namespace

/// Every drawing of every look in both colour schemes, against the numbers that were agreed on.
class ThemedSurfacesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void drawnAsAgreed_data();
    void drawnAsAgreed();
    void cornersAreThoseAskedFor();
    void intensityWeakensEmbossing();
    void noLookIsNoSurface();
    void aGradientLiesOnTheBackgroundOfTheScheme();
    void withoutAGradientTheGroundIsTheBackgroundColor();
};

void ThemedSurfacesTest::drawnAsAgreed_data()
{
    QTest::addColumn<Surface>("surface");
    QTest::addColumn<Surface>("expected");
    using S = ThemedSurfaces;
    for (const Look &l : looks()) {
        const bool embossed = l.theme->useNeumorphism();
        QCOMPARE(embossed, l.name.startsWith("neumorphism"_L1));
        const auto row = [&l](const char *what, const Surface &surface, const Surface &expected) {
            QTest::addRow("%s, %s", what, qPrintable(l.name)) << surface << expected;
        };
        row("raised", S::neumorphismRaised(l.theme), raised(l, 12));
        row("pressed", S::neumorphismPressed(l.theme), pressed(l, 12));
        row("kawaii card", S::kawaiiCard(l.theme), card(l, 16));
        row("card", S::themedCard(l.theme), embossed ? raised(l, 12) : card(l, 12));
        row("button", S::themedButton(l.theme, false), embossed ? raised(l, 12) : card(l, 12));
        row("button, pressed", S::themedButton(l.theme, true), embossed ? pressed(l, 12) : card(l, 12));
        row("row", S::themedRow(l.theme),
            embossed
                ? filled(l.surface, 12, {{l.light, 4, -3, -3}, {l.dark, 4, 3, 3}})
                : filled(l.surfaceAt(0.6), 12, {{l.primaryAt(0.15), 4, 0, 2}}, {line(l.primaryAt(0.2), 1)}));
        row("artwork of a row", S::themedRowArtwork(l.theme),
            embossed ? filled({}, 8, {{l.dark, 2, 0, 0}}, {line(l.darkAt(0.3), 1)})
                     : filled({}, 8, {}, {diagonalLine(l.primaryAt(0.4), l.primaryAt(0.2), 2)}));
        row("segmented picker", S::themedSegmentedPicker(l.theme),
            embossed ? filled(l.surface, 8, {{l.darkAt(0.2), 3, 2, 2}, {l.lightAt(0.7), 3, -2, -2}})
                     : filled(l.primaryAt(0.1), 8, {}, {line(l.primaryAt(0.3), 1)}));
        row("shadow of a cover", S::albumCoverShadow(l.theme),
            embossed ? filled({}, 12, {{l.light, 10, -5, -5}, {l.dark, 10, 5, 5}})
                     : filled({}, 12, {{l.primaryAt(0.3), 15, 0, 8}}));
        row("stroke of a cover", S::albumCoverStroke(l.theme),
            embossed ? filled({}, 12, {}, {blurred(l.light, 2, -2)})
                     : filled({}, 12, {}, {diagonalLine(l.primaryAt(0.5), l.primaryAt(0.2), 3)}));
        row("kawaii button", S::kawaiiButton(l.theme, false), kawaiiButton(l, false));
        row("kawaii button, pressed", S::kawaiiButton(l.theme, true), kawaiiButton(l, true));
        row("button style", S::themedButtonStyle(l.theme, false),
            embossed ? raised(l, 12) : kawaiiButton(l, false));
        row("button style, pressed", S::themedButtonStyle(l.theme, true),
            embossed ? pressed(l, 12) : kawaiiButton(l, true));
        row("search bar", S::searchBar(l.theme),
            embossed ? filled(l.surface, 10, {{l.darkAt(0.3), 3, 2, 2}, {l.lightAt(0.7), 3, -2, -2}})
                     : filled(l.surfaceAt(0.6), 10, {}, {line(l.primaryAt(0.2), 1)}));
        Surface play = filled({}, 30, {{l.primary, 10, 0, 5}});
        play.gradient = {.stops = {{0, l.primaryAt(0.8)}, {1, l.primary}}, .start = {0, 0}, .end = {1, 1}};
        row("play button", S::playButton(l.theme, 60),
            embossed ? filled(l.surface, 30, {{l.light, 8, -4, -4}, {l.dark, 8, 4, 4}}) : play);
        row("control button", S::controlButton(l.theme, 44),
            embossed ? filled(l.surface, 22, {{l.light, 5, -2, -2}, {l.dark, 5, 2, 2}})
                     : filled(l.surface, 22, {}, {line(l.primaryAt(0.3), 1)}));
        row("icon of a setting", S::settingsIcon(l.theme, Qt::green),
            filled(Qt::green, 7, embossed ? Shadows{{l.light, 3, -1, -1}, {l.dark, 3, 1, 1}} : Shadows()));
        row("groove of progress", S::progressTrack(l.theme),
            embossed ? filled(l.surface, 2, {}, {blurred(l.dark, 1, 1), blurred(l.light, 1, -1)})
                     : filled(l.primaryAt(0.2), 2, {}));
        row("knob of progress", S::progressKnob(l.theme, 16),
            filled(l.primary, 8, {{l.primaryAt(0.4), 4, 0, 1}}));
        row("block of a preview", S::previewBlock(l.theme),
            filled(l.surface, 8, embossed ? Shadows{{l.light, 3, -1, -1}, {l.dark, 3, 1, 1}} : Shadows()));
    }
}

void ThemedSurfacesTest::drawnAsAgreed()
{
    QFETCH(Surface, surface);
    QFETCH(Surface, expected);
    QVERIFY2(isNear(surface, expected), qPrintable(text(surface) + u"\nis not\n"_s + text(expected)));
    // What is seen of it comes through its address.
    const Surface again = Surface::ofAddress(surface.address());
    QCOMPARE(again.address(), surface.address());
    QCOMPARE(again.margin(), surface.margin());
    QCOMPARE(again.border(), surface.border());
    QCOMPARE(again.isStretched(), surface.isStretched());
}

void ThemedSurfacesTest::cornersAreThoseAskedFor()
{
    for (const Look &l : looks()) {
        for (const Surface &surface :
             {ThemedSurfaces::neumorphismRaised(l.theme, 20), ThemedSurfaces::neumorphismPressed(l.theme, 20),
              ThemedSurfaces::kawaiiCard(l.theme, 20), ThemedSurfaces::themedCard(l.theme, 20),
              ThemedSurfaces::themedButton(l.theme, true, 20), ThemedSurfaces::themedRowArtwork(l.theme, 20),
              ThemedSurfaces::albumCoverShadow(l.theme, 20), ThemedSurfaces::albumCoverStroke(l.theme, 20),
              ThemedSurfaces::themedSegmentedPicker(l.theme, 20), ThemedSurfaces::previewBlock(l.theme, 20),
              ThemedSurfaces::kawaiiButton(l.theme, false, 20),
              ThemedSurfaces::themedButtonStyle(l.theme, false, 20)})
            QCOMPARE(surface.cornerRadius, 20);
    }
}

void ThemedSurfacesTest::intensityWeakensEmbossing()
{
    AppTheme *theme = &ThemeFactory::create(ThemeType::neumorphism);
    const Surface raisedHalf = ThemedSurfaces::neumorphismRaised(theme, 12, 0.5);
    QVERIFY(isNear(raisedHalf.shadows.at(0).color, rgba(255, 255, 255, 0.3)));
    QVERIFY(isNear(raisedHalf.shadows.at(1).color, rgba(0, 0, 0, 0.1)));
    const Surface pressedHalf = ThemedSurfaces::neumorphismPressed(theme, 12, 0.5);
    QVERIFY(isNear(pressedHalf.strokes.at(0).color, rgba(0, 0, 0, 0.01)));
    QVERIFY(isNear(pressedHalf.strokes.at(1).color, rgba(255, 255, 255, 0.09)));
    QVERIFY(isNear(pressedHalf.shadows.at(0).color, rgba(0, 0, 0, 0.015)));
    QVERIFY(isNear(pressedHalf.shadows.at(1).color, rgba(255, 255, 255, 0.045)));
    // More than all of it, and what is no number.
    QCOMPARE(ThemedSurfaces::neumorphismRaised(theme, 12, 100).shadows.at(0).color.alphaF(), 1.0F);
    QCOMPARE(ThemedSurfaces::neumorphismRaised(theme, 12, -1).shadows.at(0).color.alphaF(), 0.0F);
    const double none = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(ThemedSurfaces::neumorphismRaised(theme, 12, none).shadows.at(0).color.alphaF(), 0.0F);
}

void ThemedSurfacesTest::noLookIsNoSurface()
{
    using S = ThemedSurfaces;
    for (const Surface &surface : {S::neumorphismRaised(nullptr),
                                   S::neumorphismPressed(nullptr),
                                   S::kawaiiCard(nullptr),
                                   S::themedCard(nullptr),
                                   S::themedButton(nullptr, true),
                                   S::themedRow(nullptr),
                                   S::themedRowArtwork(nullptr),
                                   S::themedSegmentedPicker(nullptr),
                                   S::albumCoverShadow(nullptr),
                                   S::albumCoverStroke(nullptr),
                                   S::kawaiiButton(nullptr, true),
                                   S::themedButtonStyle(nullptr, true),
                                   S::searchBar(nullptr),
                                   S::playButton(nullptr, 10),
                                   S::controlButton(nullptr, 10),
                                   S::settingsIcon(nullptr, Qt::red),
                                   S::progressTrack(nullptr),
                                   S::progressKnob(nullptr, 10),
                                   S::previewBlock(nullptr),
                                   S::background(nullptr),
                                   S::switchTrack(nullptr, true, 8),
                                   S::popup(nullptr),
                                   S::filledButton(nullptr, Qt::red, true)}) {
        QCOMPARE(surface, Surface());
        QCOMPARE(surface.address(), QString());
    }
}

void ThemedSurfacesTest::aGradientLiesOnTheBackgroundOfTheScheme()
{
    const QColor pink = rgba(0xFF, 0x2D, 0x55);
    const QColor purple = rgba(0xAF, 0x52, 0xDE);
    const auto background = [](ThemeType type, ColorScheme scheme) {
        return ThemedSurfaces::background(&ThemeFactory::create(type, scheme));
    };
    const Surface kawaii = background(ThemeType::kawaiiPink, ColorScheme::light);
    Surface expected = filled(Qt::white, 0, {});
    const auto at = [](QColor color, double opacity) {
        color.setAlphaF(static_cast<float>(opacity));
        return color;
    };
    expected.gradient = {.stops = {{0, at(pink, 0.1)}, {0.5, at(pink, 0.2)}, {1, at(purple, 0.1)}},
                         .start = {0, 0},
                         .end = {1, 1}};
    QVERIFY2(isNear(kawaii, expected), qPrintable(text(kawaii)));
    QVERIFY(!kawaii.isStretched());
    QVERIFY(isNear(background(ThemeType::kawaiiPink, ColorScheme::dark).fill, rgba(0, 0, 0)));
}

void ThemedSurfacesTest::withoutAGradientTheGroundIsTheBackgroundColor()
{
    for (const ThemeType type : {ThemeType::classic, ThemeType::neumorphism}) {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            AppTheme &theme = ThemeFactory::create(type, scheme);
            QCOMPARE(ThemedSurfaces::background(&theme), filled(theme.backgroundColor(), 0, {}));
        }
    }
    FakeTheme other(rgba(1, 2, 3));
    QCOMPARE(ThemedSurfaces::background(&other), filled(rgba(1, 2, 3), 0, {}));
}

QTEST_APPLESS_MAIN(ThemedSurfacesTest)
#include "tst_themed_surfaces.moc"
