// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/PlayMode.h"

#include "Utils/AppIcons.h"

namespace cadorel {

using namespace Qt::StringLiterals;

QString rawValue(PlayMode mode)
{
    switch (mode) {
    case PlayMode::sequential:
        return u"sequential"_s;
    case PlayMode::shuffle:
        return u"shuffle"_s;
    case PlayMode::repeatOne:
        return u"repeatOne"_s;
    case PlayMode::repeatAll:
        return u"repeatAll"_s;
    }
    Q_UNREACHABLE();
}

QString symbol(PlayMode mode)
{
    switch (mode) {
    case PlayMode::sequential:
        return u"list.number"_s;
    case PlayMode::shuffle:
        return AppIcons::Playback::shuffle;
    case PlayMode::repeatOne:
        return AppIcons::Playback::repeatOne;
    case PlayMode::repeatAll:
        return AppIcons::Playback::repeatAll;
    }
    Q_UNREACHABLE();
}

QString label(PlayMode mode)
{
    switch (mode) {
    case PlayMode::sequential:
        return u"顺序播放"_s;
    case PlayMode::shuffle:
        return u"随机播放"_s;
    case PlayMode::repeatOne:
        return u"单曲循环"_s;
    case PlayMode::repeatAll:
        return u"列表循环"_s;
    }
    Q_UNREACHABLE();
}

PlayMode toggled(PlayMode mode)
{
    switch (mode) {
    case PlayMode::sequential:
        return PlayMode::repeatAll;
    case PlayMode::repeatAll:
        return PlayMode::shuffle;
    case PlayMode::shuffle:
        return PlayMode::repeatOne;
    case PlayMode::repeatOne:
        return PlayMode::sequential;
    }
    Q_UNREACHABLE();
}

} // namespace cadorel
