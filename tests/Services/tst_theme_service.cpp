// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AppearanceBench.h"

#include "Platform/Platform.h"
#include "Platform/SharedServices.h"
#include "Platform/Sql/SqlitePreferences.h"

#include <QTemporaryDir>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestThemeService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aFreshInstallHasItsDefaults();
    void nothingIsWrittenByReading();
    void settingsAreReadInTheirOrder();

    void switchesAreReadAndStored_data();
    void switchesAreReadAndStored();
    void theRingIsToggled();

    void numbersAreClampedWhenWrittenAndNotWhenRead_data();
    void numbersAreClampedWhenWrittenAndNotWhenRead();
    void aCircleIsRadiusFiftyAndNotHalfOfTheCover();

    void unknownCasesFallBackAndKnownOnesAreStored_data();
    void unknownCasesFallBackAndKnownOnesAreStored();
    void casesThatAreNoneChangeNothing();

    void everySettingSurvivesInTheRealStore();
    void theSharedServiceStandsOnThePlatform();

private:
    std::unique_ptr<AppearanceBench> m_bench;
};

void TestThemeService::init()
{
    m_bench = std::make_unique<AppearanceBench>();
}

void TestThemeService::aFreshInstallHasItsDefaults()
{
    const ThemeService &service = m_bench->start();
    QCOMPARE(service.accentColor(), light().pink);
    QCOMPARE(service.accentColorName(), u"粉红"_s);
    QCOMPARE(service.currentColorIndex(), 0);
    QCOMPARE(service.showSoundWaveRing(), true);
    QCOMPARE(service.dancingEmoji(), u"🕺"_s);
    QVERIFY(service.customDancingImage().isNull());
    QCOMPARE(service.customDancingImageSource(), QString());
    QCOMPARE(service.useCustomImage(), false);
    QCOMPARE(service.lyricAnimationStyle(), LyricAnimationStyle::bounce);
    QCOMPARE(service.nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::blur);
    QCOMPARE(service.nowPlayingBackgroundOpacity(), 0.7);
    QVERIFY(service.customBackgroundImage().isNull());
    QCOMPARE(service.customBackgroundImageSource(), QString());
    QCOMPARE(service.customBackgroundColor(), light().purple);
    QCOMPARE(service.customBackgroundBlur(), 30.0F);
    QCOMPARE(service.albumCoverCornerRadius(), 12.0F);
    QVERIFY(!service.miniPlayerPosition());
    QCOMPARE(service.selectedCassetteStyle(), CassetteStyle::defaultStyle);
    QVERIFY(service.cassetteConfigs().isEmpty());
    QVERIFY((service.getCurrentCassetteConfig() == CassetteConfig{0.18F, 0, -0.2F}));
    QCOMPARE(service.lyricsFontSize(), 18.0F);
    QCOMPARE(service.lyricsAlignment(), LyricsAlignment::center);
    QCOMPARE(service.lyricsBlurEnabled(), true);
    QCOMPARE(service.currentThemeType(), ThemeType::classic);
}

void TestThemeService::nothingIsWrittenByReading()
{
    m_bench->start();
    QCOMPARE(m_bench->preferences.writes(), 0);
}

void TestThemeService::settingsAreReadInTheirOrder()
{
    FakePreferences &stored = m_bench->preferences;
    stored.setString(u"selectedTheme"_s, u"kawaiiPink"_s);
    stored.setData(u"customDancingImage"_s, "no picture");
    stored.setData(u"customBackgroundImage_kawaiiPink"_s, "no picture");
    m_bench->start();
    QStringList reads = m_bench->preferences.reads;
    QCOMPARE(reads.takeFirst(), u"selectedTheme"_s);
    // Pictures wait until somebody shows them.
    QCOMPARE(
        reads,
        (QStringList{u"appAccentColorName"_s, u"showSoundWaveRing"_s, u"dancingEmoji"_s,
                     u"useCustomDancingImage"_s, u"lyricAnimationStyle"_s, u"albumCoverCornerRadius"_s,
                     u"miniPlayerPositionX"_s, u"miniPlayerPositionY"_s, u"selectedCassetteStyle"_s,
                     u"cassetteConfigs"_s, u"lyricsFontSize"_s, u"lyricsAlignment"_s, u"lyricsBlurEnabled"_s,
                     u"nowPlayingBackgroundStyle_kawaiiPink"_s, u"nowPlayingBackgroundOpacity_kawaiiPink"_s,
                     u"customBackgroundColor_kawaiiPink"_s, u"customBackgroundBlur_kawaiiPink"_s}));
}

// MARK: switches

void TestThemeService::switchesAreReadAndStored_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<bool>("isOnAtFirst");
    QTest::newRow("ring") << u"showSoundWaveRing"_s << u"showSoundWaveRing"_s << u"setSoundWaveRing"_s
                          << true;
    QTest::newRow("blurred lyrics") << u"lyricsBlurEnabled"_s << u"lyricsBlurEnabled"_s
                                    << u"setLyricsBlurEnabled"_s << true;
    QTest::newRow("own picture") << u"useCustomDancingImage"_s << u"useCustomImage"_s << QString() << false;
}

void TestThemeService::switchesAreReadAndStored()
{
    QFETCH(const QString, key);
    QFETCH(const QString, property);
    QFETCH(const QString, operation);
    QFETCH(const bool, isOnAtFirst);
    m_bench->start();
    QCOMPARE(m_bench->property(property), QVariant(isOnAtFirst));
    m_bench->preferences.setString(key, isOnAtFirst ? u"false"_s : u"true"_s);
    m_bench->start();
    QCOMPARE(m_bench->property(property), QVariant(isOnAtFirst));
    m_bench->preferences.setBool(key, !isOnAtFirst);
    m_bench->start();
    QCOMPARE(m_bench->property(property), QVariant(!isOnAtFirst));
    if (operation.isEmpty())
        return;

    const auto changes = changesOf(*m_bench->service, property);
    for (const bool on : {true, true, false, false}) {
        QVERIFY(QMetaObject::invokeMethod(m_bench->service.get(), operation.toLatin1().constData(),
                                          Q_ARG(bool, on)));
        QCOMPARE(m_bench->property(property), QVariant(on));
        QCOMPARE(m_bench->preferences.boolValue(key), on);
    }
    QCOMPARE(changes->count(), 2);
}

void TestThemeService::theRingIsToggled()
{
    ThemeService &service = m_bench->start();
    service.toggleSoundWaveRing();
    QCOMPARE(m_bench->preferences.boolValue(u"showSoundWaveRing"_s), false);
    service.toggleSoundWaveRing();
    QCOMPARE(m_bench->preferences.boolValue(u"showSoundWaveRing"_s), true);
}

// MARK: numbers

void TestThemeService::numbersAreClampedWhenWrittenAndNotWhenRead_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("property");
    QTest::addColumn<double>("unset");
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");
    QTest::newRow("cover") << u"albumCoverCornerRadius"_s << u"albumCoverCornerRadius"_s << 12.0 << 0.0
                           << 50.0;
    QTest::newRow("lyrics") << u"lyricsFontSize"_s << u"lyricsFontSize"_s << 18.0 << 14.0 << 28.0;
    QTest::newRow("opacity") << u"nowPlayingBackgroundOpacity_classic"_s << u"nowPlayingBackgroundOpacity"_s
                             << 0.7 << 0.0 << 1.0;
    QTest::newRow("blur") << u"customBackgroundBlur_classic"_s << u"customBackgroundBlur"_s << 30.0 << 0.0
                          << 50.0;
}

void TestThemeService::numbersAreClampedWhenWrittenAndNotWhenRead()
{
    QFETCH(const QString, key);
    QFETCH(const QString, property);
    QFETCH(const double, unset);
    QFETCH(const double, least);
    QFETCH(const double, most);
    const auto read = [this, &property] {
        m_bench->start();
        return m_bench->property(property).toDouble();
    };
    WatchedPreferences &stored = m_bench->preferences;
    QCOMPARE(read(), unset);
    // What is no number is as nothing.
    stored.setString(key, u"15"_s);
    QCOMPARE(read(), unset);
    for (const double none : {notANumber, infinity, -infinity}) {
        stored.setDouble(key, none);
        QCOMPARE(read(), unset);
    }
    // Finite, but not in a float.
    if (m_bench->property(property).metaType() == QMetaType::fromType<float>()) {
        for (const double none : {1e300, -1e300}) {
            stored.setDouble(key, none);
            QCOMPARE(read(), unset);
        }
    }
    // Numbers are taken as they stand, whole ones too.
    for (const double number : {least - 100, most + 100, most, 0.5}) {
        stored.setDouble(key, number);
        QCOMPARE(read(), number);
    }
    stored.setInt(key, 1);
    QCOMPARE(read(), 1.0);

    const QByteArray operation = "set" + property.left(1).toUpper().toLatin1() + property.mid(1).toLatin1();
    const auto changes = changesOf(*m_bench->service, property);
    const auto set = [this, &operation](double number) {
        return QMetaObject::invokeMethod(m_bench->service.get(), operation.constData(),
                                         Q_ARG(double, number));
    };
    int expectedChanges = 0;
    double last = 1;
    for (const auto &[asked, got] : std::initializer_list<std::pair<double, double>>{
             {least - 4, least}, {most + 30, most}, {least, least}, {infinity, most}, {-infinity, least}}) {
        QVERIFY(set(asked));
        QCOMPARE(m_bench->property(property).toDouble(), got);
        QCOMPARE(stored.doubleValue(key), got);
        expectedChanges += got == last ? 0 : 1;
        last = got;
        QCOMPARE(changes->count(), expectedChanges);
    }
    const int writes = stored.writes();
    QVERIFY(set(notANumber));
    QCOMPARE(m_bench->property(property).toDouble(), least);
    QCOMPARE(stored.writes(), writes);
    // What stands already is stored nonetheless.
    QVERIFY(set(least));
    QCOMPARE(stored.writes(), writes + 1);
    QCOMPARE(changes->count(), expectedChanges);
    QCOMPARE(read(), least);
}

void TestThemeService::aCircleIsRadiusFiftyAndNotHalfOfTheCover()
{
    ThemeService &service = m_bench->start();
    service.setCircleAlbumCover();
    QCOMPARE(service.albumCoverCornerRadius(), 50.0F);
    QCOMPARE(m_bench->preferences.doubleValue(u"albumCoverCornerRadius"_s), 50.0);
    service.setSquareAlbumCover();
    QCOMPARE(service.albumCoverCornerRadius(), 0.0F);
    QCOMPARE(m_bench->preferences.doubleValue(u"albumCoverCornerRadius"_s), 0.0);
}

// MARK: cases

void TestThemeService::unknownCasesFallBackAndKnownOnesAreStored_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<QList<AppearanceChoice>>("choices");
    QTest::addColumn<int>("unset");
    QTest::newRow("animation") << u"lyricAnimationStyle"_s << u"lyricAnimationStyle"_s
                               << QByteArray("setLyricAnimationStyle")
                               << AppearanceOptions::lyricAnimationStyles() << 0;
    QTest::newRow("alignment") << u"lyricsAlignment"_s << u"lyricsAlignment"_s
                               << QByteArray("setLyricsAlignment") << AppearanceOptions::lyricsAlignments()
                               << 1;
    QTest::newRow("cassette") << u"selectedCassetteStyle"_s << u"selectedCassetteStyle"_s
                              << QByteArray("setCassetteStyle") << AppearanceOptions::cassetteStyles() << 0;
    QTest::newRow("background") << u"nowPlayingBackgroundStyle_classic"_s << u"nowPlayingBackgroundStyle"_s
                                << QByteArray("setNowPlayingBackgroundStyle")
                                << AppearanceOptions::nowPlayingBackgroundStyles() << 0;
}

void TestThemeService::unknownCasesFallBackAndKnownOnesAreStored()
{
    QFETCH(const QString, key);
    QFETCH(const QString, property);
    QFETCH(const QByteArray, operation);
    QFETCH(const QList<AppearanceChoice>, choices);
    QFETCH(const int, unset);
    const auto read = [this, &property] {
        m_bench->start();
        return m_bench->property(property).toInt();
    };
    QCOMPARE(read(), unset);
    m_bench->preferences.setString(key, u"sparkle"_s);
    QCOMPARE(read(), unset);
    m_bench->preferences.setInt(key, 1 - unset);
    QCOMPARE(read(), unset);

    m_bench->preferences.remove(key);
    m_bench->start();
    const auto changes = changesOf(*m_bench->service, property);
    int last = unset;
    int expectedChanges = 0;
    for (const AppearanceChoice &choice : choices) {
        // As screens call it.
        QVariant value(choice.value);
        const QMetaObject *type = m_bench->service->metaObject();
        const QMetaProperty described =
            type->property(type->indexOfProperty(property.toLatin1().constData()));
        QVERIFY(value.convert(described.metaType()));
        QVERIFY(QMetaObject::invokeMethod(m_bench->service.get(), operation.constData(),
                                          QGenericArgument(described.metaType().name(), value.constData())));
        QCOMPARE(m_bench->property(property).toInt(), choice.value);
        QCOMPARE(m_bench->preferences.stringValue(key), choice.rawValue);
        expectedChanges += choice.value == last ? 0 : 1;
        last = choice.value;
    }
    QCOMPARE(changes->count(), expectedChanges);
    QCOMPARE(read(), last);
}

void TestThemeService::casesThatAreNoneChangeNothing()
{
    ThemeService &service = m_bench->start();
    constexpr int none = 17;
    service.setLyricAnimationStyle(static_cast<LyricAnimationStyle>(none));
    service.setLyricsAlignment(static_cast<LyricsAlignment>(none));
    service.setCassetteStyle(static_cast<CassetteStyle>(-1));
    service.setNowPlayingBackgroundStyle(static_cast<NowPlayingBackgroundStyle>(none));
    QCOMPARE(m_bench->preferences.writes(), 0);
    QCOMPARE(service.selectedCassetteStyle(), CassetteStyle::defaultStyle);
    QCOMPARE(service.nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::blur);
    // As the factory of the looks takes the plain one.
    QCOMPARE(ThemeService::defaultBackgroundStyle(static_cast<ThemeType>(none)),
             NowPlayingBackgroundStyle::blur);
}

// MARK: the real store and the shared one

void TestThemeService::everySettingSurvivesInTheRealStore()
{
    const QTemporaryDir home;
    FakeDesktopAppearance appearance;
    QImage picture(900, 300, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    {
        SqlitePreferences preferences(home.filePath(u"preferences.sqlite"_s));
        ThemeManager manager(preferences, appearance);
        ThemeService service(preferences, manager, appearance);
        service.setPresetColor(8);
        service.setSoundWaveRing(false);
        service.setDancingEmoji(u"🦄"_s);
        service.setCustomDancingImage(picture);
        service.setLyricAnimationStyle(LyricAnimationStyle::typewriter);
        service.setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle::customImage);
        service.setNowPlayingBackgroundOpacity(0.3);
        service.setCustomBackgroundImage(picture);
        service.setCustomBackgroundColor(QColor::fromRgbF(0.1F, 0.2F, 0.3F));
        service.setCustomBackgroundBlur(12.5);
        service.setAlbumCoverCornerRadius(33);
        service.setMiniPlayerPosition({10, 20.5});
        service.setCassetteStyle(CassetteStyle::style4);
        service.setCassetteScale(0.4);
        service.setLyricsFontSize(21);
        service.setLyricsAlignment(LyricsAlignment::left);
        service.setLyricsBlurEnabled(false);
    }
    SqlitePreferences preferences(home.filePath(u"preferences.sqlite"_s));
    ThemeManager manager(preferences, appearance);
    const ThemeService service(preferences, manager, appearance);
    QCOMPARE(service.accentColor(), light().indigo);
    QCOMPARE(service.showSoundWaveRing(), false);
    QCOMPARE(service.dancingEmoji(), u"🦄"_s);
    QCOMPARE(service.useCustomImage(), true);
    QCOMPARE(service.customDancingImage().size(), QSize(50, 50));
    QCOMPARE(service.customDancingImage().pixelColor(25, 25), QColor(Qt::darkGreen));
    QCOMPARE(service.lyricAnimationStyle(), LyricAnimationStyle::typewriter);
    QCOMPARE(service.nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::customImage);
    QCOMPARE(service.nowPlayingBackgroundOpacity(), 0.3);
    QCOMPARE(service.customBackgroundImage().size(), QSize(800, 267));
    QCOMPARE(service.customBackgroundColor(), QColor::fromRgbF(0.1F, 0.2F, 0.3F));
    QCOMPARE(service.customBackgroundBlur(), 12.5F);
    QCOMPARE(service.albumCoverCornerRadius(), 33.0F);
    QCOMPARE(service.miniPlayerPosition(), QPointF(10, 20.5));
    QCOMPARE(service.selectedCassetteStyle(), CassetteStyle::style4);
    QVERIFY((service.getCurrentCassetteConfig() == CassetteConfig{0.4F, 0, -0.14F}));
    QCOMPARE(service.lyricsFontSize(), 21.0F);
    QCOMPARE(service.lyricsAlignment(), LyricsAlignment::left);
    QCOMPARE(service.lyricsBlurEnabled(), false);
}

void TestThemeService::theSharedServiceStandsOnThePlatform()
{
    Platform platform;
    platform.preferences = std::make_unique<FakePreferences>();
    platform.preferences->setString(u"selectedTheme"_s, u"neumorphism"_s);
    platform.desktopAppearance = std::make_unique<FakeDesktopAppearance>(ColorScheme::dark);
    setProcessPlatform(&platform);
    const ThemeService &service = ThemeService::shared();
    QCOMPARE(&service, &ThemeService::shared());
    QCOMPARE(service.accentColor(), dark().pink);
    QCOMPARE(service.currentThemeType(), ThemeType::neumorphism);
    ThemeManager::shared().switchTo(ThemeType::kawaiiPink);
    QTRY_COMPARE(service.currentThemeType(), ThemeType::kawaiiPink);
    releaseSharedServices();
    setProcessPlatform(nullptr);
}

QTEST_GUILESS_MAIN(TestThemeService)
#include "tst_theme_service.moc"
