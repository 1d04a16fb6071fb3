// SPDX-License-Identifier: GPL-3.0-or-later
// Figure: frame times while 100,000 rows are scrolled in the real window.
#include "App/CadorelApp.h"
#include "Fakes/FakeAudioEngine.h"
#include "Fakes/FakeHttpClient.h"
#include "Fakes/FakeSecretStore.h"
#include "Platform/PaletteAppearance.h"
#include "Services/APIConfigService.h"
#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/LyricsOffsetService.h"
#include "Services/NavidromeService.h"
#include "Services/OnlineMusicService.h"
#include "Services/PlaylistService.h"
#include "Services/ThemeService.h"
#include "Services/WebDAVService.h"
#include "Support/MadeLibrary.h"
#include "Support/MadeSound.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Support/Scroller.h"
#include "Theme/KawaiiDecorations.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/ScreenModels.h"
#include "Views/UserInterface.h"

#include <QCoroTask>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>

using namespace cadorel;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int songCount = 100'000;
constexpr int usualSeconds = 10;
constexpr double barMs = 16;
constexpr auto homeVariable = "CADOREL_BENCH_HOME";

void measure(Report &report, QQuickWindow &window, const QString &name, double pixelsPerFrame)
{
    auto *list = window.findChild<QQuickItem *>(u"songList"_s);
    if (!list || list->property("count").toInt() != songCount)
        qFatal("the list does not show the library");
    Scroller scroller(window, *list, pixelsPerFrame);
    const QList<double> frames = scroller.run(std::chrono::seconds(measuredSeconds(usualSeconds)));
    constexpr double nearlyAll = 0.99;
    constexpr double half = 0.5;
    report.add({.what = u"%1: frame, 99th percentile of %2"_s.arg(name).arg(frames.size()),
                .value = percentile(frames, nearlyAll),
                .unit = u"ms"_s,
                .bar = barMs});
    report.add({.what = u"  in the middle"_s, .value = percentile(frames, half), .unit = u"ms"_s});
    report.add({.what = u"  the longest"_s, .value = percentile(frames, 1), .unit = u"ms"_s});
}

/// The part that has a display: its backend comes from the environment.
int scroll()
{
    Report report;
    MadeHome home(qEnvironmentVariable(homeVariable));
    Platform platform = home.platform();
    platform.httpClient = std::make_unique<FakeHttpClient>();
    platform.secretStore = std::make_unique<FakeSecretStore>();
    platform.desktopAppearance = std::make_unique<PaletteAppearance>();
    LocalMusicImportService service(platform);
    WebDAVService webDAVService(platform);
    PlaylistService playlistService(platform, service);
    NavidromeService navidromeService(platform);
    LyricsOffsetService lyricsOffsetService(platform);
    ThemeManager themeManager(*platform.preferences, *platform.desktopAppearance);
    ThemeService themeService(*platform.preferences, themeManager, *platform.desktopAppearance);
    KawaiiDecorations kawaiiDecorations(*platform.clock, *platform.random);
    APIConfigService apiConfig(platform);
    OnlineMusicService onlineMusicService(platform, apiConfig);
    EqualizerService equalizerService(*platform.preferences, std::make_unique<FakeAudioEngine>());
    AudioPlayerService player(platform, service, {.equalizer = &equalizerService});
    CadorelApp app(platform, player, service, {themeService, themeManager});
    ScreenModels screens({.platform = platform,
                          .audioPlayer = player,
                          .importService = service,
                          .equalizer = equalizerService,
                          .playlists = playlistService,
                          .apiConfig = apiConfig,
                          .onlineMusic = onlineMusicService,
                          .webDAV = webDAVService,
                          .navidrome = navidromeService,
                          .lyricsOffset = lyricsOffsetService,
                          .appearance = themeService},
                         app.viewModel(), app.library(), app.playback());
    QQmlApplicationEngine engine;
    installFonts();
    installUserInterface(engine, {.desktopAppearance = platform.desktopAppearance.get(),
                                  .themeManager = &themeManager,
                                  .kawaiiDecorations = &kawaiiDecorations,
                                  .themeService = &themeService});
    engine.setInitialProperties(screens.windowProperties());
    engine.load(u"qrc:/qt/qml/Cadorel/Main.qml"_s);
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (window)
        window->show();
    if (!window || !waitFor([&] { return window->isExposed(); }, 20s))
        qFatal("no window");
    const QString backend = window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software
                                ? u"raster"_s
                                : u"OpenGL"_s;
    constexpr double flick = 42;   // 2,500 pixels a second: as fast as a finger can make it
    constexpr double drag = 10680; // through all rows in ten seconds: the scroll bar's handle
    measure(report, *window, backend + ", flick"_L1, flick);
    measure(report, *window, backend + ", scroll bar"_L1, drag);
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsSet(homeVariable)) {
        const QGuiApplication application(argc, argv);
        return scroll();
    }
    const QCoreApplication application(argc, argv);
    const VirtualDisplay display;
    const MadeHome home;
    makeLibrary(home.directories(), songCount);
    for (const auto &[variable, value] :
         {std::pair("QSG_RHI_BACKEND", "opengl"), std::pair("QT_QUICK_BACKEND", "software")}) {
        QProcess process;
        QProcessEnvironment environment = home.environment();
        display.enter(environment);
        environment.insert(QString::fromLatin1(variable), QString::fromLatin1(value));
        environment.insert(QString::fromLatin1(homeVariable), home.root());
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QCoreApplication::applicationFilePath(), QStringList());
        if (!process.waitForFinished(-1) || process.exitCode() != 0)
            return 1;
    }
    return 0;
}
