// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ServersBench.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

using Content = WebDAVServerPageViewModel::Content;
using Role = WebDAVServerListModel::Role;

class WebDAVServerPageTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void editedServerIsStaleUntilItsScan_data();
    void editedServerIsStaleUntilItsScan();
    void editDuringAScanStaysStale();
    void failedScanKeepsTheServerStale();
    void serverWithoutSongsIsNeverStale();
    void pageGoesThroughItsStates();
    void pageWaitsForTheSongsOfTheLastRun();
    void emptyServerSaysSo();
    void failedFirstScanSaysWhy();
    void pageSumsTheServerUp();
    void pageKeepsItsRowsWhileItCloses();
    void pageOfADeletedServerCloses();
    void songPlaysWithItsServersSongsAsQueue();
    void runningSongIsMarked();
    void dismissedFailureIsGone();
};

void WebDAVServerPageTest::editedServerIsStaleUntilItsScan_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("stale");
    QTest::newRow("name") << u"name"_s << true;
    QTest::newRow("address") << u"serverURL"_s << true;
    QTest::newRow("port") << u"port"_s << true;
    QTest::newRow("user") << u"username"_s << true;
    QTest::newRow("password") << u"password"_s << true;
    QTest::newRow("path") << u"basePath"_s << true;
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("switched off") << u"isEnabled"_s << false;
}

void WebDAVServerPageTest::editedServerIsStaleUntilItsScan()
{
    QFETCH(const QString, field);
    QFETCH(const bool, stale);
    ServersBench bench;
    bench.startServers();
    const QString id = bench.addScanned(ServersBench::config(u"甲"_s), {u"1.mp3"_s});
    bench.servers().openServer(id);
    QTRY_COMPARE(bench.page().content(), Content::Songs);
    bench.servers().editServer(id);
    QTRY_VERIFY(bench.form().canSubmit());
    const QHash<QString, QString> values = {
        {u"name"_s, u"乙"_s},        {u"serverURL"_s, u"https://other.example.com"_s},
        {u"port"_s, u"5006"_s},      {u"username"_s, u"other"_s},
        {u"password"_s, u"other"_s}, {u"basePath"_s, u"/other"_s}};
    if (auto *input = bench.form().property(field.toLatin1().constData()).value<FormTextInput *>())
        input->edit(values.value(field));
    else if (!field.isEmpty())
        bench.form().setEnabled(false);
    bench.form().save();
    QTRY_VERIFY(!bench.form().isOpen());
    QCOMPARE(bench.page().isStale(), stale);

    bench.folders.add(u"/other"_s, {u"1.mp3"_s});
    bench.scan(id);
    QVERIFY(!bench.page().isStale());
}

void WebDAVServerPageTest::editDuringAScanStaysStale()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.addScanned(ServersBench::config(u"甲"_s), {u"1.mp3"_s});
    bench.servers().openServer(id);
    bench.servers().scanServer(id);
    QTRY_VERIFY(bench.folders.isAsked());
    bench.servers().editServer(id);
    QTRY_VERIFY(bench.form().canSubmit());
    bench.form().username()->edit(u"other"_s);
    bench.form().save();
    QTRY_VERIFY(!bench.form().isOpen());
    QVERIFY(bench.page().isStale());
    bench.folders.answerAll();
    QTRY_VERIFY(bench.isIdle());
    QVERIFY(bench.page().isStale());
    bench.scan(id);
    QVERIFY(!bench.page().isStale());
}

void WebDAVServerPageTest::failedScanKeepsTheServerStale()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.addScanned(ServersBench::config(u"甲"_s), {u"1.mp3"_s});
    bench.servers().openServer(id);
    bench.servers().editServer(id);
    QTRY_VERIFY(bench.form().canSubmit());
    bench.form().password()->edit(u"wrong"_s);
    bench.form().save();
    QTRY_VERIFY(bench.page().isStale());
    bench.folders.refuse(401);
    bench.scan(id);
    QVERIFY(bench.page().isStale());
    QCOMPARE(bench.page().failure(), u"认证失败，请检查用户名和密码"_s);
    QCOMPARE(bench.page().content(), Content::Songs);
}

void WebDAVServerPageTest::serverWithoutSongsIsNeverStale()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.add(u"甲"_s);
    bench.servers().openServer(id);
    bench.servers().editServer(id);
    QTRY_VERIFY(bench.form().canSubmit());
    bench.form().name()->edit(u"乙"_s);
    bench.form().save();
    QTRY_COMPARE(bench.page().name(), u"乙"_s);
    QVERIFY(!bench.page().isStale());
}

void WebDAVServerPageTest::pageGoesThroughItsStates()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.add(u"家"_s);
    bench.folders.add(u"/music"_s, {u"1.mp3"_s, u"2.mp3"_s});
    QVERIFY(!bench.page().isOpen());
    bench.servers().openServer(id);
    QVERIFY(bench.page().isOpen());
    QCOMPARE(bench.page().serverId(), id);
    QCOMPARE(bench.page().name(), u"家"_s);
    QCOMPARE(bench.page().basePath(), u"/music"_s);
    QCOMPARE(bench.page().content(), Content::Unscanned);
    bench.page().scan();
    QCOMPARE(bench.page().content(), Content::Scanning);
    QVERIFY(bench.page().isScanning());
    QCOMPARE(bench.page().scanText(), u"正在扫描…"_s);
    QVERIFY(bench.answerOne());
    QTRY_COMPARE(bench.page().content(), Content::Songs);
    QTRY_VERIFY(!bench.page().isScanning());
    QCOMPARE(bench.page().songs()->count(), 2);
    bench.page().close();
    QVERIFY(!bench.page().isOpen());
}

void WebDAVServerPageTest::pageWaitsForTheSongsOfTheLastRun()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.addScanned(ServersBench::config(u"家"_s), {u"1.mp3"_s});
    QTRY_VERIFY(bench.home.preferences().contains(u"webdav_songs"_s));
    bench.home.secrets().hold();
    bench.startAgain();
    bench.servers().openServer(id);
    QCOMPARE(bench.page().content(), Content::Loading);
    bench.home.secrets().release();
    QTRY_COMPARE(bench.page().content(), Content::Songs);
    QTRY_VERIFY(bench.status(0).startsWith(u"1 首 · "_s));
}

void WebDAVServerPageTest::emptyServerSaysSo()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.addScanned(ServersBench::config(u"家"_s), {u"readme.txt"_s});
    bench.servers().openServer(id);
    QTRY_COMPARE(bench.page().content(), Content::Empty);
    QVERIFY(bench.status(0).startsWith(u"0 首 · 同步于 "_s));
}

void WebDAVServerPageTest::failedFirstScanSaysWhy()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.add(u"家"_s);
    bench.folders.refuse(403);
    bench.servers().openServer(id);
    bench.scan(id);
    QCOMPARE(bench.page().content(), Content::Failed);
    QCOMPARE(bench.page().failure(), u"访问被拒绝"_s);
    bench.page().scan();
    QCOMPARE(bench.page().content(), Content::Scanning);
    QVERIFY(bench.page().failure().isEmpty());
}

void WebDAVServerPageTest::pageSumsTheServerUp()
{
    ServersBench bench;
    bench.startServers();
    const QDateTime now(QDate(2026, 3, 4), QTime(5, 6), Qt::LocalTime);
    bench.home.clock().setNow(now.toUTC());
    const QString id = bench.add(u"家"_s);
    bench.folders.add(u"/music"_s, {u"1.mp3"_s});
    bench.servers().openServer(id);
    QCOMPARE(bench.page().summary(), u"从未同步"_s);
    bench.scan(id);
    QTRY_COMPARE(bench.page().summary(), u"1 首歌曲 · 同步于 3月4日 05:06"_s);
}

void WebDAVServerPageTest::pageKeepsItsRowsWhileItCloses()
{
    ServersBench bench;
    bench.startServers();
    const QString first = bench.addScanned(ServersBench::config(u"甲"_s, u"/a"_s), {u"1.mp3"_s});
    const QString second = bench.addScanned(ServersBench::config(u"乙"_s, u"/b"_s), {u"2.mp3"_s, u"3.mp3"_s});
    bench.servers().openServer(first);
    QCOMPARE(bench.page().songs()->count(), 1);
    bench.page().close();
    QCOMPARE(bench.page().songs()->count(), 1);
    bench.servers().openServer(second);
    QCOMPARE(bench.page().songs()->count(), 2);
    QCOMPARE(bench.page().songs()->songs().constFirst().title(), u"2"_s);
}

void WebDAVServerPageTest::pageOfADeletedServerCloses()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.addScanned(ServersBench::config(u"甲"_s), {u"1.mp3"_s});
    bench.servers().openServer(id);
    bench.servers().deleteServer(id);
    QTRY_VERIFY(!bench.page().isOpen());
}

void WebDAVServerPageTest::songPlaysWithItsServersSongsAsQueue()
{
    ServersBench bench;
    bench.home.addImportedSong(u"x.mp3"_s, u"X"_s);
    bench.startServers();
    bench.addScanned(ServersBench::config(u"甲"_s, u"/a"_s), {u"1.mp3"_s});
    const QString id = bench.addScanned(ServersBench::config(u"乙"_s, u"/b"_s), {u"2.mp3"_s, u"3.mp3"_s});
    bench.servers().openServer(id);
    bench.page().playSongAt(1);
    QCOMPARE(songOf(bench.player()).title(), u"3"_s);
    QCOMPARE(bench.player().queue().size(), 2);
    QCOMPARE(bench.player().currentIndex(), 1);
    bench.page().playSongAt(-1);
    bench.page().playSongAt(2);
    QCOMPARE(songOf(bench.player()).title(), u"3"_s);
}

void WebDAVServerPageTest::runningSongIsMarked()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.addScanned(ServersBench::config(u"甲"_s), {u"1.mp3"_s, u"2.mp3"_s});
    const auto isCurrent = [&bench](int row) {
        return bench.page().songs()->index(row).data(SongListModel::IsCurrentRole).toBool();
    };
    bench.servers().openServer(id);
    bench.page().playSongAt(0);
    QVERIFY(isCurrent(0));
    bench.player().next();
    QVERIFY(!isCurrent(0));
    QVERIFY(isCurrent(1));
    bench.page().close();
    bench.servers().openServer(id);
    QVERIFY(isCurrent(1));
}

void WebDAVServerPageTest::dismissedFailureIsGone()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.addScanned(ServersBench::config(u"甲"_s), {u"1.mp3"_s});
    bench.servers().openServer(id);
    bench.folders.refuse(500);
    bench.scan(id);
    QVERIFY(!bench.page().failure().isEmpty());
    bench.page().dismissFailure();
    QVERIFY(bench.page().failure().isEmpty());
    QVERIFY(!bench.data(0, Role::HasFailedRole).toBool());
}

QTEST_GUILESS_MAIN(WebDAVServerPageTest)
#include "tst_webdav_server_page.moc"
