// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeAudioEngine.h"
#include "Fakes/TestPlatform.h"
#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "Services/LocalMusicImportService.h"
#include "Utils/SymbolFiles.h"
#include "ViewModels/EqualizerBandModel.h"
#include "ViewModels/EqualizerPresetModel.h"
#include "ViewModels/EqualizerViewModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

struct Bench
{
    ConsoleLines console;
    TestPlatform home;
    FakeAudioEngine *engine = new FakeAudioEngine;
    EqualizerService service{*home.platform.preferences, std::unique_ptr<AudioEngine>(engine)};
    LocalMusicImportService importService{home.platform};
    AudioPlayerService player{home.platform, importService, {.equalizer = &service}};
    EqualizerViewModel equalizer{service, player};
    QAbstractItemModelTester bandTester{equalizer.bands()};
    QAbstractItemModelTester presetTester{equalizer.presets()};

    void playFile()
    {
        SongFields fields;
        fields.id = u"file"_s;
        fields.assetURL = QUrl::fromLocalFile(u"/music/a.flac"_s);
        player.playSong(Song(fields), {});
    }
    void playStream()
    {
        SongFields fields;
        fields.id = u"stream"_s;
        fields.assetURL = QUrl(u"https://music.example/a.mp3"_s);
        player.playSong(Song(fields), {});
        // A length that is never told would keep the task that waits for it.
        home.streamPlayer()->lastItem()->answerDuration(100);
    }
    QVariant band(int row, int role) const
    {
        return equalizer.bands()->data(equalizer.bands()->index(row), role);
    }
    QVariant preset(EqualizerPreset which, int role) const
    {
        const auto row = static_cast<int>(allEqualizerPresets().indexOf(which));
        return equalizer.presets()->data(equalizer.presets()->index(row), role);
    }
};

} // namespace

class EqualizerViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void gainsAreReadWithTheirSign_data();
    void gainsAreReadWithTheirSign();
    void bandsHaveLabelsNamesAndGains();
    void onlyTheBandThatMovedIsTold();
    void presetsAreListedInTheirOrderWithNameSymbolAndDescription();
    void everySymbolOfAPresetHasAPicture();
    void choosingAPresetMovesTheBandsAndMarksIt();
    void choosingCustomKeepsTheGains();
    void rowOutsideOfTheListChoosesNothing();
    void bandThatIsSetTurnsThePresetIntoCustomAndKeepsTheOthers();
    void limitsHoldForEveryNumber();
    void askingForWhatStandsKeepsThePreset();
    void preampIsSetAndTold();
    void resetIsOfferedWhileItWouldChangeSomething();
    void switchReachesTheService();
    void storedSettingsAreShownFromTheStart();
    void statusTellsWhatTheEqualizerDoesForTheSong();
    void fileThatTheEngineCannotOpenIsToldApart();
    void sheetOpensAndCloses();
};

void EqualizerViewModelTest::gainsAreReadWithTheirSign_data()
{
    QTest::addColumn<float>("gain");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0.0F << u"0"_s;
    QTest::newRow("half") << 3.5F << u"+3.5"_s;
    QTest::newRow("whole") << 6.0F << u"+6"_s;
    QTest::newRow("below") << -10.5F << u"-10.5"_s;
    QTest::newRow("lowest") << -12.0F << u"-12"_s;
    QTest::newRow("rounds to nothing") << -0.04F << u"0"_s;
    QTest::newRow("rounds to a tenth") << 0.05F << u"+0.1"_s;
    QTest::newRow("finer than it is shown") << 3.333F << u"+3.3"_s;
}

void EqualizerViewModelTest::gainsAreReadWithTheirSign()
{
    QFETCH(float, gain);
    QTEST(gainText(gain), "text");
}

void EqualizerViewModelTest::bandsHaveLabelsNamesAndGains()
{
    Bench bench;
    bench.service.setBand(5, 3.5F);
    QCOMPARE(bench.equalizer.bands()->rowCount(), 10);
    QStringList labels;
    QStringList names;
    for (int row = 0; row < 10; ++row) {
        labels.append(bench.band(row, EqualizerBandModel::LabelRole).toString());
        names.append(bench.band(row, EqualizerBandModel::SpokenNameRole).toString());
    }
    QCOMPARE(labels, (QStringList{u"32"_s, u"64"_s, u"125"_s, u"250"_s, u"500"_s, u"1K"_s, u"2K"_s, u"4K"_s,
                                  u"8K"_s, u"16K"_s}));
    QCOMPARE(names.constFirst(), u"32 赫兹"_s);
    QCOMPARE(names.constLast(), u"16000 赫兹"_s);
    QCOMPARE(bench.band(5, EqualizerBandModel::GainRole).toDouble(), 3.5);
    QCOMPARE(bench.band(5, EqualizerBandModel::GainTextRole).toString(), u"+3.5"_s);
    QCOMPARE(bench.band(4, EqualizerBandModel::GainTextRole).toString(), u"0"_s);
}

void EqualizerViewModelTest::onlyTheBandThatMovedIsTold()
{
    Bench bench;
    const QSignalSpy told(bench.equalizer.bands(), &QAbstractItemModel::dataChanged);
    bench.equalizer.setBand(7, 2);
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).at(0).toModelIndex().row(), 7);
    QCOMPARE(told.at(0).at(1).toModelIndex().row(), 7);
}

void EqualizerViewModelTest::presetsAreListedInTheirOrderWithNameSymbolAndDescription()
{
    const Bench bench;
    const EqualizerPresetModel &presets = *bench.equalizer.presets();
    QCOMPARE(presets.rowCount(), 14);
    for (int row = 0; row < presets.rowCount(); ++row) {
        const EqualizerPreset preset = allEqualizerPresets().at(row);
        QCOMPARE(bench.preset(preset, EqualizerPresetModel::NameRole).toString(), displayName(preset));
        QCOMPARE(bench.preset(preset, EqualizerPresetModel::SymbolRole).toString(), symbol(preset));
        QCOMPARE(bench.preset(preset, EqualizerPresetModel::DescriptionRole).toString(),
                 descriptionText(preset));
    }
    QCOMPARE(bench.preset(EqualizerPreset::flat, EqualizerPresetModel::NameRole).toString(), u"平坦"_s);
    QCOMPARE(bench.preset(EqualizerPreset::custom, EqualizerPresetModel::NameRole).toString(), u"自定义"_s);
}

void EqualizerViewModelTest::everySymbolOfAPresetHasAPicture()
{
    for (const EqualizerPreset preset : allEqualizerPresets())
        QVERIFY2(hasSymbol(symbol(preset)), qPrintable(symbol(preset)));
}

void EqualizerViewModelTest::choosingAPresetMovesTheBandsAndMarksIt()
{
    Bench bench;
    QVERIFY(bench.preset(EqualizerPreset::flat, EqualizerPresetModel::IsCurrentRole).toBool());
    const QSignalSpy told(&bench.equalizer, &EqualizerViewModel::currentPresetChanged);
    bench.equalizer.choosePreset(9);
    QCOMPARE(bench.service.currentPreset(), EqualizerPreset::bass);
    QCOMPARE(told.size(), 1);
    QCOMPARE(bench.equalizer.currentPresetRow(), 9);
    QCOMPARE(bench.equalizer.presetDescription(), u"显著增强低音效果"_s);
    QVERIFY(bench.preset(EqualizerPreset::bass, EqualizerPresetModel::IsCurrentRole).toBool());
    QVERIFY(!bench.preset(EqualizerPreset::flat, EqualizerPresetModel::IsCurrentRole).toBool());
    const QList<double> gains{6, 5, 4, 2, 0, -1, -1, 0, 0, 0};
    for (int row = 0; row < 10; ++row)
        QCOMPARE(bench.band(row, EqualizerBandModel::GainRole).toDouble(), gains.at(row));
}

void EqualizerViewModelTest::choosingCustomKeepsTheGains()
{
    Bench bench;
    bench.equalizer.choosePreset(1);
    const EqualizerGains before = bench.service.bands();
    bench.equalizer.choosePreset(13);
    QCOMPARE(bench.service.currentPreset(), EqualizerPreset::custom);
    QVERIFY(bench.service.bands() == before);
    QCOMPARE(bench.band(0, EqualizerBandModel::GainRole).toDouble(), 5.0);
}

void EqualizerViewModelTest::rowOutsideOfTheListChoosesNothing()
{
    Bench bench;
    for (const int row : {-1, 14, 1000})
        bench.equalizer.choosePreset(row);
    QCOMPARE(bench.service.currentPreset(), EqualizerPreset::flat);
}

void EqualizerViewModelTest::bandThatIsSetTurnsThePresetIntoCustomAndKeepsTheOthers()
{
    Bench bench;
    bench.equalizer.choosePreset(1);
    EqualizerGains expected = bandValues(EqualizerPreset::rock);
    bench.equalizer.setBand(2, -4.5);
    expected.at(2) = -4.5F;
    QVERIFY(bench.service.bands() == expected);
    QCOMPARE(bench.service.currentPreset(), EqualizerPreset::custom);
    QVERIFY(bench.preset(EqualizerPreset::custom, EqualizerPresetModel::IsCurrentRole).toBool());
}

void EqualizerViewModelTest::limitsHoldForEveryNumber()
{
    Bench bench;
    bench.equalizer.setBand(0, 100);
    bench.equalizer.setBand(1, -1e300);
    bench.equalizer.setBand(2, std::numeric_limits<double>::quiet_NaN());
    bench.equalizer.setBand(3, std::numeric_limits<double>::infinity());
    bench.equalizer.setBand(10, 5);
    bench.equalizer.setBand(-1, 5);
    QVERIFY(bench.service.bands() == (EqualizerGains{12, -12, 0, 0, 0, 0, 0, 0, 0, 0}));
    bench.equalizer.setPreampGain(std::nan(""));
    QCOMPARE(bench.service.preampGain(), 0.0F);
    bench.equalizer.setPreampGain(-55);
    QCOMPARE(bench.service.preampGain(), -12.0F);
}

void EqualizerViewModelTest::askingForWhatStandsKeepsThePreset()
{
    Bench bench;
    bench.equalizer.choosePreset(1);
    bench.equalizer.setBand(5, 0);
    bench.equalizer.setBand(0, 5);
    QCOMPARE(bench.service.currentPreset(), EqualizerPreset::rock);
}

void EqualizerViewModelTest::preampIsSetAndTold()
{
    Bench bench;
    const QSignalSpy told(&bench.equalizer, &EqualizerViewModel::preampGainChanged);
    bench.equalizer.setPreampGain(-2.5);
    QCOMPARE(told.size(), 1);
    QCOMPARE(bench.equalizer.preampGain(), -2.5);
    QCOMPARE(bench.equalizer.preampText(), u"-2.5"_s);
    QCOMPARE(bench.service.currentPreset(), EqualizerPreset::flat);
}

void EqualizerViewModelTest::resetIsOfferedWhileItWouldChangeSomething()
{
    Bench bench;
    QVERIFY(!bench.equalizer.canReset());
    bench.equalizer.setPreampGain(1);
    QVERIFY(bench.equalizer.canReset());
    bench.equalizer.reset();
    QVERIFY(!bench.equalizer.canReset());
    bench.equalizer.setBand(4, 1);
    QVERIFY(bench.equalizer.canReset());
    bench.equalizer.reset();
    QVERIFY(!bench.equalizer.canReset());
    QVERIFY(bench.service.bands() == EqualizerGains{});
    QCOMPARE(bench.service.currentPreset(), EqualizerPreset::flat);
}

void EqualizerViewModelTest::switchReachesTheService()
{
    Bench bench;
    const QSignalSpy told(&bench.equalizer, &EqualizerViewModel::isEnabledChanged);
    bench.equalizer.setEnabled(true);
    QVERIFY(bench.service.isEnabled());
    bench.service.setEnabled(false);
    QVERIFY(!bench.equalizer.isEnabled());
    QCOMPARE(told.size(), 2);
}

void EqualizerViewModelTest::storedSettingsAreShownFromTheStart()
{
    Bench bench;
    bench.service.setEnabled(true);
    bench.equalizer.choosePreset(12);
    bench.equalizer.setPreampGain(-1.5);
    EqualizerService service(*bench.home.platform.preferences, std::make_unique<FakeAudioEngine>());
    const EqualizerViewModel equalizer(service, bench.player);
    QVERIFY(equalizer.isEnabled());
    QCOMPARE(equalizer.currentPresetRow(), 12);
    QCOMPARE(equalizer.bands()->data(equalizer.bands()->index(9), EqualizerBandModel::GainTextRole), u"-4"_s);
    QCOMPARE(equalizer.preampText(), u"-1.5"_s);
    QVERIFY(equalizer.canReset());
}

void EqualizerViewModelTest::statusTellsWhatTheEqualizerDoesForTheSong()
{
    Bench bench;
    QCOMPARE(bench.equalizer.statusText(), u"已关闭，仅对本地文件生效"_s);
    bench.equalizer.setEnabled(true);
    settle();
    QCOMPARE(bench.equalizer.statusText(), u"已开启，仅对本地文件生效"_s);
    bench.playFile();
    settle();
    QVERIFY(bench.player.usingEqualizerEngine());
    QCOMPARE(bench.equalizer.statusText(), u"正在作用于当前歌曲"_s);
    bench.playStream();
    settle();
    QCOMPARE(bench.equalizer.statusText(), u"仅对本地文件生效，当前歌曲来自网络"_s);
    bench.equalizer.setEnabled(false);
    settle();
    QCOMPARE(bench.equalizer.statusText(), u"仅对本地文件生效，当前歌曲来自网络"_s);
}

void EqualizerViewModelTest::fileThatTheEngineCannotOpenIsToldApart()
{
    Bench bench;
    bench.engine->openFailure = "cannot decode";
    bench.equalizer.setEnabled(true);
    settle();
    bench.playFile();
    settle();
    bench.home.streamPlayer()->lastItem()->answerDuration(100);
    QVERIFY(bench.player.isPlaying());
    QCOMPARE(bench.equalizer.statusText(), u"已开启，从下一首本地歌曲起生效"_s);
}

void EqualizerViewModelTest::sheetOpensAndCloses()
{
    Bench bench;
    const QSignalSpy told(&bench.equalizer, &EqualizerViewModel::isOpenChanged);
    bench.equalizer.open();
    bench.equalizer.open();
    QVERIFY(bench.equalizer.isOpen());
    bench.equalizer.close();
    bench.equalizer.close();
    QVERIFY(!bench.equalizer.isOpen());
    QCOMPARE(told.size(), 2);
}

QTEST_GUILESS_MAIN(EqualizerViewModelTest)
#include "tst_equalizer_view_model.moc"
