// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/CadorelApp.h"

#include "Services/APIConfigService.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/OnlineMusicService.h"
#include "Services/PlaylistService.h"
#include "Services/Seams/ServerChannels.h"
#include "Services/ThemeService.h"
#include "Services/WebDAVService.h"
#include "Theme/ThemeManager.h"

#include <QPointer>

#include <QCoroTask>

namespace cadorel {

CadorelApp::CadorelApp(Platform &platform, AudioPlayerService &audioPlayer,
                       LocalMusicImportService &importService, const AppLook &look, LibrarySources sources,
                       AppChannels channels)
    : m_audioPlayer(audioPlayer)
    , m_importService(importService)
    , m_channels(channels)
    , m_viewModel(audioPlayer, importService, sources)
    , m_playback(m_viewModel, sources.onlineAddresses)
    , m_library(m_viewModel, platform)
    , m_themeService(look.themeService)
    , m_themeManager(look.themeManager)
{
}

std::unique_ptr<CadorelApp> CadorelApp::onSharedServices(Platform &platform, AppChannels channels)
{
    AudioPlayerService &audioPlayer = AudioPlayerService::shared();
    PlaylistService &playlistService = PlaylistService::shared();
    OnlineMusicService &onlineMusicService = OnlineMusicService::shared();
    LocalMusicImportService &importService = LocalMusicImportService::shared();
    WebDAVService &webDAVService = WebDAVService::shared();
    ThemeService &themeService = ThemeService::shared();
    return std::make_unique<CadorelApp>(
        platform, audioPlayer, importService,
        AppLook{.themeService = themeService, .themeManager = ThemeManager::shared()},
        LibrarySources{.playlistService = &playlistService,
                       .onlineMusicService = &onlineMusicService,
                       .webDAVService = &webDAVService,
                       .onlineAddresses = &APIConfigService::shared()},
        channels);
}

CadorelApp::~CadorelApp() = default;

void CadorelApp::rootAppeared()
{
    if (m_channels.usageLog)
        m_channels.usageLog->logAppLaunch();
    askChannels();
}

QCoro::Task<void> CadorelApp::askChannels()
{
    const QPointer<CadorelApp> self(this);
    if (m_channels.updates) {
        co_await m_channels.updates->checkForUpdates(false);
        if (!self)
            co_return;
        m_isForceUpdateRequired = m_channels.updates->isForceUpdateRequired();
        if (m_isForceUpdateRequired) {
            Q_EMIT isForceUpdateRequiredChanged();
            co_return;
        }
    }
    if (m_channels.announcements)
        co_await m_channels.announcements->checkAnnouncements();
}

void CadorelApp::firstFrameDrawn()
{
    m_importService.rescan();
}

void CadorelApp::setScenePhase(ScenePhase phase)
{
    if (m_scenePhase == phase)
        return;
    m_scenePhase = phase;
    if (phase == ScenePhase::active)
        return;
    m_audioPlayer.persistPlaybackSnapshot();
    if (m_channels.usageLog)
        m_channels.usageLog->logAppBackground();
}

void CadorelApp::aboutToEnd()
{
    if (m_scenePhase == ScenePhase::background)
        m_audioPlayer.persistPlaybackSnapshot();
    else
        setScenePhase(ScenePhase::background);
}

} // namespace cadorel
