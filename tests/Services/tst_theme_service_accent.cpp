// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AppearanceBench.h"

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestThemeServiceAccent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void presetColorsAreInTheirOrder();
    void emojisAreInTheirOrder();
    void anAccentIsStoredByItsNameAlone();
    void presetBeyondTheTableDoesNothing_data();
    void presetBeyondTheTableDoesNothing();
    void anUnknownAccentNameChangesNothing_data();
    void anUnknownAccentNameChangesNothing();
    void anOwnAccentEndsWithTheProcess();
    void anOwnColorUnderAPresetsNameEndsWithTheProcess();
    void namedAccentsFollowTheScheme();
    void ownAccentsDoNotFollowTheScheme();
    void anInvalidAccentIsNone();

private:
    std::unique_ptr<AppearanceBench> m_bench;
};

void TestThemeServiceAccent::init()
{
    m_bench = std::make_unique<AppearanceBench>();
}

void TestThemeServiceAccent::presetColorsAreInTheirOrder()
{
    const QList<PresetColor> expected{
        {u"粉红"_s, light().pink},   {u"红色"_s, light().red},   {u"橙色"_s, light().orange},
        {u"黄色"_s, light().yellow}, {u"绿色"_s, light().green}, {u"薄荷"_s, light().mint},
        {u"青色"_s, light().teal},   {u"蓝色"_s, light().blue},  {u"靛蓝"_s, light().indigo},
        {u"紫色"_s, light().purple}, {u"系统"_s, light().accent}};
    QVERIFY(m_bench->start().presetColors() == expected);
}

void TestThemeServiceAccent::emojisAreInTheirOrder()
{
    QCOMPARE(ThemeService::emojiOptions().join(u' '),
             u"🕺 💃 🎵 🎶 🎧 🎤 🎸 🥁 🎹 🎷 🪇 👾 🤖 👻 🐱 🐶 🦄 🌟 ⭐️ ✨ ❤️ 🔥 💫 🎉 🐷"_s);
    QCOMPARE(m_bench->start().property("emojiOptions").toStringList().size(), 25);
}

void TestThemeServiceAccent::anAccentIsStoredByItsNameAlone()
{
    ThemeService &service = m_bench->start();
    const auto colors = changesOf(service, u"accentColor"_s);
    const auto names = changesOf(service, u"accentColorName"_s);
    service.setPresetColor(5);
    QCOMPARE(service.accentColor(), light().mint);
    QCOMPARE(service.accentColorName(), u"薄荷"_s);
    QCOMPARE(service.currentColorIndex(), 5);
    service.setPresetColor(5);
    QCOMPARE(colors->count(), 1);
    QCOMPARE(names->count(), 1);
    QCOMPARE(m_bench->preferences.stringValue(u"appAccentColorName"_s), u"薄荷"_s);
    QVERIFY(!m_bench->preferences.contains(u"appAccentColor"_s));
    QCOMPARE(m_bench->start().accentColor(), light().mint);
    QCOMPARE(m_bench->service->currentColorIndex(), 5);
}

void TestThemeServiceAccent::presetBeyondTheTableDoesNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("after the last") << 11;
    QTest::newRow("before the first") << -1;
    QTest::newRow("the largest") << std::numeric_limits<int>::max();
}

void TestThemeServiceAccent::presetBeyondTheTableDoesNothing()
{
    QFETCH(const int, index);
    m_bench->start().setPresetColor(index);
    QCOMPARE(m_bench->service->currentColorIndex(), 0);
    QCOMPARE(m_bench->preferences.writes(), 0);
}

void TestThemeServiceAccent::anUnknownAccentNameChangesNothing_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("unknown") << QVariant(u"彩虹"_s);
    QTest::newRow("empty") << QVariant(u""_s);
    QTest::newRow("another type") << QVariant(3.0);
}

void TestThemeServiceAccent::anUnknownAccentNameChangesNothing()
{
    QFETCH(const QVariant, stored);
    if (stored.metaType() == QMetaType::fromType<double>())
        m_bench->preferences.setDouble(u"appAccentColorName"_s, stored.toDouble());
    else
        m_bench->preferences.setString(u"appAccentColorName"_s, stored.toString());
    QCOMPARE(m_bench->start().accentColorName(), u"粉红"_s);
    QCOMPARE(m_bench->service->accentColor(), light().pink);
}

void TestThemeServiceAccent::anOwnAccentEndsWithTheProcess()
{
    ThemeService &service = m_bench->start();
    service.setPresetColor(4);
    service.setAccentColor(QColor(1, 2, 3), u"我的"_s);
    QCOMPARE(service.accentColor(), QColor(1, 2, 3));
    QCOMPARE(service.accentColorName(), u"我的"_s);
    QCOMPARE(service.currentColorIndex(), 0);
    QCOMPARE(m_bench->preferences.stringValue(u"appAccentColorName"_s), u"我的"_s);
    QCOMPARE(m_bench->start().accentColor(), light().pink);
}

void TestThemeServiceAccent::anOwnColorUnderAPresetsNameEndsWithTheProcess()
{
    m_bench->start().setAccentColor(QColor(1, 2, 3), u"绿色"_s);
    QCOMPARE(m_bench->service->accentColor(), QColor(1, 2, 3));
    QCOMPARE(m_bench->start().accentColor(), light().green);
}

void TestThemeServiceAccent::namedAccentsFollowTheScheme()
{
    ThemeService &service = m_bench->start();
    service.setPresetColor(10);
    const auto accents = changesOf(service, u"accentColor"_s);
    const auto names = changesOf(service, u"accentColorName"_s);
    const auto presets = changesOf(service, u"presetColors"_s);
    const auto grounds = changesOf(service, u"customBackgroundColor"_s);
    m_bench->appearance.setColorScheme(ColorScheme::dark);
    QCOMPARE(service.accentColor(), dark().accent);
    QCOMPARE(service.accentColorName(), u"系统"_s);
    QCOMPARE(service.presetColors().at(1).color, dark().red);
    QCOMPARE(service.customBackgroundColor(), dark().purple);
    for (const QSignalSpy *spy : {accents.get(), presets.get(), grounds.get()})
        QCOMPARE(spy->count(), 1);
    QCOMPARE(names->count(), 0);
    // The desktop may tell what was known.
    m_bench->appearance.setColorScheme(ColorScheme::dark);
    QCOMPARE(accents->count() + presets->count() + grounds->count(), 3);
    // A preset that is chosen in the dark is one in the light.
    service.setPresetColor(1);
    m_bench->appearance.setColorScheme(ColorScheme::light);
    QCOMPARE(service.accentColor(), light().red);
}

void TestThemeServiceAccent::ownAccentsDoNotFollowTheScheme()
{
    ThemeService &service = m_bench->start();
    service.setAccentColor(QColor(1, 2, 3), u"我的"_s);
    service.setCustomBackgroundColor(QColor(4, 5, 6));
    const auto accents = changesOf(service, u"accentColor"_s);
    const auto grounds = changesOf(service, u"customBackgroundColor"_s);
    m_bench->appearance.setColorScheme(ColorScheme::dark);
    QCOMPARE(service.accentColor(), QColor(1, 2, 3));
    QCOMPARE(service.customBackgroundColor(), QColor(4, 5, 6));
    QCOMPARE(accents->count() + grounds->count(), 0);
}

void TestThemeServiceAccent::anInvalidAccentIsNone()
{
    m_bench->start().setAccentColor(QColor(), u"绿色"_s);
    QCOMPARE(m_bench->service->accentColorName(), u"粉红"_s);
    QCOMPARE(m_bench->preferences.writes(), 0);
}

QTEST_GUILESS_MAIN(TestThemeServiceAccent)
#include "tst_theme_service_accent.moc"
