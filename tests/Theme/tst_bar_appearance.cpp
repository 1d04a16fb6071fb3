// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/BarAppearance.h"
#include "Theme/Contrast.h"
#include "Theme/ThemeFactory.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestBarAppearance : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void plainLookHasThePlainBars();
    void embossedLookHasItsBackgroundOpaque();
    void pinkLookLaysItsBackgroundOverThePlainBar();
    void titlesCanBeRead_data();
    void titlesCanBeRead();
    void withoutALookThereIsNoBar();
};

void TestBarAppearance::plainLookHasThePlainBars()
{
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        AppTheme &theme = ThemeFactory::create(ThemeType::classic, scheme);
        const BarAppearance bars = BarAppearances::setupAppearance(&theme);
        QCOMPARE(bars.background, systemColors(scheme).secondaryBackground);
        QCOMPARE(bars.title, systemColors(scheme).label);
    }
}

void TestBarAppearance::embossedLookHasItsBackgroundOpaque()
{
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        AppTheme &theme = ThemeFactory::create(ThemeType::neumorphism, scheme);
        const BarAppearance bars = BarAppearances::setupAppearance(&theme);
        QCOMPARE(bars.background, theme.backgroundColor());
        QCOMPARE(bars.background.alpha(), 255);
        QCOMPARE(bars.title, theme.primaryTextColor());
    }
}

void TestBarAppearance::pinkLookLaysItsBackgroundOverThePlainBar()
{
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        AppTheme &theme = ThemeFactory::create(ThemeType::kawaiiPink, scheme);
        const BarAppearance bars = BarAppearances::setupAppearance(&theme);
        const QColor plain = systemColors(scheme).secondaryBackground;
        const QColor pink = theme.backgroundColor();
        QCOMPARE(bars.background.alpha(), 255);
        for (const auto &[mixed, above, beneath] :
             {std::tuple(bars.background.redF(), pink.redF(), plain.redF()),
              {bars.background.greenF(), pink.greenF(), plain.greenF()},
              {bars.background.blueF(), pink.blueF(), plain.blueF()}})
            QVERIFY(qAbs(mixed - (0.9F * above + 0.1F * beneath)) < 0.01F);
        QCOMPARE(bars.title, theme.primaryTextColor());
    }
}

void TestBarAppearance::titlesCanBeRead_data()
{
    QTest::addColumn<ThemeType>("type");
    QTest::addColumn<ColorScheme>("scheme");
    for (const ThemeType type : allThemeTypes()) {
        QTest::addRow("%s light", qPrintable(rawValue(type))) << type << ColorScheme::light;
        QTest::addRow("%s dark", qPrintable(rawValue(type))) << type << ColorScheme::dark;
    }
}

void TestBarAppearance::titlesCanBeRead()
{
    QFETCH(ThemeType, type);
    QFETCH(ColorScheme, scheme);
    const BarAppearance bars = BarAppearances::setupAppearance(&ThemeFactory::create(type, scheme));
    // Titles are large.
    constexpr double large = 3;
    QVERIFY(Contrast::ratio(bars.title, bars.background) >= large);
}

void TestBarAppearance::withoutALookThereIsNoBar()
{
    QCOMPARE(BarAppearances::setupAppearance(nullptr).background.alpha(), 0);
}

QTEST_GUILESS_MAIN(TestBarAppearance)
#include "tst_bar_appearance.moc"
