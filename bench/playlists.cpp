// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: a playlist of 5,000 songs resolved against 100,000, a favourite that is tapped in a store of 50
// covers, and the load of 200 playlists at the start.
#include "Platform/Sql/SqlitePreferences.h"
#include "Services/LocalMusicImportService.h"
#include "Services/PlaylistService.h"
#include "Support/MadeHome.h"
#include "Support/MadeLibrary.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>

#include <algorithm>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int librarySongs = 100'000;
constexpr int playlistSongs = 5'000;
constexpr int runs = 21;
constexpr double resolveBarMs = 10;
constexpr double frameBarMs = 16;

/// Middle of several runs in milliseconds; @p prepare is not measured.
template <typename Prepare, typename Work>
double medianMs(Prepare prepare, Work work)
{
    constexpr double nsPerMs = 1e6;
    QList<double> times;
    for (int run = 0; run < runs; ++run) {
        prepare();
        QElapsedTimer timer;
        timer.start();
        work();
        times.append(static_cast<double>(timer.nsecsElapsed()) / nsPerMs);
    }
    return median(times);
}

/// Bytes that no encoder makes smaller, as those of a photograph.
QByteArray photograph(QRandomGenerator &random)
{
    constexpr int words = 10'000;
    QList<quint32> noise(words);
    random.fillRange(noise.data(), words);
    return {reinterpret_cast<const char *>(noise.constData()), words * qsizetype{sizeof(quint32)}};
}

QList<OnlineSong> madeOnlineSongs(int count)
{
    QList<OnlineSong> songs;
    songs.reserve(count);
    for (int number = 0; number < count; ++number) {
        songs.append({.id = QString::number(1'800'000'000 + number),
                      .name = u"星河入梦 Quiet River %1"_s.arg(number),
                      .artist = u"晨光 / 远山 %1"_s.arg(number / 12),
                      .album = u"夜航 %1"_s.arg(number / 12),
                      .platform = MusicPlatform::netease,
                      .picUrl = {},
                      .lrcUrl = {}});
    }
    return songs;
}

/// A home with real preferences, and the services as the program builds them.
class Store
{
public:
    Store() { open(); }
    ~Store() { close(); }
    Q_DISABLE_COPY_MOVE(Store)

    PlaylistService &service() { return *m_service; }
    void open()
    {
        m_platform.preferences = std::make_unique<SqlitePreferences>(m_home.path(u"preferences.sqlite"_s));
        m_service = std::make_unique<PlaylistService>(m_platform, m_import);
        settle();
    }
    /// Ends when everything is in the file.
    void close()
    {
        m_service.reset();
        m_platform.preferences.reset();
    }
    static void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    /// Playlists with covers and local songs, beside a big one of online songs and big favourites.
    void fill(int covers)
    {
        constexpr int songsPerPlaylist = 30;
        QRandomGenerator random(1); // NOLINT(bugprone-random-generator-seed): the same covers each time
        const QList<Song> songs = madeSongs(m_home.directories(), 0, playlistSongs);
        for (int number = 0; number < covers; ++number) {
            Playlist playlist = m_service->createPlaylist(u"歌单 %1"_s.arg(number), {}, PlaylistType::local);
            playlist.coverImageData = photograph(random);
            m_service->updatePlaylist(playlist);
            m_service->addSongs(songs.mid(number * songsPerPlaylist % playlistSongs, songsPerPlaylist),
                                playlist);
        }
        const Playlist online = m_service->createPlaylist(u"在线"_s, {}, PlaylistType::online);
        m_service->addOnlineSongs(madeOnlineSongs(playlistSongs), online);
        m_service->addSongs(songs, *m_service->favoritesPlaylist());
        m_service->addOnlineSongs(madeOnlineSongs(playlistSongs), *m_service->favoritesOnlinePlaylist());
        close();
        open();
    }

private:
    MadeHome m_home;
    Platform m_platform = m_home.platform();
    LocalMusicImportService m_import{m_platform};
    std::unique_ptr<PlaylistService> m_service;
};

void measureResolving(Report &report)
{
    const MadeHome home;
    const QList<Song> all = madeSongs(home.directories(), 0, librarySongs);
    QStringList ids;
    for (int number = 0; number < playlistSongs; ++number)
        ids.append(all.at(number * (librarySongs / playlistSongs) + number % 7).id());
    std::shuffle(ids.begin(), ids.end(), QRandomGenerator(1)); // NOLINT(bugprone-random-generator-seed)
    Playlist playlist;
    playlist.songIds = ids;
    const auto resolve = [&](const QString &what) {
        qsizetype found = 0;
        const double ms = medianMs([] {}, [&] { found += PlaylistService::getSongs(playlist, all).size(); });
        if (found == 0)
            qFatal("no song is found");
        report.add({.what = what, .value = ms, .unit = u"ms"_s, .bar = resolveBarMs});
    };
    resolve(u"5,000 songs of 100,000, in no order"_s);
    for (qsizetype i = 0; i < ids.size(); i += 10)
        playlist.songIds[i] = u"gone_%1"_s.arg(i);
    resolve(u"  a tenth of them gone"_s);
    playlist.songIds = ids + ids;
    resolve(u"  each of them twice"_s);
}

void measureFavorite(Report &report, int covers)
{
    Store store;
    store.fill(covers);
    const QList<Song> songs = madeSongs({}, librarySongs, runs);
    const QList<OnlineSong> online = madeOnlineSongs(playlistSongs + runs).last(runs);
    const auto reopen = [&store] {
        store.close();
        store.open();
    };
    const QString stock = u", %1 covers"_s.arg(covers);
    const auto measure = [&](const QString &what, auto prepare, auto work) {
        report.add(
            {.what = what + stock, .value = medianMs(prepare, work), .unit = u"ms"_s, .bar = frameBarMs});
    };
    measure(u"a tapped heart on the main thread, the first"_s, reopen, [&] {
        store.service().toggleFavorite(songs.first());
        store.settle();
    });
    int next = 0;
    const auto toggleNext = [&] {
        store.service().toggleFavorite(songs.at(next++ % runs));
        store.settle();
    };
    const auto toggleNextOnline = [&] {
        store.service().toggleFavorite(online.at(next++ % runs));
        store.settle();
    };
    const auto nothing = [] {};
    toggleNext();
    measure(u"  a later one"_s, nothing, toggleNext);
    measure(u"  a later one, online"_s, nothing, toggleNextOnline);
    report.add({.what = u"  until it is in the file and that is closed"_s,
                .value = medianMs(reopen,
                                  [&] {
                                      store.service().toggleFavorite(songs.at(0));
                                      store.settle();
                                      store.close();
                                  }),
                .unit = u"ms"_s});
}

void measureRows(Report &report)
{
    constexpr int rows = 1'000;
    constexpr double barMs = 1;
    Store store;
    store.fill(0);
    const QList<Song> songs = madeSongs({}, playlistSongs - rows / 2, rows);
    int favorites = 0;
    report.add({.what = u"isFavorite of 1,000 rows, 5,000 favourites"_s,
                .value = medianMs([] {},
                                  [&] {
                                      for (const Song &song : songs)
                                          favorites += store.service().isFavorite(song) ? 1 : 0;
                                  }),
                .unit = u"ms"_s,
                .bar = barMs});
    if (favorites == 0)
        qFatal("no favourite is found");
}

void measureLoad(Report &report, int covers)
{
    constexpr double barMs = 50; // a twentieth of what the start may take
    Store store;
    store.fill(covers);
    report.add({.what = u"load, 15,000 songs and %1 covers"_s.arg(covers),
                .value = medianMs([&store] { store.close(); }, [&store] { store.open(); }),
                .unit = u"ms"_s,
                .bar = barMs});
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    measureResolving(report);
    measureRows(report);
    for (const int covers : {0, 50, 200}) {
        measureFavorite(report, covers);
        measureLoad(report, covers);
    }
    return 0;
}
