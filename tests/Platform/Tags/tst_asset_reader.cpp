// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadeAudio.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Platform/Tags/TakenTags.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace cadorel;

namespace {

const QString lrc = u"[00:01.00]天青色等烟雨\n[00:03.50]而我在等你"_s;

/// A song with every kind of tag; "rm" and its relatives know title and artist only.
MadeSong wholeSong()
{
    MadeSong song;
    song.title = u"青花瓷"_s;
    song.artist = u"周杰伦"_s;
    song.albumArtist = u"群星"_s;
    song.album = u"我很忙 ねえ 🎵"_s;
    song.track = u"7/12"_s;
    song.lyrics = {lrc};
    song.cover = madeJpeg();
    return song;
}

bool isReal(const QString &format)
{
    return format == u"ra"_s || format.startsWith(u"rm"_s);
}

} // namespace

/// Real files of every format, as an importer reads them.
class AssetReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFormat_data();
    void everyFormat();
    void pngCover_data();
    void pngCover();
    void untagged_data();
    void untagged();
    void contentTellsNotTheName();
    void identifiersAndKeys_data();
    void identifiersAndKeys();
    void albumArtistIsNoAlbum_data();
    void albumArtistIsNoAlbum();
    void chunkTextsWithoutId3();
    void awkwardPaths();
    void manyThreads();
    void preciseDuration_data();
    void preciseDuration();

private:
    /// All formats, or those whose tags know more than title and artist.
    void addFormats(bool withReal = true);
    QString path(const QString &name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
    FileAssetReader m_reader;
};

void AssetReaderTest::addFormats(bool withReal)
{
    QTest::addColumn<QString>("format");
    for (const QString &format : madeFormats()) {
        if (withReal || !isReal(format))
            QTest::newRow(qPrintable(format)) << format;
    }
}

void AssetReaderTest::everyFormat_data()
{
    addFormats();
}

void AssetReaderTest::everyFormat()
{
    QFETCH(QString, format);
    const MadeSong song = wholeSong();
    const QString file = path("whole."_L1 + format);
    QVERIFY(makeSong(file, song));

    const auto asset = m_reader.open(file);
    const TakenTags taken(*asset);
    QCOMPARE(taken.title, song.title);
    QCOMPARE(taken.artist, song.artist);
    if (!isReal(format)) {
        QCOMPARE(taken.album, song.album);
        QCOMPARE(taken.track, song.track);
        QCOMPARE(taken.lyrics, lrc);
        QCOMPARE(taken.artwork, song.cover);
        QCOMPARE(asset->lyrics().value(), lrc);
    }
    const double seconds = asset->duration().value();
    // Encoders add a frame or two; RealAudio's are long.
    QVERIFY2(std::abs(seconds - song.seconds) < 0.15, qPrintable(QString::number(seconds)));
}

void AssetReaderTest::pngCover_data()
{
    addFormats(false);
}

void AssetReaderTest::pngCover()
{
    QFETCH(QString, format);
    MadeSong song;
    song.cover = madePng();
    const QString file = path("png."_L1 + format);
    QVERIFY(makeSong(file, song));
    const auto asset = m_reader.open(file);
    const MetadataItems common = asset->commonMetadata().value();
    const auto artwork = std::ranges::find(common, CommonKey::artwork, &MetadataItem::commonKey);
    QVERIFY(artwork != common.end());
    QCOMPARE((*artwork)->dataValue(), song.cover);
    QCOMPARE((*artwork)->stringValue(), std::nullopt);
}

void AssetReaderTest::untagged_data()
{
    addFormats();
}

void AssetReaderTest::untagged()
{
    QFETCH(QString, format);
    const QString file = path("untagged."_L1 + format);
    QVERIFY(makeSong(file, {.seconds = 2}));
    const auto asset = m_reader.open(file);
    QCOMPARE(asset->commonMetadata().value().size(), 0);
    QVERIFY(asset->metadata().has_value());
    QCOMPARE(asset->lyrics().value(), std::nullopt);
    QVERIFY(std::abs(asset->duration().value() - 2) < 0.15);
}

void AssetReaderTest::contentTellsNotTheName()
{
    const std::pair<QString, QString> disguises[] = {
        {u"flac"_s, u"a.mp3"_s}, {u"mp3"_s, u"b.flac"_s}, {u"opus"_s, u"c.ogg"_s}, {u"oga"_s, u"d.opus"_s},
        {u"m4a"_s, u"e.mp4"_s},  {u"wav"_s, u"f"_s},      {u"mka"_s, u"g.flac"_s}, {u"spx"_s, u"h.ogg"_s},
    };
    for (const auto &[format, name] : disguises) {
        MadeSong song = wholeSong();
        song.format = format;
        QVERIFY(makeSong(path(name), song));
        const auto asset = m_reader.open(path(name));
        QCOMPARE(TakenTags(*asset).title, song.title);
        QVERIFY(std::abs(asset->duration().value() - song.seconds) < 0.15);
    }
}

void AssetReaderTest::identifiersAndKeys_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("identifier");
    QTest::newRow("frame") << u"mp3"_s << u"TIT2"_s << u"id3/TIT2"_s;
    QTest::newRow("lyrics frame") << u"mp3"_s << u"USLT"_s << u"id3/USLT"_s;
    QTest::newRow("picture frame") << u"mp3"_s << u"APIC"_s << u"id3/APIC"_s;
    QTest::newRow("atom") << u"m4a"_s << u"©nam"_s << u"itsk/©nam"_s;
    QTest::newRow("lyrics atom") << u"m4a"_s << u"©lyr"_s << u"itsk/©lyr"_s;
    QTest::newRow("track atom") << u"m4a"_s << u"trkn"_s << u"itsk/trkn"_s;
    QTest::newRow("picture atom") << u"m4a"_s << u"covr"_s << u"itsk/covr"_s;
    QTest::newRow("comment") << u"flac"_s << u"TITLE"_s << u"vorb/TITLE"_s;
    QTest::newRow("lyrics comment") << u"flac"_s << u"LYRICS"_s << u"vorb/LYRICS"_s;
    QTest::newRow("track comment") << u"flac"_s << u"TRACKNUMBER"_s << u"vorb/trkn"_s;
    QTest::newRow("album artist") << u"ogg"_s << u"ALBUMARTIST"_s << u"vorb/aART"_s;
    QTest::newRow("picture") << u"opus"_s << u"METADATA_BLOCK_PICTURE"_s << u"vorb/METADATA_BLOCK_PICTURE"_s;
    QTest::newRow("attribute") << u"wma"_s << u"WM/AlbumTitle"_s << u"asf/WM/AlbumTitle"_s;
    QTest::newRow("track attribute") << u"wma"_s << u"WM/TrackNumber"_s << u"asf/trkn"_s;
    QTest::newRow("item") << u"wv"_s << u"Title"_s << u"ape/Title"_s;
}

void AssetReaderTest::identifiersAndKeys()
{
    QFETCH(QString, format);
    QFETCH(QString, key);
    QFETCH(QString, identifier);
    const QString file = path("names."_L1 + format);
    QVERIFY(makeSong(file, wholeSong()));
    const auto asset = m_reader.open(file);
    QStringList names;
    for (const auto &item : asset->metadata().value())
        names.append(item->key() + u' ' + item->identifier());
    QVERIFY2(names.contains(key + u' ' + identifier, Qt::CaseInsensitive), qPrintable(names.join(u", "_s)));
}

void AssetReaderTest::albumArtistIsNoAlbum_data()
{
    addFormats(false);
}

void AssetReaderTest::albumArtistIsNoAlbum()
{
    QFETCH(QString, format);
    const QString file = path("albumartist."_L1 + format);
    QVERIFY(makeSong(file, {.title = u"Title"_s, .albumArtist = u"群星"_s}));
    const auto asset = m_reader.open(file);
    QCOMPARE(TakenTags(*asset).album, QString());
    // Without an artist the album artist stands in, though not under a common key.
    QCOMPARE(TakenTags(*asset).artist, u"群星"_s);
    for (const auto &item : asset->commonMetadata().value())
        QVERIFY(item->commonKey() == CommonKey::title);
}

void AssetReaderTest::chunkTextsWithoutId3()
{
    QVERIFY(runFfmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=1"_s, u"-metadata"_s, u"title=晴天"_s,
                       u"-metadata"_s, u"author=周杰伦"_s, path(u"name.aiff"_s)}));
    const TakenTags aiff(*m_reader.open(path(u"name.aiff"_s)));
    QCOMPARE(aiff.title, u"晴天"_s);
    QCOMPARE(aiff.artist, u"周杰伦"_s);

    QVERIFY(runFfmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=1"_s, u"-metadata"_s, u"title=晴天"_s,
                       u"-metadata"_s, u"artist=周杰伦"_s, u"-metadata"_s, u"album=叶惠美"_s, u"-metadata"_s,
                       u"track=3"_s, path(u"info.wav"_s)}));
    const TakenTags wav(*m_reader.open(path(u"info.wav"_s)));
    QCOMPARE(wav.title, u"晴天"_s);
    QCOMPARE(wav.artist, u"周杰伦"_s);
    QCOMPARE(wav.album, u"叶惠美"_s);
    QCOMPARE(wav.track, u"3"_s);
}

void AssetReaderTest::awkwardPaths()
{
    const QString file = path(u"七里香 #1 100% 🎵?.mp3"_s);
    QVERIFY(makeSong(file, wholeSong()));
    QCOMPARE(TakenTags(*m_reader.open(file)).title, wholeSong().title);
}

void AssetReaderTest::manyThreads()
{
    QStringList files;
    for (const QString &format : madeFormats()) {
        files.append(path("threads."_L1 + format));
        QVERIFY(makeSong(files.constLast(), wholeSong()));
    }
    QStringList many;
    for (int i = 0; i < 20; ++i)
        many += files;
    const auto titles = QtConcurrent::blockingMapped<QStringList>(
        many, [this](const QString &file) { return TakenTags(*m_reader.open(file)).title; });
    QCOMPARE(titles.size(), many.size());
    QCOMPARE(titles.count(wholeSong().title), many.size());
}

void AssetReaderTest::preciseDuration_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("encoder");
    QTest::newRow("mp3 with header") << u"mp3"_s << QStringList();
    QTest::newRow("mp3 without header")
        << u"mp3"_s << QStringList{u"-write_xing"_s, u"0"_s, u"-b:a"_s, u"64k"_s};
    QTest::newRow("variable mp3 without header")
        << u"mp3"_s << QStringList{u"-write_xing"_s, u"0"_s, u"-q:a"_s, u"2"_s};
    QTest::newRow("adts") << u"aac"_s << QStringList{u"-b:a"_s, u"64k"_s};
    QTest::newRow("flac") << u"flac"_s << QStringList();
    QTest::newRow("matroska") << u"mka"_s << QStringList();
    QTest::newRow("live matroska") << u"mka"_s << QStringList{u"-live"_s, u"1"_s};
    QTest::newRow("fragmented mp4") << u"m4a"_s << QStringList{u"-movflags"_s, u"frag_keyframe+empty_moov"_s};
    QTest::newRow("flac in ogg") << u"oga"_s << QStringList();
    QTest::newRow("realmedia") << u"rm"_s << QStringList();
    QTest::newRow("realaudio without times")
        << u"ra"_s << QStringList{u"-ac"_s, u"1"_s, u"-ar"_s, u"8000"_s, u"-c:a"_s, u"real_144"_s};
}

void AssetReaderTest::preciseDuration()
{
    QFETCH(QString, format);
    QFETCH(QStringList, encoder);
    constexpr double seconds = 20;
    const QByteArray audio = makeAudio(format, seconds, 440, encoder);
    QVERIFY(!audio.isEmpty());
    QFile file(path("precise."_L1 + format));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(audio);
    file.close();
    const auto asset = m_reader.open(file.fileName());
    const double quick = asset->duration().value();
    const double precise = asset->duration(true).value();
    QVERIFY2(std::abs(quick - seconds) < seconds / 10, qPrintable(QString::number(quick)));
    QVERIFY2(std::abs(precise - seconds) < 0.15, qPrintable(QString::number(precise)));
}

QTEST_GUILESS_MAIN(AssetReaderTest)
#include "tst_asset_reader.moc"
