// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AssetReader.h"
#include "Platform/AudioEngine.h"
#include "Platform/AudioSession.h"
#include "Platform/Clock.h"
#include "Platform/DesktopAppearance.h"
#include "Platform/Directories.h"
#include "Platform/FilePicker.h"
#include "Platform/HttpClient.h"
#include "Platform/NowPlayingCenter.h"
#include "Platform/OutputDevices.h"
#include "Platform/Preferences.h"
#include "Platform/Random.h"
#include "Platform/RemoteCommandCenter.h"
#include "Platform/SecretStore.h"
#include "Platform/StreamPlayer.h"
#include "Platform/System.h"

#include <functional>
#include <memory>

namespace cadorel {

/// Everything that the player needs of the machine, filled by main() with the real parts and by tests with
/// fakes or with real parts in a temporary home. It outlives every service.
struct Platform
{
    Directories directories;
    std::unique_ptr<Preferences> preferences;
    std::unique_ptr<Clock> clock;
    std::unique_ptr<Random> random;
    std::unique_ptr<System> system;
    std::unique_ptr<AssetReader> assetReader;
    /// Makes a stream player; the play pipeline calls it once, at its first need. Never null.
    std::function<std::unique_ptr<StreamPlayer>()> makeStreamPlayer;
    /// Makes the engine behind the equalizer. Never null in the program; a test without an equalizer may
    /// leave it out.
    std::function<std::unique_ptr<AudioEngine>()> makeAudioEngine;
    /// Null where nothing tells of interruptions and devices.
    std::unique_ptr<AudioSession> audioSession;
    /// Null where nothing tells of devices to play on.
    std::unique_ptr<OutputDevices> outputDevices;
    /// The desktop's media controls, both ways; one object may be both. Null where there are none.
    std::shared_ptr<NowPlayingCenter> nowPlayingCenter;
    std::shared_ptr<RemoteCommandCenter> remoteCommandCenter;
    /// Never null in the program; a test without a network may leave it out.
    std::unique_ptr<HttpClient> httpClient;
    /// What KeychainHelper keeps passwords in.
    std::unique_ptr<SecretStore> secretStore;
    /// Null on a desktop without a file dialog.
    std::unique_ptr<FilePicker> filePicker;
    /// Never null in the program; a test without looks may leave it out.
    std::unique_ptr<DesktopAppearance> desktopAppearance;
};

} // namespace cadorel
