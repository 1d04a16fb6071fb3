// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/EqualizerPreset.h"

#include <QTest>

#include <algorithm>

using namespace cadorel;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(cadorel::EqualizerPreset)
Q_DECLARE_METATYPE(cadorel::EqualizerGains)

class EqualizerPresetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void presetHasItsTextsAndGains_data();
    void presetHasItsTextsAndGains();
    void presetsAreListedInTheirOrder();
    void rawValuesLeadBack();
    void unknownTextIsNoPreset_data();
    void unknownTextIsNoPreset();
};

void EqualizerPresetTest::presetHasItsTextsAndGains_data()
{
    QTest::addColumn<EqualizerPreset>("preset");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("symbolName");
    QTest::addColumn<QString>("description");
    QTest::addColumn<EqualizerGains>("gains");
    const auto row = [](EqualizerPreset preset, const char *raw, const QString &name, const QString &symbol,
                        const QString &description, const EqualizerGains &gains) {
        QTest::newRow(raw) << preset << QString::fromLatin1(raw) << name << symbol << description << gains;
    };
    using enum EqualizerPreset;
    row(flat, "flat", u"平坦"_s, u"waveform"_s, u"无音效处理"_s, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    row(rock, "rock", u"摇滚"_s, u"guitars"_s, u"增强中高频，适合摇滚乐"_s, {5, 4, 3, 1, -1, 0, 2, 3, 4, 4});
    row(pop, "pop", u"流行"_s, u"music.mic"_s, u"温暖的中频，适合流行音乐"_s,
        {-1, 1, 3, 4, 3, 1, 0, 1, 2, 2});
    row(jazz, "jazz", u"爵士"_s, u"music.quarternote.3"_s, u"平滑的高频，适合爵士乐"_s,
        {3, 2, 1, 2, -2, -2, 0, 2, 3, 4});
    row(classical, "classical", u"古典"_s, u"pianokeys"_s, u"宽广的动态范围，适合古典乐"_s,
        {4, 3, 2, 1, -1, -1, 0, 2, 3, 4});
    row(electronic, "electronic", u"电子"_s, u"bolt.fill"_s, u"强劲的低音和高音，适合电子乐"_s,
        {5, 4, 2, 0, -2, 2, 1, 3, 4, 5});
    row(hiphop, "hiphop", u"嘻哈"_s, u"headphones"_s, u"加强低音，适合嘻哈音乐"_s,
        {5, 5, 3, 1, -1, -1, 1, 0, 2, 3});
    row(rnb, "rnb", u"R&B"_s, u"heart.fill"_s, u"温暖饱满，适合R&B音乐"_s, {3, 6, 4, 1, -2, -1, 2, 3, 3, 2});
    row(acoustic, "acoustic", u"原声"_s, u"music.note"_s, u"自然清晰，适合原声音乐"_s,
        {4, 3, 2, 1, 1, 1, 2, 2, 3, 2});
    row(bass, "bass", u"重低音"_s, u"speaker.wave.3.fill"_s, u"显著增强低音效果"_s,
        {6, 5, 4, 2, 0, -1, -1, 0, 0, 0});
    row(treble, "treble", u"高音增强"_s, u"waveform.path.ecg"_s, u"增强高音清晰度"_s,
        {0, 0, 0, 0, 0, 1, 2, 4, 5, 6});
    row(vocal, "vocal", u"人声"_s, u"person.wave.2"_s, u"突出人声，适合有声读物"_s,
        {-2, -1, 0, 2, 4, 4, 3, 1, 0, -1});
    row(lateNight, "lateNight", u"深夜模式"_s, u"moon.fill"_s, u"降低高频，夜间听更舒适"_s,
        {4, 3, 2, 1, 0, 0, -1, -2, -3, -4});
    row(custom, "custom", u"自定义"_s, u"slider.horizontal.3"_s, u"自定义调整"_s,
        {0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
}

void EqualizerPresetTest::presetHasItsTextsAndGains()
{
    QFETCH(EqualizerPreset, preset);
    QTEST(rawValue(preset), "raw");
    QTEST(displayName(preset), "name");
    QTEST(symbol(preset), "symbolName");
    QTEST(descriptionText(preset), "description");
    QFETCH(EqualizerGains, gains);
    QCOMPARE(bandValues(preset), gains);
}

void EqualizerPresetTest::presetsAreListedInTheirOrder()
{
    QStringList listed;
    for (const EqualizerPreset preset : allEqualizerPresets())
        listed.append(rawValue(preset));
    QCOMPARE(listed, (QStringList{u"flat"_s, u"rock"_s, u"pop"_s, u"jazz"_s, u"classical"_s, u"electronic"_s,
                                  u"hiphop"_s, u"rnb"_s, u"acoustic"_s, u"bass"_s, u"treble"_s, u"vocal"_s,
                                  u"lateNight"_s, u"custom"_s}));
}

void EqualizerPresetTest::rawValuesLeadBack()
{
    for (const EqualizerPreset preset : allEqualizerPresets())
        QCOMPARE(equalizerPresetOf(rawValue(preset)), std::optional(preset));
}

void EqualizerPresetTest::unknownTextIsNoPreset_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("another") << u"metal"_s;
    QTest::newRow("other case") << u"Rock"_s;
    QTest::newRow("its name") << u"摇滚"_s;
}

void EqualizerPresetTest::unknownTextIsNoPreset()
{
    QFETCH(QString, text);
    QVERIFY(!equalizerPresetOf(text));
}

QTEST_GUILESS_MAIN(EqualizerPresetTest)
#include "tst_equalizer_preset.moc"
