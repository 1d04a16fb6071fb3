// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/LookGrounds.h"
#include "Theme/SystemColorTable.h"
#include "Theme/ThemeFactory.h"

#include <QMap>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Every text on every ground, of the looks and of the system's colours.
class LookContrastTest : public QObject
{
    Q_OBJECT

private:
    /// Least ratio of each pair over what lies beneath, by its name.
    using Ratios = QMap<QString, double>;

    static QString schemeName(ColorScheme scheme)
    {
        return scheme == ColorScheme::dark ? u"dark"_s : u"light"_s;
    }

    static void add(Ratios &ratios, const QString &pair, const QColor &text, const QColor &ground)
    {
        const double ratio = Contrast::ratio(text, ground);
        const auto found = ratios.constFind(pair);
        ratios[pair] = found == ratios.cend() ? ratio : qMin(*found, ratio);
    }

    static Ratios ratiosOf(AppTheme &theme)
    {
        const QString look = rawValue(theme.themeType()) + u' ' + schemeName(theme.colorScheme());
        const QList<QPair<QString, QColor>> texts{{u"primary text"_s, theme.primaryTextColor()},
                                                  {u"secondary text"_s, theme.secondaryTextColor()},
                                                  {u"accent text"_s, theme.primaryColor()}};
        const QList<QPair<QString, QColor>> grounds{
            {u"background"_s, Qt::transparent},
            {u"card"_s, ThemedSurfaces::themedCard(&theme, 12).fill},
            {u"row"_s, ThemedSurfaces::themedRow(&theme).fill},
            {u"search bar"_s, ThemedSurfaces::searchBar(&theme).fill}};
        Ratios ratios;
        for (const auto &[textName, text] : texts) {
            for (const auto &[groundName, ground] : grounds) {
                const QString pair = u"%1: %2 on %3"_s.arg(look, textName, groundName);
                for (const QColor &beneath : backgroundsOf(theme))
                    add(ratios, pair, text, Contrast::over(ground, beneath));
            }
        }
        return ratios;
    }

    static Ratios ratiosOfSystem(ColorScheme scheme)
    {
        const SystemColorTable &colors = systemColors(scheme);
        const QString system = u"system "_s + schemeName(scheme);
        const QList<QPair<QString, QColor>> grounds{{u"background"_s, colors.background},
                                                    {u"secondary background"_s, colors.secondaryBackground},
                                                    {u"tertiary background"_s, colors.tertiaryBackground}};
        const QList<QPair<QString, QColor>> texts{{u"label"_s, colors.label},
                                                  {u"secondary label"_s, colors.secondaryLabel},
                                                  {u"tertiary label"_s, colors.tertiaryLabel},
                                                  {u"accent text"_s, colors.accentText},
                                                  {u"red text"_s, colors.redText}};
        Ratios ratios;
        for (const auto &[groundName, ground] : grounds) {
            for (const auto &[textName, text] : texts)
                add(ratios, u"%1: %2 on %3"_s.arg(system, textName, groundName), text, ground);
            add(ratios, system + u": label on tints"_s, colors.label, Contrast::over(colors.redTint, ground));
            add(ratios, system + u": label on tints"_s, colors.label,
                Contrast::over(colors.accentTint, ground));
            // Under the pointer as well; what is pressed is seen for a moment.
            for (const QColor &over : {QColor(Qt::transparent), colors.hover}) {
                add(ratios, system + u": accent text on its tint"_s, colors.accentText,
                    Contrast::over(over, Contrast::over(colors.accentTint, ground)));
                add(ratios, system + u": red text on its tint"_s, colors.redText,
                    Contrast::over(over, Contrast::over(colors.redTint, ground)));
            }
            add(ratios, system + u": label under the pointer"_s, colors.label,
                Contrast::over(colors.hover, ground));
            add(ratios, system + u": label of what is pressed"_s, colors.label,
                Contrast::over(colors.pressed, ground));
        }
        add(ratios, system + u": ink on accent"_s, colors.accentInk, colors.accentFill);
        add(ratios, system + u": ink on red"_s, colors.accentInk, colors.redFill);
        return ratios;
    }

    static Ratios allRatios()
    {
        Ratios ratios;
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            for (const ThemeType type : allThemeTypes())
                ratios.insert(ratiosOf(ThemeFactory::create(type, scheme)));
            ratios.insert(ratiosOfSystem(scheme));
        }
        return ratios;
    }

    /// Pairs of given colours, which are what they are: those of the looks, and of the system's own labels
    /// and accent. Components that choose a colour themselves take one that can be read.
    static const Ratios &knownBelow()
    {
        static const Ratios ratios{
            {u"classic light: accent text on background"_s, 4.02},
            {u"classic light: accent text on card"_s, 3.60},
            {u"classic light: accent text on row"_s, 3.76},
            {u"classic light: accent text on search bar"_s, 3.76},
            {u"classic light: secondary text on background"_s, 3.44},
            {u"classic light: secondary text on card"_s, 3.30},
            {u"classic light: secondary text on row"_s, 3.35},
            {u"classic light: secondary text on search bar"_s, 3.35},
            {u"kawaiiPink light: accent text on background"_s, 2.75},
            {u"kawaiiPink light: accent text on card"_s, 3.19},
            {u"kawaiiPink light: accent text on row"_s, 3.01},
            {u"kawaiiPink light: accent text on search bar"_s, 3.01},
            {u"kawaiiPink light: primary text on background"_s, 2.75},
            {u"kawaiiPink light: primary text on card"_s, 3.19},
            {u"kawaiiPink light: primary text on row"_s, 3.01},
            {u"kawaiiPink light: primary text on search bar"_s, 3.01},
            {u"kawaiiPink light: secondary text on background"_s, 3.08},
            {u"kawaiiPink light: secondary text on card"_s, 3.27},
            {u"kawaiiPink light: secondary text on row"_s, 3.19},
            {u"kawaiiPink light: secondary text on search bar"_s, 3.19},
            {u"neumorphism dark: accent text on background"_s, 3.17},
            {u"neumorphism dark: accent text on card"_s, 3.17},
            {u"neumorphism dark: accent text on row"_s, 3.17},
            {u"neumorphism dark: accent text on search bar"_s, 3.17},
            {u"neumorphism dark: secondary text on background"_s, 2.58},
            {u"neumorphism dark: secondary text on card"_s, 2.58},
            {u"neumorphism dark: secondary text on row"_s, 2.58},
            {u"neumorphism dark: secondary text on search bar"_s, 2.58},
            {u"neumorphism light: accent text on background"_s, 3.17},
            {u"neumorphism light: accent text on card"_s, 3.17},
            {u"neumorphism light: accent text on row"_s, 3.17},
            {u"neumorphism light: accent text on search bar"_s, 3.17},
            {u"neumorphism light: secondary text on background"_s, 2.58},
            {u"neumorphism light: secondary text on card"_s, 2.58},
            {u"neumorphism light: secondary text on row"_s, 2.58},
            {u"neumorphism light: secondary text on search bar"_s, 2.58},
            {u"system dark: tertiary label on background"_s, 2.27},
            {u"system dark: tertiary label on secondary background"_s, 2.50},
            {u"system dark: tertiary label on tertiary background"_s, 2.43},
            {u"system light: secondary label on background"_s, 3.44},
            {u"system light: secondary label on secondary background"_s, 3.30},
            {u"system light: secondary label on tertiary background"_s, 3.44},
            {u"system light: tertiary label on background"_s, 1.74},
            {u"system light: tertiary label on secondary background"_s, 1.71},
            {u"system light: tertiary label on tertiary background"_s, 1.74},
        };
        return ratios;
    }

private Q_SLOTS:
    void allTextsCanBeReadButForTheListed()
    {
        const Ratios ratios = allRatios();
        int unlisted = 0;
        for (auto pair = ratios.cbegin(); pair != ratios.cend(); ++pair) {
            if (pair.value() >= Contrast::legible || knownBelow().contains(pair.key()))
                continue;
            ++unlisted;
            qWarning().noquote() << u"%1: %2"_s.arg(pair.key(), QString::number(pair.value(), 'f', 2));
        }
        QCOMPARE(unlisted, 0);
    }

    /// So that the list stays true.
    void theListedOnesAreBelowAndAsFarAsItSays()
    {
        const Ratios ratios = allRatios();
        for (auto known = knownBelow().cbegin(); known != knownBelow().cend(); ++known) {
            QVERIFY2(ratios.contains(known.key()), qPrintable(u"no such pair: "_s + known.key()));
            const double ratio = ratios.value(known.key());
            QVERIFY2(ratio < Contrast::legible, qPrintable(u"good enough by now: "_s + known.key()));
            QVERIFY2(qAbs(ratio - known.value()) < 0.006,
                     qPrintable(u"%1 is %2"_s.arg(known.key()).arg(ratio)));
        }
    }

    /// Texts that components choose for a ground, or grounds for a text, out of a look's accent.
    void whatComponentsChooseCanBeRead()
    {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            for (const ThemeType type : allThemeTypes()) {
                AppTheme &theme = ThemeFactory::create(type, scheme);
                const QColor accent = theme.primaryColor();
                for (const Surface &surface :
                     {ThemedSurfaces::themedCard(&theme), ThemedSurfaces::themedRow(&theme),
                      ThemedSurfaces::searchBar(&theme), ThemedSurfaces::themedSegmentedPicker(&theme),
                      ThemedSurfaces::kawaiiButton(&theme, false),
                      ThemedSurfaces::kawaiiButton(&theme, true)}) {
                    for (const QColor &text : {accent, theme.primaryTextColor(), theme.secondaryTextColor(),
                                               systemColors(scheme).red}) {
                        const QColor chosen = ThemedSurfaces::textOn(&theme, surface, text);
                        const double least = leastRatio(theme, surface.fill, chosen);
                        QVERIFY2(least >= Contrast::legible,
                                 qPrintable(u"%1 %2: %3 on %4 is %5"_s.arg(
                                     rawValue(type), schemeName(scheme), text.name(),
                                     surface.fill.name(QColor::HexArgb), QString::number(least))));
                    }
                    QVERIFY(leastRatio(theme, surface.fill, ThemedSurfaces::accentOn(&theme, surface)) >=
                            Contrast::legible);
                }
                // The bare background, and surfaces that have its gradient themselves.
                for (const Surface &surface :
                     {Surface(), ThemedSurfaces::background(&theme), ThemedSurfaces::previewScreen(&theme)}) {
                    for (const QColor &text :
                         {accent, theme.primaryTextColor(), theme.secondaryTextColor()}) {
                        const QColor chosen = ThemedSurfaces::textOn(&theme, surface, text);
                        QVERIFY(leastRatio(theme, Qt::transparent, chosen) >= Contrast::legible);
                    }
                }
                // What may lie on any of them.
                for (const QColor &text : {accent, theme.primaryTextColor(), theme.secondaryTextColor(),
                                           systemColors(scheme).red, systemColors(scheme).green}) {
                    const QColor ink = ThemedSurfaces::ink(&theme, text);
                    for (const Surface &surface :
                         {Surface(), ThemedSurfaces::themedCard(&theme), ThemedSurfaces::themedRow(&theme)}) {
                        const QColor fill = surface.fill.isValid() ? surface.fill : QColor(Qt::transparent);
                        const double least = leastRatio(theme, fill, ink);
                        QVERIFY2(least >= Contrast::legible,
                                 qPrintable(u"%1 %2: %3 as %4 is %5"_s.arg(rawValue(type), schemeName(scheme),
                                                                           text.name(), ink.name(),
                                                                           QString::number(least))));
                    }
                    // Asked again, the answer is the same.
                    QCOMPARE(ThemedSurfaces::ink(&theme, text), ink);
                }
                for (const QColor &fill : {accent, systemColors(scheme).red}) {
                    for (const bool isPressed : {false, true}) {
                        const Surface button = ThemedSurfaces::filledButton(&theme, fill, isPressed);
                        QVERIFY(Contrast::ratio(Qt::white, button.fill) >= Contrast::legible);
                    }
                }
                QCOMPARE(ThemedSurfaces::popup(&theme).fill.alpha(), 255);
                QVERIFY(Contrast::ratio(Qt::white, Contrast::groundFor(Qt::white, accent)) >=
                        Contrast::legible);
            }
        }
    }
};

QTEST_APPLESS_MAIN(LookContrastTest)
#include "tst_look_contrast.moc"
