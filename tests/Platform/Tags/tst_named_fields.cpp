// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadeAudio.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Platform/Tags/RawTags.h"
#include "Platform/Tags/TakenTags.h"

#include <QTest>

#include <taglib/mp4file.h>

using namespace Qt::StringLiterals;
using namespace cadorel;

namespace {

QByteArray utf8(const QString &text)
{
    return text.toUtf8();
}

} // namespace

/// Tags whose fields have names in words.
class NamedFieldsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void severalValues();
    void orderIsThatOfTheTable();
    void wordsThatMislead();
    void timedLyricsFirst();
    void unsyncedLyrics();
    void brokenComments();
    void infoInGbk();
    void infoInLatin1();
    void id3BesidesInfo();
    void freeAtoms();
    void trackOfMp4_data();
    void trackOfMp4();

private:
    QString write(const QString &name, const QByteArray &bytes)
    {
        QFile out(m_directory.filePath(name));
        if (out.open(QIODevice::WriteOnly))
            out.write(bytes);
        return out.fileName();
    }
    std::unique_ptr<AssetMetadata> readFlac(const QList<QByteArray> &comments)
    {
        return FileAssetReader().open(write(u"a.flac"_s, flacWith(comments)));
    }

    QTemporaryDir m_directory;
};

void NamedFieldsTest::severalValues()
{
    const auto asset = readFlac({"TITLE=a", "ARTIST=" + utf8(u"周杰伦"_s), "ARTIST=" + utf8(u"费玉清"_s)});
    QCOMPARE(TakenTags(*asset).artist, u"周杰伦 / 费玉清"_s);
}

void NamedFieldsTest::orderIsThatOfTheTable()
{
    const auto asset = readFlac(
        {"DATE=2007", "LYRICS=words", "ALBUMARTIST=b", "ALBUM=c", "TRACKNUMBER=7", "ARTIST=a", "TITLE=t"});
    QStringList keys;
    for (const auto &item : asset->metadata().value())
        keys.append(item->key());
    QCOMPARE(keys, QStringList({u"TITLE"_s, u"ARTIST"_s, u"ALBUMARTIST"_s, u"ALBUM"_s, u"TRACKNUMBER"_s,
                                u"LYRICS"_s, u"DATE"_s}));
}

void NamedFieldsTest::wordsThatMislead()
{
    const auto asset =
        readFlac({"TITLE=t", "ALBUMARTIST=band", "LYRICIST=Lin Xi", "REPLAYGAIN_ALBUM_GAIN=-7.5 dB",
                  "MUSICBRAINZ_ALBUMID=0123", "R128_ALBUM_GAIN=1", "TRACKNUMBER=07", "TRACKTOTAL=12"});
    const TakenTags taken(*asset);
    QCOMPARE(taken.artist, u"band"_s);
    QCOMPARE(taken.album, QString());
    QCOMPARE(taken.lyrics, QString());
    QCOMPARE(taken.track, u"07"_s);
    QCOMPARE(asset->lyrics().value(), std::nullopt);
}

void NamedFieldsTest::timedLyricsFirst()
{
    const auto asset = readFlac({"LYRICS=plain", "SYNCEDLYRICS=[00:01.00]timed"});
    QCOMPARE(TakenTags(*asset).lyrics, u"[00:01.00]timed"_s);
    QCOMPARE(asset->lyrics().value(), u"[00:01.00]timed"_s);
}

void NamedFieldsTest::unsyncedLyrics()
{
    QCOMPARE(TakenTags(*readFlac({"UNSYNCEDLYRICS=[00:01.00]words"})).lyrics, u"[00:01.00]words"_s);
}

void NamedFieldsTest::brokenComments()
{
    const auto asset = readFlac({"TITLE=\xff\xfe\x80", "=x", "NOEQUALS", "ARTIST=a", "ALBUM="});
    QCOMPARE(TakenTags(*asset).artist, u"a"_s);
    QCOMPARE(TakenTags(*asset).album, QString());
}

void NamedFieldsTest::infoInGbk()
{
    const TakenTags taken(
        *FileAssetReader().open(write(u"gbk.wav"_s, wavWithInfo({{"INAM", gbk(u"晴天"_s) + '\0'},
                                                                 {"IART", gbk(u"周杰伦"_s)},
                                                                 {"IPRD", gbk(u"叶惠美"_s)},
                                                                 {"ITRK", "3"}}))));
    QCOMPARE(taken.title, u"晴天"_s);
    QCOMPARE(taken.artist, u"周杰伦"_s);
    QCOMPARE(taken.album, u"叶惠美"_s);
    QCOMPARE(taken.track, u"3"_s);
}

void NamedFieldsTest::infoInLatin1()
{
    const TakenTags taken(*FileAssetReader().open(
        write(u"latin.wav"_s,
              wavWithInfo({{"INAM", "Caf\xe9"}, {"IART", "Mot\xf6rhead"}, {"IPRD", utf8(u"七里香"_s)}}))));
    QCOMPARE(taken.title, u"Café"_s);
    QCOMPARE(taken.artist, u"Motörhead"_s);
    QCOMPARE(taken.album, u"七里香"_s);
}

void NamedFieldsTest::id3BesidesInfo()
{
    QByteArray wav = wavWithInfo({{"INAM", "info title"}, {"IART", "info artist"}});
    const QByteArray tag = id3Tag(id3Frame("TIT2", "\x03id3 title"));
    wav += "id3 " + QByteArray::fromRawData("\0\0\0\0", 4) + tag;
    wav[wav.size() - tag.size() - 4] = char(tag.size());
    const TakenTags taken(*FileAssetReader().open(write(u"both.wav"_s, wav)));
    QCOMPARE(taken.title, u"id3 title"_s);
    QCOMPARE(taken.artist, u"info artist"_s);
}

void NamedFieldsTest::freeAtoms()
{
    const QString path = m_directory.filePath(u"free.m4a"_s);
    QVERIFY(makeSong(path, {}));
    {
        TagLib::MP4::File file(path.toLocal8Bit().constData());
        file.tag()->setItem("----:com.apple.iTunes:LYRICS", TagLib::StringList("words"));
        file.tag()->setItem("----:com.apple.iTunes:replaygain_album_gain", TagLib::StringList("-7.5 dB"));
        file.tag()->setItem("aART", TagLib::StringList("band"));
        QVERIFY(file.save());
    }
    const auto asset = FileAssetReader().open(path);
    QCOMPARE(TakenTags(*asset).lyrics, u"words"_s);
    QCOMPARE(TakenTags(*asset).album, QString());
    QCOMPARE(TakenTags(*asset).artist, u"band"_s);
    QCOMPARE(asset->lyrics().value(), u"words"_s);
}

void NamedFieldsTest::trackOfMp4_data()
{
    QTest::addColumn<QString>("track");
    QTest::newRow("both") << u"7/12"_s;
    QTest::newRow("alone") << u"7"_s;
}

void NamedFieldsTest::trackOfMp4()
{
    QFETCH(QString, track);
    const QString path = m_directory.filePath(u"track.m4a"_s);
    QVERIFY(makeSong(path, {.track = track}));
    QCOMPARE(TakenTags(*FileAssetReader().open(path)).track, track);
}

QTEST_GUILESS_MAIN(NamedFieldsTest)
#include "tst_named_fields.moc"
