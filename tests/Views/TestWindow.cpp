// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/TestWindow.h"

#include "Fakes/FakePreferences.h"
#include "Fakes/FakeRandom.h"
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
#include "Services/WebDAVStreamingService.h"
#include "Theme/KawaiiDecorations.h"
#include "Theme/ThemeManager.h"
#include "Utils/KeychainHelper.h"
#include "Utils/Tasks.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "ViewModels/RemoteCovers.h"
#include "ViewModels/ScreenModels.h"
#include "ViewModels/SongListModel.h"
#include "Views/UserInterface.h"

#include <QBuffer>
#include <QPainter>
#include <QTest>
#include <QThreadPool>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

template <typename Visitor>
void visitItems(QQuickItem *root, const Visitor &visitor)
{
    visitor(root);
    const QList<QQuickItem *> children = root->childItems();
    for (QQuickItem *child : children)
        visitItems(child, visitor);
}

void writeFile(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write("not decoded in these tests: " + path.toUtf8());
}

FakeAsset assetOf(const TestWindow::MadeSong &song)
{
    QList<FakeTag> tags;
    const auto add = [&tags](const QString &identifier, CommonKey key, const QString &text) {
        if (!text.isEmpty())
            tags.append({.identifier = identifier, .commonKey = key, .string = text, .data = std::nullopt});
    };
    add(u"id3/TIT2"_s, CommonKey::title, song.title);
    add(u"id3/TPE1"_s, CommonKey::artist, song.artist);
    add(u"id3/TALB"_s, CommonKey::albumName, song.album);
    if (!song.cover.isEmpty()) {
        tags.append({.identifier = u"id3/APIC"_s,
                     .commonKey = CommonKey::artwork,
                     .string = std::nullopt,
                     .data = song.cover});
    }
    FakeAsset asset;
    asset.duration = song.duration;
    asset.common = tags;
    asset.all = tags;
    return asset;
}

} // namespace

TestWindow::TestWindow(std::unique_ptr<HttpClient> network)
{
    platform.directories = {.documents = home.filePath(u"Music/Cadorel"_s),
                            .applicationSupport = home.filePath(u"data"_s),
                            .caches = home.filePath(u"cache"_s)};
    for (const QString &folder : {platform.directories.documents, platform.directories.applicationSupport,
                                  platform.directories.caches})
        QDir().mkpath(folder);
    platform.preferences = std::make_unique<FakePreferences>();
    auto madeClock = std::make_unique<FakeClock>();
    clock = madeClock.get();
    platform.clock = std::move(madeClock);
    platform.random = std::make_unique<FakeRandom>();
    auto madeSystem = std::make_unique<FakeSystem>();
    system = madeSystem.get();
    platform.system = std::move(madeSystem);
    auto madeSecrets = std::make_unique<FakeSecretStore>();
    secrets = madeSecrets.get();
    platform.secretStore = std::move(madeSecrets);
    KeychainHelper::setStore(secrets);
    if (!network) {
        auto madeWeb = std::make_unique<FakeHttpClient>();
        web = madeWeb.get();
        folders = std::make_unique<FakeFolders>(*web);
        subsonic = std::make_unique<FakeSubsonic>(*web);
        network = std::move(madeWeb);
    }
    platform.httpClient = std::move(network);
    auto madeAppearance = std::make_unique<TestAppearance>();
    appearance = madeAppearance.get();
    platform.desktopAppearance = std::move(madeAppearance);
    auto madeDevices = std::make_unique<FakeOutputDevices>();
    outputDevices = madeDevices.get();
    platform.outputDevices = std::move(madeDevices);
    kawaiiDecorations = std::make_unique<KawaiiDecorations>(*platform.clock, *platform.random);
    themeManager = std::make_unique<ThemeManager>(*platform.preferences, *platform.desktopAppearance);
    themeService =
        std::make_unique<ThemeService>(*platform.preferences, *themeManager, *platform.desktopAppearance);
    appIconService = std::make_unique<AppIconService>(*system);
    auto madeReader = std::make_unique<FakeAssetReader>();
    reader = madeReader.get();
    platform.assetReader = std::move(madeReader);
    platform.makeStreamPlayer = [this] {
        auto made = std::make_unique<FakeStreamPlayer>();
        player = made.get();
        return made;
    };
    importService = std::make_unique<LocalMusicImportService>(platform);
    webDAVService = std::make_unique<WebDAVService>(platform);
    playlistService = std::make_unique<PlaylistService>(platform, *importService);
    navidromeService = std::make_unique<NavidromeService>(platform);
    lyricsOffsetService = std::make_unique<LyricsOffsetService>(platform);
    streaming = std::make_unique<WebDAVStreamingService>(platform);
    apiConfig = std::make_unique<APIConfigService>(platform);
    onlineMusicService = std::make_unique<OnlineMusicService>(platform, *apiConfig);
    auto madeEngine = std::make_unique<FakeAudioEngine>();
    audioEngine = madeEngine.get();
    equalizerService = std::make_unique<EqualizerService>(*platform.preferences, std::move(madeEngine));
    audioPlayer =
        std::make_unique<AudioPlayerService>(platform, *importService,
                                             AudioPlayerParts{.equalizer = equalizerService.get(),
                                                              .streaming = streaming.get(),
                                                              .onlineAddresses = apiConfig.get(),
                                                              .updateSongMetadata = [this](const Song &song) {
                                                                  webDAVService->updateSongMetadata(song);
                                                              }});
    viewModel =
        std::make_unique<CadorelViewModel>(*audioPlayer, *importService,
                                           LibrarySources{.playlistService = playlistService.get(),
                                                          .onlineMusicService = onlineMusicService.get(),
                                                          .webDAVService = webDAVService.get(),
                                                          .onlineAddresses = apiConfig.get()});
    library = std::make_unique<LibraryViewModel>(*viewModel, platform);
    playback = std::make_unique<PlaybackViewModel>(*viewModel, apiConfig.get());
    screens = std::make_unique<ScreenModels>(ScreenServices{.platform = platform,
                                                            .audioPlayer = *audioPlayer,
                                                            .importService = *importService,
                                                            .equalizer = *equalizerService,
                                                            .playlists = *playlistService,
                                                            .apiConfig = *apiConfig,
                                                            .onlineMusic = *onlineMusicService,
                                                            .webDAV = *webDAVService,
                                                            .navidrome = *navidromeService,
                                                            .lyricsOffset = *lyricsOffsetService,
                                                            .appearance = *themeService},
                                             *viewModel, *library, *playback);
    servers = screens->servers();
    online = screens->online();
    playlists = screens->playlists();
    navidrome = screens->navidrome();
    equalizer = screens->equalizer();
    content = screens->content();
}

TestWindow::~TestWindow()
{
    // The services live as long as the process; what is under way in them ends first.
    if (!QTest::qWaitFor([this] { return !importService->isImporting() && !importService->isScanning(); }))
        qWarning("an import does not end");
    engine.reset();
    // A request or a secret that nobody answers would keep what waits for it.
    secrets->close();
    KeychainHelper::queue().waitForDone();
    while (web && !web->pending.empty())
        web->answer(std::unexpected(HttpError{HttpError::Kind::cancelled, u"the test has ended"_s}));
    if (!QTest::qWaitFor([this, stored = webDAVService->songsStored()] {
            return stored.isReady() && !webDAVService->isScanning();
        }))
        qWarning("a scan does not end");
    screens.reset();
    QCoreApplication::processEvents();
    KeychainHelper::setStore(nullptr);
}

WebDAVConfig TestWindow::addServer(const QString &name, const QString &basePath)
{
    WebDAVConfig config;
    config.name = name;
    config.serverURL = u"https://dav.example.com"_s;
    config.username = u"listener"_s;
    config.basePath = basePath;
    detach(webDAVService->saveConfig(config, u"secret"_s));
    if (!QTest::qWaitFor([this, &config] { return webDAVService->configs().contains(config); }))
        qFatal("a server is not stored");
    return config;
}

NavidromeConfig TestWindow::addNavidrome(const QString &name, const QString &serverURL)
{
    NavidromeConfig config;
    config.name = name;
    config.serverURL = serverURL;
    config.username = u"listener"_s;
    detach(navidromeService->saveConfig(config, u"sesame"_s));
    if (!QTest::qWaitFor([this, &config] { return navidromeService->configs().contains(config); }))
        qFatal("a server is not stored");
    return config;
}

bool TestWindow::scanServer(const WebDAVConfig &config)
{
    detach(webDAVService->scanMusic(config));
    return QTest::qWaitFor([this] {
        folders->answerAll();
        return !webDAVService->isScanning();
    });
}

QString TestWindow::addFile(const QString &name, const MadeSong &song)
{
    reader->assets.insert(name, assetOf(song));
    const QString path = platform.directories.documents + u'/' + name;
    writeFile(path);
    return path;
}

QString TestWindow::addForeignFile(const QString &relativePath, const MadeSong &song)
{
    const QString name = QFileInfo(relativePath).fileName();
    reader->assets.insert(name, assetOf(song));
    // The import reads the tags of its own copy.
    reader->assets.insert(LocalMusicImportService::storedName(name), assetOf(song));
    const QString path = home.filePath(relativePath);
    writeFile(path);
    return path;
}

bool TestWindow::scan()
{
    importService->rescan();
    return QTest::qWaitFor([this] { return !importService->isScanning(); }) && QTest::qWaitFor([this] {
               return library->songs()->count() == importService->importedSongs().size();
           });
}

bool TestWindow::show()
{
    engine = std::make_unique<QQmlApplicationEngine>();
    installUserInterface(*engine, {.remoteCovers = remoteCovers.get(),
                                   .desktopAppearance = platform.desktopAppearance.get(),
                                   .themeManager = themeManager.get(),
                                   .kawaiiDecorations = kawaiiDecorations.get(),
                                   .themeService = themeService.get(),
                                   .appIconService = appIconService.get()});
    engine->setInitialProperties(screens->windowProperties());
    engine->load(QUrl(u"qrc:/qt/qml/Cadorel/Main.qml"_s));
    if (engine->rootObjects().isEmpty())
        return false;
    window = qobject_cast<QQuickWindow *>(engine->rootObjects().constFirst());
    if (!window)
        return false;
    window->show();
    window->requestActivate();
    return QTest::qWaitForWindowExposed(window) && QTest::qWaitForWindowActive(window);
}

QQuickItem *TestWindow::item(const QString &name) const
{
    QQuickItem *found = nullptr;
    visitItems(window->contentItem(), [&](QQuickItem *candidate) {
        if (candidate->objectName() == name && (!found || (!found->isVisible() && candidate->isVisible())))
            found = candidate;
    });
    return found;
}

QList<QQuickItem *> TestWindow::visibleItems() const
{
    QList<QQuickItem *> items;
    visitItems(window->contentItem(), [&items](QQuickItem *candidate) {
        if (candidate->isVisible())
            items.append(candidate);
    });
    return items;
}

bool TestWindow::shows(const QString &name) const
{
    const QQuickItem *found = item(name);
    return found && found->isVisible();
}

QObject *TestWindow::object(const QString &name) const
{
    return window->findChild<QObject *>(name);
}

QQuickItem *TestWindow::row(int index) const
{
    QQuickItem *found = nullptr;
    QMetaObject::invokeMethod(item(u"songList"_s), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, found),
                              Q_ARG(int, index));
    return found;
}

QPoint TestWindow::centre(const QQuickItem *item)
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

void TestWindow::click(QQuickItem *target, Qt::MouseButton button) const
{
    QTest::mouseClick(window, button, {}, centre(target));
}

void TestWindow::click(const QString &name) const
{
    click(item(name));
}

QByteArray TestWindow::picture(const QColor &from, const QColor &to, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient gradient(QPointF(0, 0), QPointF(size.width(), size.height()));
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    painter.fillRect(image.rect(), gradient);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG");
    return bytes;
}

} // namespace cadorel
