// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/TestApp.h"

#include "Fakes/FakeAssetReader.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakePreferences.h"
#include "Fakes/FakeRandom.h"
#include "Fakes/FakeSystem.h"
#include "Utils/Console.h"

#include <QDir>
#include <QTest>

namespace cadorel {

using namespace Qt::StringLiterals;

TestApp::TestApp()
{
    setConsoleSink([](const QString &) {});
    platform.directories = {.documents = home.filePath(u"Music"_s),
                            .applicationSupport = home.filePath(u"data"_s),
                            .caches = home.filePath(u"cache"_s)};
    QDir().mkpath(platform.directories.documents);
    platform.preferences = std::make_unique<FakePreferences>();
    platform.clock = std::make_unique<FakeClock>();
    platform.random = std::make_unique<FakeRandom>();
    platform.system = std::make_unique<FakeSystem>();
    platform.assetReader = std::make_unique<FakeAssetReader>();
    platform.makeStreamPlayer = [this] {
        auto made = std::make_unique<FakeStreamPlayer>();
        streamPlayer = made.get();
        return made;
    };
    importService = std::make_unique<LocalMusicImportService>(platform);
    player = std::make_unique<AudioPlayerService>(platform, *importService);
    platform.desktopAppearance = std::make_unique<FakeDesktopAppearance>(ColorScheme::light);
    themeManager = std::make_unique<ThemeManager>(*platform.preferences, *platform.desktopAppearance);
    themeService =
        std::make_unique<ThemeService>(*platform.preferences, *themeManager, *platform.desktopAppearance);
    app = std::make_unique<CadorelApp>(platform, *player, *importService,
                                       AppLook{.themeService = *themeService, .themeManager = *themeManager},
                                       LibrarySources(), AppChannels{&channels, &channels, &channels});
}

TestApp::~TestApp()
{
    app.reset();
    themeService.reset();
    themeManager.reset();
    player.reset();
    importService.reset();
    setConsoleSink({});
}

bool TestApp::playASong()
{
    SongFields fields;
    fields.id = u"1"_s;
    fields.assetURL = QUrl::fromLocalFile(home.filePath(u"song.mp3"_s));
    player->playSong(Song(fields), {});
    constexpr double seconds = 10;
    streamPlayer->lastItem()->answerDuration(seconds);
    const bool isKnown = QTest::qWaitFor([this] { return player->duration() == seconds; });
    platform.preferences->remove(u"lastPlaybackState"_s);
    return isKnown;
}

} // namespace cadorel
