// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ControlAction.h"

#include "Utils/AppIcons.h"

namespace cadorel {

using namespace Qt::StringLiterals;

IconAndLabel iconAndLabel(ControlAction action, bool isFavorite)
{
    switch (action) {
    case ControlAction::playPause:
        return {u"playpause.fill"_s, u"播放/暂停"_s};
    case ControlAction::next:
        return {u"arrow.forward"_s, u"下一首"_s};
    case ControlAction::previous:
        return {u"arrow.backward"_s, u"上一首"_s};
    case ControlAction::locate:
        return {u"location.fill"_s, u"定位"_s};
    case ControlAction::favorite:
        return isFavorite ? IconAndLabel{AppIcons::Favorite::heartFill, u"取消喜欢"_s}
                          : IconAndLabel{AppIcons::Favorite::heart, u"喜欢"_s};
    }
    Q_UNREACHABLE();
}

} // namespace cadorel
