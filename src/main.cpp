// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/CadorelApp.h"
#include "App/LinuxPlatform.h"
#include "App/MediaKeys.h"
#include "App/WindowMemory.h"
#include "App/WindowScene.h"
#include "Platform/Linux/LinuxDirectories.h"
#include "Platform/Linux/SignalWatcher.h"
#include "Platform/Linux/SingleInstance.h"
#include "Platform/Pulse/MediaRole.h"
#include "Platform/SharedServices.h"
#include "Services/APIConfigService.h"
#include "Services/AppIconService.h"
#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/LyricsOffsetService.h"
#include "Services/NavidromeService.h"
#include "Services/OnlineMusicService.h"
#include "Services/PlaylistService.h"
#include "Services/ThemeService.h"
#include "Services/WebDAVService.h"
#include "Theme/KawaiiDecorations.h"
#include "Theme/ThemeManager.h"
#include "Utils/KeychainHelper.h"
#include "ViewModels/RemoteCovers.h"
#include "ViewModels/ScreenModels.h"
#include "Views/UserInterface.h"

#include <QDir>
#include <QGuiApplication>
#include <QLocale>
#include <QLoggingCategory>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QThreadPool>

#include <chrono>
#include <clocale>
#include <memory>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(logApp, "cadorel.app", QtCriticalMsg)

/// How long the end of the program waits for a password that is being stored.
constexpr std::chrono::milliseconds keychainLimit{2000};

/// A machine without a graphics card draws OpenGL with the processor, every frame whole. Qt's own software
/// renderer draws only what has changed, which costs a tenth of that while a song plays.
void chooseRenderer()
{
    const bool isChosen =
        qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
    const bool hasGraphicsCard = !QDir(u"/dev/dri"_s).entryList({u"renderD*"_s}, QDir::System).isEmpty();
    if (!isChosen && !hasGraphicsCard)
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

int run(QGuiApplication &application, SingleInstance &instance, Platform &platform)
{
    setProcessPlatform(&platform);
    const std::unique_ptr<CadorelApp> app = CadorelApp::onSharedServices(platform);
    CadorelApp &player = *app;
    ScreenModels screens({.platform = platform,
                          .audioPlayer = AudioPlayerService::shared(),
                          .importService = LocalMusicImportService::shared(),
                          .equalizer = EqualizerService::shared(),
                          .playlists = PlaylistService::shared(),
                          .apiConfig = APIConfigService::shared(),
                          .onlineMusic = OnlineMusicService::shared(),
                          .webDAV = WebDAVService::shared(),
                          .navidrome = NavidromeService::shared(),
                          .lyricsOffset = LyricsOffsetService::shared(),
                          .appearance = player.themeService()},
                         player.viewModel(), player.library(), player.playback());

    RemoteCovers remoteCovers(*platform.httpClient, *platform.clock);
    KawaiiDecorations kawaiiDecorations(*platform.clock, *platform.random);
    QQmlApplicationEngine engine;
    installUserInterface(engine, {.remoteCovers = &remoteCovers,
                                  .desktopAppearance = platform.desktopAppearance.get(),
                                  .themeManager = &player.themeManager(),
                                  .kawaiiDecorations = &kawaiiDecorations,
                                  .themeService = &player.themeService(),
                                  .appIconService = &AppIconService::shared()});
    engine.setInitialProperties(screens.windowProperties());
    engine.load(u"qrc:/qt/qml/Cadorel/Main.qml"_s);
    auto *window = engine.rootObjects().isEmpty()
                       ? nullptr
                       : qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    if (!window) {
        qCritical("the window could not be made");
        return 1;
    }

    WindowMemory memory(*window, *platform.preferences, *platform.clock);
    const MediaKeys mediaKeys(*window, player.viewModel());
    WindowScene scene(*window, player);
    QObject::connect(&instance, &SingleInstance::raiseRequested, &scene, &WindowScene::raise);
    QObject::connect(
        window, &QQuickWindow::frameSwapped, &player,
        [&player] {
            qCInfo(logApp, "first frame"); // what the start is measured by
            player.firstFrameDrawn();
        },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    QObject::connect(&application, &QGuiApplication::aboutToQuit, &player,
                     [&player] { player.aboutToEnd(); });
    const RemoteCommandCenter &desktop = *platform.remoteCommandCenter;
    QObject::connect(&desktop, &RemoteCommandCenter::raiseCommand, &scene, [&scene] { scene.raise({}); });
    QObject::connect(&desktop, &RemoteCommandCenter::quitCommand, &application, &QGuiApplication::quit);
    const SignalWatcher signalWatcher;
    QObject::connect(&signalWatcher, &SignalWatcher::terminationRequested, &application,
                     &QGuiApplication::quit);
    memory.show();
    player.rootAppeared();
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QByteArray activationToken = SingleInstance::activationToken();
    chooseRenderer();
    declareMusic();
    QGuiApplication application(argc, argv);
    // The player engine reads and writes numbers with a point, whatever the listener's language.
    std::setlocale(LC_NUMERIC, "C");
    QGuiApplication::setApplicationName(u"cadorel"_s);
    QGuiApplication::setApplicationVersion(QStringLiteral(CADOREL_VERSION));
    QGuiApplication::setDesktopFileName(u"com.cadorel.Player"_s);
    installFonts();

    const Directories directories = makeDirectories();
    const auto instance = SingleInstance::acquire(directories.applicationSupport, activationToken);
    if (!instance)
        return instance.error() == SingleInstance::Refusal::raised ? 0 : 1;

    Platform platform = makeLinuxPlatform(directories);
    KeychainHelper::setStore(platform.secretStore.get());
    const int status = run(application, **instance, platform);
    // A password on its way lands. A keyring that asks the listener, or says nothing, is not waited for.
    KeychainHelper::queue().waitForDone(static_cast<int>(keychainLimit.count()));
    platform.secretStore->close();
    KeychainHelper::queue().waitForDone();
    // What is still being copied or written lands before the machine's parts go.
    QThreadPool::globalInstance()->waitForDone();
    releaseSharedServices();
    KeychainHelper::setStore(nullptr);
    return status;
}
