// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/PlaybackViewModel.h"

#include <QCoroTask>
#include <QObject>

#include <memory>

namespace cadorel {

class AnnouncementCheck;
class AudioPlayerService;
class LocalMusicImportService;
class ThemeManager;
class ThemeService;
class UpdateCheck;
class UsageLog;

/// The keepers of the look. Both outlive the application.
struct AppLook
{
    ThemeService &themeService;
    ThemeManager &themeManager;
};

/// The channels to the makers. A null one is not there: its step is left out.
struct AppChannels
{
    UsageLog *usageLog = nullptr;
    UpdateCheck *updates = nullptr;
    AnnouncementCheck *announcements = nullptr;
};

/// The application object: owns what the window shows, in the order in which it comes up, and answers to the
/// window's appearing and leaving. Main thread.
class CadorelApp : public QObject
{
    Q_OBJECT
public:
    /// How the player stands to the listener: `inactive` is in sight without the keyboard, `background` is
    /// out of sight or about to end.
    enum class ScenePhase { active, inactive, background };
    Q_ENUM(ScenePhase)

    /// @param platform, the services and @param sources outlive the application
    CadorelApp(Platform &platform, AudioPlayerService &audioPlayer, LocalMusicImportService &importService,
               const AppLook &look, LibrarySources sources = {}, AppChannels channels = {});
    /// On the services that the process shares, which come up in their order: the player first, and with it
    /// the last song.
    static std::unique_ptr<CadorelApp> onSharedServices(Platform &platform, AppChannels channels = {});
    ~CadorelApp() override;
    Q_DISABLE_COPY_MOVE(CadorelApp)

    CadorelViewModel &viewModel() { return m_viewModel; }
    PlaybackViewModel &playback() { return m_playback; }
    LibraryViewModel &library() { return m_library; }
    ThemeService &themeService() const { return m_themeService; }
    ThemeManager &themeManager() const { return m_themeManager; }

    /// The root screen is there: the launch is logged, then updates are asked for, and only then, and only if
    /// no update is forced, announcements.
    void rootAppeared();
    /// The first frame is on the screen: files that were put into the music directory by hand are taken up.
    void firstFrameDrawn();
    /// Leaving the foreground keeps the place in the song.
    void setScenePhase(ScenePhase phase);
    /// The process ends. One that was out of sight already has played on since.
    void aboutToEnd();
    ScenePhase scenePhase() const { return m_scenePhase; }
    /// This version may not be used any more: nothing may stand before the update.
    bool isForceUpdateRequired() const { return m_isForceUpdateRequired; }

Q_SIGNALS:
    void isForceUpdateRequiredChanged();

private:
    QCoro::Task<void> askChannels();

    AudioPlayerService &m_audioPlayer;
    LocalMusicImportService &m_importService;
    AppChannels m_channels;
    CadorelViewModel m_viewModel;
    PlaybackViewModel m_playback;
    LibraryViewModel m_library;
    ThemeService &m_themeService;
    ThemeManager &m_themeManager;
    ScenePhase m_scenePhase = ScenePhase::active;
    bool m_isForceUpdateRequired = false;
};

} // namespace cadorel
