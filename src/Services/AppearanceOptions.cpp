// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AppearanceOptions.h"

#include "Models/CassetteStyle.h"
#include "Models/LyricAnimationStyle.h"
#include "Models/LyricsAlignment.h"
#include "Models/NowPlayingBackgroundStyle.h"
#include "Theme/SystemColorTable.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

template <typename Case>
QList<AppearanceChoice> choicesOf(const QList<Case> &cases)
{
    QList<AppearanceChoice> choices;
    for (const Case value : cases) {
        AppearanceChoice choice;
        choice.value = static_cast<int>(value);
        choice.rawValue = rawValue(value);
        choice.displayName = displayName(value);
        if constexpr (requires { icon(value); })
            choice.icon = icon(value);
        if constexpr (requires { imageName(value); })
            choice.imageName = imageName(value);
        choices.append(choice);
    }
    return choices;
}

QList<PresetColor> namedColors(const SystemColorTable &colors)
{
    return {{u"粉红"_s, colors.pink},   {u"红色"_s, colors.red},   {u"橙色"_s, colors.orange},
            {u"黄色"_s, colors.yellow}, {u"绿色"_s, colors.green}, {u"薄荷"_s, colors.mint},
            {u"青色"_s, colors.teal},   {u"蓝色"_s, colors.blue},  {u"靛蓝"_s, colors.indigo},
            {u"紫色"_s, colors.purple}, {u"系统"_s, colors.accent}};
}

} // namespace

const QList<AppearanceChoice> &AppearanceOptions::lyricsAlignments()
{
    static const QList<AppearanceChoice> choices = choicesOf(allLyricsAlignments());
    return choices;
}

const QList<AppearanceChoice> &AppearanceOptions::lyricAnimationStyles()
{
    static const QList<AppearanceChoice> choices = choicesOf(allLyricAnimationStyles());
    return choices;
}

const QList<AppearanceChoice> &AppearanceOptions::nowPlayingBackgroundStyles()
{
    static const QList<AppearanceChoice> choices = choicesOf(allNowPlayingBackgroundStyles());
    return choices;
}

const QList<AppearanceChoice> &AppearanceOptions::cassetteStyles()
{
    static const QList<AppearanceChoice> choices = choicesOf(allCassetteStyles());
    return choices;
}

const QStringList &AppearanceOptions::emojiOptions()
{
    static const QStringList options{u"🕺"_s, u"💃"_s, u"🎵"_s, u"🎶"_s, u"🎧"_s, u"🎤"_s, u"🎸"_s,
                                     u"🥁"_s, u"🎹"_s, u"🎷"_s, u"🪇"_s, u"👾"_s, u"🤖"_s, u"👻"_s,
                                     u"🐱"_s, u"🐶"_s, u"🦄"_s, u"🌟"_s, u"⭐️"_s, u"✨"_s, u"❤️"_s,
                                     u"🔥"_s, u"💫"_s, u"🎉"_s, u"🐷"_s};
    return options;
}

const QList<PresetColor> &AppearanceOptions::presetColors(ColorScheme scheme)
{
    static const QList<PresetColor> light = namedColors(systemColors(ColorScheme::light));
    static const QList<PresetColor> dark = namedColors(systemColors(ColorScheme::dark));
    return scheme == ColorScheme::dark ? dark : light;
}

} // namespace cadorel
