// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/OnlineScreenTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The search of the library, and the way from there to the online platforms.
class SearchScreenTest : public OnlineScreenTest
{
    Q_OBJECT

private:
    void showSearch()
    {
        QVERIFY(showLibrary(5));
        t->click(u"searchTab"_s);
        QTRY_VERIFY(t->shows(u"localSearchInitial"_s));
    }

private Q_SLOTS:
    void textIsFollowedAsItIsTyped()
    {
        showSearch();
        QVERIFY(t->item(u"onlineSearchText"_s)->hasActiveFocus());
        QVERIFY(!t->shows(u"searchPlatform"_s));
        type(u"歌"_s);
        QTRY_VERIFY(t->shows(u"localSongList"_s));
        QCOMPARE(t->item(u"localSongList"_s)->property("count").toInt(), 5);
        QCOMPARE(t->item(u"localResultsHeader"_s)->property("title").toString(), u"歌曲 (5)"_s);
        type(u" 3"_s);
        QTRY_COMPARE(t->item(u"localSongList"_s)->property("count").toInt(), 1);
        QTest::keyClick(t->window, Qt::Key_Return);
        QVERIFY(t->web->sent.isEmpty());
        // The row stands where the others are gone from.
        QVERIFY(!t->window->grabWindow().isNull());
        t->click(rowOf(u"localSongList"_s, 0));
        QCOMPARE(currentTitle(), u"歌 3"_s);
        QVERIFY(rowOf(u"localSongList"_s, 0)->property("isCurrent").toBool());
    }

    void keysLeadFromTheFieldToTheRows()
    {
        showSearch();
        type(u"歌"_s);
        QTRY_VERIFY(t->shows(u"localSongList"_s));
        QTest::keyClick(t->window, Qt::Key_Down);
        QVERIFY(t->item(u"localSongList"_s)->hasActiveFocus());
        QTest::keyClick(t->window, Qt::Key_Down);
        QTest::keyClick(t->window, Qt::Key_Return);
        QCOMPARE(currentTitle(), u"歌 1"_s);
    }

    void nothingFoundIsClearedOrLookedForOnline()
    {
        showSearch();
        type(u"没有"_s);
        QTRY_VERIFY(t->shows(u"localSearchEmpty"_s));
        QCOMPARE(t->item(u"localSearchEmpty"_s)->property("description").toString(), u"没有找到 \"没有\""_s);
        t->click(u"localSearchClear"_s);
        QTRY_VERIFY(t->shows(u"localSearchInitial"_s));
        QCOMPARE(textOf(u"onlineSearchText"_s), QString());

        fill(u"onlineSearchText"_s, u"夜航"_s);
        QTRY_VERIFY(t->shows(u"localSearchOnline"_s));
        t->click(u"localSearchOnline"_s);
        QTRY_VERIFY(t->shows(u"searchPlatform"_s));
        // The text has come along, and is looked for at once.
        QCOMPARE(textOf(u"onlineSearchText"_s), u"夜航"_s);
        QVERIFY(answers(u"type=search"_s, onlineAnswers::found(songs(2))));
        QTRY_VERIFY(t->shows(u"onlineSongList"_s));
        // And back: what was found online stays, and is not asked for again.
        t->click(u"searchScope0"_s);
        QTRY_VERIFY(t->shows(u"localSearchEmpty"_s));
        t->click(u"searchScope1"_s);
        QTRY_VERIFY(t->shows(u"onlineSongList"_s));
        const auto isSearch = [](const HttpRequest &request) {
            return request.url.query().contains(u"type=search"_s);
        };
        QCOMPARE(std::ranges::count_if(t->web->sent, isSearch), 1);
    }

    void everyLookIsWhole_data() { addLooks(); }
    void everyLookIsWhole()
    {
        t->addFile(u"a.mp3"_s, {u"很长的名字"_s.repeated(60), u"<b>歌手</b>"_s, {}, 100, {}});
        QVERIFY(t->scan());
        QVERIFY(showInLook());
        t->click(u"searchTab"_s);
        QTRY_VERIFY(t->shows(u"localSearchInitial"_s));
        check(u"beginning"_s);
        type(u"很长"_s);
        QTRY_VERIFY(t->shows(u"localSongList"_s));
        check(u"results"_s);
        type(u"x"_s.repeated(300));
        QTRY_VERIFY(t->shows(u"localSearchEmpty"_s));
        check(u"nothing"_s);
    }
};

QTEST_MAIN(SearchScreenTest)
#include "tst_search_screen.moc"
