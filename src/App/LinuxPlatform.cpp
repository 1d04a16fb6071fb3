// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/LinuxPlatform.h"

#include "Platform/EqualizerEngine/DecodedAudioFile.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"
#include "Platform/EqualizerEngine/PulseLink.h"
#include "Platform/EqualizerEngine/PulseOutput.h"
#include "Platform/Linux/FallbackSecretStore.h"
#include "Platform/Linux/FileSecretStore.h"
#include "Platform/Linux/LibsecretStore.h"
#include "Platform/Linux/LinuxSystem.h"
#include "Platform/Linux/MprisPlayer.h"
#include "Platform/Linux/PortalAppearance.h"
#include "Platform/Linux/PortalFilePicker.h"
#include "Platform/Linux/PulseAudioSession.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/SystemRandom.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Platform/Mpv/MpvStreamPlayer.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Platform/Pulse/PulseOutputDevices.h"
#include "Platform/Sql/SqlitePreferences.h"

namespace cadorel {

using namespace Qt::StringLiterals;

Platform makeLinuxPlatform(const Directories &directories)
{
    Platform platform;
    platform.directories = directories;
    platform.preferences =
        std::make_unique<SqlitePreferences>(directories.applicationSupport + "/preferences.sqlite"_L1);
    platform.clock = std::make_unique<SystemClock>();
    platform.random = std::make_unique<SystemRandom>();
    platform.system = std::make_unique<LinuxSystem>(directories.applicationSupport);
    platform.assetReader = std::make_unique<FileAssetReader>();
    platform.outputDevices = std::make_unique<PulseOutputDevices>();
    platform.makeStreamPlayer = [&reader = *platform.assetReader, &devices = *platform.outputDevices] {
        auto player = std::make_unique<MpvStreamPlayer>(reader);
        player->follow(devices);
        return player;
    };
    platform.makeAudioEngine = [&devices = *platform.outputDevices] {
        const auto link = std::make_shared<PulseLink>();
        const auto makeOutput = [link, &devices] {
            return std::make_unique<PulseOutput>(link, devices.chosenDevice().toUtf8());
        };
        return std::make_unique<OutputAudioEngine>(makeOutput, &DecodedAudioFile::open);
    };
    platform.audioSession = std::make_unique<PulseAudioSession>();
    const auto desktop = std::make_shared<MprisPlayer>(directories, *platform.clock);
    platform.nowPlayingCenter = desktop;
    platform.remoteCommandCenter = desktop;
    platform.httpClient = std::make_unique<NetworkHttpClient>();
    platform.secretStore = std::make_unique<FallbackSecretStore>(
        std::make_unique<LibsecretStore>(),
        std::make_unique<FileSecretStore>(directories.applicationSupport + "/secrets.json"_L1));
    platform.filePicker = std::make_unique<PortalFilePicker>();
    platform.desktopAppearance = std::make_unique<PortalAppearance>();
    return platform;
}

} // namespace cadorel
