// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"
#include "Services/Import/MetadataExtractor.h"
#include "Utils/StableHash.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// What "index.json" holds, how it is read back, and what becomes of older forms of it.
class TestLocalMusicImportIndex : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ImportFixture> m_fixture;

    LocalMusicImportService &service() { return m_fixture->service(); }
    QString indexPath() const { return m_fixture->metadata(u"index.json"_s); }
    void writeIndex(const QByteArray &bytes) { ImportFixture::write(indexPath(), bytes); }
    bool landed() { return await(service().indexIdle()).has_value(); }
    QString sound(const QString &name) { return ImportFixture::write(m_fixture->documents(name)); }
    Song first() { return service().importedSongs().constFirst(); }

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<ImportFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void contentOfTheIndexByteForByte()
    {
        FakeAsset asset = tagged(u"标题 \"引\"\\\n"_s, 180.25);
        asset.common->append(dataTag(u"id3/APIC"_s, "cover", CommonKey::artwork));
        asset.all = QList<FakeTag>{textTag(u"id3/USLT"_s, u"第一行\n第二行\t🎵"_s),
                                   textTag(u"id3/TRCK"_s, u"3/12"_s)};
        m_fixture->reader().assets.insert(u"a.mp3"_s, asset);
        m_fixture->clock().setNow(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7, 250), Qt::UTC));
        sound(u"a.mp3"_s);
        sound(u"b.mp3"_s);
        m_fixture->start();
        QVERIFY(await(service().scanSandbox()).has_value());
        const QByteArray folder = m_fixture->documents().toUtf8();
        const QByteArray side = m_fixture->metadata().toUtf8();
        const QByteArray idA = "D5E42B11634FA8F6";
        const QByteArray expected =
            "[{\"id\":\"" + idA +
            "\",\"title\":\"标题 \\\"引\\\"\\\\\\n\",\"artist\":\"歌手\",\"album\":\"专辑\","
            "\"albumId\":\"album_9E070772B1850C0B\",\"duration\":180.25,\"trackNumber\":3,"
            "\"dateAdded\":1772600767.25,\"assetURL\":\"" +
            folder + "/a.mp3\",\"artworkURL\":\"" + side + '/' + idA +
            "_artwork.jpg\",\"hasArtwork\":true,\"hasLyrics\":true,"
            "\"embeddedLyrics\":\"第一行\\n第二行\\t🎵\"},"
            "{\"id\":\"CD475AA634EA5A2E\",\"title\":\"b\",\"artist\":\"未知艺术家\",\"album\":\"未知专辑\","
            "\"albumId\":\"album_A3EF1EE876CC2E67\",\"duration\":0,\"trackNumber\":0,"
            "\"dateAdded\":1772600767.25,\"assetURL\":\"" +
            folder + "/b.mp3\",\"artworkURL\":\"\",\"hasArtwork\":false,\"hasLyrics\":false}]";
        QCOMPARE(m_fixture->indexBytes(), expected);
    }

    void whatIsWrittenIsReadBackTheSame()
    {
        FakeAsset asset = tagged(u"标题"_s, 180.125);
        asset.common->append(dataTag(u"id3/APIC"_s, "cover", CommonKey::artwork));
        asset.all = QList<FakeTag>{textTag(u"id3/USLT"_s, u"词"_s), textTag(u"id3/TRCK"_s, u"3"_s)};
        m_fixture->reader().assets.insert(u"a.mp3"_s, asset);
        sound(u"a.mp3"_s);
        m_fixture->start();
        QVERIFY(await(service().scanSandbox()).has_value());
        const Song before = first();
        m_fixture->clock().advance(std::chrono::hours(1));
        m_fixture->start(true);
        QCOMPARE(m_fixture->console().take().last(1), QStringList{u"📂 本地音乐: 从缓存加载 1 首歌曲"_s});
        const Song after = first();
        QCOMPARE(after.id(), before.id());
        QCOMPARE(after.title(), before.title());
        QCOMPARE(after.artist(), before.artist());
        QCOMPARE(after.album(), before.album());
        QCOMPARE(after.albumId(), before.albumId());
        QCOMPARE(after.duration(), before.duration());
        QCOMPARE(after.trackNumber(), 3);
        QCOMPARE(after.dateAdded(), before.dateAdded());
        QCOMPARE(after.assetURL(), before.assetURL());
        QCOMPARE(after.artworkURL(), before.artworkURL());
        QCOMPARE(after.artworkData().bytes(), "cover"_ba);
        QCOMPARE(after.embeddedLyrics(), u"词"_s);
        QCOMPARE(after.uiIdentity(), before.uiIdentity());
    }

    void songAddedToAListGivesTheSameFileAsAListWrittenWhole()
    {
        m_fixture->start();
        QByteArray grown;
        for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s}) {
            ImportFixture::write(m_fixture->outside(name));
            QVERIFY(await(service().importFile(QUrl::fromLocalFile(m_fixture->outside(name)))).has_value());
            grown = m_fixture->indexBytes();
        }
        QVERIFY(QFile::remove(indexPath()));
        service().saveImportedSongsIndex();
        QVERIFY(landed());
        QCOMPARE(m_fixture->indexBytes(), grown);
        QCOMPARE(m_fixture->indexedTitles(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    }

    void indexThatSomebodyReplacedIsWrittenWhole()
    {
        m_fixture->start();
        for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s}) {
            ImportFixture::write(m_fixture->outside(name));
            QVERIFY(await(service().importFile(QUrl::fromLocalFile(m_fixture->outside(name)))).has_value());
            if (name == u"a.mp3"_s)
                writeIndex("something else");
        }
        QCOMPARE(m_fixture->indexedTitles(), (QStringList{u"a"_s, u"b"_s}));
    }

    void shorterListLeavesNothingOfTheLongerOne()
    {
        m_fixture->start();
        for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s})
            sound(name);
        QVERIFY(await(service().scanSandbox()).has_value());
        service().deleteSong(first());
        service().deleteSong(first());
        QVERIFY(landed());
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"c"_s});
        QVERIFY(!QJsonDocument::fromJson(m_fixture->indexBytes()).isNull());
    }

    void lengthThatIsNoNumberIsWrittenAsUnknown()
    {
        m_fixture->reader().assets.insert(u"a.mp3"_s,
                                          tagged(u"甲"_s, std::numeric_limits<double>::infinity()));
        sound(u"a.mp3"_s);
        m_fixture->start();
        QVERIFY(await(service().scanSandbox()).has_value());
        m_fixture->start();
        QCOMPARE(m_fixture->titles(), QStringList{u"甲"_s});
        QCOMPARE(first().duration(), 0.0);
    }

    void missingIndexGivesAnEmptyListWithoutAWord()
    {
        m_fixture->start(true);
        QCOMPARE(m_fixture->console().take(), QStringList{u"📂 本地音乐: 从缓存加载 0 首歌曲"_s});
        QVERIFY(!QFileInfo::exists(indexPath()));
    }

    void reloadOfAnUnreadableIndexLeavesTheList()
    {
        sound(u"a.mp3"_s);
        m_fixture->start();
        QVERIFY(await(service().scanSandbox()).has_value());
        writeIndex("{");
        service().loadImportedSongs();
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
    }

    void eachRequiredValueMissingOrMistypedDropsItsRecordAlone_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("value");
        for (const QString &key : {u"title"_s, u"artist"_s, u"album"_s, u"assetURL"_s, u"duration"_s}) {
            QTest::newRow(qPrintable(key + u" missing"_s)) << key << QJsonValue(QJsonValue::Undefined);
            QTest::newRow(qPrintable(key + u" null"_s)) << key << QJsonValue();
            QTest::newRow(qPrintable(key + u" object"_s)) << key << QJsonValue(QJsonObject{{u"a"_s, 1}});
            QTest::newRow(qPrintable(key + u" array"_s)) << key << QJsonValue(QJsonArray{1, 2});
            QTest::newRow(qPrintable(key + u" of another type"_s))
                << key << (key == u"duration"_s ? QJsonValue(u"12"_s) : QJsonValue(12));
        }
    }
    void eachRequiredValueMissingOrMistypedDropsItsRecordAlone()
    {
        QFETCH(const QString, key);
        QFETCH(const QJsonValue, value);
        const auto object = [this](const QString &name) {
            return QJsonDocument::fromJson(ImportFixture::record(sound(name), name)).object();
        };
        QJsonObject damaged = object(u"b.mp3"_s);
        damaged.remove(key);
        if (!value.isUndefined())
            damaged.insert(key, value);
        writeIndex(QJsonDocument(QJsonArray{object(u"a.mp3"_s), damaged, object(u"c.mp3"_s)}).toJson());
        m_fixture->start();
        QCOMPARE(m_fixture->titles(), (QStringList{u"a.mp3"_s, u"c.mp3"_s}));
    }

    void defaultsOfTheOptionalValues()
    {
        writeIndex('[' + ImportFixture::record(sound(u"a.mp3"_s), u"甲"_s) + ']');
        m_fixture->start();
        QCOMPARE(first().trackNumber(), 0);
        QCOMPARE(first().dateAdded(), m_fixture->clock().now());
        QVERIFY(!first().embeddedLyrics());
        QVERIFY(!first().artworkData().isPresent());
        QCOMPARE(first().duration(), 12.5);
    }

    void flagsOfTheReadersConvenienceAreNotReadBack()
    {
        const QByteArray path = sound(u"a.mp3"_s).toUtf8();
        writeIndex("[{\"title\":\"t\",\"artist\":\"a\",\"album\":\"b\",\"duration\":1,\"assetURL\":\"" +
                   path + "\",\"hasArtwork\":true,\"hasLyrics\":true,\"unknown\":{\"x\":[1,{}]}}]");
        m_fixture->start();
        QVERIFY(!first().artworkData().isPresent());
        QVERIFY(!first().hasLyricsText());
    }

    void idOfAnotherFormIsReplacedAndTheFileRewrittenOnce()
    {
        const QString path = sound(u"204F3BD8187BC5A7_song.mp3"_s);
        const QString newId = stableHash(u"204F3BD8187BC5A7_song.mp3"_s);
        const QString oldId = u"3F2504E0-4F89-11D3-9A0C-0305E82C3301"_s;
        const QString cover = ImportFixture::write(artworkFilePath(m_fixture->metadata(), oldId), "cover");
        writeIndex('[' + ImportFixture::record(path, u"歌"_s, oldId) + ']');
        m_fixture->start(true);
        QCOMPARE(m_fixture->console().take(),
                 (QStringList{u"🔄 迁移歌曲ID: 歌"_s, u"  - 旧ID: "_s + oldId, u"  - 新ID: "_s + newId,
                              u"💾 已保存迁移后的歌曲索引"_s, u"📂 本地音乐: 从缓存加载 1 首歌曲"_s}));
        QCOMPARE(first().id(), newId);
        QCOMPARE(first().artworkData().bytes(), "cover"_ba);
        QCOMPARE(first().artworkURL(), QUrl::fromLocalFile(cover));
        QVERIFY(landed());
        // The side file keeps its name; the record points to it from now on.
        QVERIFY(QFileInfo::exists(cover));
        QVERIFY(m_fixture->indexBytes().contains("\"id\":\"" + newId.toUtf8() + '"'));
        QVERIFY(m_fixture->indexBytes().contains(cover.toUtf8()));
        m_fixture->start(true);
        QCOMPARE(m_fixture->console().take(), QStringList{u"📂 本地音乐: 从缓存加载 1 首歌曲"_s});
        QCOMPARE(first().artworkData().bytes(), "cover"_ba);
    }

    void missingIdCountsAsTheEmptyOne()
    {
        writeIndex('[' + ImportFixture::record(sound(u"a.mp3"_s), u"甲"_s) + ']');
        m_fixture->start(true);
        QCOMPARE(
            m_fixture->console().take(),
            (QStringList{u"🔄 迁移歌曲ID: 甲"_s, u"  - 旧ID: "_s, u"  - 新ID: "_s + stableHash(u"a.mp3"_s),
                         u"💾 已保存迁移后的歌曲索引"_s, u"📂 本地音乐: 从缓存加载 1 首歌曲"_s}));
    }

    void recordWhoseFileIsGoneVanishesWithoutARewrite()
    {
        const QByteArray index =
            '[' + ImportFixture::record(sound(u"a.mp3"_s), u"甲"_s, stableHash(u"a.mp3"_s)) + ",\n" +
            ImportFixture::record(m_fixture->documents(u"gone.mp3"_s), u"乙"_s, u"old"_s) + ']';
        writeIndex(index);
        m_fixture->start(true);
        QVERIFY(landed());
        QCOMPARE(m_fixture->titles(), QStringList{u"甲"_s});
        QCOMPARE(m_fixture->console().take(), QStringList{u"📂 本地音乐: 从缓存加载 1 首歌曲"_s});
        QCOMPARE(m_fixture->indexBytes(), index);
    }

    void recordWhoseFileIsGoneGoesWithTheRewriteOfAnother()
    {
        writeIndex('[' + ImportFixture::record(m_fixture->documents(u"gone.mp3"_s), u"乙"_s) + ',' +
                   ImportFixture::record(sound(u"a.mp3"_s), u"甲"_s, u"old"_s) + ']');
        m_fixture->start();
        QVERIFY(landed());
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"甲"_s});
    }

    void idDoesNotDependOnTheFolder()
    {
        writeIndex('[' + ImportFixture::record(sound(u"deep/er/a.mp3"_s), u"甲"_s) + ']');
        m_fixture->start();
        QCOMPARE(first().id(), stableHash(u"a.mp3"_s));
        QCOMPARE(first().albumId(), u"album_"_s + stableHash(u"专辑"_s));
    }

    void artworkIsLookedForInThreePlaces_data()
    {
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QString>("taken");
        QTest::newRow("all: the stored one") << QStringList{u"stored"_s, u"new"_s, u"old"_s} << u"stored"_s;
        QTest::newRow("under the new id") << QStringList{u"new"_s, u"old"_s} << u"new"_s;
        QTest::newRow("under the old id") << QStringList{u"old"_s} << u"old"_s;
        QTest::newRow("nowhere") << QStringList{} << QString();
        QTest::newRow("a folder in the first place") << QStringList{u"stored/x"_s, u"new"_s} << u"new"_s;
    }
    void artworkIsLookedForInThreePlaces()
    {
        QFETCH(const QStringList, present);
        QFETCH(const QString, taken);
        const QString path = sound(u"a.mp3"_s);
        const QHash<QString, QString> places{
            {u"stored"_s, m_fixture->outside(u"stored.jpg"_s)},
            {u"stored/x"_s, m_fixture->outside(u"stored.jpg/x"_s)},
            {u"new"_s, artworkFilePath(m_fixture->metadata(), stableHash(u"a.mp3"_s))},
            {u"old"_s, artworkFilePath(m_fixture->metadata(), u"OLD"_s)}};
        for (const QString &place : present)
            ImportFixture::write(places[place], place.toUtf8());
        QJsonObject object = QJsonDocument::fromJson(ImportFixture::record(path, u"甲"_s, u"OLD"_s)).object();
        object.insert(u"artworkURL"_s, places[u"stored"_s]);
        writeIndex(QJsonDocument(QJsonArray{object}).toJson());
        m_fixture->start();
        QCOMPARE(first().artworkData().isPresent(), !taken.isEmpty());
        QCOMPARE(first().artworkData().bytes(), taken.toUtf8());
        if (!taken.isEmpty())
            QCOMPARE(first().artworkURL(), QUrl::fromLocalFile(places[taken]));
    }

    void emptyArtworkFileIsStillACover()
    {
        ImportFixture::write(artworkFilePath(m_fixture->metadata(), stableHash(u"a.mp3"_s)), QByteArray());
        writeIndex('[' + ImportFixture::record(sound(u"a.mp3"_s), u"甲"_s) + ']');
        m_fixture->start();
        QVERIFY(first().artworkData().isPresent());
        QCOMPARE(first().artworkData().size(), 0);
    }

    void lyricsOfASideFileAreNotReadAtLoad()
    {
        ImportFixture::write(lyricsFilePath(m_fixture->metadata(), stableHash(u"a.mp3"_s)), "旁边的词"_ba);
        writeIndex('[' + ImportFixture::record(sound(u"a.mp3"_s), u"甲"_s) + ']');
        m_fixture->start();
        QVERIFY(!first().embeddedLyrics());
        QCOMPARE(service().getLyrics(first()), u"旁边的词"_s);
    }

    void legacyDirectoryIsMovedAndItsSongsComeBackWithTheScan()
    {
        ImportFixture::write(m_fixture->documents(u"ImportedMusic/a.mp3"_s), "moved");
        ImportFixture::write(m_fixture->documents(u"ImportedMusic/sub/b.FLAC"_s));
        ImportFixture::write(m_fixture->documents(u"ImportedMusic/X_artwork.jpg"_s), "cover");
        ImportFixture::write(m_fixture->documents(u"ImportedMusic/.hidden.mp3"_s));
        ImportFixture::write(m_fixture->documents(u"ImportedMusic/taken.mp3"_s), "legacy");
        ImportFixture::write(m_fixture->documents(u"taken.mp3"_s), "newer");
        ImportFixture::write(
            m_fixture->documents(u"ImportedMusic/index.json"_s),
            '[' + ImportFixture::record(m_fixture->documents(u"ImportedMusic/a.mp3"_s), u"甲"_s) + ']');
        m_fixture->start(true);
        QCOMPARE(m_fixture->console().take(), QStringList{u"📂 本地音乐: 从缓存加载 0 首歌曲"_s});
        QVERIFY(!QFileInfo::exists(m_fixture->documents(u"ImportedMusic"_s)));
        QCOMPARE(ImportFixture::bytesOf(m_fixture->documents(u"a.mp3"_s)), "moved"_ba);
        QVERIFY(QFileInfo::exists(m_fixture->documents(u"b.FLAC"_s)));
        QCOMPARE(ImportFixture::bytesOf(m_fixture->documents(u"taken.mp3"_s)), "newer"_ba);
        QCOMPARE(ImportFixture::bytesOf(m_fixture->metadata(u"X_artwork.jpg"_s)), "cover"_ba);
        QVERIFY(QFileInfo::exists(indexPath()));
        QVERIFY(await(service().scanSandbox()).has_value());
        QCOMPARE(m_fixture->titles(), (QStringList{u"a"_s, u"b"_s, u"taken"_s}));
    }

    void legacyDirectoryStaysWhereAnIndexExists()
    {
        writeIndex("[]");
        ImportFixture::write(m_fixture->documents(u"ImportedMusic/a.mp3"_s));
        m_fixture->start();
        QVERIFY(QFileInfo::exists(m_fixture->documents(u"ImportedMusic/a.mp3"_s)));
    }
};

QTEST_GUILESS_MAIN(TestLocalMusicImportIndex)
#include "tst_local_music_import_index.moc"
