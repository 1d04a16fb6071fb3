// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/BackdropTones.h"

#include "Theme/Contrast.h"
#include "Theme/ThemeFactory.h"

#include <QRandomGenerator>
#include <QTest>

namespace cadorel {

namespace {

QList<QColor> laid(const QColor &shade, const QList<QColor> &grounds)
{
    QList<QColor> colors;
    for (const QColor &ground : grounds)
        colors.append(Contrast::over(shade, ground));
    return colors;
}

AppTheme &look(ThemeType type, ColorScheme scheme = ColorScheme::light)
{
    return ThemeFactory::create(type, scheme);
}

} // namespace

/// Texts on pictures of every kind.
class TestBackdropTones : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void textsCanBeReadOnEveryPartOfAnyPicture_data()
    {
        QTest::addColumn<ThemeType>("type");
        QTest::addColumn<ColorScheme>("scheme");
        for (const ThemeType type : allThemeTypes()) {
            for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark})
                QTest::addRow("%s %d", qPrintable(rawValue(type)), static_cast<int>(scheme))
                    << type << scheme;
        }
    }
    void textsCanBeReadOnEveryPartOfAnyPicture()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QRandomGenerator random(7);
        for (int picture = 0; picture < 200; ++picture) {
            QList<QColor> grounds;
            for (int part = 0; part < 8; ++part)
                grounds.append(QColor::fromRgb(random.generate()));
            const BackdropTones tones = BackdropTones::of(look(type, scheme), grounds);
            const QList<QColor> shaded = laid(tones.shade, grounds);
            QVERIFY(Contrast::leastRatio(tones.textColor, shaded) >= Contrast::legible);
            QVERIFY(Contrast::leastRatio(tones.secondaryTextColor, shaded) >= Contrast::legible);
        }
    }

    void theLooksOwnColorsStayWhereTheyCanBeRead()
    {
        const AppTheme &dark = look(ThemeType::classic, ColorScheme::dark);
        const BackdropTones tones = BackdropTones::of(dark, {QColor(20, 20, 40), Qt::black});
        QCOMPARE(tones.textColor, dark.primaryTextColor());
        QCOMPARE(tones.secondaryTextColor, dark.secondaryTextColor());
        QCOMPARE(tones.shade.alpha(), 0);
        QVERIFY(tones.isDark);
    }

    void withoutAPictureTextsAreTheLooksOwn()
    {
        const AppTheme &pink = look(ThemeType::kawaiiPink);
        const BackdropTones tones = BackdropTones::of(pink, {});
        QCOMPARE(tones.textColor, pink.primaryTextColor());
        QCOMPARE(tones.secondaryTextColor, pink.secondaryTextColor());
    }

    void blackTextBecomesWhiteOnTheDark()
    {
        const BackdropTones tones = BackdropTones::of(look(ThemeType::classic), {QColor(30, 10, 50)});
        QCOMPARE(tones.textColor, QColor(Qt::white));
        QVERIFY(tones.isDark);
        QVERIFY(tones.secondaryTextColor.alphaF() < 0.8F);
        QCOMPARE(tones.shade.alpha(), 0);
    }

    void aColoredTextKeepsItsHueWhereThatHelps()
    {
        const AppTheme &pink = look(ThemeType::kawaiiPink);
        const QList<QColor> pale{QColor(255, 230, 240), QColor(255, 214, 226)};
        QVERIFY(Contrast::leastRatio(pink.primaryTextColor(), pale) < Contrast::legible);
        const BackdropTones tones = BackdropTones::of(pink, pale);
        QVERIFY(qAbs(tones.textColor.hslHueF() - pink.primaryTextColor().hslHueF()) < 0.02F);
        QVERIFY(!tones.isDark);
    }

    void onlyPicturesOfBlackAndWhiteAreShaded()
    {
        const BackdropTones tones = BackdropTones::of(look(ThemeType::classic), {Qt::black, Qt::white});
        QVERIFY(tones.shade.alpha() > 0);
        // No more than is needed.
        QColor less = tones.shade;
        less.setAlphaF(less.alphaF() - 0.04F);
        QVERIFY(Contrast::leastRatio(tones.textColor, laid(less, {Qt::black, Qt::white})) <
                Contrast::legible);
    }

    void aLightPictureHasDarkTexts()
    {
        const BackdropTones tones = BackdropTones::of(look(ThemeType::classic, ColorScheme::dark),
                                                      {Qt::white, QColor(250, 240, 200)});
        QCOMPARE(tones.textColor, QColor(Qt::black));
        QVERIFY(!tones.isDark);
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestBackdropTones)
#include "tst_backdrop_tones.moc"
