// SPDX-License-Identifier: GPL-3.0-or-later
// The listener's pictures and accent as screens meet them.
#include "Components/CustomImageProvider.h"
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakePreferences.h"
#include "Services/ThemeService.h"
#include "Theme/LookGrounds.h"
#include "Theme/SystemColorTable.h"
#include "Theme/ThemeColor.h"
#include "Theme/ThemeFactory.h"
#include "Theme/ThemeManager.h"
#include "Views/UserInterface.h"

#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QImage plain(const QColor &color, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

} // namespace

class TestCustomPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aPictureIsGivenUnderItsAddress();
    void aPictureIsMadeSmallerNeverLarger_data();
    void aPictureIsMadeSmallerNeverLarger();
    void aPictureIsGivenRoundCorners();
    void aPictureThatIsGoneIsTransparent();
    void screensShowTheNewestPicture();
    void screensKnowEveryNameOfTheSettings();
    void screensKnowTheLooksByName();
    void screensChooseByTheRowsOfAPicker();
    void accentsAreTold();
    void everyAccentCanBeReadAndReadOn();
    void everyAccentCanBeReadOnALook();
    void whatLiesWithinTakesTheAccent();
    void linksCanBeReadInEveryLook();
    void theAccentTakesTheRoomOfWhatLiesWithin();
    void everyColorOfTheTableHasItsName();
    void aChangeOfSchemeIsToldOnce();
    void withoutAServiceTheAccentIsTheFirst();

private:
    QImage requested(const QString &source, const QSize &size = {}, QSize *original = nullptr);
    std::unique_ptr<QObject> made(const QByteArray &body);

    FakePreferences m_preferences;
    FakeDesktopAppearance m_appearance;
    std::unique_ptr<ThemeManager> m_manager;
    std::unique_ptr<ThemeService> m_service;
    std::unique_ptr<QQmlEngine> m_engine;
};

void TestCustomPictures::init()
{
    m_engine.reset();
    m_service.reset();
    m_preferences = FakePreferences();
    m_appearance.setColorScheme(ColorScheme::light);
    m_manager = std::make_unique<ThemeManager>(m_preferences, m_appearance);
    m_service = std::make_unique<ThemeService>(m_preferences, *m_manager, m_appearance);
    m_engine = std::make_unique<QQmlEngine>();
    installUserInterface(*m_engine, {.remoteCovers = nullptr,
                                     .desktopAppearance = &m_appearance,
                                     .themeManager = m_manager.get(),
                                     .themeService = m_service.get()});
}

QImage TestCustomPictures::requested(const QString &source, const QSize &size, QSize *original)
{
    auto *provider = static_cast<CustomImageProvider *>(m_engine->imageProvider(u"custom"_s));
    const QString address = source.mid(u"image://custom/"_s.size());
    return provider ? provider->requestImage(address, original, size) : QImage();
}

std::unique_ptr<QObject> TestCustomPictures::made(const QByteArray &body)
{
    QQmlComponent component(m_engine.get());
    component.setData("import QtQuick\nimport Cadorel\n" + body, QUrl());
    std::unique_ptr<QObject> object(component.create());
    if (!object)
        qWarning() << component.errors();
    return object;
}

void TestCustomPictures::aPictureIsGivenUnderItsAddress()
{
    m_service->setCustomDancingImage(plain(Qt::red, {120, 120}));
    m_service->setCustomBackgroundImage(plain(Qt::blue, {60, 30}));
    const QImage dancing = requested(m_service->customDancingImageSource());
    QCOMPARE(dancing.size(), QSize(50, 50));
    QCOMPARE(dancing.pixelColor(25, 25), QColor(Qt::red));
    const QImage background = requested(m_service->customBackgroundImageSource());
    QCOMPARE(background.size(), QSize(60, 30));
    QCOMPARE(background.pixelColor(25, 25), QColor(Qt::blue));
}

void TestCustomPictures::aPictureIsMadeSmallerNeverLarger_data()
{
    QTest::addColumn<QSize>("asked");
    QTest::addColumn<QSize>("given");
    QTest::newRow("nothing") << QSize() << QSize(400, 200);
    QTest::newRow("smaller") << QSize(100, 100) << QSize(100, 50);
    QTest::newRow("a width") << QSize(100, 0) << QSize(100, 50);
    QTest::newRow("a height") << QSize(0, 20) << QSize(40, 20);
    QTest::newRow("larger") << QSize(4000, 4000) << QSize(400, 200);
    QTest::newRow("next to nothing") << QSize(1, 1) << QSize(1, 1);
}

void TestCustomPictures::aPictureIsMadeSmallerNeverLarger()
{
    QFETCH(const QSize, asked);
    QFETCH(const QSize, given);
    m_service->setCustomBackgroundImage(plain(Qt::blue, {400, 200}));
    QSize original;
    QCOMPARE(requested(m_service->customBackgroundImageSource(), asked, &original).size(), given);
    QCOMPARE(original, QSize(400, 200));
}

void TestCustomPictures::aPictureIsGivenRoundCorners()
{
    QImage wide = plain(Qt::blue, {400, 200});
    for (int y = 0; y < wide.height(); ++y) {
        for (int x = 100; x < 300; ++x)
            wide.setPixelColor(x, y, Qt::red);
    }
    m_service->setCustomBackgroundImage(wide);
    const QString source = m_service->customBackgroundImageSource() + u"&radius=0.25"_s;
    const QImage rounded = requested(source, {80, 80});
    QCOMPARE(rounded.size(), QSize(80, 80));
    // The middle of the picture alone, cut within a quarter of its side.
    for (const QPoint edge : {QPoint(40, 0), QPoint(79, 40), QPoint(40, 79), QPoint(0, 40), QPoint(40, 40)})
        QVERIFY(rounded.pixelColor(edge).red() > 240 && rounded.pixelColor(edge).alpha() > 240);
    for (const QPoint corner : {QPoint(0, 0), QPoint(79, 0), QPoint(0, 79), QPoint(79, 79), QPoint(4, 4)})
        QCOMPARE(rounded.pixelColor(corner).alpha(), 0);
    QCOMPARE(requested(source, {4000, 4000}).size(), QSize(200, 200));
    QCOMPARE(requested(source).size(), QSize(200, 200));
    m_service->clearCustomBackgroundImage();
    QCOMPARE(requested(source, {80, 80}).pixelColor(0, 0).alpha(), 0);
}

void TestCustomPictures::aPictureThatIsGoneIsTransparent()
{
    m_service->setCustomBackgroundImage(plain(Qt::blue, {4, 4}));
    const QString source = m_service->customBackgroundImageSource();
    m_service->clearCustomBackgroundImage();
    const QImage image = requested(source);
    QCOMPARE(image.size(), QSize(1, 1));
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(requested(u"image://custom/other?1"_s).size(), QSize(1, 1));
}

void TestCustomPictures::screensShowTheNewestPicture()
{
    m_service->setCustomDancingImage(plain(Qt::red, {120, 120}));
    const auto item = made("Image { asynchronous: true; source: ThemeService.customDancingImageSource }");
    QVERIFY(item);
    const QString first = item->property("source").toUrl().toString();
    QVERIFY(first.startsWith(u"image://custom/dancing?"_s));
    QTRY_COMPARE(item->property("implicitWidth").toInt(), 50);
    m_service->setCustomDancingImage(plain(Qt::green, {120, 120}));
    QVERIFY(item->property("source").toUrl().toString() != first);
    m_service->clearCustomDancingImage();
    QCOMPARE(item->property("source").toUrl(), QUrl());
}

void TestCustomPictures::screensKnowEveryNameOfTheSettings()
{
    const auto item = made(R"(QtObject {
        property bool isCenter: ThemeService.lyricsAlignment === LyricsAlignments.Type.center
        property bool isBounce: ThemeService.lyricAnimationStyle === LyricAnimationStyles.Type.bounce
        property bool isBlur: ThemeService.nowPlayingBackgroundStyle === NowPlayingBackgroundStyles.Type.blur
        property bool isDefault: ThemeService.selectedCassetteStyle === CassetteStyles.Type.defaultStyle
        property real coverScale: ThemeService.currentCassetteConfig.scale
        property real largestFont: AppearanceOptions.lyricsFontSizes.to
        property bool isPlaced: ThemeService.miniPlayerPosition !== undefined
        property string thirdName: ThemeService.presetColors[2].name
        property color thirdColor: ThemeService.presetColors[2].color
        property int emojis: ThemeService.emojiOptions.length
        function change() {
            ThemeService.setCassetteStyle(CassetteStyles.Type.style2)
            ThemeService.setMiniPlayerPosition(Qt.point(3, 4))
            ThemeService.setCustomBackgroundColor(Qt.rgba(1, 0, 0, 1))
            ThemeService.setPresetColor(2)
        }
    })");
    QVERIFY(item);
    for (const char *name : {"isCenter", "isBounce", "isBlur", "isDefault"})
        QVERIFY2(item->property(name).toBool(), name);
    QCOMPARE(item->property("coverScale").toFloat(), 0.18F);
    QCOMPARE(item->property("largestFont").toDouble(), 28.0);
    QCOMPARE(item->property("thirdName").toString(), u"橙色"_s);
    QCOMPARE(item->property("thirdColor").value<QColor>(), m_service->presetColors().at(2).color);
    QCOMPARE(item->property("emojis").toInt(), 25);
    QVERIFY(!item->property("isPlaced").toBool());
    QVERIFY(QMetaObject::invokeMethod(item.get(), "change"));
    QVERIFY(!item->property("isDefault").toBool());
    QCOMPARE(item->property("coverScale").toFloat(), 0.22F);
    QVERIFY(item->property("isPlaced").toBool());
    QCOMPARE(m_service->miniPlayerPosition(), QPointF(3, 4));
    QCOMPARE(m_service->customBackgroundColor(), QColor(255, 0, 0));
    QCOMPARE(m_service->accentColorName(), u"橙色"_s);
}

void TestCustomPictures::screensKnowTheLooksByName()
{
    const auto item = made(R"(QtObject {
        property bool isClassic: ThemeManager.currentThemeType === ThemeTypes.Type.classic
        property bool isSoft: ThemeManager.currentTheme.themeType === ThemeTypes.Type.neumorphism
        property nowPlayingConfig config: ThemeManager.currentTheme.nowPlayingConfig
        property real coverRadius: config.coverCornerRadius
        property bool isBlur: config.backgroundStyle === NowPlayingConfig.NowPlayingBackgroundStyle.blur
        property bool isSolid: config.backgroundStyle === NowPlayingConfig.NowPlayingBackgroundStyle.solid
        property int clear: NowPlayingConfig.NowPlayingBackgroundStyle.clear
    })");
    QVERIFY(item);
    const auto is = [&item](const char *name) { return item->property(name).toBool(); };
    QVERIFY(is("isClassic") && !is("isSoft") && is("isBlur") && !is("isSolid"));
    QCOMPARE(item->property("coverRadius").toDouble(), 12.0);
    QCOMPARE(item->property("clear").toInt(),
             static_cast<int>(NowPlayingConfig::NowPlayingBackgroundStyle::clear));
    m_manager->switchTo(ThemeType::neumorphism);
    QTRY_VERIFY(is("isSoft"));
    QVERIFY(!is("isClassic") && !is("isBlur") && is("isSolid"));
    QCOMPARE(item->property("coverRadius").toDouble(), 20.0);
}

void TestCustomPictures::screensChooseByTheRowsOfAPicker()
{
    const auto item = made(R"(QtObject {
        property string names: AppearanceOptions.nowPlayingBackgroundStyles.map(row => row.displayName).join(",")
        property string icons: AppearanceOptions.lyricAnimationStyles.map(row => row.icon).join(",")
        property string pictures: AppearanceOptions.cassetteStyles.map(row => row.imageName).join(",")
        function choose(index) {
            ThemeService.setCassetteStyle(AppearanceOptions.cassetteStyles[index].value)
            ThemeService.setLyricsAlignment(AppearanceOptions.lyricsAlignments[0].value)
        }
        function chooseNone() { ThemeService.setCassetteStyle(17) }
    })");
    QVERIFY(item);
    QCOMPARE(item->property("names").toString(), u"封面模糊,纯色,渐变,自定义颜色,自定义图片,透明"_s);
    QVERIFY(item->property("icons").toString().endsWith(u",arrow.down"_s));
    QCOMPARE(item->property("pictures").toString(), u"Cassette,Cassette1,Cassette2,Cassette3,Cassette4,"_s);
    QVERIFY(QMetaObject::invokeMethod(item.get(), "choose", Q_ARG(QVariant, 5)));
    QVERIFY(QMetaObject::invokeMethod(item.get(), "chooseNone"));
    QCOMPARE(m_service->selectedCassetteStyle(), CassetteStyle::none);
    QCOMPARE(m_service->lyricsAlignment(), LyricsAlignment::left);
}

void TestCustomPictures::accentsAreTold()
{
    const auto item = made(R"(Item {
        property color accent: ThemeColor.accent
        property color ink: ThemeColor.accentInk
        property color tint: ThemeColor.accentTint
    })");
    QVERIFY(item);
    const auto color = [&item](const char *name) { return item->property(name).value<QColor>(); };
    QCOMPARE(color("accent"), m_service->accentColor());
    QCOMPARE(color("ink"), QColor(Qt::white));
    constexpr int yellow = 3;
    m_service->setPresetColor(yellow);
    QCOMPARE(color("accent"), m_service->presetColors().at(yellow).color);
    QCOMPARE(color("ink"), QColor(Qt::black));
    const QColor inTheLight = color("tint");
    m_appearance.setColorScheme(ColorScheme::dark);
    QCOMPARE(color("accent"), m_service->accentColor());
    QVERIFY(color("tint").alpha() > inTheLight.alpha());
    m_service->setAccentColor(QColor(1, 2, 3), u"我的"_s);
    QCOMPARE(color("accent"), QColor(1, 2, 3));
}

void TestCustomPictures::everyAccentCanBeReadAndReadOn()
{
    const ThemeColor themeColor(m_service.get(), m_appearance);
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        m_appearance.setColorScheme(scheme);
        const SystemColorTable &table = systemColors(scheme);
        for (int index = 0; index < m_service->presetColors().size(); ++index) {
            m_service->setPresetColor(index);
            QVERIFY(Contrast::ratio(themeColor.accentInk(), themeColor.accentFill()) >= Contrast::legible);
            for (const QColor &ground :
                 {table.background, table.secondaryBackground, table.tertiaryBackground}) {
                const QColor tinted = Contrast::over(themeColor.accentTint(), ground);
                QVERIFY(Contrast::ratio(themeColor.accentText(), ground) >= Contrast::legible);
                QVERIFY(Contrast::ratio(themeColor.accentText(), tinted) >= Contrast::legible);
            }
        }
    }
}

/// By the colour that the documentation of the accent as a text tells to take: that one is for other grounds.
void TestCustomPictures::everyAccentCanBeReadOnALook()
{
    const auto item = made(R"(Item {
        property AppTheme theme: ThemeEnvironment.theme
        property color onBackground: Surfaces.textOn(theme, Surfaces.background(theme), ThemeColor.accent)
        property color onCard: Surfaces.textOn(theme, Surfaces.themedCard(theme), ThemeColor.accent)
        property color onRow: Surfaces.textOn(theme, Surfaces.themedRow(theme), ThemeColor.accent)
    })");
    QVERIFY(item);
    const auto readable = [&item](const char *text, AppTheme &theme, const QColor &fill) {
        return leastRatio(theme, fill, item->property(text).value<QColor>()) >= Contrast::legible;
    };
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        m_appearance.setColorScheme(scheme);
        for (const PresetColor &preset : m_service->presetColors()) {
            m_service->setAccentColor(preset.color, preset.name);
            for (const ThemeType type : allThemeTypes()) {
                AppTheme &theme = ThemeFactory::create(type, scheme);
                QVERIFY(item->setProperty("theme", QVariant::fromValue(&theme)));
                QVERIFY(readable("onBackground", theme, Qt::transparent));
                QVERIFY(readable("onCard", theme, ThemedSurfaces::themedCard(&theme).fill));
                QVERIFY(readable("onRow", theme, ThemedSurfaces::themedRow(&theme).fill));
            }
        }
    }
}

void TestCustomPictures::whatLiesWithinTakesTheAccent()
{
    const auto item = made("ThemedAccentColorModifier { width: 200; height: 50\n"
                           "TextEdit { objectName: \"text\"; selectionColor: palette.highlight; "
                           "selectedTextColor: palette.highlightedText } }");
    QVERIFY(item);
    const auto *text = item->findChild<QObject *>(u"text"_s);
    QVERIFY(text);
    const ThemeColor themeColor(m_service.get(), m_appearance);
    for (const int index : {4, 1}) {
        m_service->setPresetColor(index);
        QCOMPARE(item->property("tint").value<QColor>(), m_service->accentColor());
        QCOMPARE(item->property("accentColor").value<QColor>(), m_service->accentColor());
        QCOMPARE(text->property("selectionColor").value<QColor>(), themeColor.accentFill());
        QCOMPARE(text->property("selectedTextColor").value<QColor>(), themeColor.accentInk());
    }
}

void TestCustomPictures::linksCanBeReadInEveryLook()
{
    const auto item = made("ThemedAccentColorModifier { Text { objectName: \"text\"; text: \"链接\"; "
                           "color: palette.link } }");
    QVERIFY(item);
    const auto *text = item->findChild<QObject *>(u"text"_s);
    QVERIFY(text);
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        m_appearance.setColorScheme(scheme);
        for (const PresetColor &preset : m_service->presetColors()) {
            m_service->setAccentColor(preset.color, preset.name);
            for (const ThemeType type : allThemeTypes()) {
                AppTheme &theme = ThemeFactory::create(type, scheme);
                QVERIFY(item->setProperty("theme", QVariant::fromValue(&theme)));
                const QColor link = text->property("color").value<QColor>();
                for (const QColor &fill : {QColor(Qt::transparent), ThemedSurfaces::themedCard(&theme).fill,
                                           ThemedSurfaces::themedRow(&theme).fill})
                    QVERIFY(leastRatio(theme, fill, link) >= Contrast::legible);
            }
        }
    }
}

void TestCustomPictures::theAccentTakesTheRoomOfWhatLiesWithin()
{
    const auto column = made(R"(Column {
        ThemedAccentColorModifier { objectName: "within"; Item { implicitWidth: 120; implicitHeight: 30 } }
        ThemedAccentColorModifier { width: 200; height: 50; Item { objectName: "filling"; anchors.fill: parent } }
    })");
    QVERIFY(column);
    const auto *within = column->findChild<QObject *>(u"within"_s);
    QCOMPARE(within->property("width").toDouble(), 120.0);
    QCOMPARE(within->property("height").toDouble(), 30.0);
    const auto *filling = column->findChild<QObject *>(u"filling"_s);
    QCOMPARE(filling->property("width").toDouble(), 200.0);
    QCOMPARE(filling->property("height").toDouble(), 50.0);
    QCOMPARE(column->property("implicitHeight").toDouble(), 80.0);
}

void TestCustomPictures::everyColorOfTheTableHasItsName()
{
    const auto item = made("QtObject { property QtObject colors: SystemColors }");
    QVERIFY(item);
    const auto *colors = item->property("colors").value<QObject *>();
    QVERIFY(colors);
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        m_appearance.setColorScheme(scheme);
        const QMetaObject &table = SystemColorTable::staticMetaObject;
        QVERIFY(table.propertyCount() > 0);
        for (int i = 0; i < table.propertyCount(); ++i) {
            const QMetaProperty property = table.property(i);
            const QVariant given = colors->property(property.name());
            QVERIFY2(given.isValid(), property.name());
            QCOMPARE(given.value<QColor>(), property.readOnGadget(&systemColors(scheme)).value<QColor>());
        }
    }
}

void TestCustomPictures::aChangeOfSchemeIsToldOnce()
{
    const ThemeColor themeColor(m_service.get(), m_appearance);
    const QSignalSpy changes(&themeColor, &ThemeColor::accentChanged);
    m_appearance.setColorScheme(ColorScheme::dark);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(themeColor.accent(), m_service->accentColor());
    m_service->setPresetColor(m_service->currentColorIndex());
    QCOMPARE(changes.count(), 1);
}

void TestCustomPictures::withoutAServiceTheAccentIsTheFirst()
{
    const ThemeColor themeColor(nullptr, m_appearance);
    const QSignalSpy changes(&themeColor, &ThemeColor::accentChanged);
    QCOMPARE(themeColor.accent(), AppearanceOptions::presetColors(ColorScheme::light).at(0).color);
    m_appearance.setColorScheme(ColorScheme::dark);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(themeColor.accent(), AppearanceOptions::presetColors(ColorScheme::dark).at(0).color);
}

QTEST_MAIN(TestCustomPictures)
#include "tst_custom_pictures.moc"
