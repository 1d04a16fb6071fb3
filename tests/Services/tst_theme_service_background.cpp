// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AppearanceBench.h"
#include "Services/Pictures/PictureForms.h"

#include <QCoreApplication>

#include <array>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QImage plain(const QColor &color, const QSize &size = {8, 8})
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// Tasks that wait for their turn take it.
void takeTurns()
{
    QCoreApplication::sendPostedEvents();
}

} // namespace

class TestThemeServiceBackground : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void styleByTheme_data();
    void styleByTheme();
    void eachThemeKeepsItsOwn();
    void theFallbacksApplyWhenAKeyIsAbsent();
    void settingsArePublishedInTheirOrder();
    void nothingIsPublishedThatDoesNotChange();
    void twoHundredChangesLeaveNothingBehind();

    void theChangeWaitsForItsTurn();
    void writersKeepToTheThemeWhoseSettingsAreLoaded();
    void whoAnswersToASettingWritesToTheNewLook_data();
    void whoAnswersToASettingWritesToTheNewLook();
    void thePresentThemeIsNoChange();
    void theLastOfSeveralThemesCounts();
    void aServiceThatIsGoneHearsNothing();

    void colorsAreStoredAsThreeNumbers();
    void whatIsNoColorGivesPurple_data();
    void whatIsNoColorGivesPurple();
    void moreThanThreeNumbersAreAColor();
    void storedColorsAreOpaque();
    void aGreyWithFewerComponentsIsNotStored_data();
    void aGreyWithFewerComponentsIsNotStored();
    void aGreyInRedGreenAndBlueIsStored();
    void otherSpacesAreStoredInRedGreenAndBlue();
    void anInvalidColorIsNone();

private:
    std::unique_ptr<AppearanceBench> m_bench;
};

void TestThemeServiceBackground::init()
{
    m_bench = std::make_unique<AppearanceBench>();
}

void TestThemeServiceBackground::styleByTheme_data()
{
    QTest::addColumn<QString>("theme");
    QTest::addColumn<NowPlayingBackgroundStyle>("style");
    QTest::newRow("classic") << u"classic"_s << NowPlayingBackgroundStyle::blur;
    QTest::newRow("neumorphism") << u"neumorphism"_s << NowPlayingBackgroundStyle::solid;
    QTest::newRow("kawaiiPink") << u"kawaiiPink"_s << NowPlayingBackgroundStyle::gradient;
}

void TestThemeServiceBackground::styleByTheme()
{
    QFETCH(const QString, theme);
    QFETCH(const NowPlayingBackgroundStyle, style);
    m_bench->preferences.setString(u"selectedTheme"_s, theme);
    QCOMPARE(m_bench->start().nowPlayingBackgroundStyle(), style);
    m_bench->preferences.setString(u"nowPlayingBackgroundStyle_"_s + theme, u"sparkle"_s);
    QCOMPARE(m_bench->start().nowPlayingBackgroundStyle(), style);
    m_bench->preferences.setString(u"nowPlayingBackgroundStyle_"_s + theme, u"clear"_s);
    QCOMPARE(m_bench->start().nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::clear);
}

void TestThemeServiceBackground::eachThemeKeepsItsOwn()
{
    ThemeService &service = m_bench->start();
    const QList<QColor> colors{Qt::red, Qt::green, Qt::blue};
    for (const ThemeType theme : allThemeTypes()) {
        QVERIFY(m_bench->turnTo(theme));
        const int number = static_cast<int>(theme) + 1;
        service.setNowPlayingBackgroundStyle(allNowPlayingBackgroundStyles().at(number + 2));
        service.setNowPlayingBackgroundOpacity(number / 4.0);
        service.setCustomBackgroundImage(plain(Qt::white, {number, 10}));
        service.setCustomBackgroundColor(colors.at(number - 1));
        service.setCustomBackgroundBlur(number);
    }
    for (const bool isRestarted : {false, true}) {
        for (const ThemeType theme : allThemeTypes()) {
            if (isRestarted) {
                m_bench->preferences.setString(u"selectedTheme"_s, rawValue(theme));
                m_bench->start();
            }
            QVERIFY(m_bench->turnTo(theme));
            const ThemeService &now = *m_bench->service;
            const int number = static_cast<int>(theme) + 1;
            QCOMPARE(now.nowPlayingBackgroundStyle(), allNowPlayingBackgroundStyles().at(number + 2));
            QCOMPARE(now.nowPlayingBackgroundOpacity(), number / 4.0);
            QCOMPARE(now.customBackgroundImage().size(), QSize(number, 10));
            QCOMPARE(now.customBackgroundColor(), colors.at(number - 1));
            QCOMPARE(now.customBackgroundBlur(), static_cast<float>(number));
            QVERIFY(m_bench->preferences.contains(u"customBackgroundImage_"_s + rawValue(theme)));
        }
    }
    m_bench->service->clearCustomBackgroundImage();
    QVERIFY(!m_bench->preferences.contains(u"customBackgroundImage_kawaiiPink"_s));
    QVERIFY(m_bench->preferences.contains(u"customBackgroundImage_classic"_s));
}

void TestThemeServiceBackground::theFallbacksApplyWhenAKeyIsAbsent()
{
    ThemeService &service = m_bench->start();
    service.setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle::customImage);
    service.setNowPlayingBackgroundOpacity(0.1);
    service.setCustomBackgroundImage(plain(Qt::red));
    service.setCustomBackgroundColor(Qt::red);
    service.setCustomBackgroundBlur(1);
    QVERIFY(m_bench->turnTo(ThemeType::neumorphism));
    QCOMPARE(service.nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::solid);
    QCOMPARE(service.nowPlayingBackgroundOpacity(), 0.7);
    QVERIFY(service.customBackgroundImage().isNull());
    QCOMPARE(service.customBackgroundImageSource(), QString());
    QCOMPARE(service.customBackgroundColor(), light().purple);
    QCOMPARE(service.customBackgroundBlur(), 30.0F);
}

void TestThemeServiceBackground::settingsArePublishedInTheirOrder()
{
    ThemeService &service = m_bench->start();
    service.setNowPlayingBackgroundOpacity(0.1);
    service.setCustomBackgroundImage(plain(Qt::red));
    service.setCustomBackgroundColor(Qt::red);
    service.setCustomBackgroundBlur(1);
    QStringList published;
    const auto note = [&published](const QString &name) { return [&published, name] { published += name; }; };
    connect(&service, &ThemeService::nowPlayingBackgroundStyleChanged, this, note(u"style"_s));
    connect(&service, &ThemeService::nowPlayingBackgroundOpacityChanged, this, note(u"opacity"_s));
    connect(&service, &ThemeService::customBackgroundImageChanged, this, note(u"picture"_s));
    connect(&service, &ThemeService::customBackgroundColorChanged, this, note(u"color"_s));
    connect(&service, &ThemeService::customBackgroundBlurChanged, this, note(u"blur"_s));
    QVERIFY(m_bench->turnTo(ThemeType::kawaiiPink));
    QCOMPARE(published, (QStringList{u"style"_s, u"opacity"_s, u"picture"_s, u"color"_s, u"blur"_s}));
}

void TestThemeServiceBackground::nothingIsPublishedThatDoesNotChange()
{
    ThemeService &service = m_bench->start();
    const auto opacity = changesOf(service, u"nowPlayingBackgroundOpacity"_s);
    const auto picture = changesOf(service, u"customBackgroundImageSource"_s);
    const auto color = changesOf(service, u"customBackgroundColor"_s);
    const auto blur = changesOf(service, u"customBackgroundBlur"_s);
    const auto style = changesOf(service, u"nowPlayingBackgroundStyle"_s);
    QVERIFY(m_bench->turnTo(ThemeType::kawaiiPink));
    QCOMPARE(style->count(), 1);
    QCOMPARE(opacity->count() + picture->count() + color->count() + blur->count(), 0);
    service.clearCustomBackgroundImage();
    QCOMPARE(picture->count(), 0);
}

void TestThemeServiceBackground::twoHundredChangesLeaveNothingBehind()
{
    ThemeService &service = m_bench->start();
    service.setCustomBackgroundImage(plain(Qt::red, {800, 800}));
    const auto styles = changesOf(service, u"nowPlayingBackgroundStyle"_s);
    const qsizetype children = service.children().size();
    const int writes = m_bench->preferences.writes();
    constexpr int changes = 200;
    for (int change = 1; change <= changes; ++change) {
        const ThemeType theme = allThemeTypes().at(change % allThemeTypes().size());
        QVERIFY(m_bench->turnTo(theme));
        QCOMPARE(service.nowPlayingBackgroundStyle(), ThemeService::defaultBackgroundStyle(theme));
        QCOMPARE(service.customBackgroundImage().isNull(), theme != ThemeType::classic);
        // No picture of a look that was left is held.
        QCOMPARE(service.customPictures()->image(u"background"_s).isNull(), theme != ThemeType::classic);
    }
    QCOMPARE(styles->count(), changes);
    QCOMPARE(service.children().size(), children);
    // The choice of the look is the manager's; the service wrote nothing.
    QCOMPARE(m_bench->preferences.writes(), writes + changes);
}

// MARK: handover

void TestThemeServiceBackground::theChangeWaitsForItsTurn()
{
    ThemeService &service = m_bench->start();
    ThemeType seen = ThemeType::kawaiiPink;
    connect(m_bench->manager.get(), &ThemeManager::currentThemeTypeChanged, this,
            [&] { seen = service.currentThemeType(); });
    QVERIFY(m_bench->turnTo(ThemeType::neumorphism));
    QCOMPARE(seen, ThemeType::classic);
}

void TestThemeServiceBackground::writersKeepToTheThemeWhoseSettingsAreLoaded()
{
    ThemeService &service = m_bench->start();
    connect(m_bench->manager.get(), &ThemeManager::currentThemeTypeChanged, this, [&] {
        service.setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle::clear);
        service.setNowPlayingBackgroundOpacity(0.1);
        service.setCustomBackgroundImage(plain(Qt::red));
        service.setCustomBackgroundColor(Qt::red);
        service.setCustomBackgroundBlur(1);
    });
    QVERIFY(m_bench->turnTo(ThemeType::neumorphism));
    for (const QString &setting :
         {u"nowPlayingBackgroundStyle_"_s, u"nowPlayingBackgroundOpacity_"_s, u"customBackgroundImage_"_s,
          u"customBackgroundColor_"_s, u"customBackgroundBlur_"_s}) {
        QVERIFY(m_bench->preferences.contains(setting + u"classic"_s));
        QVERIFY(!m_bench->preferences.contains(setting + u"neumorphism"_s));
    }
    QCOMPARE(service.nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::solid);
}

void TestThemeServiceBackground::whoAnswersToASettingWritesToTheNewLook_data()
{
    QTest::addColumn<int>("setting");
    QTest::addColumn<bool>("isCleared");
    constexpr std::array names{"style", "opacity", "picture", "color", "blur"};
    for (int setting = 0; setting < static_cast<int>(names.size()); ++setting) {
        for (const bool isCleared : {false, true})
            QTest::addRow("%s: the picture is %s", names.at(static_cast<size_t>(setting)),
                          isCleared ? "cleared" : "set")
                << setting << isCleared;
    }
}

void TestThemeServiceBackground::whoAnswersToASettingWritesToTheNewLook()
{
    QFETCH(const int, setting);
    QFETCH(const bool, isCleared);
    ThemeService &service = m_bench->start();
    service.setNowPlayingBackgroundOpacity(0.1);
    service.setCustomBackgroundImage(plain(Qt::red));
    service.setCustomBackgroundColor(Qt::red);
    service.setCustomBackgroundBlur(1);
    const auto classic = m_bench->preferences.dataValue(u"customBackgroundImage_classic"_s);
    const QByteArray before = jpegData(plain(Qt::green, {6, 7}), 70).value_or(QByteArray());
    m_bench->preferences.setData(u"customBackgroundImage_neumorphism"_s, before);
    QList<QSize> found;
    const auto answer = [&] {
        if (!found.isEmpty())
            return;
        found.append(service.customBackgroundImage().size());
        if (isCleared)
            service.clearCustomBackgroundImage();
        else
            service.setCustomBackgroundImage(plain(Qt::blue, {4, 5}));
    };
    const std::array settings{
        &ThemeService::nowPlayingBackgroundStyleChanged, &ThemeService::nowPlayingBackgroundOpacityChanged,
        &ThemeService::customBackgroundImageChanged, &ThemeService::customBackgroundColorChanged,
        &ThemeService::customBackgroundBlurChanged};
    connect(&service, settings.at(static_cast<size_t>(setting)), this, answer);
    QVERIFY(m_bench->turnTo(ThemeType::neumorphism));
    QCOMPARE(found, QList<QSize>{QSize(6, 7)});
    QCOMPARE(m_bench->preferences.dataValue(u"customBackgroundImage_classic"_s), classic);
    const auto now = m_bench->preferences.dataValue(u"customBackgroundImage_neumorphism"_s);
    QCOMPARE(now.has_value(), !isCleared);
    QVERIFY(now != before);
    QCOMPARE(service.customBackgroundImage().size(), isCleared ? QSize(0, 0) : QSize(4, 5));
}

void TestThemeServiceBackground::thePresentThemeIsNoChange()
{
    ThemeService &service = m_bench->start();
    service.setNowPlayingBackgroundOpacity(0.2);
    // Stored by nobody who tells it: a reload would show.
    m_bench->preferences.setDouble(u"nowPlayingBackgroundOpacity_classic"_s, 0.9);
    Q_EMIT m_bench->manager->currentThemeTypeChanged(ThemeType::classic);
    takeTurns();
    QCOMPARE(service.nowPlayingBackgroundOpacity(), 0.2);
}

void TestThemeServiceBackground::theLastOfSeveralThemesCounts()
{
    ThemeService &service = m_bench->start();
    const auto styles = changesOf(service, u"nowPlayingBackgroundStyle"_s);
    Q_EMIT m_bench->manager->currentThemeTypeChanged(ThemeType::neumorphism);
    Q_EMIT m_bench->manager->currentThemeTypeChanged(ThemeType::kawaiiPink);
    takeTurns();
    QCOMPARE(service.currentThemeType(), ThemeType::kawaiiPink);
    QCOMPARE(styles->count(), 1);
    // There and back.
    Q_EMIT m_bench->manager->currentThemeTypeChanged(ThemeType::classic);
    Q_EMIT m_bench->manager->currentThemeTypeChanged(ThemeType::kawaiiPink);
    takeTurns();
    QCOMPARE(service.currentThemeType(), ThemeType::kawaiiPink);
    QCOMPARE(styles->count(), 1);
}

void TestThemeServiceBackground::aServiceThatIsGoneHearsNothing()
{
    m_bench->start();
    const qsizetype readsBefore = m_bench->preferences.reads.size();
    Q_EMIT m_bench->manager->currentThemeTypeChanged(ThemeType::neumorphism);
    m_bench->service.reset();
    takeTurns();
    Q_EMIT m_bench->manager->currentThemeTypeChanged(ThemeType::kawaiiPink);
    m_bench->appearance.setColorScheme(ColorScheme::dark);
    takeTurns();
    QCOMPARE(m_bench->preferences.reads.size(), readsBefore);
}

// MARK: colour

void TestThemeServiceBackground::colorsAreStoredAsThreeNumbers()
{
    ThemeService &service = m_bench->start();
    const auto changes = changesOf(service, u"customBackgroundColor"_s);
    const QColor color = QColor::fromRgbF(0.2F, 0.4F, 0.6F, 0.5F);
    service.setCustomBackgroundColor(color);
    service.setCustomBackgroundColor(color);
    QCOMPARE(changes->count(), 1);
    QCOMPARE(service.customBackgroundColor(), color);
    QCOMPARE(m_bench->preferences.stringsValue(u"customBackgroundColor_classic"_s),
             (QStringList{u"0.2"_s, u"0.4"_s, u"0.6"_s}));
}

void TestThemeServiceBackground::whatIsNoColorGivesPurple_data()
{
    QTest::addColumn<QStringList>("stored");
    QTest::newRow("empty") << QStringList();
    QTest::newRow("two numbers") << QStringList{u"0.1"_s, u"0.2"_s};
    QTest::newRow("a word") << QStringList{u"0.1"_s, u"0.2"_s, u"red"_s};
    QTest::newRow("a word further on") << QStringList{u"0.1"_s, u"0.2"_s, u"0.3"_s, u"red"_s};
    QTest::newRow("not a number") << QStringList{u"0.1"_s, u"nan"_s, u"0.3"_s};
    QTest::newRow("endless") << QStringList{u"0.1"_s, u"0.2"_s, u"-inf"_s};
    QTest::newRow("too large") << QStringList{u"1e30"_s, u"0.2"_s, u"0.3"_s};
}

void TestThemeServiceBackground::whatIsNoColorGivesPurple()
{
    QFETCH(const QStringList, stored);
    m_bench->preferences.setStrings(u"customBackgroundColor_classic"_s, stored);
    QCOMPARE(m_bench->start().customBackgroundColor(), light().purple);
    m_bench->preferences.setString(u"customBackgroundColor_classic"_s, u"#ff0000"_s);
    QCOMPARE(m_bench->start().customBackgroundColor(), light().purple);
}

void TestThemeServiceBackground::moreThanThreeNumbersAreAColor()
{
    m_bench->preferences.setStrings(u"customBackgroundColor_classic"_s, {u"1"_s, u"0"_s, u"0"_s, u"0.5"_s});
    QCOMPARE(m_bench->start().customBackgroundColor(), QColor::fromRgbF(1, 0, 0));
    // As it stands, what no screen can show too.
    m_bench->preferences.setStrings(u"customBackgroundColor_classic"_s, {u"1.5"_s, u"-0.25"_s, u"0"_s});
    QCOMPARE(m_bench->start().customBackgroundColor().redF(), 1.5F);
    QCOMPARE(m_bench->service->customBackgroundColor().greenF(), -0.25F);
}

void TestThemeServiceBackground::storedColorsAreOpaque()
{
    m_bench->start().setCustomBackgroundColor(QColor(255, 0, 0, 40));
    QCOMPARE(m_bench->service->customBackgroundColor(), QColor(255, 0, 0, 40));
    QCOMPARE(m_bench->start().customBackgroundColor(), QColor(255, 0, 0));
}

void TestThemeServiceBackground::aGreyWithFewerComponentsIsNotStored_data()
{
    QTest::addColumn<QColor>("grey");
    QTest::newRow("HSV") << QColor::fromHsv(-1, 0, 128);
    QTest::newRow("HSL") << QColor::fromHsl(-1, 0, 128);
    QTest::newRow("turned into HSV") << QColor(128, 128, 128).toHsv();
}

void TestThemeServiceBackground::aGreyWithFewerComponentsIsNotStored()
{
    QFETCH(const QColor, grey);
    ThemeService &service = m_bench->start();
    service.setCustomBackgroundColor(grey);
    QCOMPARE(service.customBackgroundColor(), grey);
    QVERIFY(!m_bench->preferences.contains(u"customBackgroundColor_classic"_s));
    QCOMPARE(m_bench->start().customBackgroundColor(), light().purple);

    m_bench->service->setCustomBackgroundColor(Qt::red);
    m_bench->service->setCustomBackgroundColor(grey);
    QCOMPARE(m_bench->service->customBackgroundColor(), grey);
    QCOMPARE(m_bench->start().customBackgroundColor(), QColor(Qt::red));
}

void TestThemeServiceBackground::aGreyInRedGreenAndBlueIsStored()
{
    m_bench->start().setCustomBackgroundColor(QColor(128, 128, 128));
    QCOMPARE(m_bench->start().customBackgroundColor(), QColor(128, 128, 128));
}

void TestThemeServiceBackground::otherSpacesAreStoredInRedGreenAndBlue()
{
    m_bench->start().setCustomBackgroundColor(QColor::fromHsv(120, 255, 255));
    QCOMPARE(m_bench->start().customBackgroundColor(), QColor(0, 255, 0));
    m_bench->service->setCustomBackgroundColor(QColor::fromCmyk(0, 255, 255, 0));
    QCOMPARE(m_bench->start().customBackgroundColor(), QColor(255, 0, 0));
    m_bench->service->setCustomBackgroundColor(QColor::fromRgbF(1.25F, -0.5F, 0));
    QCOMPARE(m_bench->start().customBackgroundColor().redF(), 1.25F);
}

void TestThemeServiceBackground::anInvalidColorIsNone()
{
    m_bench->start().setCustomBackgroundColor(QColor());
    QCOMPARE(m_bench->service->customBackgroundColor(), light().purple);
    QCOMPARE(m_bench->preferences.writes(), 0);
}

QTEST_GUILESS_MAIN(TestThemeServiceBackground)
#include "tst_theme_service_background.moc"
