// SPDX-License-Identifier: GPL-3.0-or-later
// What dances, where the small player stands, and the cassettes around the cover.
#include "Services/AppearanceBench.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestThemeServicePlayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void anEmojiEndsTheUseOfThePicture();
    void storedEmojisAreTakenAsTheyAre();

    void theMiniPlayerHasNoPlaceUntilItIsMoved();
    void halfAPositionIsNone_data();
    void halfAPositionIsNone();
    void theMiniPlayersPositionIsKept();
    void aPositionThatIsNoneChangesNothing();

    void cassettesAreAdjustedEachByItself();
    void cassetteFieldsAreClamped_data();
    void cassetteFieldsAreClamped();
    void defaultsOfCassettesAreNeverClamped();
    void configsAreTakenAsTheyStand();
    void damagedCassetteConfigsAreNone();
    void aConfigThatIsNoneChangesNothing();

private:
    std::unique_ptr<AppearanceBench> m_bench;
};

void TestThemeServicePlayer::init()
{
    m_bench = std::make_unique<AppearanceBench>();
}

// MARK: emoji

void TestThemeServicePlayer::anEmojiEndsTheUseOfThePicture()
{
    ThemeService &service = m_bench->start();
    QImage picture(10, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    service.setCustomDancingImage(picture);
    QVERIFY(service.useCustomImage());
    const auto emojis = changesOf(service, u"dancingEmoji"_s);
    const auto uses = changesOf(service, u"useCustomImage"_s);
    const auto pictures = changesOf(service, u"customDancingImageSource"_s);
    service.setDancingEmoji(u"🐷"_s);
    service.setDancingEmoji(u"🐷"_s);
    QCOMPARE(emojis->count(), 1);
    QCOMPARE(uses->count(), 1);
    QCOMPARE(pictures->count(), 0);
    QCOMPARE(m_bench->preferences.stringValue(u"dancingEmoji"_s), u"🐷"_s);
    QCOMPARE(m_bench->preferences.boolValue(u"useCustomDancingImage"_s), false);
    QVERIFY(m_bench->preferences.contains(u"customDancingImage"_s));
    m_bench->start();
    QCOMPARE(m_bench->service->dancingEmoji(), u"🐷"_s);
    QVERIFY(!m_bench->service->useCustomImage());
    QVERIFY(!m_bench->service->customDancingImage().isNull());
}

void TestThemeServicePlayer::storedEmojisAreTakenAsTheyAre()
{
    m_bench->preferences.setString(u"dancingEmoji"_s, u"🐙"_s);
    QCOMPARE(m_bench->start().dancingEmoji(), u"🐙"_s);
    m_bench->preferences.setBool(u"dancingEmoji"_s, true);
    QCOMPARE(m_bench->start().dancingEmoji(), u"🕺"_s);
}

// MARK: mini player

void TestThemeServicePlayer::theMiniPlayerHasNoPlaceUntilItIsMoved()
{
    m_bench->start();
    QVERIFY(!m_bench->service->miniPlayerPosition());
    QVERIFY(!m_bench->property(u"miniPlayerPosition"_s).isValid());
}

void TestThemeServicePlayer::halfAPositionIsNone_data()
{
    QTest::addColumn<QString>("there");
    QTest::addColumn<QString>("other");
    QTest::newRow("X alone") << u"miniPlayerPositionX"_s << u"miniPlayerPositionY"_s;
    QTest::newRow("Y alone") << u"miniPlayerPositionY"_s << u"miniPlayerPositionX"_s;
}

void TestThemeServicePlayer::halfAPositionIsNone()
{
    QFETCH(const QString, there);
    QFETCH(const QString, other);
    m_bench->preferences.setDouble(there, 40);
    QVERIFY(!m_bench->start().miniPlayerPosition());
    m_bench->preferences.setString(other, u"40"_s);
    QVERIFY(!m_bench->start().miniPlayerPosition());
    m_bench->preferences.setInt(other, -7000);
    QVERIFY(m_bench->start().miniPlayerPosition());
}

void TestThemeServicePlayer::theMiniPlayersPositionIsKept()
{
    ThemeService &service = m_bench->start();
    const auto changes = changesOf(service, u"miniPlayerPosition"_s);
    service.setMiniPlayerPosition({120.5, 640.25});
    service.setMiniPlayerPosition({120.5, 640.25});
    QCOMPARE(changes->count(), 1);
    QCOMPARE(m_bench->preferences.doubleValue(u"miniPlayerPositionX"_s), 120.5);
    QCOMPARE(m_bench->preferences.doubleValue(u"miniPlayerPositionY"_s), 640.25);
    QCOMPARE(m_bench->property(u"miniPlayerPosition"_s), QVariant(QPointF(120.5, 640.25)));
    ThemeService &later = m_bench->start();
    QCOMPARE(later.miniPlayerPosition(), QPointF(120.5, 640.25));
    const auto laterChanges = changesOf(later, u"miniPlayerPosition"_s);
    later.clearMiniPlayerPosition();
    later.clearMiniPlayerPosition();
    QCOMPARE(laterChanges->count(), 1);
    QVERIFY(!later.miniPlayerPosition());
    QVERIFY(!m_bench->preferences.contains(u"miniPlayerPositionX"_s));
    QVERIFY(!m_bench->preferences.contains(u"miniPlayerPositionY"_s));
}

void TestThemeServicePlayer::aPositionThatIsNoneChangesNothing()
{
    ThemeService &service = m_bench->start();
    service.setMiniPlayerPosition({1, 2});
    service.setMiniPlayerPosition({notANumber, 2});
    service.setMiniPlayerPosition({1, infinity});
    QCOMPARE(service.miniPlayerPosition(), QPointF(1, 2));
    QCOMPARE(m_bench->preferences.doubleValue(u"miniPlayerPositionY"_s), 2);
}

// MARK: cassettes

void TestThemeServicePlayer::cassettesAreAdjustedEachByItself()
{
    ThemeService &service = m_bench->start();
    const auto styles = changesOf(service, u"selectedCassetteStyle"_s);
    const auto configs = changesOf(service, u"currentCassetteConfig"_s);
    const QSignalSpy maps(&service, &ThemeService::cassetteConfigsChanged);
    service.setCassetteStyle(CassetteStyle::style3);
    service.setCassetteOffsetX(0.25);
    service.setCassetteOffsetX(0.25);
    QVERIFY((service.getCurrentCassetteConfig() == CassetteConfig{0.24F, 0.25F, -0.12F}));
    service.setCassetteStyle(CassetteStyle::style1);
    QVERIFY((service.getCurrentCassetteConfig() == CassetteConfig{0.25F, 0, -0.15F}));
    QCOMPARE(styles->count(), 2);
    QCOMPARE(configs->count(), 3);
    QCOMPARE(maps.count(), 1);
    QCOMPARE(m_bench->preferences.dataValue(u"cassetteConfigs"_s),
             R"({"style3":{"offsetX":0.25,"offsetY":-0.12,"scale":0.24}})");

    ThemeService &later = m_bench->start();
    QCOMPARE(later.selectedCassetteStyle(), CassetteStyle::style1);
    later.setCassetteStyle(CassetteStyle::style3);
    QCOMPARE(later.getCurrentCassetteConfig().offsetX, 0.25F);
    later.resetCurrentCassetteConfig();
    QVERIFY(later.getCurrentCassetteConfig() == defaultConfig(CassetteStyle::style3));
    QCOMPARE(m_bench->preferences.dataValue(u"cassetteConfigs"_s), "{}");
}

void TestThemeServicePlayer::cassetteFieldsAreClamped_data()
{
    QTest::addColumn<QByteArray>("operation");
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<double>("asked");
    QTest::addColumn<float>("got");
    const QByteArray scale = "setCassetteScale";
    QTest::newRow("too small") << scale << QByteArray("scale") << 0.05 << 0.1F;
    QTest::newRow("too large") << scale << QByteArray("scale") << 0.9 << 0.5F;
    QTest::newRow("endless") << scale << QByteArray("scale") << infinity << 0.5F;
    QTest::newRow("in between") << scale << QByteArray("scale") << 0.3 << 0.3F;
    for (const QByteArray axis : {"X", "Y"}) {
        const QByteArray operation = "setCassetteOffset" + axis;
        const QByteArray field = "offset" + axis;
        QTest::addRow("%s too low", axis.constData()) << operation << field << -0.7 << -0.5F;
        QTest::addRow("%s too high", axis.constData()) << operation << field << 0.51 << 0.5F;
        QTest::addRow("%s endless", axis.constData()) << operation << field << -infinity << -0.5F;
        QTest::addRow("%s in between", axis.constData()) << operation << field << 0.125 << 0.125F;
    }
}

void TestThemeServicePlayer::cassetteFieldsAreClamped()
{
    QFETCH(const QByteArray, operation);
    QFETCH(const QByteArray, field);
    QFETCH(const double, asked);
    QFETCH(const float, got);
    ThemeService &service = m_bench->start();
    QVERIFY(QMetaObject::invokeMethod(&service, operation.constData(), Q_ARG(double, asked)));
    const auto value = [&field](const CassetteConfig &config) {
        const QMetaObject &type = CassetteConfig::staticMetaObject;
        return type.property(type.indexOfProperty(field.constData())).readOnGadget(&config).toFloat();
    };
    QCOMPARE(value(service.getCurrentCassetteConfig()), got);
    QCOMPARE(value(m_bench->start().getCurrentCassetteConfig()), got);
}

void TestThemeServicePlayer::defaultsOfCassettesAreNeverClamped()
{
    ThemeService &service = m_bench->start();
    service.setCassetteStyle(CassetteStyle::none);
    QCOMPARE(service.getCurrentCassetteConfig().scale, 1.0F);
    service.setCassetteOffsetY(0.1);
    QVERIFY((service.getCurrentCassetteConfig() == CassetteConfig{1, 0, 0.1F}));
    QVERIFY((m_bench->start().getCurrentCassetteConfig() == CassetteConfig{1, 0, 0.1F}));
    m_bench->service->setCassetteScale(1);
    QVERIFY((m_bench->service->getCurrentCassetteConfig() == CassetteConfig{0.5F, 0, 0.1F}));
}

void TestThemeServicePlayer::configsAreTakenAsTheyStand()
{
    m_bench->start().setCassetteConfig({7, -8, 9});
    QVERIFY((m_bench->start().getCurrentCassetteConfig() == CassetteConfig{7, -8, 9}));
}

void TestThemeServicePlayer::damagedCassetteConfigsAreNone()
{
    m_bench->preferences.setData(u"cassetteConfigs"_s, R"({"default":{"scale":0.3,"offsetX":0}})");
    QVERIFY(m_bench->start().cassetteConfigs().isEmpty());
    m_bench->preferences.setString(u"cassetteConfigs"_s, u"{}"_s);
    QVERIFY(m_bench->start().cassetteConfigs().isEmpty());
    m_bench->service->setCassetteScale(0.3);
    QCOMPARE(m_bench->start().getCurrentCassetteConfig().scale, 0.3F);
}

void TestThemeServicePlayer::aConfigThatIsNoneChangesNothing()
{
    ThemeService &service = m_bench->start();
    service.setCassetteScale(notANumber);
    service.setCassetteConfig({0.3F, static_cast<float>(infinity), 0});
    QVERIFY(service.getCurrentCassetteConfig() == CassetteConfig());
    QCOMPARE(m_bench->preferences.writes(), 0);
}

QTEST_GUILESS_MAIN(TestThemeServicePlayer)
#include "tst_theme_service_player.moc"
