// SPDX-License-Identifier: GPL-3.0-or-later
// Subsonic servers in the servers' place, on made answers.
#include "Services/NavidromeService.h"
#include "ViewModels/NavidromeServerFormViewModel.h"
#include "ViewModels/NavidromeServerPageViewModel.h"
#include "ViewModels/NavidromeServersViewModel.h"
#include "Views/ServerScreenTest.h"

#include <QAccessible>
#include <QPointingDevice>

using namespace cadorel;
using namespace Qt::StringLiterals;

class NavidromeScreensTest : public ServerScreenTest
{
    Q_OBJECT

private:
    QPointingDevice *m_touch = QTest::createTouchDevice();

    NavidromeServerPageViewModel &page() { return *t->navidrome->page(); }
    NavidromeServerFormViewModel &form() { return *t->navidrome->form(); }
    QQuickItem *foundSong(int index) const { return rowOf(u"navidromeSongList"_s, index); }
    bool answersNext()
    {
        return QTest::qWaitFor([this] { return t->subsonic->answerOne(); });
    }
    bool answersUntilIdle()
    {
        return QTest::qWaitFor([this] {
            t->subsonic->answerAll();
            return !page().isBusy();
        });
    }
    void openNavidrome(const NavidromeConfig &config)
    {
        t->navidrome->openServer(config.uuidText());
        QTRY_VERIFY(t->item(u"navidromePage"_s)->property("covers").toBool());
    }
    /// The window with the page of one server that has these songs.
    void showPage(const QStringList &titles)
    {
        t->subsonic->setSongs(titles);
        const NavidromeConfig config = t->addNavidrome(u"家里的音乐"_s);
        QVERIFY(t->show());
        openPlace();
        openNavidrome(config);
        QVERIFY(answersUntilIdle());
    }
    void typeSearch(const QString &text)
    {
        t->item(u"navidromeSearchText"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keySequence(t->window, QKeySequence::SelectAll);
        QTest::keyClick(t->window, Qt::Key_Delete);
        type(text);
    }
    void openRowMenu(int row)
    {
        t->click(serverRow(row), Qt::RightButton);
        QTRY_VERIFY(isOpen(u"navidromeMenu"_s));
    }
    QString dialogText() const
    {
        return t->object(u"deleteNavidromeDialog"_s)->property("message").toString();
    }

private Q_SLOTS:
    void everyStateComesUp_data() { addLooks(); }
    void everyStateComesUp()
    {
        const QString endless = u"很长的名字"_s.repeated(60);
        t->subsonic->setSongs({endless, u"<b>不是标记</b> & 🎵"_s, u"夜曲"_s});
        QVERIFY(showInLook());
        openPlace();
        check(u"no server"_s);
        t->addServer(u"网盘"_s);
        const NavidromeConfig named =
            t->addNavidrome(endless, u"https://"_s + QString(60, u'a') + u".test:4533"_s);
        t->addNavidrome(u"<h1>不是标题</h1> 😀"_s, u"nowhere"_s);
        QTRY_VERIFY(serverRow(2));
        check(u"list"_s);

        openNavidrome(named);
        QVERIFY(t->shows(u"navidromeConnecting"_s));
        check(u"connecting"_s);
        QVERIFY(answersNext());
        QTRY_VERIFY(t->shows(u"navidromeLoading"_s));
        check(u"loading"_s);
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(foundSong(2));
        check(u"songs"_s);
        page().playSongAt(0);
        QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
        check(u"playing"_s);
        page().setSearchText(endless);
        page().search();
        check(u"searching"_s);
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(t->shows(u"navidromeBanner"_s));
        check(u"failed search"_s);
        t->subsonic->setFound({});
        page().search();
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(t->shows(u"navidromeNothingFound"_s));
        check(u"nothing found"_s);
        page().disconnectFromServer();
        QTRY_VERIFY(t->shows(u"navidromeDisconnected"_s));
        check(u"disconnected"_s);
        t->subsonic->setAnswer(u"ping.view"_s, webAnswer(subsonicRefusal(endless.toUtf8())));
        page().refresh();
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(t->shows(u"navidromeFailed"_s));
        check(u"failed"_s);

        t->navidrome->editServer(named.uuidText());
        QTRY_VERIFY(isOpen(u"navidromeForm"_s));
        QTRY_VERIFY(form().canSubmit());
        check(u"form"_s);
        form().serverURL()->edit(u"http://music.example.com"_s);
        form().username()->edit(QString());
        form().save();
        check(u"form with errors"_s);
        form().cancel();
        QTRY_VERIFY(isGone(u"navidromeForm"_s));

        t->click(u"navidromePageMore"_s);
        QTRY_VERIFY(isOpen(u"navidromePageMenu"_s));
        check(u"menu"_s);
        t->click(u"deleteNavidromeItem"_s);
        QTRY_VERIFY(isOpen(u"deleteNavidromeDialog"_s));
        check(u"delete dialog"_s);
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(isGone(u"deleteNavidromeDialog"_s));
        page().close();
        QTRY_VERIFY(!t->shows(u"navidromePage"_s));
        t->click(u"addServerButton"_s);
        QTRY_VERIFY(isOpen(u"addServerMenu"_s));
        check(u"add menu"_s);
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(isGone(u"addServerMenu"_s));
    }

    void eachKindIsAdded_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QString>("form");
        QTest::newRow("WebDAV") << u"addServerButton"_s << u"addWebDAVItem"_s << u"serverForm"_s;
        QTest::newRow("Navidrome") << u"addServerButton"_s << u"addNavidromeItem"_s << u"navidromeForm"_s;
        QTest::newRow("WebDAV, no server yet") << u"emptyAddServer"_s << QString() << u"serverForm"_s;
        QTest::newRow("Navidrome, no server yet")
            << u"emptyAddNavidrome"_s << QString() << u"navidromeForm"_s;
    }
    void eachKindIsAdded()
    {
        QFETCH(const QString, first);
        QFETCH(const QString, second);
        QFETCH(const QString, form);
        QVERIFY(t->show());
        openPlace();
        QVERIFY(t->shows(u"serversEmpty"_s));
        t->click(first);
        if (!second.isEmpty()) {
            QTRY_VERIFY(isOpen(u"addServerMenu"_s));
            t->click(second);
        }
        QTRY_VERIFY(isOpen(form));
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(isGone(form));
        QVERIFY(!t->navidrome->form()->isOpen());
        QVERIFY(!t->servers->form()->isOpen());
    }

    void theFormIsFilledAndSavedByKeyboard()
    {
        QVERIFY(t->show());
        openPlace();
        t->click(u"emptyAddNavidrome"_s);
        QTRY_VERIFY(isOpen(u"navidromeForm"_s));
        QCOMPARE(t->object(u"navidromeForm"_s)->property("title").toString(), u"添加 Navidrome"_s);
        for (const auto &[field, text] : {std::pair(u"nameField"_s, u"Home"_s),
                                          {u"addressField"_s, u"192.168.1.5:4533"_s},
                                          {u"apiPathField"_s, u"2"_s},
                                          {u"usernameField"_s, u"me"_s},
                                          {u"passwordField"_s, u" p w "_s}}) {
            QTRY_VERIFY2(t->item(field + u"Text"_s)->hasActiveFocus(), qPrintable(field));
            if (field == u"addressField"_s || field == u"apiPathField"_s)
                QTest::keyClick(t->window, Qt::Key_End);
            type(text);
            QTest::keyClick(t->window, Qt::Key_Tab);
        }
        QCOMPARE(textOf(u"apiPathFieldNote"_s),
                 u"一般保持为 /rest；如果你做了反代并改变路径，可在此调整。"_s);
        t->click(u"testButton"_s);
        QVERIFY(answersNext());
        QTRY_COMPARE(textOf(u"testMessage"_s), u"连接成功"_s);
        t->item(u"formSave"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(t->window, Qt::Key_Return);
        QTRY_VERIFY(isGone(u"navidromeForm"_s));
        QCOMPARE(t->navidromeService->configs().size(), 1);
        const NavidromeConfig config = t->navidromeService->configs().constFirst();
        QCOMPARE(config.name, u"Home"_s);
        QCOMPARE(config.serverURL, u"http://192.168.1.5:4533"_s);
        QCOMPARE(config.apiBasePath, u"/rest2"_s);
        QCOMPARE(config.username, u"me"_s);
        QCOMPARE(t->secrets->secret(config.passwordKeychainKey()), " p w "_ba);
        QTRY_VERIFY(serverRow(0));
        QCOMPARE(serverRow(0)->property("name").toString(), u"Home"_s);
    }

    void eachKindStandsUnderItsHeader()
    {
        t->addNavidrome(u"音乐"_s);
        t->addServer(u"硬盘"_s);
        QVERIFY(t->show());
        openPlace();
        QTRY_VERIFY(serverRow(1));
        QCOMPARE(serverRow(0)->property("name").toString(), u"硬盘"_s);
        QCOMPARE(serverRow(1)->property("name").toString(), u"音乐"_s);
        QStringList headers;
        for (const QQuickItem *item : t->visibleItems()) {
            const QString text = item->property("section").toString();
            if (!text.isEmpty())
                headers.append(text);
        }
        headers.sort();
        QCOMPARE(headers, (QStringList{u"Navidrome"_s, u"网盘"_s}));
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(serverRow(1));
        QVERIFY(accessible);
        QCOMPARE(accessible->text(QAccessible::Name), u"音乐，music.test，未连接"_s);
    }

    void aRowOpensThePageAndASongPlays_data()
    {
        QTest::addColumn<QString>("way");
        for (const char *way : {"mouse", "touch", "keyboard"})
            QTest::newRow(way) << QString::fromLatin1(way);
    }
    void aRowOpensThePageAndASongPlays()
    {
        QFETCH(const QString, way);
        // On a busy machine a tap may last longer than the short time that holding takes in these tests.
        constexpr int longHoldMs = 5000;
        QStyleHints *hints = QGuiApplication::styleHints();
        const int usualHoldMs = hints->mousePressAndHoldInterval();
        hints->setMousePressAndHoldInterval(longHoldMs);
        const auto restore = qScopeGuard([=] { hints->setMousePressAndHoldInterval(usualHoldMs); });
        t->subsonic->setSongs({u"一"_s, u"二"_s, u"三"_s});
        t->addNavidrome(u"家里的音乐"_s);
        QVERIFY(t->show());
        openPlace();
        QTRY_VERIFY(serverRow(0));
        const auto choose = [this, &way](QQuickItem *row, const QString &list, int steps) {
            if (way == u"mouse"_s) {
                t->click(row);
            } else if (way == u"touch"_s) {
                QTest::touchEvent(t->window, m_touch).press(0, TestWindow::centre(row));
                QTest::touchEvent(t->window, m_touch).release(0, TestWindow::centre(row));
            } else {
                t->item(list)->forceActiveFocus(Qt::TabFocusReason);
                for (int step = 0; step < steps; ++step)
                    QTest::keyClick(t->window, Qt::Key_Down);
                QTest::keyClick(t->window, Qt::Key_Return);
            }
        };
        choose(serverRow(0), u"serverList"_s, 1);
        QTRY_VERIFY(t->item(u"navidromePage"_s)->property("covers").toBool());
        QVERIFY(isGone(u"navidromeMenu"_s));
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(foundSong(2));
        choose(foundSong(1), u"navidromeSongList"_s, 2);
        QTRY_COMPARE(currentTitle(), u"二"_s);
        QCOMPARE(t->audioPlayer->queue().size(), 3);
        // A finger on the bare page is no way back.
        const QPoint bare = t->item(u"navidromeSongList"_s)->mapToScene(QPointF(100, 400)).toPoint();
        QTest::touchEvent(t->window, m_touch).press(0, bare);
        QTest::touchEvent(t->window, m_touch).release(0, bare);
        QVERIFY(page().isOpen());
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(!t->shows(u"navidromePage"_s));
        QCOMPARE(serverRow(0)->property("status").toString(), u"已连接"_s);
    }

    void aSearchIsSubmittedByKeyAndButton_data()
    {
        QTest::addColumn<bool>("byButton");
        QTest::newRow("Return") << false;
        QTest::newRow("button") << true;
    }
    void aSearchIsSubmittedByKeyAndButton()
    {
        QFETCH(const bool, byButton);
        showPage({u"一"_s});
        t->subsonic->setFound({u"夜曲"_s, u"夜航"_s});
        typeSearch(u"夜"_s);
        QVERIFY(!t->subsonic->isAsked());
        if (byButton)
            t->click(u"navidromeSearchButton"_s);
        else
            QTest::keyClick(t->window, Qt::Key_Return);
        QTRY_VERIFY(t->subsonic->isAsked());
        QVERIFY(t->shows(u"navidromeBusy"_s));
        QVERIFY(answersUntilIdle());
        QVERIFY(!t->shows(u"navidromeBusy"_s));
        QTRY_VERIFY(foundSong(1));
        QCOMPARE(foundSong(0)->property("title").toString(), u"夜曲"_s);
        // The arrow leaves the field for what was found.
        t->item(u"navidromeSearchText"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(t->window, Qt::Key_Down);
        QTRY_VERIFY(t->item(u"navidromeSongList"_s)->hasActiveFocus() || foundSong(0)->hasActiveFocus());
        QTest::keyClick(t->window, Qt::Key_Return);
        QTRY_COMPARE(currentTitle(), u"夜曲"_s);
    }

    void anEmptiedFieldBringsRandomSongs()
    {
        showPage({u"一"_s});
        t->subsonic->setFound({});
        typeSearch(u"没有的歌"_s);
        QTest::keyClick(t->window, Qt::Key_Return);
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(t->shows(u"navidromeNothingFound"_s));
        QVERIFY(!t->shows(u"navidromeSongList"_s));
        t->click(u"allSongsButton"_s);
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(t->shows(u"navidromeSongList"_s));
        QCOMPARE(t->item(u"navidromeSearchText"_s)->property("text").toString(), QString());
        QCOMPARE(foundSong(0)->property("title").toString(), u"一"_s);
    }

    void otherSongsAreShownFromTheFirst()
    {
        QStringList many;
        for (int i = 0; i < 60; ++i)
            many.append(u"歌 "_s + QString::number(i));
        showPage(many);
        QQuickItem *list = t->item(u"navidromeSongList"_s);
        QMetaObject::invokeMethod(list, "positionViewAtEnd");
        QTRY_VERIFY(list->property("contentY").toReal() > list->height());
        t->subsonic->setFound(many.mid(10, 40));
        typeSearch(u"歌"_s);
        QTest::keyClick(t->window, Qt::Key_Return);
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(foundSong(0));
        QTRY_COMPARE(list->property("contentY").toReal(), list->property("originY").toReal());
        QCOMPARE(foundSong(0)->property("title").toString(), u"歌 10"_s);
    }

    void aFailureIsSaidAndTriedAgain()
    {
        t->subsonic->setAnswer(u"ping.view"_s, webAnswer(subsonicRefusal("用户名或密码错误")));
        showPage({u"一"_s});
        QTRY_VERIFY(t->shows(u"navidromeFailed"_s));
        QCOMPARE(t->item(u"navidromeFailed"_s)->property("title").toString(), u"无法连接"_s);
        QCOMPARE(t->item(u"navidromeFailed"_s)->property("description").toString(), u"用户名或密码错误"_s);
        t->click(u"failedEditNavidrome"_s);
        QTRY_VERIFY(isOpen(u"navidromeForm"_s));
        QCOMPARE(t->object(u"navidromeForm"_s)->property("title").toString(), u"编辑 Navidrome"_s);
        form().cancel();
        QTRY_VERIFY(isGone(u"navidromeForm"_s));
        t->subsonic->setAnswer(u"ping.view"_s, webAnswer(subsonicAnswer()));
        t->click(u"navidromeRetry"_s);
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(foundSong(0));
        QVERIFY(!t->shows(u"navidromeFailed"_s));
    }

    void aFailedListingIsSaidOverTheSongsAndDismissed()
    {
        showPage({u"一"_s});
        t->subsonic->setAnswer(u"getRandomSongs.view"_s, webAnswer({}, 500));
        t->click(u"reloadButton"_s);
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(t->shows(u"navidromeBanner"_s));
        QCOMPARE(t->item(u"navidromeBanner"_s)->property("text").toString(), u"拉取歌曲失败"_s);
        QVERIFY(foundSong(0));
        t->click(t->item(u"navidromeBanner"_s)->findChild<QQuickItem *>(u"dismissButton"_s));
        QTRY_VERIFY(!t->shows(u"navidromeBanner"_s));
    }

    void theMenuOfARow()
    {
        t->subsonic->setSongs({u"一"_s});
        const NavidromeConfig config = t->addNavidrome(u"家里的音乐"_s);
        QVERIFY(t->show());
        openPlace();
        QTRY_VERIFY(serverRow(0));

        openRowMenu(0);
        QVERIFY(!t->item(u"disconnectItem"_s)->isEnabled());
        t->click(u"editNavidromeItem"_s);
        QTRY_VERIFY(isOpen(u"navidromeForm"_s));
        QCOMPARE(form().name()->text(), u"家里的音乐"_s);
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(isGone(u"navidromeForm"_s));

        openRowMenu(0);
        t->click(u"reloadSongsItem"_s);
        QTRY_VERIFY(t->item(u"navidromePage"_s)->property("covers").toBool());
        QVERIFY(answersUntilIdle());
        page().close();
        QTRY_VERIFY(!t->shows(u"navidromePage"_s));
        QCOMPARE(serverRow(0)->property("status").toString(), u"已连接"_s);

        openRowMenu(0);
        QVERIFY(t->item(u"disconnectItem"_s)->isEnabled());
        t->click(u"disconnectItem"_s);
        QTRY_COMPARE(serverRow(0)->property("status").toString(), u"未连接"_s);
        QVERIFY(!t->navidromeService->isConnected());

        openRowMenu(0);
        t->click(u"deleteNavidromeItem"_s);
        QTRY_VERIFY(isOpen(u"deleteNavidromeDialog"_s));
        QCOMPARE(dialogText(), u"确定要删除「家里的音乐」吗？"_s);
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(isGone(u"deleteNavidromeDialog"_s));
        QCOMPARE(t->navidromeService->configs().size(), 1);

        t->item(u"serverList"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(t->window, Qt::Key_Home);
        QTest::keyClick(t->window, Qt::Key_Delete);
        QTRY_VERIFY(isOpen(u"deleteNavidromeDialog"_s));
        t->click(u"acceptButton"_s);
        QTRY_VERIFY(t->shows(u"serversEmpty"_s));
        QVERIFY(t->navidromeService->configs().isEmpty());
        QCOMPARE(t->secrets->secret(config.passwordKeychainKey()), QByteArray());
    }

    void theMenuOfThePage()
    {
        showPage({u"一"_s});
        t->click(u"navidromePageMore"_s);
        QTRY_VERIFY(isOpen(u"navidromePageMenu"_s));
        t->click(u"disconnectItem"_s);
        QTRY_VERIFY(t->shows(u"navidromeDisconnected"_s));
        t->click(u"connectButton"_s);
        QVERIFY(answersUntilIdle());
        QTRY_VERIFY(foundSong(0));
        t->click(u"navidromePageMore"_s);
        QTRY_VERIFY(isOpen(u"navidromePageMenu"_s));
        t->click(u"deleteNavidromeItem"_s);
        QTRY_VERIFY(isOpen(u"deleteNavidromeDialog"_s));
        t->click(u"acceptButton"_s);
        QTRY_VERIFY(!t->shows(u"navidromePage"_s));
        QVERIFY(t->shows(u"serversEmpty"_s));
    }

    void refreshingThePlaceAsksTheConnectedServer()
    {
        showPage({u"一"_s});
        page().close();
        QTRY_VERIFY(!t->shows(u"navidromePage"_s));
        t->click(u"scanAllButton"_s);
        QTRY_VERIFY(t->subsonic->isAsked());
        QCOMPARE(t->subsonic->askedEndpoints().constLast(), u"getRandomSongs.view"_s);
        QVERIFY(answersUntilIdle());
    }
};

QTEST_MAIN(NavidromeScreensTest)
#include "tst_navidrome_screens.moc"
