// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/NowPlayingConfig.h"

namespace cadorel {

using namespace Qt::StringLiterals;

using Style = NowPlayingConfig::NowPlayingBackgroundStyle;

QString rawValue(Style style)
{
    switch (style) {
    case Style::blur:
        return u"blur"_s;
    case Style::solid:
        return u"solid"_s;
    case Style::gradient:
        return u"gradient"_s;
    case Style::clear:
        return u"clear"_s;
    }
    return {};
}

QString displayName(Style style)
{
    switch (style) {
    case Style::blur:
        return u"封面模糊"_s;
    case Style::solid:
        return u"纯色"_s;
    case Style::gradient:
        return u"渐变"_s;
    case Style::clear:
        return u"跟随系统"_s;
    }
    return {};
}

} // namespace cadorel
