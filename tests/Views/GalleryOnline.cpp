// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/OnlineAnswers.h"
#include "ViewModels/APISettingsViewModel.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/OnlineSearchViewModel.h"
#include "ViewModels/OnlineViewModel.h"
#include "ViewModels/RemoteCovers.h"
#include "ViewModels/TopListPageViewModel.h"
#include "ViewModels/TopListsViewModel.h"
#include "Views/Gallery.h"

namespace cadorel::gallery {

namespace {

/// Lets the web answer what is asked for at an address that holds @p text.
void answer(TestWindow &test, const QString &text, const FakeHttpClient::Result &result)
{
    await([&] { return test.web->answer(text, result); });
}

/// Every cover that is wanted comes, but for some songs.
void answerCovers(TestWindow &test)
{
    settle();
    for (int number = 0; !test.web->pending.empty(); ++number) {
        const QColor colour = QColor::fromHsv(number * 67 % 360, 120, 200);
        test.web->answer(number % 4 == 3 ? onlineAnswers::body("{}")
                                         : onlineAnswers::body(TestWindow::picture(colour, Qt::darkBlue)));
        settle();
    }
}

QList<OnlineSong> onlineSongs()
{
    const auto song = [](const QString &id, MusicPlatform platform, const QString &name,
                         const QString &artist, const QString &album) {
        return OnlineSong{id, name, artist, album, platform, {}, {}};
    };
    return {
        song(u"1"_s, MusicPlatform::netease, u"晚风渡口"_s, u"折纸半岛"_s, u"纸船与灯塔"_s),
        song(u"2"_s, MusicPlatform::kuwo, u"一首名字特别特别长的歌，长到在手机的宽度上无论如何也放不下"_s,
             u"同样有着很长很长名字的一支乐队与他们的朋友们"_s, u"现场录音全集（纪念版）"_s),
        song(u"3"_s, MusicPlatform::qq, u"🌙 夜航 ✨"_s, u"阿眠"_s, u"夜航"_s),
        song(u"4"_s, MusicPlatform::qq, u"A Rather Long English Title That Will Certainly Be Cut Off"_s,
             u"Someone feat. Someone Else"_s, {}),
        song(u"5"_s, MusicPlatform::netease, {}, {}, {}),
        song(u"6"_s, MusicPlatform::netease, u"无题"_s, {}, u"夏天"_s),
    };
}

} // namespace

void searchStates(const Gallery &gallery)
{
    TestWindow test;
    addSongs(test);
    if (!test.scan())
        qFatal("the songs are not taken up");
    test.remoteCovers = std::make_unique<RemoteCovers>(*test.platform.httpClient, *test.platform.clock);
    gallery.show(test);
    OnlineSearchViewModel &search = *test.online->search();
    test.click(u"searchTab"_s);
    gallery.save(test, u"search"_s);
    search.setSearchText(u"阿眠"_s);
    gallery.save(test, u"search-local"_s);
    search.setSearchText(u"没有这首歌"_s);
    gallery.save(test, u"search-local-empty"_s);
    search.setSearchText(QString());
    test.click(u"searchScope1"_s);
    gallery.save(test, u"online-initial"_s);
    search.setSearchText(u"夜航"_s);
    search.performSearch();
    gallery.save(test, u"online-searching"_s);
    QList<OnlineSong> songs = onlineSongs();
    for (OnlineSong &song : songs)
        song.platform = MusicPlatform::netease;
    answer(test, u"type=search"_s, onlineAnswers::found(songs));
    answerCovers(test);
    gallery.save(test, u"online-results"_s);
    search.selectPlatform(3);
    answer(test, u"type=aggregateSearch"_s, onlineAnswers::found(onlineSongs()));
    answerCovers(test);
    search.playSongAt(1);
    answer(test, u"type=url"_s, onlineAnswers::body("https://sound.example/a.mp3"));
    settle();
    answerCovers(test);
    gallery.save(test, u"online-all-playing"_s);
    test.item(u"onlineSearchText"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(test.window, Qt::Key_Down);
    QTest::keyClick(test.window, Qt::Key_Down);
    QTest::keyClick(test.window, Qt::Key_Menu);
    gallery.save(test, u"online-menu"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    search.performSearch();
    answer(test, u"type=aggregateSearch"_s, onlineAnswers::found({}));
    gallery.save(test, u"online-empty"_s);
    search.performSearch();
    answer(test, u"type=aggregateSearch"_s,
           onlineAnswers::broken(
               u"无法连接服务器 a-server-with-a-long-name.example.com，请检查网络连接。"_s.repeated(3)));
    gallery.save(test, u"online-failed"_s);

    test.online->settings()->open();
    gallery.save(test, u"api-settings"_s);
    test.online->settings()->tempURL()->edit(u"ftp://"_s + u"a-long-name."_s.repeated(12) + u"example"_s);
    test.online->settings()->saveURL();
    gallery.save(test, u"api-invalid"_s);
    test.online->settings()->setShowInvalidURLAlert(false);
    settle();
    test.online->settings()->setShowResetAlert(true);
    gallery.save(test, u"api-reset"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    test.online->settings()->tempURL()->edit(u"https://music.example"_s);
    test.online->settings()->saveURL();
    gallery.save(test, u"api-saved"_s);
}

void chartStates(const Gallery &gallery)
{
    TestWindow test;
    test.remoteCovers = std::make_unique<RemoteCovers>(*test.platform.httpClient, *test.platform.clock);
    gallery.show(test);
    test.click(u"searchTab"_s);
    test.click(u"chartsButton"_s);
    gallery.save(test, u"charts-loading"_s);
    QList<TopList> charts;
    for (const auto &[name, frequency] : {std::pair(u"上升榜"_s, u"每天更新"_s),
                                          {u"一个名字很长很长的排行榜，怎么也放不下"_s, u"每周四更新"_s},
                                          {u"🔥 热歌榜"_s, u"定期更新"_s},
                                          {u"Billboard of Everything"_s, u"每天更新"_s},
                                          {u"夜听榜"_s, u"定期更新"_s}})
        charts.append({QString::number(charts.size()), name, frequency, MusicPlatform::netease});
    answer(test, u"type=toplists"_s, onlineAnswers::charts(charts));
    test.item(u"chartGrid"_s)->forceActiveFocus();
    QTest::keyClick(test.window, Qt::Key_Right);
    gallery.save(test, u"charts"_s);
    test.online->charts()->openChart(1);
    gallery.save(test, u"chart-loading"_s);
    answer(test, u"type=toplist"_s, onlineAnswers::chartSongs(onlineSongs()));
    answerCovers(test);
    gallery.save(test, u"chart"_s);
    test.online->charts()->openChart(0);
    answer(test, u"type=toplist"_s, onlineAnswers::broken(u"no"_s));
    gallery.save(test, u"chart-empty"_s);
    test.online->charts()->page()->close();
    test.online->charts()->selectPlatform(1);
    answer(test, u"type=toplists"_s, onlineAnswers::broken(u"no"_s));
    gallery.save(test, u"charts-empty"_s);
}

} // namespace cadorel::gallery
