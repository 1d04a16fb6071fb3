// SPDX-License-Identifier: GPL-3.0-or-later
// Several scans, and what happens to servers and the service while one runs.
#include "Services/WebDAV/WebDAVFixture.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestWebDAVScanOrder : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WebDAVFixture> m_fixture;

    WebDAVService &service() { return m_fixture->service(); }

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<WebDAVFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void allEnabledServersAreScannedInOrderAndAFailureStopsNone()
    {
        const WebDAVConfig failing = m_fixture->makeConfig(u"一"_s, u"/one"_s);
        WebDAVConfig disabled = m_fixture->makeConfig(u"停"_s, u"/off"_s);
        disabled.isEnabled = false;
        const WebDAVConfig good = m_fixture->makeConfig(u"二"_s, u"/two"_s);
        m_fixture->startWith({failing, disabled, good});
        m_fixture->addAnswer(u"/one"_s, answerWith(500));
        m_fixture->addDirectory(u"/two"_s, {u"a.mp3"_s});
        QVERIFY(m_fixture->serve(service().scanAllConfigs()));
        QCOMPARE(m_fixture->askedPaths(), (QStringList{u"/one/"_s, u"/two/"_s}));
        QCOMPARE(m_fixture->titles(), QStringList{u"a"_s});
        QCOMPARE(m_fixture->takeScanLines(),
                 (QStringList{u"🔍 WebDAV: 开始扫描 - 一"_s, u"❌ WebDAV: 扫描失败 - 服务器错误 (HTTP 500)"_s,
                              u"🔍 WebDAV: 开始扫描 - 二"_s, u"📁 WebDAV: 找到 1 个文件"_s,
                              u"🎵 WebDAV: 其中 1 个音频文件"_s, u"✅ WebDAV: 扫描完成，共 1 首歌曲"_s}));
    }

    void scansThatComeTogetherRunOneAfterTheOther()
    {
        const WebDAVConfig first = m_fixture->makeConfig(u"一"_s, u"/one"_s);
        const WebDAVConfig second = m_fixture->makeConfig(u"二"_s, u"/two"_s);
        m_fixture->startWith({first, second});
        m_fixture->addDirectory(u"/one"_s, {u"a.mp3"_s});
        m_fixture->addDirectory(u"/two"_s, {u"b.mp3"_s});
        const QCoro::Task<void> one = service().scanMusic(first);
        const QCoro::Task<void> two = service().scanMusic(second);
        QTRY_COMPARE(m_fixture->machine().web().pending.size(), 1U);
        settle();
        QCOMPARE(m_fixture->askedPaths(), QStringList{u"/one/"_s});
        QVERIFY(m_fixture->serve(one));
        QVERIFY(m_fixture->serve(two));
        QCOMPARE(m_fixture->titles(), (QStringList{u"a"_s, u"b"_s}));
        QVERIFY(!service().isScanning());
    }

    void aServerDeletedDuringItsScanStaysDeleted_data()
    {
        QTest::addColumn<int>("requests");
        for (const int requests : {0, 1, 2})
            QTest::addRow("%d answers", requests) << requests;
    }
    void aServerDeletedDuringItsScanStaysDeleted()
    {
        QFETCH(const int, requests);
        const WebDAVConfig config = m_fixture->makeConfig();
        m_fixture->startWith({config}, {WebDAVFixture::song(config, u"/dav/old.mp3"_s, u"old"_s)});
        m_fixture->addDirectory(u"/dav"_s, {u"a.mp3"_s, u"sub/"_s});
        m_fixture->addDirectory(u"/dav/sub"_s, {u"b.mp3"_s});
        const QCoro::Task<void> task = service().scanMusic(config);
        for (int i = 0; i < requests; ++i) {
            QTRY_COMPARE(m_fixture->machine().web().pending.size(), 1U);
            m_fixture->answerPending();
        }
        const QCoro::Task<void> deletion = service().deleteConfig(config);
        QVERIFY(m_fixture->serve(task));
        QVERIFY(m_fixture->serve(deletion));
        QVERIFY(await(service().songsStored()));
        QVERIFY(service().webDAVSongs().isEmpty());
        QVERIFY(service().configs().isEmpty());
        QVERIFY(m_fixture->storedConfigs().isEmpty());
        QCOMPARE(m_fixture->storedTitles(), QStringList());
        QVERIFY(!service().error());
        QVERIFY(!service().isScanning());
        QCOMPARE(service().scanProgress(), 1.0);
        const QStringList lines = m_fixture->console().take();
        QVERIFY(lines.filter(u"✅"_s).isEmpty() && lines.filter(u"❌"_s).isEmpty());
    }

    void aServerDeletedWhileItsScanWaitsIsNotScanned()
    {
        const WebDAVConfig first = m_fixture->makeConfig(u"一"_s, u"/one"_s);
        const WebDAVConfig second = m_fixture->makeConfig(u"二"_s, u"/two"_s);
        m_fixture->startWith({first, second});
        m_fixture->addDirectory(u"/one"_s, {});
        const QCoro::Task<void> all = service().scanAllConfigs();
        const QCoro::Task<void> again = service().scanMusic(second);
        QVERIFY(await(service().deleteConfig(second)));
        QVERIFY(m_fixture->serve(all));
        QVERIFY(m_fixture->serve(again));
        QCOMPARE(m_fixture->askedPaths(), QStringList{u"/one/"_s});
        QVERIFY(!service().error());
    }

    void aServerChangedDuringItsScanKeepsTheChange()
    {
        WebDAVConfig config = m_fixture->makeConfig();
        m_fixture->startWith({config});
        m_fixture->addDirectory(u"/dav"_s, {u"a.mp3"_s});
        const QCoro::Task<void> task = service().scanMusic(config);
        config.name = u"新"_s;
        QVERIFY(await(service().saveConfig(config, u"secret"_s)));
        QVERIFY(m_fixture->serve(task));
        QCOMPARE(service().configs().constFirst().name, u"新"_s);
        QVERIFY(service().configs().constFirst().lastSyncDate);
    }

    void theServiceEndsDuringAScan_data()
    {
        QTest::addColumn<int>("requests");
        for (const int requests : {0, 1, 2})
            QTest::addRow("%d answers", requests) << requests;
    }
    void theServiceEndsDuringAScan()
    {
        QFETCH(const int, requests);
        const WebDAVConfig config = m_fixture->makeConfig();
        m_fixture->startWith({config}, {WebDAVFixture::song(config, u"/dav/old.mp3"_s, u"old"_s)});
        m_fixture->addDirectory(u"/dav"_s, {u"a.mp3"_s, u"sub/"_s});
        m_fixture->addDirectory(u"/dav/sub"_s, {u"b.mp3"_s});
        const QCoro::Task<void> running = service().scanMusic(config);
        const QCoro::Task<void> waiting = service().scanAllConfigs();
        for (int i = 0; i < requests; ++i) {
            QTRY_COMPARE(m_fixture->machine().web().pending.size(), 1U);
            m_fixture->answerPending();
        }
        m_fixture->stop();
        QTRY_VERIFY(running.isReady() && waiting.isReady());
        QVERIFY(m_fixture->machine().web().pending.empty());
        QCOMPARE(m_fixture->storedTitles(), QStringList{u"old"_s});
    }
};

QTEST_GUILESS_MAIN(TestWebDAVScanOrder)
#include "tst_webdav_scan_order.moc"
