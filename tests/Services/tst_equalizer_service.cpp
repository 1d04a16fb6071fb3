// SPDX-License-Identifier: GPL-3.0-or-later
// The equalizer's settings: what reacts to what, and what is kept.
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeAudioEngine.h"
#include "Fakes/FakePreferences.h"
#include "Platform/Sql/SqlitePreferences.h"
#include "Services/EqualizerService.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(cadorel::EqualizerGains)
Q_DECLARE_METATYPE(cadorel::EqualizerPreset)

namespace {

constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
constexpr EqualizerGains flatGains{};

/// The service over an engine and preferences that the test holds.
struct Bench
{
    ConsoleLines console;
    FakePreferences preferences;
    FakeAudioEngine *engine = nullptr;
    std::unique_ptr<EqualizerService> service;

    EqualizerService &start()
    {
        auto made = std::make_unique<FakeAudioEngine>();
        engine = made.get();
        service = std::make_unique<EqualizerService>(preferences, std::move(made));
        return *service;
    }
    EqualizerService &startWithoutEngine()
    {
        service = std::make_unique<EqualizerService>(preferences, nullptr);
        return *service;
    }
    void store(bool enabled, const QString &preset, const QStringList &bands, double preamp)
    {
        preferences.setBool(u"equalizer_enabled"_s, enabled);
        preferences.setString(u"equalizer_preset"_s, preset);
        preferences.setStrings(u"equalizer_bands"_s, bands);
        preferences.setDouble(u"equalizer_preamp"_s, preamp);
    }
};

QStringList texts(const EqualizerGains &gains)
{
    QStringList list;
    for (const float gain : gains)
        list.append(QString::number(gain));
    return list;
}

} // namespace

class EqualizerServiceTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void startsSwitchedOffAndFlat();
    void bandsHaveTheirFrequenciesAndLabels();
    void setUpPrintsItsLineAndNeutralBands();
    void switchingOnSavesThenReachesTheEngine();
    void switchingOffIsNeutralAndKeepsTheSettings();
    void presetTakesItsGains();
    void movingOneSliderMakesThePresetCustomAndKeepsTheOthers();
    void choosingCustomKeepsTheGains();
    void listOfGainsMakesThePresetCustom();
    void applyPresetLeavesTheNameOfThePreset();
    void preampReachesTheEngineWhileSwitchedOn();
    void resetIsFlatWithoutPreamp();
    void bandIsClamped_data();
    void bandIsClamped();
    void bandOutOfRangeIsIgnored_data();
    void bandOutOfRangeIsIgnored();
    void whatIsNoNumberIsIgnored();
    void signalsTellChangesAlone();
    void logLines();
    void settingsComeBack();
    void settingsComeBackFromTheRealStore();
    void readingWritesNothingAndReactsToNothing();
    void everyGainComesBackExactly();
    void storedGainsBeyondTheLimitsAreReadAsTheyAre();
    void damagedStore_data();
    void damagedStore();
    void withoutAnEngineTheSettingsLive();
};

void EqualizerServiceTest::startsSwitchedOffAndFlat()
{
    Bench bench;
    const EqualizerService &service = bench.start();
    QVERIFY(!service.isEnabled());
    QCOMPARE(service.currentPreset(), EqualizerPreset::flat);
    QCOMPARE(service.bands(), flatGains);
    QCOMPARE(service.preampGain(), 0.0F);
    QVERIFY(!service.isPlaying());
    QVERIFY(!service.isEngineRunning());
    QCOMPARE(service.currentTime(), 0.0);
    QCOMPARE(service.duration(), 0.0);
}

void EqualizerServiceTest::bandsHaveTheirFrequenciesAndLabels()
{
    QCOMPARE(EqualizerService::frequencies,
             (EqualizerGains{32, 64, 125, 250, 500, 1000, 2000, 4000, 8000, 16000}));
    const QStringList labels(EqualizerService::frequencyLabels.begin(),
                             EqualizerService::frequencyLabels.end());
    QCOMPARE(labels, (QStringList{u"32"_s, u"64"_s, u"125"_s, u"250"_s, u"500"_s, u"1K"_s, u"2K"_s, u"4K"_s,
                                  u"8K"_s, u"16K"_s}));
}

void EqualizerServiceTest::setUpPrintsItsLineAndNeutralBands()
{
    Bench bench;
    bench.start();
    QCOMPARE(bench.console.take(), QStringList{u"🎛️ 均衡器: 音频引擎初始化完成"_s});
    for (int index = 0; index < equalizerBandCount; ++index) {
        const double frequency = EqualizerService::frequencies.at(static_cast<size_t>(index));
        QCOMPARE(bench.engine->equalizer().band(index),
                 (EqualizerBand{.frequency = frequency, .bandwidth = 1.0, .gain = 0, .bypass = false}));
    }
}

void EqualizerServiceTest::switchingOnSavesThenReachesTheEngine()
{
    Bench bench;
    EqualizerService &service = bench.start();
    service.setBands({1, 2, 3, 4, 5, -1, -2, -3, -4, -5});
    service.setPreampGain(-6);
    for (int index = 0; index < equalizerBandCount; ++index)
        QVERIFY(bench.engine->equalizer().band(index).bypass);
    bool wasSaved = false;
    bench.engine->onGlobalGain = [&] {
        wasSaved = bench.preferences.boolValue(u"equalizer_enabled"_s) == true;
    };
    service.setEnabled(true);
    QVERIFY(wasSaved);
    QCOMPARE(bench.engine->equalizer().globalGain(), -6.0);
    for (int index = 0; index < equalizerBandCount; ++index) {
        const EqualizerBand band = bench.engine->equalizer().band(index);
        QCOMPARE(band.gain, double(service.getBand(index)));
        QCOMPARE(band.frequency, double(EqualizerService::frequencies.at(static_cast<size_t>(index))));
        QCOMPARE(band.bandwidth, 1.0);
        QVERIFY(!band.bypass);
    }
}

void EqualizerServiceTest::switchingOffIsNeutralAndKeepsTheSettings()
{
    Bench bench;
    EqualizerService &service = bench.start();
    service.setEnabled(true);
    service.setCurrentPreset(EqualizerPreset::rock);
    service.setPreampGain(3);
    service.setEnabled(false);
    QCOMPARE(bench.engine->equalizer().globalGain(), 0.0);
    for (int index = 0; index < equalizerBandCount; ++index) {
        QCOMPARE(bench.engine->equalizer().band(index).gain, 0.0);
        QVERIFY(bench.engine->equalizer().band(index).bypass);
    }
    QCOMPARE(service.currentPreset(), EqualizerPreset::rock);
    QCOMPARE(service.bands(), bandValues(EqualizerPreset::rock));
    QCOMPARE(service.preampGain(), 3.0F);
    QCOMPARE(bench.preferences.stringValue(u"equalizer_preset"_s), std::optional(u"rock"_s));
}

void EqualizerServiceTest::presetTakesItsGains()
{
    Bench bench;
    EqualizerService &service = bench.start();
    for (const EqualizerPreset preset : allEqualizerPresets()) {
        if (preset == EqualizerPreset::custom)
            continue;
        service.setCurrentPreset(preset);
        QCOMPARE(service.currentPreset(), preset);
        QCOMPARE(service.bands(), bandValues(preset));
    }
}

void EqualizerServiceTest::movingOneSliderMakesThePresetCustomAndKeepsTheOthers()
{
    Bench bench;
    EqualizerService &service = bench.start();
    service.setCurrentPreset(EqualizerPreset::electronic);
    service.setBand(4, 6.5F);
    QCOMPARE(service.currentPreset(), EqualizerPreset::custom);
    QCOMPARE(service.bands(), (EqualizerGains{5, 4, 2, 0, 6.5F, 2, 1, 3, 4, 5}));
    QCOMPARE(service.getBand(4), 6.5F);
    QCOMPARE(bench.preferences.stringValue(u"equalizer_preset"_s), std::optional(u"custom"_s));
}

void EqualizerServiceTest::choosingCustomKeepsTheGains()
{
    Bench bench;
    EqualizerService &service = bench.start();
    service.setCurrentPreset(EqualizerPreset::jazz);
    service.setCurrentPreset(EqualizerPreset::custom);
    QCOMPARE(service.currentPreset(), EqualizerPreset::custom);
    QCOMPARE(service.bands(), bandValues(EqualizerPreset::jazz));
    service.applyPreset(EqualizerPreset::custom);
    QCOMPARE(service.bands(), bandValues(EqualizerPreset::jazz));
}

void EqualizerServiceTest::listOfGainsMakesThePresetCustom()
{
    Bench bench;
    EqualizerService &service = bench.start();
    const EqualizerGains gains{-12, 12, 0.1F, 0, 0, 0, 0, 0, 0, -0.5F};
    service.setBands(gains);
    QCOMPARE(service.bands(), gains);
    QCOMPARE(service.currentPreset(), EqualizerPreset::custom);
}

void EqualizerServiceTest::applyPresetLeavesTheNameOfThePreset()
{
    Bench bench;
    EqualizerService &service = bench.start();
    service.setCurrentPreset(EqualizerPreset::pop);
    service.applyPreset(EqualizerPreset::bass);
    QCOMPARE(service.bands(), bandValues(EqualizerPreset::bass));
    QCOMPARE(service.currentPreset(), EqualizerPreset::pop);
    // The flag is gone again.
    service.setBand(0, 1);
    QCOMPARE(service.currentPreset(), EqualizerPreset::custom);
}

void EqualizerServiceTest::preampReachesTheEngineWhileSwitchedOn()
{
    Bench bench;
    EqualizerService &service = bench.start();
    service.setPreampGain(4);
    QCOMPARE(bench.engine->equalizer().globalGain(), 0.0);
    service.setEnabled(true);
    QCOMPARE(bench.engine->equalizer().globalGain(), 4.0);
    service.setPreampGain(-2.5F);
    QCOMPARE(bench.engine->equalizer().globalGain(), -2.5);
    QCOMPARE(bench.preferences.doubleValue(u"equalizer_preamp"_s), std::optional(-2.5));
    QCOMPARE(service.currentPreset(), EqualizerPreset::flat);
}

void EqualizerServiceTest::resetIsFlatWithoutPreamp()
{
    Bench bench;
    EqualizerService &service = bench.start();
    service.setEnabled(true);
    service.setBand(2, 7);
    service.setPreampGain(5);
    service.reset();
    QCOMPARE(service.currentPreset(), EqualizerPreset::flat);
    QCOMPARE(service.bands(), flatGains);
    QCOMPARE(service.preampGain(), 0.0F);
    QVERIFY(service.isEnabled());
    QCOMPARE(bench.engine->equalizer().globalGain(), 0.0);
    QCOMPARE(bench.engine->equalizer().band(2).gain, 0.0);
}

void EqualizerServiceTest::bandIsClamped_data()
{
    QTest::addColumn<float>("asked");
    QTest::addColumn<float>("set");
    QTest::newRow("above") << 12.5F << 12.0F;
    QTest::newRow("below") << -12.5F << -12.0F;
    QTest::newRow("endless") << std::numeric_limits<float>::infinity() << 12.0F;
    QTest::newRow("highest") << 12.0F << 12.0F;
    QTest::newRow("lowest") << -12.0F << -12.0F;
    QTest::newRow("within") << 0.1F << 0.1F;
}

void EqualizerServiceTest::bandIsClamped()
{
    QFETCH(float, asked);
    QFETCH(float, set);
    Bench bench;
    bench.start().setBand(9, asked);
    QCOMPARE(bench.service->getBand(9), set);
}

void EqualizerServiceTest::bandOutOfRangeIsIgnored_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("below") << -1;
    QTest::newRow("above") << 10;
    QTest::newRow("far") << std::numeric_limits<int>::max();
}

void EqualizerServiceTest::bandOutOfRangeIsIgnored()
{
    QFETCH(int, index);
    Bench bench;
    EqualizerService &service = bench.start();
    service.setCurrentPreset(EqualizerPreset::vocal);
    const int writes = bench.preferences.writes();
    service.setBand(index, 6);
    QCOMPARE(service.bands(), bandValues(EqualizerPreset::vocal));
    QCOMPARE(service.currentPreset(), EqualizerPreset::vocal);
    QCOMPARE(bench.preferences.writes(), writes);
    QCOMPARE(service.getBand(index), 0.0F);
}

void EqualizerServiceTest::whatIsNoNumberIsIgnored()
{
    Bench bench;
    EqualizerService &service = bench.start();
    service.setCurrentPreset(EqualizerPreset::rock);
    service.setPreampGain(2);
    service.setBand(0, noNumber);
    service.setBands({0, noNumber, 0, 0, 0, 0, 0, 0, 0, 0});
    service.setPreampGain(noNumber);
    service.setPreampGain(std::numeric_limits<float>::infinity());
    QCOMPARE(service.bands(), bandValues(EqualizerPreset::rock));
    QCOMPARE(service.currentPreset(), EqualizerPreset::rock);
    QCOMPARE(service.preampGain(), 2.0F);
}

void EqualizerServiceTest::signalsTellChangesAlone()
{
    Bench bench;
    EqualizerService &service = bench.start();
    QSignalSpy enabled(&service, &EqualizerService::isEnabledChanged);
    QSignalSpy presets(&service, &EqualizerService::currentPresetChanged);
    QSignalSpy bands(&service, &EqualizerService::bandsChanged);
    QSignalSpy preamps(&service, &EqualizerService::preampGainChanged);
    for (int round = 0; round < 2; ++round) {
        service.setEnabled(true);
        service.setCurrentPreset(EqualizerPreset::rock);
        service.setPreampGain(1);
    }
    QCOMPARE(enabled.size(), 1);
    QCOMPARE(enabled.constFirst().constFirst().toBool(), true);
    QCOMPARE(presets.size(), 1);
    QCOMPARE(bands.size(), 1);
    QCOMPARE(preamps.size(), 1);
    service.setBand(0, 5); // what it was: the preset is the listener's own now, the gains are the same
    QCOMPARE(presets.size(), 2);
    QCOMPARE(bands.size(), 1);
}

void EqualizerServiceTest::logLines()
{
    Bench bench;
    EqualizerService &service = bench.start();
    bench.console.take();
    service.setEnabled(true);
    QCOMPARE(bench.console.take(),
             (QStringList{u"🎛️ 均衡器更新: 启用, 预设: 平坦, 前级: 0.0dB"_s,
                          u"🎛️ 频段: 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0"_s}));
    service.setCurrentPreset(EqualizerPreset::rock);
    QCOMPARE(bench.console.take(),
             (QStringList{u"🎛️ 均衡器更新: 启用, 预设: 摇滚, 前级: 0.0dB"_s,
                          u"🎛️ 频段: 5.0, 4.0, 3.0, 1.0, -1.0, 0.0, 2.0, 3.0, 4.0, 4.0"_s}));
    service.setBand(1, 3.3F);
    // The engine is told before the preset is the listener's own.
    QCOMPARE(bench.console.take(),
             (QStringList{u"🎛️ 均衡器更新: 启用, 预设: 摇滚, 前级: 0.0dB"_s,
                          u"🎛️ 频段: 5.0, 3.3, 3.0, 1.0, -1.0, 0.0, 2.0, 3.0, 4.0, 4.0"_s}));
    service.setPreampGain(-1.5F);
    QCOMPARE(bench.console.take().constFirst(), u"🎛️ 均衡器更新: 启用, 预设: 自定义, 前级: -1.5dB"_s);
    service.setEnabled(false);
    QCOMPARE(bench.console.take(), QStringList{u"🎛️ 均衡器更新: 关闭, 预设: 自定义, 前级: -1.5dB"_s});
}

void EqualizerServiceTest::settingsComeBack()
{
    Bench bench;
    EqualizerService &first = bench.start();
    first.setEnabled(true);
    first.setBands({-12, -11.9F, 0.1F, 1.0F / 3, 0, 5.5F, 6, 7, 8, 12});
    first.setPreampGain(-3.7F);
    const EqualizerGains gains = first.bands();
    const EqualizerService &second = bench.start();
    QVERIFY(second.isEnabled());
    QCOMPARE(second.currentPreset(), EqualizerPreset::custom);
    QCOMPARE(second.bands(), gains);
    QCOMPARE(second.preampGain(), -3.7F);
    bench.service->setCurrentPreset(EqualizerPreset::lateNight);
    const EqualizerService &third = bench.start();
    QCOMPARE(third.currentPreset(), EqualizerPreset::lateNight);
    QCOMPARE(third.bands(), bandValues(EqualizerPreset::lateNight));
}

void EqualizerServiceTest::settingsComeBackFromTheRealStore()
{
    const QTemporaryDir home;
    const EqualizerGains gains{0.1F, -0.2F, 3.3F, 1.0F / 3, -12, 12, 0, 1, 2, 3};
    {
        ConsoleLines console;
        SqlitePreferences store(home.filePath(u"preferences.sqlite"_s));
        EqualizerService service(store, std::make_unique<FakeAudioEngine>());
        service.setEnabled(true);
        service.setBands(gains);
        service.setPreampGain(-0.1F);
    }
    ConsoleLines console;
    SqlitePreferences store(home.filePath(u"preferences.sqlite"_s));
    const EqualizerService service(store, std::make_unique<FakeAudioEngine>());
    QVERIFY(service.isEnabled());
    QCOMPARE(service.currentPreset(), EqualizerPreset::custom);
    QCOMPARE(service.bands(), gains);
    QCOMPARE(service.preampGain(), -0.1F);
}

void EqualizerServiceTest::readingWritesNothingAndReactsToNothing()
{
    Bench bench;
    bench.store(true, u"rock"_s, texts({5, 4, 3, 1, -1, 0, 2, 3, 4, 9}), 2);
    const int writes = bench.preferences.writes();
    const EqualizerService &service = bench.start();
    QCOMPARE(bench.preferences.writes(), writes);
    QCOMPARE(service.currentPreset(), EqualizerPreset::rock);
    // What is stored counts, also where it is not what the preset says.
    QCOMPARE(service.getBand(9), 9.0F);
    QCOMPARE(bench.console.take(), QStringList{u"🎛️ 均衡器: 音频引擎初始化完成"_s});
}

void EqualizerServiceTest::everyGainComesBackExactly()
{
    Bench bench;
    EqualizerService *service = &bench.start();
    QRandomGenerator random(7);
    for (int round = 0; round < 200; ++round) {
        EqualizerGains gains{};
        for (float &gain : gains)
            gain = static_cast<float>(random.generateDouble() * 24 - 12);
        service->setBands(gains);
        service = &bench.start();
        QCOMPARE(service->bands(), gains);
    }
}

void EqualizerServiceTest::storedGainsBeyondTheLimitsAreReadAsTheyAre()
{
    Bench bench;
    bench.store(false, u"custom"_s, texts({20, -20, 0, 0, 0, 0, 0, 0, 0, 0}), 30);
    const EqualizerService &service = bench.start();
    QCOMPARE(service.getBand(0), 20.0F);
    QCOMPARE(service.getBand(1), -20.0F);
    QCOMPARE(service.preampGain(), 30.0F);
}

void EqualizerServiceTest::damagedStore_data()
{
    QTest::addColumn<QString>("preset");
    QTest::addColumn<QStringList>("bands");
    QTest::addColumn<double>("preamp");
    QTest::addColumn<EqualizerPreset>("readPreset");
    QTest::addColumn<EqualizerGains>("readBands");
    QTest::addColumn<float>("readPreamp");
    const EqualizerGains stored{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    const EqualizerGains jazz = bandValues(EqualizerPreset::jazz);
    QStringList wrong = texts(stored);
    wrong[3] = u"nan"_s;
    QStringList endless = texts(stored);
    endless[3] = u"-inf"_s;
    QStringList word = texts(stored);
    word[3] = u"loud"_s;
    const auto row = [](const char *name) -> QTestData & { return QTest::newRow(name); };
    row("unknown preset") << u"metal"_s << texts(stored) << 1.0 << EqualizerPreset::custom << stored << 1.0F;
    row("unknown preset, flat gains")
        << u"metal"_s << texts(flatGains) << 1.0 << EqualizerPreset::flat << flatGains << 1.0F;
    row("unknown preset, no gains") << QString() << QStringList() << 0.0 << EqualizerPreset::flat << flatGains
                                    << 0.0F;
    row("too few gains") << u"jazz"_s << texts(stored).mid(1) << 1.0 << EqualizerPreset::jazz << jazz << 1.0F;
    row("too many gains") << u"jazz"_s << texts(stored) + QStringList{u"1"_s} << 1.0 << EqualizerPreset::jazz
                          << jazz << 1.0F;
    row("own gains lost") << u"custom"_s << QStringList() << 1.0 << EqualizerPreset::custom << flatGains
                          << 1.0F;
    row("gain that is no number") << u"jazz"_s << wrong << 1.0 << EqualizerPreset::jazz << jazz << 1.0F;
    row("endless gain") << u"jazz"_s << endless << 1.0 << EqualizerPreset::jazz << jazz << 1.0F;
    row("word for a gain") << u"jazz"_s << word << 1.0 << EqualizerPreset::jazz << jazz << 1.0F;
    row("preamp that is no number") << u"custom"_s << texts(stored) << qQNaN() << EqualizerPreset::custom
                                    << stored << 0.0F;
    row("preamp beyond every float") << u"custom"_s << texts(stored) << 1e300 << EqualizerPreset::custom
                                     << stored << 0.0F;
}

void EqualizerServiceTest::damagedStore()
{
    QFETCH(QString, preset);
    QFETCH(QStringList, bands);
    QFETCH(double, preamp);
    QFETCH(EqualizerPreset, readPreset);
    QFETCH(EqualizerGains, readBands);
    Bench bench;
    bench.store(true, preset, bands, preamp);
    const EqualizerService &service = bench.start();
    QCOMPARE(service.currentPreset(), readPreset);
    QCOMPARE(service.bands(), readBands);
    QTEST(service.preampGain(), "readPreamp");
    QVERIFY(service.isEnabled());
}

void EqualizerServiceTest::withoutAnEngineTheSettingsLive()
{
    Bench bench;
    EqualizerService &service = bench.startWithoutEngine();
    QCOMPARE(bench.console.take(), QStringList());
    service.setEnabled(true);
    QCOMPARE(bench.console.take(), QStringList{u"🎛️ 均衡器: equalizer 未初始化"_s});
    service.setCurrentPreset(EqualizerPreset::rock);
    service.setPreampGain(1);
    QCOMPARE(service.bands(), bandValues(EqualizerPreset::rock));
    QCOMPARE(bench.preferences.stringValue(u"equalizer_preset"_s), std::optional(u"rock"_s));
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, service.prepareToPlay(QUrl::fromLocalFile(u"/a.mp3"_s)));
    service.play();
    service.pause();
    service.seek(5);
    service.setVolume(0.5F);
    service.stop();
    QVERIFY(!service.isPlaying());
    QVERIFY(!service.isEngineRunning());
    QCOMPARE(service.currentTime(), 0.0);
    QCOMPARE(service.duration(), 0.0);
}

QTEST_GUILESS_MAIN(EqualizerServiceTest)
#include "tst_equalizer_service.moc"
