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
#include "Support/Backends.h"
#include "Support/Frames.h"
#include "Support/MadeHome.h"
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

void measureList(Report &report, QQuickWindow &window, const QString &name, double pixelsPerFrame)
{
    auto *list = window.findChild<QQuickItem *>(u"songList"_s);
    if (!list || list->property("count").toInt() != songCount)
        qFatal("the list does not show the library");
    Scroller scroller(window, *list, pixelsPerFrame);
    const QList<double> frames = scroller.run(std::chrono::seconds(measuredSeconds(usualSeconds)));
    addFrames(report, {.name = name, .frames = frames, .lateBar = barMs});
    report.add({.what = u"  the longest"_s, .value = percentile(frames, 1), .unit = u"ms"_s});
}

void prepare(const MadeHome &home)
{
    makeLibrary(home.directories(), songCount);
}

/// The part that has a display: its backend comes from the environment.
void measure(const MadeHome &home)
{
    Report report;
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
    if (!window)
        qFatal("no window");
    showWindow(*window);
    const QString backend = backendName(*window);
    constexpr double flick = 42;   // 2,500 pixels a second: as fast as a finger can make it
    constexpr double drag = 10680; // through all rows in ten seconds: the scroll bar's handle
    measureList(report, *window, backend + ", flick"_L1, flick);
    measureList(report, *window, backend + ", scroll bar"_L1, drag);
}

} // namespace

int main(int argc, char *argv[])
{
    return measureOnEachBackend(argc, argv, measure, prepare);
}
