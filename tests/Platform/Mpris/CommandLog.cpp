// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpris/CommandLog.h"

using namespace Qt::StringLiterals;

namespace cadorel {

CommandLog::CommandLog(const RemoteCommandCenter &center)
{
    const auto note = [this, &center](auto signal, const QString &name) {
        connect(&center, signal, this, [this, name] { m_commands.append(name); });
    };
    note(&RemoteCommandCenter::playCommand, u"play"_s);
    note(&RemoteCommandCenter::pauseCommand, u"pause"_s);
    note(&RemoteCommandCenter::togglePlayPauseCommand, u"toggle"_s);
    note(&RemoteCommandCenter::stopCommand, u"stop"_s);
    note(&RemoteCommandCenter::nextTrackCommand, u"next"_s);
    note(&RemoteCommandCenter::previousTrackCommand, u"previous"_s);
    note(&RemoteCommandCenter::raiseCommand, u"raise"_s);
    note(&RemoteCommandCenter::quitCommand, u"quit"_s);
    connect(&center, &RemoteCommandCenter::changePlaybackPositionCommand, this,
            [this](double position) { m_commands.append(u"position %1"_s.arg(position)); });
    connect(&center, &RemoteCommandCenter::changeVolumeCommand, this,
            [this](double volume) { m_commands.append(u"volume %1"_s.arg(volume)); });
    connect(&center, &RemoteCommandCenter::changePlayModeCommand, this,
            [this](PlayMode mode) { m_commands.append(u"mode "_s + rawValue(mode)); });
}

} // namespace cadorel
