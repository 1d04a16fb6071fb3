// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/AssetColors.h"
#include "Theme/ThemeColors.h"
#include "Theme/ThemeFactory.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Style = NowPlayingConfig::NowPlayingBackgroundStyle;

/// The answers of each look, written out.
class ThemesTest : public QObject
{
    Q_OBJECT

private:
    struct Answers
    {
        ThemeType type;
        ColorScheme scheme;
        QColor background;
        QColor surface;
        QColor primary;
        QColor primaryText;
        QColor secondaryText;
        QColor lightShadow;
        QColor darkShadow;
        QList<QColor> gradient;
    };

    static QColor alpha(QColor color, double opacity)
    {
        color.setAlphaF(static_cast<float>(opacity));
        return color;
    }
    static QList<Answers> expected()
    {
        const QColor black(Qt::black);
        const QColor white(Qt::white);
        const QColor clear(Qt::transparent);
        const QColor grey(224, 229, 236);
        const QColor lightSecondary = QColor::fromRgba(0x993C3C43);
        const QColor darkSecondary = QColor::fromRgba(0x99EBEBF5);
        const QColor lightPink(0xFF2D55);
        const QColor darkPink(0xFF375F);
        const auto gradient = [](QColor pink, QColor purple) {
            return QList<QColor>{alpha(pink, 0.1), alpha(pink, 0.2), alpha(purple, 0.1)};
        };
        const auto neumorphism = [&](ColorScheme scheme) {
            return Answers{ThemeType::neumorphism,
                           scheme,
                           grey,
                           grey,
                           0x007AFF,
                           alpha(black, 0.8),
                           0x8E8E93,
                           alpha(white, 0.6),
                           alpha(black, 0.2),
                           {}};
        };
        return {
            {ThemeType::classic,
             ColorScheme::light,
             white,
             0xF2F2F7,
             0x007AFF,
             black,
             lightSecondary,
             clear,
             alpha(black, 0.1),
             {}},
            {ThemeType::classic,
             ColorScheme::dark,
             black,
             0x1C1C1E,
             0x0A84FF,
             white,
             darkSecondary,
             clear,
             alpha(black, 0.1),
             {}},
            neumorphism(ColorScheme::light),
            neumorphism(ColorScheme::dark),
            {ThemeType::kawaiiPink, ColorScheme::light, QColor::fromRgbF(1.0F, 0.95F, 0.97F),
             QColor::fromRgbF(1.0F, 0.92F, 0.95F), lightPink, lightPink, lightSecondary,
             alpha(lightPink, 0.4), clear, gradient(lightPink, 0xAF52DE)},
            {ThemeType::kawaiiPink, ColorScheme::dark, black, 0x1C1C1E, darkPink, white, darkSecondary,
             alpha(darkPink, 0.4), clear, gradient(darkPink, 0xBF5AF2)},
        };
    }

private Q_SLOTS:
    void everyLookAnswersWithItsColours()
    {
        const QList<Answers> all = expected();
        for (const Answers &answers : all) {
            const AppTheme &theme = ThemeFactory::create(answers.type, answers.scheme);
            QCOMPARE(theme.themeType(), answers.type);
            QCOMPARE(theme.colorScheme(), answers.scheme);
            QCOMPARE(theme.isDark(), answers.scheme == ColorScheme::dark);
            QCOMPARE(theme.backgroundColor(), answers.background);
            QCOMPARE(theme.surfaceColor(), answers.surface);
            QCOMPARE(theme.primaryColor(), answers.primary);
            QCOMPARE(theme.primaryTextColor(), answers.primaryText);
            QCOMPARE(theme.secondaryTextColor(), answers.secondaryText);
            QCOMPARE(theme.lightShadow(), answers.lightShadow);
            QCOMPARE(theme.darkShadow(), answers.darkShadow);
            QList<QColor> stops;
            const LinearGradient gradient = theme.backgroundGradient();
            for (const QGradientStop &stop : gradient.stops)
                stops.append(stop.second);
            QCOMPARE(stops, answers.gradient);
        }
    }

    void colourLookupsForwardToTheTheme()
    {
        const QList<Answers> all = expected();
        for (const Answers &answers : all) {
            const AppTheme &theme = ThemeFactory::create(answers.type, answers.scheme);
            const ThemeColors colors = themed(theme);
            QCOMPARE(&colors.theme, &theme);
            QCOMPARE(colors.backgroundColor(), answers.background);
            QCOMPARE(colors.surfaceColor(), answers.surface);
            QCOMPARE(colors.primaryColor(), answers.primary);
            QCOMPARE(colors.primaryTextColor(), answers.primaryText);
            QCOMPARE(colors.secondaryTextColor(), answers.secondaryText);
            QCOMPARE(colors.lightShadow(), answers.lightShadow);
            QCOMPARE(colors.darkShadow(), answers.darkShadow);
        }
    }

    void theGradientRunsFromTheUpperLeftToTheLowerRight()
    {
        const LinearGradient gradient = ThemeFactory::create(ThemeType::kawaiiPink).backgroundGradient();
        QCOMPARE(gradient.start, QPointF(0, 0));
        QCOMPARE(gradient.end, QPointF(1, 1));
        QList<double> places;
        for (const QGradientStop &stop : gradient.stops)
            places.append(stop.first);
        QCOMPARE(places, QList<double>({0, 0.5, 1}));
    }

    void onlyThePinkLookHasAGradient()
    {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            QVERIFY(ThemeFactory::create(ThemeType::classic, scheme).backgroundGradient().isEmpty());
            QVERIFY(ThemeFactory::create(ThemeType::neumorphism, scheme).backgroundGradient().isEmpty());
            QVERIFY(!ThemeFactory::create(ThemeType::kawaiiPink, scheme).backgroundGradient().isEmpty());
        }
    }

    void whatALookSaysOfItself()
    {
        const AppTheme &classic = ThemeFactory::create(ThemeType::classic);
        const AppTheme &neumorphism = ThemeFactory::create(ThemeType::neumorphism);
        const AppTheme &kawaii = ThemeFactory::create(ThemeType::kawaiiPink);
        QVERIFY(classic.isClassic() && !classic.isKawaiiPink() && !classic.useNeumorphism());
        QVERIFY(!neumorphism.isClassic() && !neumorphism.isKawaiiPink() && neumorphism.useNeumorphism());
        QVERIFY(!kawaii.isClassic() && kawaii.isKawaiiPink() && !kawaii.useNeumorphism());
    }

    void theEmbossedLookIsTheSameByDayAndByNight()
    {
        const AppTheme &day = ThemeFactory::create(ThemeType::neumorphism, ColorScheme::light);
        const AppTheme &night = ThemeFactory::create(ThemeType::neumorphism, ColorScheme::dark);
        QVERIFY(&day != &night);
        for (const auto colorOf :
             {&AppTheme::backgroundColor, &AppTheme::surfaceColor, &AppTheme::primaryColor,
              &AppTheme::primaryTextColor, &AppTheme::secondaryTextColor, &AppTheme::lightShadow,
              &AppTheme::darkShadow})
            QCOMPARE((night.*colorOf)(), (day.*colorOf)());
    }

    void theColorOfTheAssetsIsTheDesktopsAccent()
    {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            QCOMPARE(assetColor(u"AccentColor"_s, scheme), systemColors(scheme).accent);
            for (const QString &unknown : {u"accentColor"_s, u"cartoon5"_s, QString()})
                QVERIFY(!assetColor(unknown, scheme).isValid());
        }
    }

    void theFactoryMakesEachLookOnce()
    {
        for (const ThemeType type : allThemeTypes())
            QCOMPARE(&ThemeFactory::create(type), &ThemeFactory::create(type, ColorScheme::light));
    }

    void defaultsOfTheNowPlayingScreen()
    {
        const auto configOf = [](ThemeType type) { return ThemeFactory::create(type).nowPlayingConfig(); };
        QCOMPARE(configOf(ThemeType::classic), (NowPlayingConfig{.backgroundStyle = Style::blur,
                                                                 .backgroundOpacity = 0.7,
                                                                 .coverCornerRadius = 12,
                                                                 .showCoverShadow = true,
                                                                 .lyricsFontSize = 18,
                                                                 .controlButtonSize = 32,
                                                                 .showDecorations = false}));
        QCOMPARE(configOf(ThemeType::neumorphism), (NowPlayingConfig{.backgroundStyle = Style::solid,
                                                                     .backgroundOpacity = 0.5,
                                                                     .coverCornerRadius = 20,
                                                                     .showCoverShadow = true,
                                                                     .lyricsFontSize = 18,
                                                                     .controlButtonSize = 32,
                                                                     .showDecorations = false}));
        QCOMPARE(configOf(ThemeType::kawaiiPink), (NowPlayingConfig{.backgroundStyle = Style::gradient,
                                                                    .backgroundOpacity = 0.8,
                                                                    .coverCornerRadius = 28,
                                                                    .showCoverShadow = false,
                                                                    .lyricsFontSize = 20,
                                                                    .controlButtonSize = 36,
                                                                    .showDecorations = true}));
    }

    void stylesOfTheNowPlayingScreen()
    {
        const QList<Style> styles{Style::blur, Style::solid, Style::gradient, Style::clear};
        QStringList values;
        QStringList names;
        for (const Style style : styles) {
            values.append(rawValue(style));
            names.append(displayName(style));
        }
        QCOMPARE(values, QStringList({u"blur"_s, u"solid"_s, u"gradient"_s, u"clear"_s}));
        QCOMPARE(names, QStringList({u"封面模糊"_s, u"纯色"_s, u"渐变"_s, u"跟随系统"_s}));
    }

    void looksComeInTheirOrderWithTheirNamesAndSymbols()
    {
        QStringList values;
        QStringList names;
        QStringList icons;
        for (const ThemeType type : allThemeTypes()) {
            values.append(rawValue(type));
            names.append(displayName(type));
            icons.append(icon(type));
            QCOMPARE(themeTypeOf(rawValue(type)), type);
        }
        QCOMPARE(values, QStringList({u"classic"_s, u"neumorphism"_s, u"kawaiiPink"_s}));
        QCOMPARE(names, QStringList({u"经典"_s, u"拟态风格"_s, u"可爱粉粉"_s}));
        QCOMPARE(icons, QStringList({u"music.note"_s, u"cube.fill"_s, u"heart.fill"_s}));
        for (const QString &unknown : {u""_s, u"Classic"_s, u"kawaiipink"_s, u"classic "_s, u"dark"_s})
            QCOMPARE(themeTypeOf(unknown), std::nullopt);
    }
};

QTEST_APPLESS_MAIN(ThemesTest)
#include "tst_themes.moc"
