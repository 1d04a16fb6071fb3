// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadeAudio.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Fixtures/SongTags.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Platform/Tags/RawTags.h"
#include "Platform/Tags/TakenTags.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace cadorel;

namespace {

constexpr char latin1 = 0;
constexpr char utf16 = 1;
constexpr char utf8 = 3;

QByteArray textFrame(const QByteArray &id, char encoding, const QByteArray &text)
{
    return id3Frame(id, QByteArray(1, encoding) + text);
}

QByteArray lyricsFrame(char encoding, const QByteArray &text)
{
    return id3Frame("USLT", QByteArray(1, encoding) + "zho" + QByteArray(1, '\0') + text);
}

QByteArray pictureFrame(char type, const QByteArray &mimeType, const QByteArray &picture)
{
    return id3Frame("APIC", QByteArray(1, latin1) + mimeType + '\0' + type + '\0' + picture);
}

/// A SYLT frame in milliseconds.
QByteArray timedFrame(const QList<std::pair<int, QByteArray>> &texts, char content = 1)
{
    QByteArray bytes = QByteArray(1, utf8) + "zho" + char(2) + content + '\0';
    for (const auto &[time, text] : texts) {
        bytes += text + '\0';
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += char(time >> shift);
    }
    return id3Frame("SYLT", bytes);
}

QByteArray utf16Text(const QString &text)
{
    QByteArray bytes("\xff\xfe");
    for (const QChar c : text)
        bytes += QByteArray(1, char(c.unicode() & 0xff)) + char(c.unicode() >> 8);
    return bytes;
}

} // namespace

/// ID3 tags that somebody or something wrote strangely.
class Id3FieldsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void encodings_data();
    void encodings();
    void gbkInLatin1();
    void severalValues();
    void endsAndMarks();
    void oldVersion();
    void twoLyricsFrames();
    void describedLyrics_data();
    void describedLyrics();
    void timedLyrics();
    void timedSyllables();
    void chordsAreNoLyrics();
    void machineValuesAreNoAlbum();
    void lyricistIsNoLyrics();
    void frontCoverWins();
    void linkIsNoPicture();
    void composerIsCreator();
    void id3v1Alone();
    void id3v1FillsGaps();
    void apeTagOnMp3();

private:
    std::unique_ptr<AssetMetadata> read(const QByteArray &file)
    {
        QFile out(m_directory.filePath(u"%1.mp3"_s.arg(++m_count)));
        if (out.open(QIODevice::WriteOnly))
            out.write(file);
        out.close();
        return FileAssetReader().open(out.fileName());
    }
    std::unique_ptr<AssetMetadata> readTag(const QByteArray &frames)
    {
        return read(id3Tag(frames) + makeAudio(u"mp3"_s));
    }

    QTemporaryDir m_directory;
    int m_count = 0;
};

void Id3FieldsTest::encodings_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("text");
    QTest::newRow("latin1") << textFrame("TIT2", latin1, "Sigur R\xf3s") << u"Sigur Rós"_s;
    QTest::newRow("latin1 two in a row") << textFrame("TIT2", latin1,
                                                      "Gr\xf6\xdf"
                                                      "e")
                                         << u"Größe"_s;
    QTest::newRow("gbk") << textFrame("TIT2", latin1, gbk(u"青花瓷"_s)) << u"青花瓷"_s;
    QTest::newRow("utf8 in latin1") << textFrame("TIT2", latin1, u"青花瓷"_s.toUtf8()) << u"青花瓷"_s;
    QTest::newRow("utf16") << textFrame("TIT2", utf16, utf16Text(u"ねえ 🎵"_s)) << u"ねえ 🎵"_s;
    QTest::newRow("utf8") << textFrame("TIT2", utf8, u"青花瓷 🎵"_s.toUtf8()) << u"青花瓷 🎵"_s;
    QTest::newRow("utf16 with end") << textFrame("TIT2", utf16, utf16Text(u"晴天"_s) + QByteArray(2, '\0'))
                                    << u"晴天"_s;
}

void Id3FieldsTest::encodings()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, text);
    QCOMPARE(TakenTags(*readTag(frame)).title, text);
}

void Id3FieldsTest::gbkInLatin1()
{
    const auto asset =
        readTag(textFrame("TIT2", latin1, gbk(u"爱"_s)) + textFrame("TPE1", latin1, gbk(u"周杰伦"_s)) +
                textFrame("TALB", latin1, "Caf\xe9") + lyricsFrame(latin1, gbk(u"天青色等烟雨"_s)));
    const TakenTags taken(*asset);
    QCOMPARE(taken.title, u"爱"_s);
    QCOMPARE(taken.artist, u"周杰伦"_s);
    QCOMPARE(taken.album, u"Café"_s);
    QCOMPARE(taken.lyrics, u"天青色等烟雨"_s);
}

void Id3FieldsTest::severalValues()
{
    const QByteArray two = u"周杰伦"_s.toUtf8() + '\0' + u"费玉清"_s.toUtf8();
    QCOMPARE(TakenTags(*readTag(textFrame("TPE1", utf8, two))).artist, u"周杰伦 / 费玉清"_s);
    const QByteArray twoGbk = gbk(u"周杰伦"_s) + '\0' + gbk(u"费玉清"_s);
    QCOMPARE(TakenTags(*readTag(textFrame("TPE1", latin1, twoGbk))).artist, u"周杰伦 / 费玉清"_s);
}

void Id3FieldsTest::endsAndMarks()
{
    QCOMPARE(TakenTags(*readTag(textFrame("TIT2", utf8, QByteArray("title\0\0\0", 8)))).title, u"title"_s);
    QCOMPARE(TakenTags(*readTag(textFrame("TIT2", utf8, "\xef\xbb\xbftitle"))).title, u"title"_s);
    // Bytes that are no UTF-8 do no harm to the rest of the tag.
    const auto asset = readTag(textFrame("TIT2", utf8, "\xff\xfe\x80") + textFrame("TPE1", utf8, "artist"));
    QCOMPARE(TakenTags(*asset).artist, u"artist"_s);
}

void Id3FieldsTest::oldVersion()
{
    const QByteArray png = madePng();
    const auto asset = readTag(textFrame("TT2", latin1, "title") + textFrame("TRK", latin1, "7/12") +
                               id3Frame("PIC", QByteArray(1, latin1) + "PNG" + char(3) + '\0' + png));
    const TakenTags taken(*asset);
    QCOMPARE(taken.title, u"title"_s);
    QCOMPARE(taken.track, u"7/12"_s);
    QCOMPARE(taken.artwork, png);
}

void Id3FieldsTest::twoLyricsFrames()
{
    const auto asset = readTag(lyricsFrame(utf8, "plain") + lyricsFrame(utf8, "[00:01.00]timed"));
    QStringList texts;
    for (const auto &item : asset->metadata().value())
        texts.append(item->stringValue().value_or(QString()));
    QCOMPARE(texts, QStringList({u"plain"_s, u"[00:01.00]timed"_s}));
    QCOMPARE(asset->lyrics().value(), u"[00:01.00]timed"_s);
    QCOMPARE(TakenTags(*readTag(lyricsFrame(utf8, "") + lyricsFrame(utf8, "second"))).lyrics, u"second"_s);
}

void Id3FieldsTest::describedLyrics_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::newRow("lyrics") << QByteArray("LYRICS");
    QTest::newRow("unsynced") << QByteArray("UNSYNCEDLYRICS");
    QTest::newRow("lower case") << QByteArray("lyrics");
}

void Id3FieldsTest::describedLyrics()
{
    QFETCH(QByteArray, description);
    const auto asset = readTag(textFrame("TXXX", utf8, description + '\0' + "[00:01.00]words"));
    QCOMPARE(TakenTags(*asset).lyrics, u"[00:01.00]words"_s);
    QCOMPARE(asset->lyrics().value(), u"[00:01.00]words"_s);
    const auto item = asset->metadata().value().constFirst();
    QCOMPARE(item->key(), "TXXX:"_L1 + QString::fromLatin1(description));
    QCOMPARE(item->identifier(), "id3/TXXX:"_L1 + QString::fromLatin1(description));
}

void Id3FieldsTest::timedLyrics()
{
    const auto asset =
        readTag(timedFrame({{1000, u"天青色等烟雨"_s.toUtf8()}, {63505, u"而我在等你"_s.toUtf8()}}));
    const QString lrc = u"[00:01.00]天青色等烟雨\n[01:03.51]而我在等你\n"_s;
    QCOMPARE(TakenTags(*asset).lyrics, lrc);
    QCOMPARE(asset->lyrics().value(), lrc);
}

void Id3FieldsTest::timedSyllables()
{
    const auto asset = readTag(
        timedFrame({{1000, "Stran"}, {1200, "gers "}, {1500, "in"}, {3000, "\nthe "}, {3300, "night"}}));
    QCOMPARE(TakenTags(*asset).lyrics, u"[00:01.00]Strangers in\n[00:03.00]the night\n"_s);
}

void Id3FieldsTest::chordsAreNoLyrics()
{
    const auto asset = readTag(timedFrame({{1000, "Am"}}, 5));
    QCOMPARE(TakenTags(*asset).lyrics, QString());
    QCOMPARE(asset->lyrics().value(), std::nullopt);
}

void Id3FieldsTest::machineValuesAreNoAlbum()
{
    const auto asset =
        readTag(textFrame("TXXX", utf8, QByteArray("REPLAYGAIN_ALBUM_GAIN\0-7.5 dB", 29)) +
                textFrame("TXXX", utf8,
                          QByteArray("MusicBrainz Artist Id\0"
                                     "0123",
                                     26)) +
                id3Frame("COMM", QByteArray(1, latin1) + "eng" + QByteArray("iTunNORM\0 0001", 14)));
    const TakenTags taken(*asset);
    QCOMPARE(taken.album, QString());
    QCOMPARE(taken.artist, QString());
    QCOMPARE(asset->metadata().value().size(), 3);
    QCOMPARE(asset->metadata().value().constFirst()->key(), u"TXXX:REPLAYGAIN_ALBUM_GAIN"_s);
}

void Id3FieldsTest::lyricistIsNoLyrics()
{
    const auto asset = readTag(textFrame("TXXX", utf8, QByteArray("LYRICIST\0Lin Xi", 15)) +
                               textFrame("TEXT", utf8, "Lin Xi"));
    QCOMPARE(TakenTags(*asset).lyrics, QString());
    QCOMPARE(asset->lyrics().value(), std::nullopt);
}

void Id3FieldsTest::frontCoverWins()
{
    const QByteArray front = madeJpeg(Qt::red);
    const QByteArray back = madeJpeg(Qt::green);
    const auto asset = readTag(pictureFrame(4, "image/jpeg", back) + pictureFrame(3, "image/jpeg", front) +
                               pictureFrame(6, "image/png", madePng()));
    QCOMPARE(asset->commonMetadata().value().size(), 1);
    QCOMPARE(asset->metadata().value().size(), 3);
    QCOMPARE(TakenTags(*asset).artwork, front);
}

void Id3FieldsTest::linkIsNoPicture()
{
    const QByteArray picture = madePng();
    const auto asset =
        readTag(pictureFrame(3, "-->", "http://example.com/a.jpg") + pictureFrame(0, "image/png", picture));
    QCOMPARE(TakenTags(*asset).artwork, picture);
}

void Id3FieldsTest::composerIsCreator()
{
    const QByteArray composer = textFrame("TCOM", utf8, "Composer");
    const auto alone = readTag(composer);
    QCOMPARE(alone->commonMetadata().value().constFirst()->commonKey(), CommonKey::creator);
    QCOMPARE(TakenTags(*alone).artist, u"Composer"_s);
    QCOMPARE(TakenTags(*readTag(composer + textFrame("TPE1", utf8, "Artist"))).artist, u"Artist"_s);
    QCOMPARE(TakenTags(*readTag(composer + textFrame("TPE2", utf8, "Band"))).artist, u"Band"_s);
}

void Id3FieldsTest::id3v1Alone()
{
    const auto asset = read(makeAudio(u"mp3"_s) +
                            id3v1Tag(gbk(u"晴天"_s), gbk(u"一二三四五六七八九十一二三四五"_s), "Caf\xe9", 7));
    const TakenTags taken(*asset);
    QCOMPARE(taken.title, u"晴天"_s);
    QCOMPARE(taken.artist, u"一二三四五六七八九十一二三四五"_s);
    QCOMPARE(taken.album, u"Café"_s);
    QCOMPARE(taken.track, u"7"_s);
    // 29 of 30 bytes are two-byte characters: the last one is cut in half.
    const auto cut =
        read(makeAudio(u"mp3"_s) + id3v1Tag("A" + gbk(u"一二三四五六七八九十一二三四五六"_s), "", "", 0));
    QCOMPARE(TakenTags(*cut).title, u"A一二三四五六七八九十一二三四"_s);
}

void Id3FieldsTest::id3v1FillsGaps()
{
    const auto asset = read(id3Tag(textFrame("TIT2", utf8, "long title") + textFrame("TRCK", utf8, "7/12")) +
                            makeAudio(u"mp3"_s) + id3v1Tag("long ti", "artist", "album", 9));
    const TakenTags taken(*asset);
    QCOMPARE(taken.title, u"long title"_s);
    QCOMPARE(taken.artist, u"artist"_s);
    QCOMPARE(taken.album, u"album"_s);
    QCOMPARE(taken.track, u"7/12"_s);
}

void Id3FieldsTest::apeTagOnMp3()
{
    MadeSong song;
    song.title = u"ape title"_s;
    song.artist = u"ape artist"_s;
    song.track = u"3"_s;
    song.cover = madePng();
    const QByteArray ape = renderedApe(song);
    const auto alone = read(makeAudio(u"mp3"_s) + ape);
    QCOMPARE(TakenTags(*alone).title, song.title);
    QCOMPARE(TakenTags(*alone).track, song.track);
    QCOMPARE(TakenTags(*alone).artwork, song.cover);
    const auto both = read(id3Tag(textFrame("TIT2", utf8, "id3 title")) + makeAudio(u"mp3"_s) + ape +
                           id3v1Tag("v1 title", "v1 artist", "v1 album", 0));
    const TakenTags taken(*both);
    QCOMPARE(taken.title, u"id3 title"_s);
    QCOMPARE(taken.artist, song.artist);
    QCOMPARE(taken.album, u"v1 album"_s);
    QVERIFY(std::abs(both->duration(true).value() - alone->duration(true).value()) < 0.001);
}

QTEST_GUILESS_MAIN(Id3FieldsTest)
#include "tst_id3_fields.moc"
