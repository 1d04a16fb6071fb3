// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"

#include <QRandomGenerator>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// An index that was torn, overwritten or made by somebody else: the player starts, and a scan brings every
/// song back under its own id.
class TestLocalMusicImportDamage : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ImportFixture> m_fixture;

    LocalMusicImportService &service() { return m_fixture->service(); }
    void writeIndex(const QByteArray &bytes)
    {
        ImportFixture::write(m_fixture->metadata(u"index.json"_s), bytes);
    }
    bool scan() { return await(service().scanSandbox()).has_value(); }
    QStringList ids()
    {
        QStringList ids;
        for (const Song &song : service().importedSongs())
            ids.append(song.id());
        ids.sort();
        return ids;
    }
    /// A record of a file that is there, with one more member, or with another value of one it has.
    QByteArray recordWith(const QByteArray &member)
    {
        QByteArray text =
            ImportFixture::record(ImportFixture::write(m_fixture->documents(u"a.mp3"_s)), u"甲"_s);
        return text.chopped(1) + ',' + member + '}';
    }
    QByteArray goodRecord()
    {
        return ImportFixture::record(ImportFixture::write(m_fixture->documents(u"z.mp3"_s)), u"好"_s);
    }

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<ImportFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void tornAtEveryFiftiethByte()
    {
        for (int i = 0; i < 12; ++i) {
            const QString name = u"s%1.mp3"_s.arg(i);
            FakeAsset asset = tagged(u"标题 “%1”"_s.arg(i));
            asset.all = QList<FakeTag>{textTag(u"id3/USLT"_s, u"词\n\"]}"_s)};
            m_fixture->reader().assets.insert(name, asset);
            ImportFixture::write(m_fixture->documents(name));
        }
        m_fixture->start();
        QVERIFY(scan());
        const QByteArray whole = m_fixture->indexBytes();
        const QStringList wholeIds = ids();
        QVERIFY(whole.size() > 1000);
        for (qsizetype cut = 0; cut < whole.size(); cut += 50) {
            m_fixture->stop();
            m_fixture->console().take();
            writeIndex(whole.first(cut));
            m_fixture->start(true);
            QCOMPARE(m_fixture->console().take(), QStringList{u"📂 本地音乐: 从缓存加载 0 首歌曲"_s});
            QVERIFY(scan());
            QCOMPARE(ids(), wholeIds);
            QCOMPARE(m_fixture->indexedTitles().size(), 12);
        }
    }

    void notAnArrayOfObjects_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("white space") << " \n "_ba;
        QTest::newRow("null") << "null"_ba;
        QTest::newRow("number") << "12"_ba;
        QTest::newRow("object") << "{}"_ba;
        QTest::newRow("text") << "\"[]\""_ba;
        QTest::newRow("numbers") << "[1,2,3]"_ba;
        QTest::newRow("arrays") << "[[],[[]]]"_ba;
        QTest::newRow("nulls") << "[null]"_ba;
        QTest::newRow("zeros") << QByteArray(4096, '\0');
        QTest::newRow("binary") << QByteArray::fromHex("ff00fe5b7b22818283c0af7d5d");
        QTest::newRow("deep arrays") << QByteArray(200'000, '[');
        QTest::newRow("deep arrays, closed") << QByteArray(50'000, '[') + QByteArray(50'000, ']');
        QTest::newRow("deep objects") << QByteArray("[" + QByteArray("{\"a\":").repeated(50'000));
        QTest::newRow("a picture") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
        QTest::newRow("a web page") << "<html><body>404</body></html>"_ba;
    }
    void notAnArrayOfObjects()
    {
        QFETCH(const QByteArray, bytes);
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        writeIndex(bytes);
        m_fixture->start(true);
        QCOMPARE(m_fixture->console().take(), QStringList{u"📂 本地音乐: 从缓存加载 0 首歌曲"_s});
        QVERIFY(scan());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        QCOMPARE(m_fixture->indexedTitles(), QStringList{u"a"_s});
    }

    void oneElementThatIsNoObjectLosesTheFile_data()
    {
        QTest::addColumn<QByteArray>("element");
        QTest::newRow("number") << "1"_ba;
        QTest::newRow("null") << "null"_ba;
        QTest::newRow("text") << "\"x\""_ba;
        QTest::newRow("array") << "[]"_ba;
    }
    void oneElementThatIsNoObjectLosesTheFile()
    {
        QFETCH(const QByteArray, element);
        writeIndex('[' + goodRecord() + ',' + element + ']');
        m_fixture->start();
        QVERIFY(service().importedSongs().isEmpty());
    }

    void somethingBehindTheArrayLosesTheFile()
    {
        writeIndex('[' + goodRecord() + "] x");
        m_fixture->start();
        QVERIFY(service().importedSongs().isEmpty());
    }

    void emptyObjectsAndForeignKeysHarmNothing()
    {
        writeIndex("[{},{\"x\":1}," + goodRecord() + ",{}]");
        m_fixture->start();
        QCOMPARE(m_fixture->titles(), QStringList{u"好"_s});
    }

    void oddOptionalValuesCostOnlyThemselves_data()
    {
        QTest::addColumn<QByteArray>("member");
        for (const QByteArray &value :
             {"null"_ba, "\"x\""_ba, "{}"_ba, "[1,[2]]"_ba, "true"_ba, "1e300"_ba, "-1e300"_ba, "1e18"_ba,
              "1e13"_ba, "99999999999999999999"_ba, "-99999999999999999999"_ba, "3.5"_ba, "2147483648"_ba}) {
            QTest::newRow(("dateAdded " + value).constData()) << "\"dateAdded\":" + value;
            QTest::newRow(("trackNumber " + value).constData()) << "\"trackNumber\":" + value;
            QTest::newRow(("id " + value).constData()) << "\"id\":" + value;
            QTest::newRow(("artworkURL " + value).constData()) << "\"artworkURL\":" + value;
            QTest::newRow(("embeddedLyrics " + value).constData()) << "\"embeddedLyrics\":" + value;
        }
        QTest::newRow("very deep value") << "\"x\":" + QByteArray(2000, '[') + QByteArray(2000, ']');
        QTest::newRow("very long text") << "\"x\":\"" + QByteArray(1 << 20, 'x') + '"';
    }
    void oddOptionalValuesCostOnlyThemselves()
    {
        QFETCH(const QByteArray, member);
        writeIndex('[' + recordWith(member) + ',' + goodRecord() + ']');
        m_fixture->start();
        QCOMPARE(m_fixture->titles(), (QStringList{u"甲"_s, u"好"_s}));
        const Song odd = service().importedSongs().constFirst();
        QVERIFY(odd.dateAdded().isValid());
        QVERIFY(odd.trackNumber() == 0 || odd.trackNumber() == 3);
        QVERIFY(await(service().indexIdle()).has_value());
        QCOMPARE(m_fixture->indexedTitles(), m_fixture->titles());
    }

    void numberThatNoComputerHolds_data()
    {
        QTest::addColumn<QByteArray>("member");
        QTest::newRow("duration") << "\"duration\":1e400"_ba;
        QTest::newRow("date") << "\"dateAdded\":-1e999"_ba;
        QTest::newRow("track") << "\"trackNumber\":" + QByteArray(400, '9');
    }
    void numberThatNoComputerHolds()
    {
        // Whether such a text is JSON at all is open; what matters is that nothing is lost for good.
        QFETCH(const QByteArray, member);
        writeIndex('[' + recordWith(member) + ',' + goodRecord() + ']');
        m_fixture->start();
        QVERIFY(scan());
        QVERIFY(await(service().indexIdle()).has_value());
        QCOMPARE(service().importedSongs().size(), 2);
        QCOMPARE(m_fixture->indexedTitles().size(), 2);
    }

    void bytesChangedAtRandom()
    {
        for (int i = 0; i < 4; ++i)
            ImportFixture::write(m_fixture->documents(u"s%1.mp3"_s.arg(i)));
        m_fixture->start();
        QVERIFY(scan());
        const QByteArray whole = m_fixture->indexBytes();
        QRandomGenerator random(20260101);
        for (int round = 0; round < 300; ++round) {
            QByteArray changed = whole;
            for (int i = 0; i < 3; ++i)
                changed[random.bounded(changed.size())] = static_cast<char>(random.bounded(256));
            m_fixture->stop();
            writeIndex(changed);
            m_fixture->start();
            QVERIFY2(service().importedSongs().size() <= 4, changed.constData());
            QVERIFY(await(service().indexIdle()).has_value());
        }
    }

    void indexThatIsADirectory()
    {
        ImportFixture::write(m_fixture->metadata(u"index.json/x"_s));
        ImportFixture::write(m_fixture->documents(u"a.mp3"_s));
        m_fixture->start();
        QVERIFY(service().importedSongs().isEmpty());
        QVERIFY(scan());
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
    }
};

QTEST_GUILESS_MAIN(TestLocalMusicImportDamage)
#include "tst_local_music_import_damage.moc"
