// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"
#include "Services/Import/MetadataExtractor.h"

#include <QDir>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString unknownArtist = u"未知艺术家"_s;
const QString unknownAlbum = u"未知专辑"_s;

} // namespace

class TestMetadataExtractor : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_directory;
    FakeAssetReader m_reader;
    QDateTime m_now{QDate(2026, 3, 4), QTime(5, 6, 7, 89), Qt::UTC};

    FakeAsset &asset(const QString &name = u"stored.mp3"_s)
    {
        FakeAsset readable;
        readable.duration = 1.5;
        readable.common = QList<FakeTag>{};
        readable.all = QList<FakeTag>{};
        return *m_reader.assets.insert(name, readable);
    }
    Extraction extract(const QString &originalName = u"文件名.mp3"_s, const QString &name = u"stored.mp3"_s)
    {
        return extractMetadata(m_reader, u"/music/"_s + name, originalName, m_directory.path(), m_now);
    }
    QString sideFile(const QString &suffix) const { return m_directory.path() + u'/' + idOfStored + suffix; }
    // The first 16 digits of the SHA-256 of "stored.mp3", from another implementation.
    const QString idOfStored = u"6416C35B1939F196"_s;

private Q_SLOTS:
    void init()
    {
        m_reader.assets.clear();
        m_reader.valueReads = 0;
        QVERIFY(QDir(m_directory.path()).removeRecursively());
        QVERIFY(QDir().mkpath(m_directory.path()));
    }

    void cleanFileName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("title");
        QTest::newRow("dot") << u"01. Song.mp3"_s << u"Song"_s;
        QTest::newRow("hyphen") << u"12 - Song.mp3"_s << u"Song"_s;
        QTest::newRow("em dash") << u"7—Song.mp3"_s << u"Song"_s;
        QTest::newRow("en dash") << u"7 – Song.mp3"_s << u"Song"_s;
        QTest::newRow("a year is no title") << u"1979.mp3"_s << QString();
        QTest::newRow("digits and a space") << u"03 Song.flac"_s << u"Song"_s;
        QTest::newRow("digits and nothing between") << u"99Luftballons.mp3"_s << u"Luftballons"_s;
        QTest::newRow("one dash only") << u"1 -- Song.mp3"_s << u"- Song"_s;
        QTest::newRow("cut at the last dot") << u"a.b.c.mp3"_s << u"a.b.c"_s;
        QTest::newRow("no ending") << u"Song"_s << u"Song"_s;
        QTest::newRow("a dot that ends no name") << u"Mr. Song"_s << u"Mr"_s;
        QTest::newRow("only an ending") << u".mp3"_s << QString();
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("uuid") << u"0a1B2c3D-0000-1111-2222-0123456789aB_03. Song.mp3"_s << u"Song"_s;
        QTest::newRow("uuid without its line") << u"xa1b2c3d-0000-1111-2222-0123456789ab_Song.mp3"_s
                                               << u"xa1b2c3d-0000-1111-2222-0123456789ab_Song"_s;
        QTest::newRow("uuid in the middle") << u"x_0a1b2c3d-0000-1111-2222-0123456789ab_y.mp3"_s
                                            << u"x_0a1b2c3d-0000-1111-2222-0123456789ab_y"_s;
        QTest::newRow("two uuids lose one") << u"aaaaaaaa-0000-1111-2222-0123456789ab_"
                                               u"bbbbbbbb-0000-1111-2222-0123456789ab_y.mp3"_s
                                            << u"bbbbbbbb-0000-1111-2222-0123456789ab_y"_s;
        QTest::newRow("number later on") << u"Song 2.mp3"_s << u"Song 2"_s;
        QTest::newRow("outer space") << u" \t Song \u3000.mp3"_s << u"Song"_s;
        QTest::newRow("new lines stay") << u"\nSong\n.mp3"_s << u"\nSong\n"_s;
        QTest::newRow("number before space before number") << u"1 2 Song.mp3"_s << u"2 Song"_s;
        QTest::newRow("artist and title stay together") << u"歌手 - 歌.mp3"_s << u"歌手 - 歌"_s;
        QTest::newRow("hash prefix is not removed here")
            << u"abcdef0123456789_Song.mp3"_s << u"abcdef0123456789_Song"_s;
    }
    void cleanFileName()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, title);
        QCOMPARE(cadorel::cleanFileName(name), title);
    }

    void fileWithoutTagsBecomesASongNamedAfterTheFile()
    {
        asset();
        const Extraction extraction = extract(u"03 - Song.flac"_s);
        QCOMPARE(extraction.song.title(), u"Song"_s);
        QCOMPARE(extraction.song.artist(), unknownArtist);
        QCOMPARE(extraction.song.album(), unknownAlbum);
        QCOMPARE(extraction.song.trackNumber(), 0);
        QCOMPARE(extraction.song.duration(), 1.5);
        QCOMPARE(extraction.song.id(), idOfStored);
        QCOMPARE(extraction.song.albumId(), u"album_A3EF1EE876CC2E67"_s);
        QCOMPARE(extraction.song.dateAdded(), m_now);
        QCOMPARE(extraction.song.assetURL(), QUrl::fromLocalFile(u"/music/stored.mp3"_s));
        QVERIFY(!extraction.song.artworkURL());
        QVERIFY(!extraction.song.artworkData().isPresent());
        QVERIFY(!extraction.song.embeddedLyrics());
        QVERIFY(QDir(m_directory.path()).isEmpty());
    }

    void fileNamedWithAYearGivesAnEmptyTitle()
    {
        asset();
        QCOMPARE(extract(u"2024.mp3"_s).song.title(), QString());
    }

    void unreadableFileStillBecomesASong()
    {
        const Extraction extraction = extract(u"05. 坏.mp3"_s, u"unknown.mp3"_s);
        QCOMPARE(extraction.log, unreadableLines(u"坏"_s));
        QCOMPARE(extraction.song.title(), u"坏"_s);
        QCOMPARE(extraction.song.duration(), 0.0);
    }

    void eachLoadFailsAlone_data()
    {
        QTest::addColumn<int>("failing");
        QTest::newRow("duration") << 0;
        QTest::newRow("common") << 1;
        QTest::newRow("all") << 2;
    }
    void eachLoadFailsAlone()
    {
        QFETCH(const int, failing);
        FakeAsset &made = asset();
        made.common = QList<FakeTag>{textTag(u"id3/TIT2"_s, u"标题"_s, CommonKey::title)};
        made.all = QList<FakeTag>{textTag(u"id3/TPE1"_s, u"歌手"_s)};
        if (failing == 0)
            made.duration = std::unexpected(u"e"_s);
        else if (failing == 1)
            made.common = std::unexpected(u"e"_s);
        else
            made.all = std::unexpected(u"e"_s);
        const Extraction extraction = extract();
        QCOMPARE(extraction.song.duration(), failing == 0 ? 0.0 : 1.5);
        QCOMPARE(extraction.song.title(), failing == 1 ? u"文件名"_s : u"标题"_s);
        QCOMPARE(extraction.song.artist(), failing == 2 ? unknownArtist : u"歌手"_s);
        const QStringList failures{u"Failed to get duration: e"_s, u"Failed to load common metadata: e"_s,
                                   u"Failed to load metadata: e"_s};
        for (int i = 0; i < failures.size(); ++i)
            QCOMPARE(extraction.log.contains(failures[i]), i == failing);
    }

    void lengthThatIsNoNumberIsTakenAsItIs()
    {
        asset().duration = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(std::isnan(extract().song.duration()));
    }

    void everyLogLineInItsOrder()
    {
        FakeAsset &made = asset();
        made.common = QList<FakeTag>{textTag(u"id3/TIT2"_s, u"标题"_s, CommonKey::title),
                                     textTag(u"id3/TPE2"_s, u"作者"_s, CommonKey::creator),
                                     textTag(u"id3/TPE1"_s, u"歌手"_s, CommonKey::artist),
                                     textTag(u"id3/TCOP"_s, u"c"_s),
                                     textTag(u"id3/TALB"_s, u"专辑"_s, CommonKey::albumName),
                                     dataTag(u"id3/APIC"_s, "12345", CommonKey::artwork)};
        made.all = QList<FakeTag>{textTag(u"id3/USLT"_s, u"词"_s), textTag(u"id3/TRCK"_s, u"3/12"_s)};
        const Extraction extraction = extract();
        QCOMPARE(
            extraction.log,
            (QStringList{
                u"Common metadata items: 6"_s, u"Common key: title"_s, u"✓ Title from common: 标题"_s,
                u"Common key: creator"_s, u"✓ Artist (creator) from common: 作者"_s, u"Common key: artist"_s,
                u"✓ Artist from common: 歌手"_s, u"Common key: albumName"_s, u"✓ Album from common: 专辑"_s,
                u"Common key: artwork"_s, u"✓ Artwork from common: 5 bytes"_s, u"All metadata items: 2"_s,
                u"✓ Lyrics from ID3: 词..."_s, u"=== Final Extracted Metadata ==="_s, u"Title: 标题"_s,
                u"Artist: 歌手"_s, u"Album: 专辑"_s, u"Artwork: 5 bytes"_s, u"Lyrics: yes"_s}));
        QCOMPARE(extraction.song.trackNumber(), 3);
    }

    void everyLogLineOfTheFormatPass()
    {
        asset().all = QList<FakeTag>{textTag(u"id3/TIT2"_s, u"标题"_s), textTag(u"id3/TPE1"_s, u"歌手"_s),
                                     textTag(u"id3/TALB"_s, u"专辑"_s), dataTag(u"id3/APIC"_s, "1234"),
                                     textTag(u"id3/USLT"_s, u"词"_s)};
        QCOMPARE(extract().log,
                 (QStringList{u"Common metadata items: 0"_s, u"All metadata items: 5"_s,
                              u"✓ Title from ID3: 标题"_s, u"✓ Artist from ID3: 歌手"_s,
                              u"✓ Album from ID3: 专辑"_s, u"✓ Artwork from ID3: 4 bytes"_s,
                              u"✓ Lyrics from ID3: 词..."_s, u"=== Final Extracted Metadata ==="_s,
                              u"Title: 标题"_s, u"Artist: 歌手"_s, u"Album: 专辑"_s, u"Artwork: 4 bytes"_s,
                              u"Lyrics: yes"_s}));
    }

    void laterCommonItemOverridesAnEarlierOne()
    {
        asset().common = QList<FakeTag>{
            textTag(u"a"_s, u"T1"_s, CommonKey::title),     textTag(u"a"_s, u"T2"_s, CommonKey::title),
            textTag(u"a"_s, u"A1"_s, CommonKey::artist),    textTag(u"a"_s, u"A2"_s, CommonKey::artist),
            textTag(u"a"_s, u"L1"_s, CommonKey::albumName), textTag(u"a"_s, u"L2"_s, CommonKey::albumName),
            dataTag(u"a"_s, "p1", CommonKey::artwork),      dataTag(u"a"_s, "p2", CommonKey::artwork)};
        const Song song = extract().song;
        QCOMPARE(song.title(), u"T2"_s);
        QCOMPARE(song.artist(), u"A2"_s);
        QCOMPARE(song.album(), u"L2"_s);
        QCOMPARE(song.artworkData().bytes(), "p2"_ba);
    }

    void creatorNeverReplacesAnArtist()
    {
        asset().common = QList<FakeTag>{textTag(u"a"_s, u"歌手"_s, CommonKey::artist),
                                        textTag(u"a"_s, u"作者"_s, CommonKey::creator)};
        const Extraction extraction = extract();
        QCOMPARE(extraction.song.artist(), u"歌手"_s);
        QVERIFY(extraction.log.contains(u"Common key: creator"_s));
        QVERIFY(!extraction.log.contains(u"✓ Artist (creator) from common: 作者"_s));
    }

    void creatorReplacesACreatorOnlyOnce()
    {
        asset().common = QList<FakeTag>{textTag(u"a"_s, u"一"_s, CommonKey::creator),
                                        textTag(u"a"_s, u"二"_s, CommonKey::creator)};
        QCOMPARE(extract().song.artist(), u"一"_s);
    }

    void emptyAndMissingCommonValuesChangeNothing()
    {
        asset().common = QList<FakeTag>{
            textTag(u"a"_s, QString(u""_s), CommonKey::title),
            FakeTag{.identifier = u"a"_s, .commonKey = CommonKey::artist, .string = {}, .data = {}},
            textTag(u"a"_s, u""_s, CommonKey::albumName), dataTag(u"a"_s, QByteArray(), CommonKey::artwork)};
        const Extraction extraction = extract();
        QCOMPARE(extraction.song.title(), u"文件名"_s);
        QCOMPARE(extraction.song.artist(), unknownArtist);
        QCOMPARE(extraction.song.album(), unknownAlbum);
        QVERIFY(!extraction.song.artworkData().isPresent());
        QVERIFY(extraction.log.filter(u"✓"_s).isEmpty());
    }

    void titleOnlyInTheFormatPassIsTaken()
    {
        asset().all = QList<FakeTag>{textTag(u"id3/TIT2"_s, u"标题"_s)};
        QCOMPARE(extract().song.title(), u"标题"_s);
    }

    void titleEqualToTheFileTitleLeavesTheRuleOpen()
    {
        FakeAsset &made = asset();
        made.common = QList<FakeTag>{textTag(u"id3/TIT2"_s, u"文件名"_s, CommonKey::title)};
        made.all = QList<FakeTag>{textTag(u"id3/TIT2"_s, u"文件名"_s), textTag(u"itsk/©nam"_s, u"别名"_s)};
        QCOMPARE(extract().song.title(), u"别名"_s);
    }

    void commonPassWinsOverTheFormatPass()
    {
        FakeAsset &made = asset();
        made.common = QList<FakeTag>{
            textTag(u"a"_s, u"T"_s, CommonKey::title), textTag(u"a"_s, u"A"_s, CommonKey::artist),
            textTag(u"a"_s, u"L"_s, CommonKey::albumName), dataTag(u"a"_s, "p", CommonKey::artwork)};
        made.all = QList<FakeTag>{textTag(u"tit2"_s, u"x"_s), textTag(u"tpe1"_s, u"x"_s),
                                  textTag(u"talb"_s, u"x"_s), dataTag(u"apic"_s, "x")};
        const Song song = extract().song;
        QCOMPARE(song.title(), u"T"_s);
        QCOMPARE(song.artist(), u"A"_s);
        QCOMPARE(song.album(), u"L"_s);
        QCOMPARE(song.artworkData().bytes(), "p"_ba);
    }

    void firstAcceptableItemOfTheFormatPassWins()
    {
        asset().all = QList<FakeTag>{
            textTag(u"TIT2"_s, u""_s),   textTag(u"TIT2"_s, u"T1"_s),      textTag(u"TIT2"_s, u"T2"_s),
            textTag(u"TPE2"_s, u"A1"_s), textTag(u"TPE1"_s, u"A2"_s),      textTag(u"TALB"_s, u"L1"_s),
            textTag(u"TALB"_s, u"L2"_s), dataTag(u"APIC"_s, QByteArray()), dataTag(u"APIC"_s, "p1"),
            dataTag(u"APIC"_s, "p2"),    textTag(u"USLT"_s, u"词一"_s),    textTag(u"USLT"_s, u"词二"_s)};
        const Song song = extract().song;
        QCOMPARE(song.title(), u"T1"_s);
        QCOMPARE(song.artist(), u"A1"_s);
        QCOMPARE(song.album(), u"L1"_s);
        QCOMPARE(song.artworkData().bytes(), "p1"_ba);
        QCOMPARE(song.embeddedLyrics(), u"词一"_s);
    }

    void identifiersAreMatchedBySubstringWhateverTheirCase_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("field");
        for (const QString &name : {u"id3/TIT2"_s, u"itsk/©nam"_s, u"x/NAMe"_s, u"tIt2x"_s})
            QTest::newRow(qPrintable(u"title "_s + name)) << name << u"title"_s;
        for (const QString &name : {u"id3/TPE1"_s, u"id3/TPE2"_s, u"itsk/©ART"_s, u"vorb/ARTIST"_s})
            QTest::newRow(qPrintable(u"artist "_s + name)) << name << u"artist"_s;
        for (const QString &name : {u"id3/TALB"_s, u"itsk/©alb"_s, u"vorb/ALBUM"_s})
            QTest::newRow(qPrintable(u"album "_s + name)) << name << u"album"_s;
        for (const QString &name : {u"id3/APIC"_s, u"id3/PIC"_s, u"itsk/covr"_s, u"x/Artwork"_s})
            QTest::newRow(qPrintable(u"artwork "_s + name)) << name << u"artwork"_s;
        for (const QString &name : {u"id3/USLT"_s, u"id3/SYLT"_s, u"itsk/©lyr"_s, u"vorb/LYRICS"_s})
            QTest::newRow(qPrintable(u"lyrics "_s + name)) << name << u"lyrics"_s;
        for (const QString &name : {u"id3/TRCK"_s, u"itsk/trkn"_s})
            QTest::newRow(qPrintable(u"track "_s + name)) << name << u"track"_s;
    }
    void identifiersAreMatchedBySubstringWhateverTheirCase()
    {
        QFETCH(const QString, identifier);
        QFETCH(const QString, field);
        FakeTag tag = textTag(identifier, u"7"_s);
        tag.data = "bytes";
        asset().all = QList<FakeTag>{tag};
        const Song song = extract().song;
        QCOMPARE(song.title() == u"7"_s, field == u"title"_s);
        QCOMPARE(song.artist() == u"7"_s,
                 field == u"artist"_s || identifier.contains(u"art"_s, Qt::CaseInsensitive));
        QCOMPARE(song.album() == u"7"_s, field == u"album"_s);
        QCOMPARE(song.artworkData().isPresent(), field == u"artwork"_s);
        QCOMPARE(song.embeddedLyrics().has_value(), field == u"lyrics"_s);
        QCOMPARE(song.trackNumber(), field == u"track"_s ? 7 : 0);
    }

    void oneItemMaySatisfySeveralRules()
    {
        // "artwork" holds "art": a text of such an item becomes the artist as well.
        FakeTag tag = dataTag(u"x/artwork-lyrics-name"_s, "picture");
        tag.string = u"都是"_s;
        asset().all = QList<FakeTag>{tag};
        const Song song = extract().song;
        QCOMPARE(song.title(), u"都是"_s);
        QCOMPARE(song.artist(), u"都是"_s);
        QCOMPARE(song.artworkData().bytes(), "picture"_ba);
        QCOMPARE(song.embeddedLyrics(), u"都是"_s);
    }

    void trackNumber_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<int>("number");
        QTest::newRow("of a total, overridden by a later one") << QStringList{u"7/12"_s, u"8"_s} << 8;
        QTest::newRow("of a total") << QStringList{u"3/12"_s} << 3;
        QTest::newRow("no number changes nothing") << QStringList{u"4"_s, u"A1"_s} << 4;
        QTest::newRow("only a letter") << QStringList{u"A1"_s} << 0;
        QTest::newRow("empty") << QStringList{u""_s} << 0;
        QTest::newRow("only a total") << QStringList{u"/12"_s} << 0;
        QTest::newRow("leading zero") << QStringList{u"08"_s} << 8;
        QTest::newRow("fraction") << QStringList{u"3.5"_s} << 0;
        QTest::newRow("hexadecimal is not decimal") << QStringList{u"0x10"_s} << 0;
        QTest::newRow("beyond every integer") << QStringList{u"2"_s, u"99999999999999999999"_s} << 2;
    }
    void trackNumber()
    {
        QFETCH(const QStringList, values);
        QFETCH(const int, number);
        QList<FakeTag> tags;
        for (const QString &value : values)
            tags.append(textTag(u"id3/TRCK"_s, value));
        asset().all = tags;
        const Extraction extraction = extract();
        QCOMPARE(extraction.song.trackNumber(), number);
        QVERIFY(extraction.log.filter(u"rack"_s).isEmpty());
    }

    void commonPassGivesNoLyricsAndNoTrack()
    {
        asset().common = QList<FakeTag>{textTag(u"id3/USLT"_s, u"词"_s), textTag(u"id3/TRCK"_s, u"3"_s)};
        const Song song = extract().song;
        QVERIFY(!song.embeddedLyrics());
        QCOMPARE(song.trackNumber(), 0);
    }

    void lyricsLineQuotesFiftyCharacters_data()
    {
        QTest::addColumn<QString>("lyrics");
        QTest::addColumn<QString>("quoted");
        QTest::newRow("short") << u"短"_s << u"短"_s;
        QTest::newRow("exactly fifty") << u"词"_s.repeated(50) << u"词"_s.repeated(50);
        QTest::newRow("more") << u"词"_s.repeated(51) << u"词"_s.repeated(50);
        QTest::newRow("outside of the basic plane") << u"🎵"_s.repeated(60) << u"🎵"_s.repeated(50);
        QTest::newRow("letters with marks") << u"e\u0301"_s.repeated(60) << u"e\u0301"_s.repeated(50);
    }
    void lyricsLineQuotesFiftyCharacters()
    {
        QFETCH(const QString, lyrics);
        QFETCH(const QString, quoted);
        asset().all = QList<FakeTag>{textTag(u"id3/USLT"_s, lyrics)};
        const Extraction extraction = extract();
        QCOMPARE(extraction.log.filter(u"Lyrics from ID3"_s),
                 QStringList{u"✓ Lyrics from ID3: "_s + quoted + u"..."_s});
        QCOMPARE(extraction.song.embeddedLyrics(), lyrics);
    }

    void pictureAndLyricsAreKeptBesideTheIndex()
    {
        const QString lyrics = u"[00:01.00]第一行\r\n[00:02.00]second 🎵\n"_s;
        const QByteArray picture("\x89PNG\0\xff", 6);
        FakeAsset &made = asset();
        made.common = QList<FakeTag>{dataTag(u"id3/APIC"_s, picture, CommonKey::artwork)};
        made.all = QList<FakeTag>{textTag(u"id3/USLT"_s, lyrics)};
        const Song song = extract().song;
        QCOMPARE(ImportFixture::bytesOf(sideFile(u"_artwork.jpg"_s)), picture);
        QCOMPARE(ImportFixture::bytesOf(sideFile(u"_lyrics.lrc"_s)), lyrics.toUtf8());
        QCOMPARE(song.artworkURL(), QUrl::fromLocalFile(sideFile(u"_artwork.jpg"_s)));
        QCOMPARE(song.artworkData().bytes(), picture);
        QCOMPARE(song.embeddedLyrics(), lyrics);
        QCOMPARE(
            QDir(m_directory.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
            2);
    }

    void directoryThatCannotBeWrittenStillGivesTheSong()
    {
        FakeAsset &made = asset();
        made.common = QList<FakeTag>{dataTag(u"id3/APIC"_s, "picture", CommonKey::artwork)};
        made.all = QList<FakeTag>{textTag(u"id3/USLT"_s, u"词"_s)};
        const Extraction extraction = extractMetadata(m_reader, u"/music/stored.mp3"_s, u"a.mp3"_s,
                                                      m_directory.path() + u"/missing"_s, m_now);
        QVERIFY(!extraction.song.artworkURL());
        QCOMPARE(extraction.song.artworkData().bytes(), "picture"_ba);
        QCOMPARE(extraction.song.embeddedLyrics(), u"词"_s);
        const QStringList last = extraction.log.last(3);
        QCOMPARE(last[0], u"Lyrics: yes"_s);
        QVERIFY(last[1].startsWith(u"Failed to save artwork: "_s) && last[1].size() > 24);
        QVERIFY(last[2].startsWith(u"Failed to save lyrics: "_s) && last[2].size() > 23);
    }

    void pictureThatIsKnownIsNotReadAgain()
    {
        FakeAsset &made = asset();
        made.common = QList<FakeTag>{dataTag(u"id3/APIC"_s, "picture", CommonKey::artwork)};
        made.all = QList<FakeTag>{dataTag(u"id3/APIC"_s, "picture"), textTag(u"id3/COMM"_s, u"x"_s)};
        extract();
        QCOMPARE(m_reader.valueReads.load(), 1);
    }

    void valuesThatNoRuleSelectsAreNeverRead()
    {
        FakeAsset &made = asset();
        made.common = QList<FakeTag>{textTag(u"id3/TCOP"_s, u"x"_s)};
        made.all = QList<FakeTag>{textTag(u"id3/COMM"_s, u"x"_s), dataTag(u"id3/PRIV"_s, "x"),
                                  textTag(u"id3/TXXX"_s, u"x"_s)};
        extract();
        QCOMPARE(m_reader.valueReads.load(), 0);
    }

    void albumIdIsOfTheFinalAlbum()
    {
        asset().all = QList<FakeTag>{textTag(u"id3/TALB"_s, u"album"_s)};
        QCOMPARE(extract().song.albumId(), u"album_CA7CAD8166758CB9"_s);
    }
};

QTEST_GUILESS_MAIN(TestMetadataExtractor)
#include "tst_metadata_extractor.moc"
