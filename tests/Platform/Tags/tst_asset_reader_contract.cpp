// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fixtures/MadePicture.h"
#include "Fixtures/MadeSong.h"
#include "Platform/Linux/Tags/FileAssetReader.h"

#include <QTest>

#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace cadorel;

/// What every reader of assets promises: the fake of the unit tests and the real one.
class AssetReaderContractTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void unreadableIsNeverNull_data() { addReaders(); }
    void unreadableIsNeverNull();
    void everyLoadFailsAlone_data() { addReaders(); }
    void everyLoadFailsAlone();
    void commonItemsHaveKeys_data() { addReaders(); }
    void commonItemsHaveKeys();
    void itemsOutliveTheAsset_data() { addReaders(); }
    void itemsOutliveTheAsset();
    void valuesCanBeReadAgain_data() { addReaders(); }
    void valuesCanBeReadAgain();
    void anyThread_data() { addReaders(); }
    void anyThread();
    void fakeReadsValuesOnDemand();
    void fileReadsValuesOnDemand();

private:
    void addReaders()
    {
        QTest::addColumn<const AssetReader *>("reader");
        QTest::newRow("fake") << static_cast<const AssetReader *>(&m_fake);
        QTest::newRow("file") << static_cast<const AssetReader *>(&m_file);
    }

    QTemporaryDir m_directory;
    QString m_song;
    MadeSong m_made;
    FakeAssetReader m_fake;
    FileAssetReader m_file;
};

void AssetReaderContractTest::initTestCase()
{
    m_song = m_directory.filePath(u"song.mp3"_s);
    m_made.title = u"青花瓷"_s;
    m_made.lyrics = {u"[00:01.00]天青色等烟雨"_s};
    m_made.cover = madeJpeg();
    QVERIFY(makeSong(m_song, m_made));

    const FakeTag title{
        .identifier = u"id3/TIT2"_s, .commonKey = CommonKey::title, .string = m_made.title, .data = {}};
    const FakeTag lyrics{
        .identifier = u"id3/USLT"_s, .commonKey = {}, .string = m_made.lyrics.constFirst(), .data = {}};
    const FakeTag cover{
        .identifier = u"id3/APIC"_s, .commonKey = CommonKey::artwork, .string = {}, .data = m_made.cover};
    m_fake.assets.insert(u"song.mp3"_s, {.duration = 1.0,
                                         .common = QList{title, cover},
                                         .all = QList{title, lyrics, cover},
                                         .lyrics = m_made.lyrics.constFirst()});
}

void AssetReaderContractTest::unreadableIsNeverNull()
{
    QFETCH(const AssetReader *, reader);
    for (const QString &path : {m_directory.filePath(u"missing.mp3"_s), QString(), m_directory.path()})
        QVERIFY(reader->open(path) != nullptr);
}

void AssetReaderContractTest::everyLoadFailsAlone()
{
    QFETCH(const AssetReader *, reader);
    const auto asset = reader->open(m_directory.filePath(u"missing.mp3"_s));
    QVERIFY(!asset->duration().has_value());
    QVERIFY(!asset->commonMetadata().has_value());
    QVERIFY(!asset->metadata().has_value());
    QVERIFY(!asset->duration().error().isEmpty());
    QVERIFY(!asset->metadata().error().isEmpty());
}

void AssetReaderContractTest::commonItemsHaveKeys()
{
    QFETCH(const AssetReader *, reader);
    const auto asset = reader->open(m_song);
    const MetadataItems common = asset->commonMetadata().value();
    QCOMPARE(common.size(), 2);
    for (const auto &item : common)
        QVERIFY(item->commonKey().has_value());
    const MetadataItems all = asset->metadata().value();
    QCOMPARE(all.size(), 3);
    for (const auto &item : all) {
        QVERIFY(!item->key().isEmpty());
        QVERIFY(item->identifier().endsWith(u'/' + item->key()));
    }
}

void AssetReaderContractTest::itemsOutliveTheAsset()
{
    QFETCH(const AssetReader *, reader);
    const MetadataItems items = reader->open(m_song)->metadata().value();
    QCOMPARE(items[0]->stringValue(), m_made.title);
    QCOMPARE(items[0]->dataValue(), std::nullopt);
    QCOMPARE(items[2]->dataValue(), m_made.cover);
    QCOMPARE(items[2]->stringValue(), std::nullopt);
}

void AssetReaderContractTest::valuesCanBeReadAgain()
{
    QFETCH(const AssetReader *, reader);
    const auto asset = reader->open(m_song);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(asset->commonMetadata().value().constFirst()->stringValue(), m_made.title);
        QCOMPARE(asset->lyrics().value(), m_made.lyrics.constFirst());
        QVERIFY(asset->duration().value() > 0);
        QVERIFY(asset->duration(true).value() > 0);
    }
}

void AssetReaderContractTest::anyThread()
{
    QFETCH(const AssetReader *, reader);
    const QStringList many(200, m_song);
    const auto titles = QtConcurrent::blockingMapped<QStringList>(many, [reader](const QString &path) {
        return reader->open(path)->commonMetadata().value().constFirst()->stringValue().value();
    });
    QCOMPARE(titles.count(m_made.title), many.size());
}

void AssetReaderContractTest::fakeReadsValuesOnDemand()
{
    const int before = m_fake.valueReads;
    const auto asset = m_fake.open(m_song);
    const MetadataItems items = asset->metadata().value();
    QCOMPARE(asset->commonMetadata().value().size(), 2);
    QCOMPARE(m_fake.valueReads.load(), before);
    QCOMPARE(items.constFirst()->stringValue(), m_made.title);
    QCOMPARE(m_fake.valueReads.load(), before + 1);
}

void AssetReaderContractTest::fileReadsValuesOnDemand()
{
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    QSKIP("the sanitizer keeps its own books of memory");
#endif
    constexpr qint64 pictureBytes = qint64(8) * 1024 * 1024;
    MadeSong song = m_made;
    song.cover = m_made.cover + QByteArray(pictureBytes, 'x');
    const QString path = m_directory.filePath(u"cover.mp3"_s);
    QVERIFY(makeSong(path, song));

    const auto used = [] {
        const struct mallinfo2 info = mallinfo2();
        return qint64(info.uordblks + info.hblkhd);
    };
    const auto asset = m_file.open(path);
    const qint64 opened = used();
    const MetadataItems items = asset->metadata().value();
    QVERIFY(used() - opened < pictureBytes / 8);
    const std::optional<QByteArray> picture = items.constLast()->dataValue();
    QVERIFY(picture == song.cover);
    QVERIFY(used() - opened >= pictureBytes);
}

QTEST_GUILESS_MAIN(AssetReaderContractTest)
#include "tst_asset_reader_contract.moc"
