// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/EqualizerPreset.h"

#include "Models/NamedCases.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

struct PresetTexts
{
    QString rawValue;
    QString displayName;
    QString symbol;
    QString descriptionText;
    EqualizerGains gains;
};

/// In the order of the declaration.
const std::array<PresetTexts, 14> &presetTable()
{
    static const std::array<PresetTexts, 14> table{{
        {u"flat"_s, u"平坦"_s, u"waveform"_s, u"无音效处理"_s, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {u"rock"_s, u"摇滚"_s, u"guitars"_s, u"增强中高频，适合摇滚乐"_s, {5, 4, 3, 1, -1, 0, 2, 3, 4, 4}},
        {u"pop"_s, u"流行"_s, u"music.mic"_s, u"温暖的中频，适合流行音乐"_s, {-1, 1, 3, 4, 3, 1, 0, 1, 2, 2}},
        {u"jazz"_s,
         u"爵士"_s,
         u"music.quarternote.3"_s,
         u"平滑的高频，适合爵士乐"_s,
         {3, 2, 1, 2, -2, -2, 0, 2, 3, 4}},
        {u"classical"_s,
         u"古典"_s,
         u"pianokeys"_s,
         u"宽广的动态范围，适合古典乐"_s,
         {4, 3, 2, 1, -1, -1, 0, 2, 3, 4}},
        {u"electronic"_s,
         u"电子"_s,
         u"bolt.fill"_s,
         u"强劲的低音和高音，适合电子乐"_s,
         {5, 4, 2, 0, -2, 2, 1, 3, 4, 5}},
        {u"hiphop"_s,
         u"嘻哈"_s,
         u"headphones"_s,
         u"加强低音，适合嘻哈音乐"_s,
         {5, 5, 3, 1, -1, -1, 1, 0, 2, 3}},
        {u"rnb"_s, u"R&B"_s, u"heart.fill"_s, u"温暖饱满，适合R&B音乐"_s, {3, 6, 4, 1, -2, -1, 2, 3, 3, 2}},
        {u"acoustic"_s,
         u"原声"_s,
         u"music.note"_s,
         u"自然清晰，适合原声音乐"_s,
         {4, 3, 2, 1, 1, 1, 2, 2, 3, 2}},
        {u"bass"_s,
         u"重低音"_s,
         u"speaker.wave.3.fill"_s,
         u"显著增强低音效果"_s,
         {6, 5, 4, 2, 0, -1, -1, 0, 0, 0}},
        {u"treble"_s,
         u"高音增强"_s,
         u"waveform.path.ecg"_s,
         u"增强高音清晰度"_s,
         {0, 0, 0, 0, 0, 1, 2, 4, 5, 6}},
        {u"vocal"_s,
         u"人声"_s,
         u"person.wave.2"_s,
         u"突出人声，适合有声读物"_s,
         {-2, -1, 0, 2, 4, 4, 3, 1, 0, -1}},
        {u"lateNight"_s,
         u"深夜模式"_s,
         u"moon.fill"_s,
         u"降低高频，夜间听更舒适"_s,
         {4, 3, 2, 1, 0, 0, -1, -2, -3, -4}},
        {u"custom"_s, u"自定义"_s, u"slider.horizontal.3"_s, u"自定义调整"_s, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
    }};
    return table;
}

const PresetTexts &textsOf(EqualizerPreset preset)
{
    return presetTable().at(static_cast<size_t>(preset));
}

} // namespace

const QList<EqualizerPreset> &allEqualizerPresets()
{
    static const QList<EqualizerPreset> all = casesOf<EqualizerPreset>(presetTable());
    return all;
}

QString rawValue(EqualizerPreset preset)
{
    return textsOf(preset).rawValue;
}

std::optional<EqualizerPreset> equalizerPresetOf(const QString &rawValue)
{
    return caseOf<EqualizerPreset>(presetTable(), rawValue);
}

QString displayName(EqualizerPreset preset)
{
    return textsOf(preset).displayName;
}

QString symbol(EqualizerPreset preset)
{
    return textsOf(preset).symbol;
}

QString descriptionText(EqualizerPreset preset)
{
    return textsOf(preset).descriptionText;
}

const EqualizerGains &bandValues(EqualizerPreset preset)
{
    return textsOf(preset).gains;
}

} // namespace cadorel
