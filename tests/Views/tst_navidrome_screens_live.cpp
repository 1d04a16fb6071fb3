// SPDX-License-Identifier: GPL-3.0-or-later
// The screens of Subsonic servers over the real network against a real server.
#include "Fixtures/MadePicture.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Services/AudioPlayerService.h"
#include "Services/Navidrome/LiveNavidrome.h"
#include "ViewModels/NavidromeServerFormViewModel.h"
#include "ViewModels/NavidromeServerPageViewModel.h"
#include "ViewModels/NavidromeServersViewModel.h"
#include "ViewModels/RemoteCovers.h"
#include "Views/ServerScreenTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

class LiveNavidromeScreensTest : public ServerScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void serverIsAddedSearchedPlayedAndDeleted();

private:
    QQuickItem *foundSong(int index) const { return rowOf(u"navidromeSongList"_s, index); }
    NavidromeServerPageViewModel &page() const { return *t->navidrome->page(); }
    void press(const QString &button) const
    {
        t->item(button)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(t->window, Qt::Key_Return);
    }
    bool isShownAs(NavidromeServerPageViewModel::Content content) const
    {
        return !page().isBusy() && page().content() == content;
    }
};

void LiveNavidromeScreensTest::serverIsAddedSearchedPlayedAndDeleted()
{
    using Content = NavidromeServerPageViewModel::Content;
    const QString covered = u"夜航 & 归途 100%"_s;
    const SubsonicMusic music;
    QVERIFY(music.add(u"a.mp3"_s,
                      {.title = covered, .artist = u"阿眠"_s, .album = u"夜航"_s, .cover = madeJpeg()}));
    QVERIFY(
        music.add(u"b.mp3"_s, {.title = u"清晨的#第一班船"_s, .artist = u"林间小队"_s, .album = u"远岸"_s}));
    SubsonicServer server;
    QVERIFY(server.start(music.path(), LiveNavidrome::user(), LiveNavidrome::password()));
    // The machine of a window is the process's while the window lives.
    t.reset();
    t = std::make_unique<TestWindow>(std::make_unique<NetworkHttpClient>());
    t->remoteCovers = std::make_unique<RemoteCovers>(*t->platform.httpClient, *t->clock);
    QVERIFY(t->show());

    // Add and test: first with a wrong password, then with the right one.
    openPlace();
    t->click(u"emptyAddNavidrome"_s);
    QTRY_VERIFY(isOpen(u"navidromeForm"_s));
    fill(u"nameField"_s, u"家里的音乐"_s);
    fill(u"addressField"_s, server.address().toString());
    fill(u"usernameField"_s, LiveNavidrome::user());
    fill(u"passwordField"_s, u"wrong"_s);
    press(u"testButton"_s);
    QTRY_COMPARE(textOf(u"testMessage"_s), u"Wrong username or password."_s);
    fill(u"passwordField"_s, LiveNavidrome::password());
    press(u"testButton"_s);
    QTRY_COMPARE(textOf(u"testMessage"_s), u"连接成功"_s);
    press(u"formSave"_s);
    QTRY_VERIFY(isGone(u"navidromeForm"_s));

    // Open: it connects and lists songs of its own choice, with their covers.
    QTRY_VERIFY(serverRow(0));
    t->click(serverRow(0));
    QTRY_VERIFY(t->item(u"navidromePage"_s)->property("covers").toBool());
    QTRY_VERIFY(isShownAs(Content::Songs));
    QCOMPARE(page().songs()->count(), 2);
    QTRY_VERIFY(foundSong(1));

    // Search.
    fill(u"navidromeSearch"_s, u"夜航 & 归途"_s);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_COMPARE(page().songs()->count(), 1);
    QTRY_VERIFY(isShownAs(Content::Songs));
    QTRY_COMPARE(foundSong(0)->property("title").toString(), covered);
    QCOMPARE(foundSong(0)->property("subtitle").toString(), u"阿眠 · 夜航"_s);
    const auto isCoverDrawn = [this] {
        const QPoint corner = foundSong(0)->mapToScene(QPointF(0, 0)).toPoint();
        const QImage row = t->window->grabWindow().copy(QRect(corner, QSize(100, 64)));
        int red = 0;
        for (int x = 0; x < row.width(); ++x) {
            const QColor colour = row.pixelColor(x, row.height() / 2);
            red += colour.red() > 150 && colour.green() < 100 && colour.blue() < 100 ? 1 : 0;
        }
        return red > 20;
    };
    QTRY_VERIFY(isCoverDrawn());

    // Play: the stream player is given the signed address itself.
    t->click(foundSong(0));
    QTRY_VERIFY(t->player && t->player->lastItem());
    const QUrl played = t->player->lastItem()->asset().url;
    QCOMPARE(played.fileName(), u"stream.view"_s);
    QCOMPARE(played.port(), server.address().port());
    QCOMPARE(currentTitle(), covered);
    QTRY_VERIFY(foundSong(0)->property("isCurrent").toBool());

    // Nothing of the address is on the screen.
    for (const QQuickItem *item : t->visibleItems()) {
        const QString text = item->property("text").toString();
        QVERIFY2(!text.contains(u"&t="_s) && !text.contains(LiveNavidrome::password()), qPrintable(text));
    }

    fill(u"navidromeSearch"_s, u"没有这首歌"_s);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_VERIFY(isShownAs(Content::NothingFound));
    t->click(u"allSongsButton"_s);
    QTRY_VERIFY(isShownAs(Content::Songs));
    QCOMPARE(page().songs()->count(), 2);

    // Gone, and back.
    server.stop();
    t->click(u"reloadButton"_s);
    QTRY_VERIFY(t->shows(u"navidromeBanner"_s));
    QCOMPARE(page().songs()->count(), 2);
    page().close();
    QTRY_VERIFY(!t->shows(u"navidromePage"_s));
    t->click(serverRow(0));
    QTRY_VERIFY(t->item(u"navidromePage"_s)->property("covers").toBool());
    QTRY_VERIFY(isShownAs(Content::Failed));
    QVERIFY(server.startAgain());
    t->click(u"navidromeRetry"_s);
    QTRY_VERIFY(isShownAs(Content::Songs));

    t->click(u"navidromePageMore"_s);
    QTRY_VERIFY(isOpen(u"navidromePageMenu"_s));
    t->click(u"deleteNavidromeItem"_s);
    QTRY_VERIFY(isOpen(u"deleteNavidromeDialog"_s));
    t->click(u"acceptButton"_s);
    QTRY_VERIFY(t->shows(u"serversEmpty"_s));
    QCOMPARE(t->secrets->itemCount(), 0);
    QCOMPARE(currentTitle(), covered);
}

QTEST_MAIN(LiveNavidromeScreensTest)
#include "tst_navidrome_screens_live.moc"
