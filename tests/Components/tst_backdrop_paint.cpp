// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/BackdropPaint.h"

#include "Components/BackdropColors.h"
#include "Fixtures/Pixels.h"
#include "Theme/Contrast.h"
#include "Theme/ThemeFactory.h"
#include "Theme/ThemedSurfaces.h"

#include <QSignalSpy>
#include <QTest>

namespace cadorel {

using namespace Qt::StringLiterals;

using Style = NowPlayingBackgroundStyle;

namespace {

/// The address of a picture of these colours.
QString pictureOf(const QList<QColor> &colors)
{
    static int number = 0;
    const QString address = u"cover/%1?blur=50"_s.arg(++number);
    BackdropColors::shared().keep(address, colors);
    return u"image://backdrop/"_s + address;
}

AppTheme *look(ThemeType type, ColorScheme scheme = ColorScheme::light)
{
    return &ThemeFactory::create(type, scheme);
}

/// How far colours go astray when they are mixed in whole numbers.
constexpr int rounding = 2;

} // namespace

/// What lies over each background, and its texts.
class TestBackdropPaint : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<BackdropPaint> p;

    void set(AppTheme *theme, Style style, double opacity, const QString &picture = {})
    {
        p = std::make_unique<BackdropPaint>();
        p->setTheme(theme);
        p->setStyle(style);
        p->setOpacity(opacity);
        p->setPicture(picture);
        p->setCustomColor(QColor(0, 0, 200));
        p->setAccent(QColor(255, 45, 85));
    }

private Q_SLOTS:
    void aVeilOverAPictureIsAsStrongAsTheListenerWants()
    {
        set(look(ThemeType::classic), Style::blur, 0.7,
            pictureOf({QColor(90, 40, 30), QColor(200, 180, 90)}));
        QVERIFY(p->hasPicture());
        QCOMPARE(p->veil().rgb(), QColor(Qt::black).rgb());
        QVERIFY(qAbs(p->veil().alphaF() - 0.7F) < 0.01F);
        QCOMPARE(p->textColor(), QColor(Qt::white));
        QVERIFY(p->isDark());
    }

    void looksOfACharacterVeilPicturesInTheirColor()
    {
        for (const ThemeType type : {ThemeType::neumorphism, ThemeType::kawaiiPink}) {
            set(look(type), Style::customImage, 0.8, pictureOf({Qt::darkGreen}));
            QVERIFY(isNear(QColor::fromRgb(p->veil().rgb()), look(type)->backgroundColor(), rounding));
            QVERIFY(!p->isDark());
        }
    }

    void aPictureThatIsNotThereLeavesTheLooksOwnBackground_data()
    {
        QTest::addColumn<Style>("style");
        QTest::newRow("cover") << Style::blur;
        QTest::newRow("listener's") << Style::customImage;
    }
    void aPictureThatIsNotThereLeavesTheLooksOwnBackground()
    {
        QFETCH(Style, style);
        for (const QString &picture : {QString(), pictureOf({})}) {
            set(look(ThemeType::classic), style, 0.7, picture);
            QVERIFY(!p->hasPicture());
            QCOMPARE(p->veil().alpha(), 0);
            QCOMPARE(p->textColor(), look(ThemeType::classic)->primaryTextColor());
        }
    }

    void aPictureCountsInAStyleOfPicturesAlone()
    {
        for (const Style style : {Style::solid, Style::clear}) {
            set(look(ThemeType::classic), style, 0.7, pictureOf({Qt::black}));
            QCOMPARE(p->veil().alpha(), 0);
            QCOMPARE(p->textColor(), QColor(Qt::black));
        }
    }

    void theUsualVeilOfThePinkGradientLeavesItsBackground()
    {
        AppTheme *pink = look(ThemeType::kawaiiPink);
        set(pink, Style::gradient, pink->nowPlayingConfig().backgroundOpacity);
        const QList<QColor> bare =
            ThemedSurfaces::laidOver({Qt::white}, ThemedSurfaces::nowPlayingGradient(pink));
        const QList<QColor> own = ThemedSurfaces::laidOver({Qt::white}, ThemedSurfaces::background(pink));
        QCOMPARE(bare.size(), own.size());
        for (qsizetype i = 0; i < bare.size(); ++i)
            QVERIFY(isNear(Contrast::over(p->veil(), bare.at(i)), own.at(i), rounding));
        QVERIFY(bare.at(1) != own.at(1));
    }

    void everyLookHasAGradient()
    {
        for (const ThemeType type : allThemeTypes()) {
            for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
                const Surface surface = ThemedSurfaces::nowPlayingGradient(look(type, scheme));
                QVERIFY(surface.gradient.stops.size() >= 3);
                QCOMPARE(surface.fill.alpha(), 255);
            }
        }
        QCOMPARE(ThemedSurfaces::nowPlayingGradient(nullptr), Surface());
    }

    void textsCanBeReadInEveryStyleUnderEveryVeil()
    {
        const QString busy = pictureOf({Qt::black, QColor(120, 20, 20), QColor(90, 160, 60), Qt::white});
        for (const ThemeType type : allThemeTypes()) {
            for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
                for (const Style style : allNowPlayingBackgroundStyles()) {
                    for (const double opacity : {0.0, 0.3, 0.7, 1.0}) {
                        set(look(type, scheme), style, opacity, busy);
                        QVERIFY(p->textColor().isValid());
                        if (!BackdropPaint::isOfPictures(style))
                            continue;
                        for (const QColor &part : BackdropColors::shared().colors(busy.mid(17))) {
                            const QColor ground = Contrast::over(p->veil(), part);
                            // One layer in place of two is rounded once more.
                            QVERIFY(Contrast::ratio(p->textColor(), ground) > Contrast::legible - 0.1);
                            QVERIFY(Contrast::ratio(p->secondaryTextColor(), ground) >
                                    Contrast::legible - 0.1);
                        }
                    }
                }
            }
        }
    }

    void theAccentCanBeToldFromTheBackground()
    {
        set(look(ThemeType::classic), Style::customColor, 0.0);
        p->setCustomColor(QColor(255, 45, 85));
        QVERIFY(Contrast::ratio(p->accentColor(), QColor(255, 45, 85)) >= Contrast::legible);
        set(look(ThemeType::classic, ColorScheme::dark), Style::clear, 0.7);
        QCOMPARE(p->accentColor(), QColor(255, 45, 85));
    }

    void onlyChangesAreTold()
    {
        set(look(ThemeType::classic), Style::solid, 0.7);
        const QSignalSpy told(p.get(), &BackdropPaint::changed);
        p->setOpacity(0.7);
        p->setStyle(Style::solid);
        p->setCustomColor(QColor(0, 0, 200));
        QCOMPARE(told.size(), 0);
        p->setOpacity(qQNaN());
        QCOMPARE(p->opacity(), 0.0);
        p->setOpacity(7);
        QCOMPARE(p->opacity(), 1.0);
        QCOMPARE(told.size(), 2);
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestBackdropPaint)
#include "tst_backdrop_paint.moc"
