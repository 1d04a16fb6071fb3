// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/LivePlayer.h"

#include "Fakes/Await.h"
#include "Platform/Linux/FileSecretStore.h"
#include "Platform/Linux/LinuxSystem.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/SystemRandom.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Platform/Mpv/MpvStreamPlayer.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Platform/Sql/SqlitePreferences.h"
#include "Utils/KeychainHelper.h"

#include <QDir>
#include <QDirIterator>
#include <QTest>
#include <QThreadPool>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

LivePlayer::LivePlayer()
{
    start();
}

LivePlayer::~LivePlayer()
{
    stop();
}

void LivePlayer::start()
{
    m_platform = {};
    m_platform.directories = {.documents = m_home.filePath(u"music"_s),
                              .applicationSupport = m_home.filePath(u"data"_s),
                              .caches = m_home.filePath(u"caches"_s)};
    const Directories &directories = m_platform.directories;
    for (const QString &path : {directories.documents, directories.applicationSupport, directories.caches})
        QDir().mkpath(path);
    m_platform.preferences =
        std::make_unique<SqlitePreferences>(directories.applicationSupport + u"/preferences.sqlite"_s);
    m_platform.clock = std::make_unique<SystemClock>();
    m_platform.random = std::make_unique<SystemRandom>();
    m_platform.system = std::make_unique<LinuxSystem>(directories.applicationSupport);
    m_platform.assetReader = std::make_unique<FileAssetReader>();
    m_platform.makeStreamPlayer = [this] {
        return std::make_unique<MpvStreamPlayer>(*m_platform.assetReader);
    };
    m_platform.httpClient = std::make_unique<NetworkHttpClient>();
    m_platform.secretStore = std::make_unique<FileSecretStore>(passwordFile());
    KeychainHelper::setStore(m_platform.secretStore.get());

    m_api = std::make_unique<APIConfigService>(m_platform);
    m_servers = std::make_unique<WebDAVService>(m_platform);
    m_navidrome = std::make_unique<NavidromeService>(m_platform);
    m_streaming = std::make_unique<WebDAVStreamingService>(m_platform);
    m_importService = std::make_unique<LocalMusicImportService>(m_platform);
    m_player =
        std::make_unique<AudioPlayerService>(m_platform, *m_importService,
                                             AudioPlayerParts{.streaming = m_streaming.get(),
                                                              .onlineAddresses = m_api.get(),
                                                              .updateSongMetadata = [this](const Song &song) {
                                                                  m_servers->updateSongMetadata(song);
                                                              }});
    QVERIFY(await(m_servers->songsLoaded()));
}

void LivePlayer::stop()
{
    QVERIFY(await(m_servers->songsStored()));
    m_player->persistPlaybackSnapshot();
    KeychainHelper::queue().waitForDone();
    QThreadPool::globalInstance()->waitForDone();
    m_player.reset();
    m_importService.reset();
    m_streaming.reset();
    m_navidrome.reset();
    m_servers.reset();
    m_api.reset();
    KeychainHelper::setStore(nullptr);
    m_platform = {};
}

void LivePlayer::restart()
{
    stop();
    start();
}

bool LivePlayer::scan(const WebDAVConfig &config, const QString &password)
{
    return await(m_servers->saveConfig(config, password)) && await(m_servers->scanMusic(config)) &&
           !m_servers->error();
}

Song LivePlayer::song(const QString &title)
{
    const QList<Song> songs = m_servers->webDAVSongs();
    const auto found =
        std::ranges::find_if(songs, [&](const Song &candidate) { return candidate.title() == title; });
    if (found == songs.end())
        qFatal("there is no song with the title %s", qPrintable(title));
    return *found;
}

void LivePlayer::play(const QString &title)
{
    m_player->playSong(song(title), m_servers->webDAVSongs());
}

QString LivePlayer::current() const
{
    return m_player->currentSong() ? m_player->currentSong()->title() : QString();
}

QStringList LivePlayer::copies() const
{
    return QDir(m_home.filePath(u"caches/WebDAVCache"_s))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QStringList LivePlayer::everythingElse() const
{
    QStringList paths;
    QDirIterator entries(m_home.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        // The preferences' own files come and go.
        if (!path.contains(u"/WebDAVCache"_s) && !path.contains(u"/preferences.sqlite"_s))
            paths.append(path);
    }
    paths.sort();
    return paths;
}

const QStringList &LivePlayer::lines()
{
    m_lines += m_console.take();
    return m_lines;
}

bool LivePlayer::says(const QString &beginning)
{
    return QTest::qWaitFor(
        [&] {
            return std::ranges::any_of(lines(),
                                       [&](const QString &line) { return line.startsWith(beginning); });
        },
        patienceMs);
}

} // namespace cadorel
