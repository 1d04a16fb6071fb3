// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeAssetReader.h"
#include "Fakes/FakeAudioEngine.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakeFolders.h"
#include "Fakes/FakeOutputDevices.h"
#include "Fakes/FakeSecretStore.h"
#include "Fakes/FakeStreamPlayer.h"
#include "Fakes/FakeSubsonic.h"
#include "Fakes/FakeSystem.h"
#include "Models/NavidromeConfig.h"
#include "Models/WebDAVConfig.h"
#include "Platform/Platform.h"
#include "Views/TestAppearance.h"

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <memory>

namespace cadorel {

class APIConfigService;
class AppIconService;
class AudioPlayerService;
class CadorelViewModel;
class ContentViewModel;
class EqualizerService;
class EqualizerViewModel;
class KawaiiDecorations;
class LibraryViewModel;
class LocalMusicImportService;
class LyricsOffsetService;
class OnlineMusicService;
class OnlineViewModel;
class NavidromeService;
class NavidromeServersViewModel;
class PlaybackViewModel;
class RemoteCovers;
class PlaylistService;
class PlaylistsViewModel;
class ScreenModels;
class ThemeManager;
class ThemeService;
class WebDAVServersViewModel;
class WebDAVService;
class WebDAVStreamingService;

/// The real window over the real services, which stand on fakes and on a throw-away home.
class TestWindow
{
public:
    /// @param network the web; without one, a fake that the test answers for
    explicit TestWindow(std::unique_ptr<HttpClient> network = nullptr);
    ~TestWindow();
    Q_DISABLE_COPY_MOVE(TestWindow)

    struct MadeSong
    {
        QString title;
        QString artist;
        QString album;
        double duration = 0;
        QByteArray cover;
    };

    /// Puts a file with these tags into the music folder, for the next scan. @return its path
    QString addFile(const QString &name, const MadeSong &song);
    /// The same outside of the music folder. @return its path
    QString addForeignFile(const QString &relativePath, const MadeSong &song);
    /// Takes up what lies in the music folder; waits for it.
    bool scan();
    /// Stores a server, its password included.
    WebDAVConfig addServer(const QString &name, const QString &basePath = QStringLiteral("/music"));
    /// Stores a Subsonic server, its password included.
    NavidromeConfig addNavidrome(const QString &name,
                                 const QString &serverURL = QStringLiteral("https://music.test"));
    /// Finds the songs of a server in its folders, before the window is shown.
    bool scanServer(const WebDAVConfig &config);
    /// Loads the window and waits until it is shown.
    bool show();

    /// The item of that name in the scene, popups included, rather one that is seen; null when there is none.
    QQuickItem *item(const QString &name) const;
    QList<QQuickItem *> visibleItems() const;
    /// Whether item() is there and seen.
    bool shows(const QString &name) const;
    /// The object of that name anywhere below the window: popups and dialogs are no items.
    QObject *object(const QString &name) const;
    /// The row of the song list; null when it is not on the screen.
    QQuickItem *row(int index) const;
    void click(QQuickItem *target, Qt::MouseButton button = Qt::LeftButton) const;
    void click(const QString &name) const;
    static QPoint centre(const QQuickItem *item);

    /// Made picture: a JPEG with two colours.
    static QByteArray picture(const QColor &from, const QColor &to, const QSize &size = {600, 600});

    QTemporaryDir home;
    Platform platform;
    FakeStreamPlayer *player = nullptr; // null until the first song
    FakeAudioEngine *audioEngine = nullptr;
    FakeAssetReader *reader = nullptr;
    FakeClock *clock = nullptr;
    FakeSystem *system = nullptr;
    TestAppearance *appearance = nullptr;
    FakeOutputDevices *outputDevices = nullptr;
    FakeSecretStore *secrets = nullptr;
    /// Null where the test has brought a network.
    FakeHttpClient *web = nullptr;
    /// What the servers hold that the fake web leads to.
    std::unique_ptr<FakeFolders> folders;
    std::unique_ptr<FakeSubsonic> subsonic;
    std::unique_ptr<LocalMusicImportService> importService;
    std::unique_ptr<WebDAVService> webDAVService;
    std::unique_ptr<PlaylistService> playlistService;
    std::unique_ptr<NavidromeService> navidromeService;
    std::unique_ptr<LyricsOffsetService> lyricsOffsetService;
    std::unique_ptr<WebDAVStreamingService> streaming;
    std::unique_ptr<APIConfigService> apiConfig;
    std::unique_ptr<OnlineMusicService> onlineMusicService;
    std::unique_ptr<EqualizerService> equalizerService;
    std::unique_ptr<AudioPlayerService> audioPlayer;
    std::unique_ptr<CadorelViewModel> viewModel;
    std::unique_ptr<LibraryViewModel> library;
    std::unique_ptr<PlaybackViewModel> playback;
    std::unique_ptr<ScreenModels> screens;
    WebDAVServersViewModel *servers = nullptr;
    OnlineViewModel *online = nullptr;
    PlaylistsViewModel *playlists = nullptr;
    NavidromeServersViewModel *navidrome = nullptr;
    EqualizerViewModel *equalizer = nullptr;
    ContentViewModel *content = nullptr;
    /// Fetches covers from the web, if the test has made it before the window is shown.
    std::unique_ptr<RemoteCovers> remoteCovers;
    std::unique_ptr<KawaiiDecorations> kawaiiDecorations;
    std::unique_ptr<AppIconService> appIconService;
    std::unique_ptr<ThemeManager> themeManager;
    std::unique_ptr<ThemeService> themeService;
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow *window = nullptr;
};

} // namespace cadorel
