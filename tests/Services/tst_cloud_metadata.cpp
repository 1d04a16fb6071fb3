// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Platform/Linux/Tags/FileAssetReader.h"
#include "Services/Cloud/CloudMetadata.h"
#include "Services/Cloud/CoverImage.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QStringList emptySummary{u"📋 元数据解析结果:"_s, u"   标题: 无"_s, u"   艺术家: 无"_s,
                               u"   专辑: 无"_s,        u"   歌词: 无"_s, u"   封面: 无"_s};

FakeTag text(const QString &key, const QString &value, std::optional<CommonKey> common = {})
{
    return {.identifier = u"vorb/"_s + key, .commonKey = common, .string = value, .data = {}};
}

FakeTag data(const QString &key, const QByteArray &value, std::optional<CommonKey> common = {})
{
    return {.identifier = u"vorb/"_s + key, .commonKey = common, .string = {}, .data = value};
}

/// Lines about covers alone.
QStringList coverLines(const CloudMetadata &found)
{
    return found.log.filter(u"🖼️"_s);
}

/// A picture of one bit a pixel, which a small file holds whatever its size.
QByteArray bitPicture(int width, int height)
{
    QImage image(width, height, QImage::Format_Mono);
    image.fill(0);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

} // namespace

class CloudMetadataTest : public QObject
{
    Q_OBJECT

private:
    FakeAssetReader m_reader;

    CloudMetadata read(const QList<FakeTag> &common, const QList<FakeTag> &all,
                       const std::optional<QString> &lyrics = {}, double duration = 1.5)
    {
        m_reader.otherwise = FakeAsset{.duration = duration, .common = common, .all = all, .lyrics = lyrics};
        return readCloudMetadata(m_reader, u"/cache/song.mp3"_s);
    }

private Q_SLOTS:
    void fileWithoutTags();
    void everythingInItsOrder();
    void failedLoadEndsTheReading_data();
    void failedLoadEndsTheReading();
    void failedDurationEndsTheReading();
    void durationIsTakenAsItIs();
    void keyOfAnItemWithoutOneIsItsIdentifier();
    void commonKeysComeBeforeTheTags();
    void laterCommonItemWins();
    void creatorIsNoArtist();
    void tagFillsWhatIsEmpty_data();
    void tagFillsWhatIsEmpty();
    void emptyTagFillsNothing();
    void oneTagMayFillSeveral();
    void lyricsOfTheAssetComeFirst();
    void lyricistIsTakenAsLyricsWhenThereAreNone();
    void lyricsAreCountedInCharacters();
    void commonCoverIsTakenUnseen();
    void coverTags_data();
    void coverTags();
    void bytesThatAreNoImageAreNoCover();
    void coverThatIsFoundEndsTheSearch();
    void pictureBlockTag_data();
    void pictureBlockTag();
    void pictureBlockInBase64IsNotFound();
    void pictureThatIsTooLargeIsNone();
    void drawingIsNoPicture();
    void realFiles_data();
    void realFiles();
};

void CloudMetadataTest::fileWithoutTags()
{
    const CloudMetadata found = read({}, {});
    QVERIFY(found.isRead);
    QVERIFY(!found.cover);
    QVERIFY(found.coverImage.isNull());
    QCOMPARE(found.duration, 1.5);
    QCOMPARE(found.log, QStringList{u"🔍 所有元数据键:"_s} + emptySummary);
}

void CloudMetadataTest::everythingInItsOrder()
{
    const QByteArray cover = madePng();
    const CloudMetadata found = read({text(u"TIT2"_s, u"标题"_s, CommonKey::title)},
                                     {text(u"TIT2"_s, u"标题"_s), data(u"APIC"_s, cover),
                                      text(u"ARTIST"_s, u"歌手"_s), text(u"USLT"_s, u"歌词"_s)});
    QCOMPARE(found.log, (QStringList{u"🔍 所有元数据键:"_s, u"   - TIT2"_s, u"   - APIC"_s, u"   - ARTIST"_s,
                                     u"   - USLT"_s, u"🖼️ 尝试解析封面 [apic]: %1 bytes"_s.arg(cover.size()),
                                     u"🖼️ 获取封面成功"_s, u"🎤 找到歌词标签: uslt"_s,
                                     u"📋 元数据解析结果:"_s, u"   标题: 标题"_s, u"   艺术家: 歌手"_s,
                                     u"   专辑: 无"_s, u"   歌词: 有 (2 字符)"_s, u"   封面: 有"_s}));
    QCOMPARE(found.title, u"标题"_s);
    QCOMPARE(found.artist, u"歌手"_s);
    QCOMPARE(found.lyrics, u"歌词"_s);
    QCOMPARE(found.cover, cover);
    QCOMPARE(found.coverImage.size(), QSize(64, 64));
}

void CloudMetadataTest::failedLoadEndsTheReading_data()
{
    QTest::addColumn<bool>("allFails");
    QTest::addColumn<QString>("shown");
    QTest::newRow("tags") << true << u"all"_s;
    QTest::newRow("common keys") << false << u"common"_s;
}

void CloudMetadataTest::failedLoadEndsTheReading()
{
    QFETCH(bool, allFails);
    QFETCH(QString, shown);
    FakeAsset asset{.duration = 1, .common = std::unexpected(u"common"_s), .all = {}, .lyrics = {}};
    if (allFails)
        asset.all = std::unexpected(u"all"_s);
    m_reader.otherwise = asset;
    const CloudMetadata found = readCloudMetadata(m_reader, u"/x.mp3"_s);
    QVERIFY(!found.isRead);
    QCOMPARE(found.log, QStringList{u"❌ 元数据解析失败: "_s + shown});
}

void CloudMetadataTest::failedDurationEndsTheReading()
{
    m_reader.otherwise = FakeAsset{.duration = std::unexpected(u"no length"_s),
                                   .common = QList<FakeTag>{},
                                   .all = QList<FakeTag>{text(u"TITLE"_s, u"t"_s)},
                                   .lyrics = {}};
    const CloudMetadata found = readCloudMetadata(m_reader, u"/x.mp3"_s);
    QVERIFY(!found.isRead);
    QVERIFY(found.title.isEmpty());
    QCOMPARE(found.log,
             (QStringList{u"🔍 所有元数据键:"_s, u"   - TITLE"_s, u"❌ 元数据解析失败: no length"_s}));
}

void CloudMetadataTest::durationIsTakenAsItIs()
{
    QVERIFY(qIsNaN(read({}, {}, {}, qQNaN()).duration));
    QCOMPARE(read({}, {}, {}, -1).duration, -1.0);
}

void CloudMetadataTest::keyOfAnItemWithoutOneIsItsIdentifier()
{
    FakeTag tag = text(QString(), u"t"_s);
    tag.identifier = u"title/"_s;
    const CloudMetadata found = read({}, {tag});
    QVERIFY(found.log.contains(u"   - title/"_s));
    QCOMPARE(found.title, u"t"_s);
}

void CloudMetadataTest::commonKeysComeBeforeTheTags()
{
    const CloudMetadata found =
        read({text(u"a"_s, u"T"_s, CommonKey::title), text(u"b"_s, u"A"_s, CommonKey::artist),
              text(u"c"_s, u"L"_s, CommonKey::albumName)},
             {text(u"TITLE"_s, u"t"_s), text(u"ARTIST"_s, u"a"_s), text(u"ALBUM"_s, u"l"_s)});
    QCOMPARE(found.title, u"T"_s);
    QCOMPARE(found.artist, u"A"_s);
    QCOMPARE(found.album, u"L"_s);
}

void CloudMetadataTest::laterCommonItemWins()
{
    const CloudMetadata found =
        read({text(u"a"_s, u"one"_s, CommonKey::title), text(u"b"_s, u"two"_s, CommonKey::title),
              data(u"c"_s, "no text", CommonKey::title)},
             {});
    QCOMPARE(found.title, u"two"_s);
}

void CloudMetadataTest::creatorIsNoArtist()
{
    QVERIFY(read({text(u"a"_s, u"c"_s, CommonKey::creator)}, {}).artist.isEmpty());
}

void CloudMetadataTest::tagFillsWhatIsEmpty_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("values"); // title, artist, album, lyrics
    const QString v = u"v"_s;
    const QStringList title{v, {}, {}, {}};
    const QStringList artist{{}, v, {}, {}};
    const QStringList album{{}, {}, v, {}};
    const QStringList lyrics{{}, {}, {}, v};
    const QStringList none{{}, {}, {}, {}};
    QTest::newRow("title") << u"TITLE"_s << title;
    QTest::newRow("subtitle") << u"SubTitle"_s << title;
    QTest::newRow("artist") << u"Artist"_s << artist;
    QTest::newRow("performer") << u"PERFORMER"_s << artist;
    QTest::newRow("album") << u"ALBUM"_s << album;
    for (const QString &key : {u"LYRICS"_s, u"USLT"_s, u"SYLT"_s, u"©lyr"_s, u"lyr"_s, u"UNSYNCEDLYRICS"_s,
                               u"TXXX:Unsynced"_s, u"LYRICIST"_s})
        QTest::newRow(qPrintable(key)) << key << lyrics;
    QTest::newRow("frame of a title") << u"TIT2"_s << none;
    QTest::newRow("comment") << u"COMM"_s << none;
}

void CloudMetadataTest::tagFillsWhatIsEmpty()
{
    QFETCH(QString, key);
    QFETCH(QStringList, values);
    const CloudMetadata found = read({}, {text(key, u"v"_s), text(key, u"later"_s)});
    QCOMPARE((QStringList{found.title, found.artist, found.album, found.lyrics}), values);
    const QStringList lines = found.log.filter(u"🎤"_s);
    QCOMPARE(lines, values.constLast().isEmpty() ? QStringList{}
                                                 : QStringList{u"🎤 找到歌词标签: "_s + key.toLower()});
}

void CloudMetadataTest::emptyTagFillsNothing()
{
    const CloudMetadata found =
        read({text(u"a"_s, QString(), CommonKey::title)},
             {text(u"TITLE"_s, {}), text(u"TITLE"_s, u"t"_s), data(u"ARTIST"_s, "x"),
              text(u"ARTIST"_s, u"a"_s), text(u"LYRICS"_s, {}), text(u"LYRICS"_s, u"l"_s)});
    QCOMPARE(found.title, u"t"_s);
    QCOMPARE(found.artist, u"a"_s);
    QCOMPARE(found.lyrics, u"l"_s);
    QCOMPARE(found.log.filter(u"🎤"_s).size(), 1);
}

void CloudMetadataTest::oneTagMayFillSeveral()
{
    const CloudMetadata found = read({}, {text(u"ALBUMARTIST"_s, u"v"_s)});
    QCOMPARE(found.artist, u"v"_s);
    QCOMPARE(found.album, u"v"_s);
}

void CloudMetadataTest::lyricsOfTheAssetComeFirst()
{
    const CloudMetadata found = read({}, {text(u"LYRICS"_s, u"of the tag"_s)}, u"of the asset"_s);
    QCOMPARE(found.lyrics, u"of the asset"_s);
    QVERIFY(found.log.filter(u"🎤"_s).isEmpty());
}

void CloudMetadataTest::lyricistIsTakenAsLyricsWhenThereAreNone()
{
    const FakeTag lyricist = text(u"LYRICIST"_s, u"林夕"_s);
    const FakeTag lyrics = text(u"LYRICS"_s, u"词"_s);
    QCOMPARE(read({}, {lyricist}).lyrics, u"林夕"_s);
    QCOMPARE(read({}, {lyricist, lyrics}).lyrics, u"林夕"_s);
    QCOMPARE(read({}, {lyrics, lyricist}).lyrics, u"词"_s);
    QCOMPARE(read({}, {lyricist}, u"词"_s).lyrics, u"词"_s);
}

void CloudMetadataTest::lyricsAreCountedInCharacters()
{
    // A family is one character of eleven units.
    QVERIFY(read({}, {}, u"歌👨‍👩‍👧‍👦é"_s).log.contains(u"   歌词: 有 (3 字符)"_s));
}

void CloudMetadataTest::commonCoverIsTakenUnseen()
{
    const CloudMetadata found =
        read({data(u"a"_s, "not an image", CommonKey::artwork)}, {data(u"APIC"_s, madePng())});
    QCOMPARE(found.cover, "not an image"_ba);
    QVERIFY(found.coverImage.isNull());
    QCOMPARE(coverLines(found), QStringList{u"🖼️ 从 commonMetadata 获取封面: 12 bytes"_s});

    const QByteArray jpeg = madeJpeg();
    const CloudMetadata second =
        read({data(u"a"_s, jpeg, CommonKey::artwork), data(u"b"_s, {}, CommonKey::artwork)}, {});
    QCOMPARE(second.cover, jpeg);
    QCOMPARE(second.coverImage.size(), QSize(64, 64));
}

void CloudMetadataTest::coverTags_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("isCover");
    for (const QString &key : {u"ArtWork"_s, u"COVER"_s, u"Cover Art (Front)"_s, u"APIC"_s, u"WM/Picture"_s})
        QTest::newRow(qPrintable(key)) << key << true;
    for (const QString &key : {u"covr"_s, u"PIC"_s, u"TITLE"_s})
        QTest::newRow(qPrintable(key)) << key << false;
}

void CloudMetadataTest::coverTags()
{
    QFETCH(QString, key);
    QFETCH(bool, isCover);
    const QByteArray png = madePng();
    const CloudMetadata found = read({}, {data(key, png)});
    QCOMPARE(found.cover, isCover ? std::optional(png) : std::nullopt);
    QCOMPARE(coverLines(found).size(), isCover ? 2 : 0);
}

void CloudMetadataTest::bytesThatAreNoImageAreNoCover()
{
    const QByteArray base64 = madePng().toBase64();
    const QByteArray block = madePictureBlock(madePng());
    for (const QByteArray &bytes : {QByteArray(), "junk"_ba, base64, block, madePng().first(20)}) {
        const CloudMetadata found = read({}, {data(u"APIC"_s, bytes)});
        QVERIFY(!found.cover);
        QCOMPARE(coverLines(found), QStringList{u"🖼️ 尝试解析封面 [apic]: %1 bytes"_s.arg(bytes.size())});
    }
}

void CloudMetadataTest::coverThatIsFoundEndsTheSearch()
{
    const QByteArray red = madePng(Qt::red);
    m_reader.valueReads = 0;
    const CloudMetadata found =
        read({}, {data(u"APIC"_s, "junk"), data(u"APIC"_s, red), data(u"APIC"_s, madePng(Qt::blue))});
    QCOMPARE(found.cover, red);
    QCOMPARE(m_reader.valueReads, 2);
}

void CloudMetadataTest::pictureBlockTag_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("line");
    const QByteArray png = madePng();
    QTest::newRow("image") << png << u"🖼️ 直接作为图片成功"_s;
    QTest::newRow("base64 of an image") << png.toBase64() << u"🖼️ Base64 解码成功"_s;
    QTest::newRow("block") << madePictureBlock(png)
                           << u"🖼️ FLAC 二进制格式解析成功: %1 bytes"_s.arg(png.size());
}

void CloudMetadataTest::pictureBlockTag()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, line);
    const CloudMetadata found = read({}, {data(u"METADATA_BLOCK_PICTURE"_s, bytes)});
    QCOMPARE(found.cover, madePng());
    QCOMPARE(coverLines(found),
             (QStringList{u"🖼️ 尝试解析封面 [metadata_block_picture]: %1 bytes"_s.arg(bytes.size()), line}));
}

void CloudMetadataTest::pictureBlockInBase64IsNotFound()
{
    const QByteArray block = madePictureBlock(madePng());
    for (const QByteArray &bytes :
         {block.toBase64(), madePictureBlock("no image"), block.first(32), "***"_ba}) {
        const CloudMetadata found = read({}, {data(u"metadata_block_picture"_s, bytes)});
        QVERIFY(!found.cover);
        QCOMPARE(coverLines(found).size(), 1);
    }
}

void CloudMetadataTest::pictureThatIsTooLargeIsNone()
{
    QCOMPARE(decodedCover(bitPicture(8192, 4096)).size(), QSize(8192, 4096));
    const QByteArray tooLarge = bitPicture(8192, 4097);
    QVERIFY(tooLarge.size() < 100'000);
    QVERIFY(decodedCover(tooLarge).isNull());
    QVERIFY(!read({}, {data(u"APIC"_s, tooLarge)}).cover);
}

void CloudMetadataTest::drawingIsNoPicture()
{
    const QByteArray svg =
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><rect width="9" height="9"/></svg>)";
    QVERIFY(decodedCover(svg).isNull());
    QVERIFY(decodedCover({}).isNull());
}

void CloudMetadataTest::realFiles_data()
{
    QTest::addColumn<QString>("format");
    for (const QString &format :
         {u"mp3"_s, u"flac"_s, u"m4a"_s, u"ogg"_s, u"opus"_s, u"wav"_s, u"ape"_s, u"wma"_s})
        QTest::newRow(qPrintable(format)) << format;
}

void CloudMetadataTest::realFiles()
{
    QFETCH(QString, format);
    const QTemporaryDir home;
    const QString path = home.filePath(u"歌."_s + format);
    const MadeSong made{.format = format,
                        .title = u"晴天"_s,
                        .artist = u"周杰伦"_s,
                        .album = u"叶惠美"_s,
                        .lyrics = {u"[00:01.00]故事的小黄花"_s},
                        .cover = madeJpeg(Qt::green, 32)};
    QVERIFY(makeSong(path, made));
    const CloudMetadata found = readCloudMetadata(FileAssetReader(), path);
    QVERIFY2(found.isRead, qPrintable(found.log.join(u'\n')));
    QCOMPARE(found.title, made.title);
    QCOMPARE(found.artist, made.artist);
    QCOMPARE(found.album, made.album);
    QCOMPARE(found.lyrics, made.lyrics.constFirst());
    QCOMPARE(found.cover, made.cover);
    QCOMPARE(found.coverImage.size(), QSize(32, 32));
    QVERIFY(qAbs(found.duration - made.seconds) < 0.2);
}

QTEST_GUILESS_MAIN(CloudMetadataTest)
#include "tst_cloud_metadata.moc"
