// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/MadeLibrary.h"

#include "Services/Import/ImportIndex.h"
#include "Services/LocalMusicImportService.h"
#include "Utils/StableHash.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QRandomGenerator>

#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int songsPerAlbum = 12;
constexpr int albumsPerArtist = 3;

/// A name of two words and a number: Latin for even numbers, Chinese for odd ones.
QString name(int number)
{
    static const QStringList latin{u"Quiet"_s, u"River"_s,   u"Amber"_s, u"Morning"_s,
                                   u"Paper"_s, u"Lantern"_s, u"North"_s, u"Harbour"_s,
                                   u"Glass"_s, u"Garden"_s,  u"Slow"_s,  u"Winter"_s};
    static const QStringList chinese{u"晨光"_s, u"远山"_s, u"夜航"_s, u"纸灯"_s, u"雨巷"_s, u"星河"_s,
                                     u"旧梦"_s, u"风铃"_s, u"秋水"_s, u"南岸"_s, u"归途"_s, u"雪线"_s};
    const QStringList &words = number % 2 == 0 ? latin : chinese;
    const int half = number / 2;
    const auto size = static_cast<int>(words.size());
    const QString first = words[half % size];
    const QString second = words[half / size % size];
    return number % 2 == 0 ? first + u' ' + second + u' ' + QString::number(number)
                           : first + second + QString::number(number);
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the library to measure with could not be made");
}

} // namespace

QList<Song> madeSongs(const Directories &directories, int first, int count)
{
    constexpr qint64 coverBytes = 22'000;
    constexpr double shortest = 150;
    constexpr int durations = 180;
    QList<Song> songs;
    songs.reserve(count);
    const QDateTime date = QDateTime::fromSecsSinceEpoch(1'700'000'000, Qt::UTC);
    for (int number = first; number < first + count; ++number) {
        const int album = number / songsPerAlbum;
        const QString file = LocalMusicImportService::storedName(name(number) + ".mp3"_L1);
        SongFields fields;
        fields.id = stableHash(file);
        fields.title = name(number);
        fields.artist = name(album / albumsPerArtist);
        fields.album = name(album);
        fields.albumId = "album_"_L1 + stableHash(fields.album);
        fields.duration = shortest + number % durations;
        fields.trackNumber = number % songsPerAlbum + 1;
        fields.dateAdded = date.addSecs(number);
        fields.assetURL = QUrl::fromLocalFile(directories.documents + u'/' + file);
        if (number % songsPerCover == 0) {
            const QString cover =
                directories.applicationSupport + "/LocalMusic/"_L1 + fields.id + "_artwork.jpg"_L1;
            fields.artworkURL = QUrl::fromLocalFile(cover);
            fields.artworkData = ArtworkData::inFile(cover.toUtf8(), coverBytes);
        }
        songs.append(Song(fields));
    }
    return songs;
}

void makeLibrary(const Directories &directories, int count)
{
    const QList<Song> songs = madeSongs(directories, 0, count);
    const QString metadata = directories.applicationSupport + "/LocalMusic"_L1;
    QDir().mkpath(metadata);
    QDir().mkpath(directories.documents);
    const QString cover = directories.applicationSupport + "/cover.jpg"_L1;
    write(cover, madeCover());
    for (const Song &song : songs) {
        write(song.assetPath(), "ID3");
        const QByteArray target = song.artworkData().filePath();
        if (!target.isEmpty() && ::link(QFile::encodeName(cover).constData(), target.constData()) != 0)
            qFatal("the covers to measure with could not be made");
    }
    write(metadata + "/index.json"_L1, '[' + indexRecords(songs) + ']');
}

QByteArray madeCover()
{
    constexpr int side = 300;
    constexpr qsizetype wanted = 22'000;
    constexpr int noise = 24;
    constexpr int qualityStep = 5;
    QRandomGenerator random(1); // NOLINT(bugprone-random-generator-seed): the same cover each time
    QImage image(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int grain = random.bounded(noise);
            image.setPixel(x, y, qRgb(x * 200 / side + grain, y * 200 / side + grain, 90 + grain));
        }
    }
    QByteArray bytes;
    for (int quality = qualityStep; bytes.size() < wanted && quality <= 100; quality += qualityStep) {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly | QIODevice::Truncate);
        image.save(&buffer, "jpg", quality);
    }
    return bytes;
}

} // namespace cadorel
