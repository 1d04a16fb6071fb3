// SPDX-License-Identifier: GPL-3.0-or-later
// The servers' screens over the real network against a real server.
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/ApacheServer.h"
#include "Servers/DavTree.h"
#include "Services/AudioPlayerService.h"
#include "Services/WebDAVStreamingService.h"
#include "Views/ServerScreenTest.h"

#include <QHostAddress>
#include <QTcpServer>

using namespace cadorel;
using namespace Qt::StringLiterals;

class LiveServerScreensTest : public ServerScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void serverIsAddedScannedPlayedEditedAndDeleted();
    void addressThatNobodyAnswersIsSaid();
    void windowLivesWhileAServerIsSilent();

private:
    const QString m_user = u"小明@home"_s;
    const QString m_password = u" p@ss:w/o%rd+ö "_s;

    void start()
    {
        // The machine of a window is the process's while the window lives.
        t.reset();
        t = std::make_unique<TestWindow>(std::make_unique<NetworkHttpClient>());
    }
    void press(const QString &button) const
    {
        t->item(button)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(t->window, Qt::Key_Return);
    }
};

void LiveServerScreensTest::serverIsAddedScannedPlayedEditedAndDeleted()
{
    DavTree tree;
    for (const QString &path : {u"音乐/清晨 的#第一班船.mp3"_s, u"音乐/100% + 更多/夜航 & 归途.flac"_s,
                                u"音乐/100% + 更多/封面.jpg"_s, u"别处/不要.mp3"_s})
        tree.addFile(path);
    tree.addFolder(u"音乐/空的"_s);
    ApacheServer server;
    QVERIFY(server.start(tree.root(), m_user, m_password));
    start();
    QVERIFY(t->show());

    // Add and test: first with a wrong password, then with the right one.
    openPlace();
    t->click(u"emptyAddServer"_s);
    QTRY_VERIFY(isOpen(u"serverForm"_s));
    fill(u"nameField"_s, u"家里"_s);
    fill(u"addressField"_s, u"http://127.0.0.1"_s);
    fill(u"portField"_s, QString::number(server.port()));
    fill(u"pathField"_s, u"/音乐"_s);
    fill(u"usernameField"_s, m_user);
    fill(u"passwordField"_s, u"wrong"_s);
    press(u"testButton"_s);
    QTRY_COMPARE(textOf(u"testMessage"_s), u"认证失败，请检查用户名和密码"_s);
    fill(u"passwordField"_s, m_password);
    press(u"testButton"_s);
    QTRY_COMPARE(textOf(u"testMessage"_s), u"连接成功"_s);
    press(u"formSave"_s);
    QTRY_VERIFY(isGone(u"serverForm"_s));

    // Scan.
    QTRY_VERIFY(serverRow(0));
    QCOMPARE(serverRow(0)->property("host").toString(), u"127.0.0.1:%1"_s.arg(server.port()));
    t->click(serverRow(0));
    QTRY_VERIFY(t->item(u"serverPage"_s)->property("covers").toBool());
    t->click(u"firstScanButton"_s);
    QTRY_COMPARE(t->servers->page()->songs()->count(), 2);
    QTRY_VERIFY(songRow(1));
    QTRY_VERIFY(!t->shows(u"scanProgress"_s));
    QStringList titles = {songRow(0)->property("title").toString(), songRow(1)->property("title").toString()};
    titles.sort();
    QCOMPARE(titles, QStringList({u"夜航 & 归途"_s, u"清晨 的#第一班船"_s}));
    QTRY_COMPARE(t->library->songs()->count(), 2);

    // Play: the stream player is given an address of the loader's, and no credential.
    t->click(songRow(0));
    QTRY_VERIFY(t->player && t->player->lastItem());
    const MediaAsset &asset = t->player->lastItem()->asset();
    QCOMPARE(asset.url.scheme(), QString(WebDAVStreamingService::customScheme));
    QCOMPARE(asset.resourceLoader, static_cast<ResourceLoader *>(t->streaming.get()));
    QCOMPARE(currentTitle(), songRow(0)->property("title").toString());
    QCOMPARE(t->audioPlayer->queue().size(), 2);
    QTRY_VERIFY(songRow(0)->property("isCurrent").toBool());

    // Edit: another folder, which counts once it is scanned.
    t->click(u"serverPageMore"_s);
    QTRY_VERIFY(isOpen(u"serverPageMenu"_s));
    t->click(u"editServerItem"_s);
    QTRY_VERIFY(isOpen(u"serverForm"_s));
    QTRY_COMPARE(textOf(u"passwordFieldText"_s), m_password);
    fill(u"pathField"_s, u"/别处"_s);
    press(u"formSave"_s);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    QTRY_VERIFY(t->shows(u"staleBanner"_s));
    QCOMPARE(t->servers->page()->songs()->count(), 2);
    t->click(u"hintAction"_s);
    QTRY_COMPARE(t->servers->page()->songs()->count(), 1);
    QTRY_VERIFY(!t->shows(u"staleBanner"_s));
    QTRY_COMPARE(songRow(0)->property("title").toString(), u"不要"_s);

    // Delete.
    t->click(u"serverPageMore"_s);
    QTRY_VERIFY(isOpen(u"serverPageMenu"_s));
    t->click(u"deleteServerItem"_s);
    QTRY_VERIFY(isOpen(u"deleteServerDialog"_s));
    t->click(u"acceptButton"_s);
    QTRY_VERIFY(t->shows(u"serversEmpty"_s));
    QTRY_COMPARE(t->library->songs()->count(), 0);
    QCOMPARE(t->secrets->itemCount(), 0);
}

void LiveServerScreensTest::addressThatNobodyAnswersIsSaid()
{
    ApacheServer server;
    DavTree tree;
    QVERIFY(server.start(tree.root(), m_user, m_password));
    const quint16 port = server.port();
    server.stop();
    start();
    QVERIFY(t->show());
    openPlace();
    openForm();
    fill(u"addressField"_s, u"http://127.0.0.1:%1"_s.arg(port));
    fill(u"usernameField"_s, m_user);
    fill(u"passwordField"_s, m_password);
    press(u"testButton"_s);
    QTRY_VERIFY(textOf(u"testMessage"_s).startsWith(u"网络错误: "_s));
    QVERIFY(!textOf(u"testMessage"_s).contains(m_password.trimmed()));
    QVERIFY(!t->item(u"testResult"_s)->property("succeeded").toBool());
}

void LiveServerScreensTest::windowLivesWhileAServerIsSilent()
{
    // It takes connections and never says a word.
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    start();
    QVERIFY(t->show());
    openPlace();
    openForm();
    fill(u"addressField"_s, u"http://127.0.0.1:%1"_s.arg(silent.serverPort()));
    fill(u"usernameField"_s, m_user);
    fill(u"passwordField"_s, m_password);
    press(u"testButton"_s);
    QTRY_VERIFY(silent.hasPendingConnections());
    QCOMPARE(textOf(u"testMessage"_s), u"正在测试…"_s);
    fill(u"nameField"_s, u"家里"_s);
    QCOMPARE(textOf(u"nameFieldText"_s), u"家里"_s);
    // The fields have changed: what comes back now counts for nothing.
    QCOMPARE(textOf(u"testMessage"_s), QString());
    press(u"formSave"_s);
    QTRY_VERIFY(isGone(u"serverForm"_s));
    QTRY_VERIFY(serverRow(0));
    t->click(serverRow(0));
    QTRY_VERIFY(t->item(u"serverPage"_s)->property("covers").toBool());
    t->click(u"firstScanButton"_s);
    QTRY_VERIFY(t->shows(u"serverScanning"_s));
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->shows(u"serverPage"_s));
    QCOMPARE(serverRow(0)->property("status").toString(), u"正在扫描…"_s);
    // A server can go while it is being asked.
    t->item(u"serverList"_s)->forceActiveFocus();
    QTest::keyClick(t->window, Qt::Key_Home);
    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_VERIFY(isOpen(u"deleteServerDialog"_s));
    t->click(u"acceptButton"_s);
    QTRY_VERIFY(t->shows(u"serversEmpty"_s));
    QTRY_VERIFY(!t->webDAVService->isScanning());
}

QTEST_MAIN(LiveServerScreensTest)
#include "tst_server_screens_live.moc"
