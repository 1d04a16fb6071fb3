// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeSubsonic.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/NavidromeServerFormViewModel.h"
#include "ViewModels/NavidromeServerPageViewModel.h"
#include "ViewModels/NavidromeServersViewModel.h"
#include "ViewModels/RemoteCovers.h"
#include "Views/Gallery.h"

namespace cadorel::gallery {

namespace {

NavidromeServerFormViewModel &openNavidromeForm(TestWindow &test)
{
    test.navidrome->addServer();
    return *test.navidrome->form();
}

void formStates(const Gallery &gallery)
{
    TestWindow test;
    gallery.show(test);
    test.click(u"webdavTab"_s);
    settle();
    test.click(u"addServerButton"_s);
    gallery.save(test, u"servers-add-menu"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    NavidromeServerFormViewModel &form = openNavidromeForm(test);
    gallery.save(test, u"navidrome-form-new"_s);
    form.save();
    gallery.save(test, u"navidrome-form-errors"_s);
    form.name()->edit(u"家里的音乐"_s);
    form.serverURL()->edit(u"http://music.example.com/app/#/login"_s);
    form.serverURL()->finish();
    form.username()->edit(u"小明"_s);
    form.password()->edit(u"secret word"_s);
    form.test();
    await([&test] { return test.subsonic->answerOne(); });
    gallery.save(test, u"navidrome-form-test-good"_s);
}

void pageStates(const Gallery &gallery)
{
    TestWindow test;
    test.remoteCovers = std::make_unique<RemoteCovers>(*test.platform.httpClient, *test.clock);
    test.subsonic->setAnswer(u"getCoverArt.view"_s, webAnswer(TestWindow::picture(0x1f6f8b, 0xf2cc8f)));
    test.subsonic->setSongs({u"清晨的第一班船"_s, u"🌙 夜航 ✨"_s, u"长"_s.repeated(300), u"Paper Lanterns"_s,
                             u"2046"_s, u"<b>Bold</b> & Co."_s, u"雨后"_s, u"山谷回声"_s, u"再见，夏天"_s,
                             u"无题"_s, u"Last Train"_s, u"무제"_s, u"Ελληνικά"_s, u"夏天"_s});
    test.addServer(u"家里的 NAS"_s);
    const NavidromeConfig home = test.addNavidrome(u"家里的音乐"_s, u"http://192.168.1.5:4533"_s);
    const NavidromeConfig away =
        test.addNavidrome(u"一台名字特别特别长的服务器，长到在手机的宽度上放不下 🎧"_s,
                          u"https://a-very-long-name-of-a-server.example.com:65535"_s);
    gallery.show(test);
    NavidromeServerPageViewModel &page = *test.navidrome->page();
    const auto answer = [&test, &page] {
        await([&test, &page] {
            test.subsonic->answerAll();
            return !page.isBusy();
        });
        settle();
        test.subsonic->answerAll();
        settle();
        test.subsonic->answerAll();
        settle();
        test.subsonic->answerAll();
    };
    test.click(u"webdavTab"_s);
    gallery.save(test, u"servers-both-kinds"_s);
    test.navidrome->openServer(home.uuidText());
    gallery.save(test, u"navidrome-connecting"_s);
    answer();
    gallery.save(test, u"navidrome-songs"_s);
    page.playSongAt(1);
    page.setSearchText(u"夜"_s);
    page.search();
    gallery.save(test, u"navidrome-searching"_s);
    answer();
    gallery.save(test, u"navidrome-search-failed"_s);
    test.subsonic->setFound({});
    page.setSearchText(u"一首名字特别特别长的歌，长到在手机的宽度上无论如何也放不下"_s);
    page.search();
    answer();
    gallery.save(test, u"navidrome-nothing-found"_s);
    test.click(u"navidromePageMore"_s);
    gallery.save(test, u"navidrome-page-menu"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    page.disconnectFromServer();
    gallery.save(test, u"navidrome-disconnected"_s);
    test.subsonic->setAnswer(u"ping.view"_s, webAnswer(subsonicRefusal("Wrong username or password")));
    test.navidrome->openServer(away.uuidText());
    answer();
    gallery.save(test, u"navidrome-failed"_s);
    page.close();
    settle();
    test.item(u"serverList"_s)->forceActiveFocus();
    QTest::keyClick(test.window, Qt::Key_End);
    QTest::keyClick(test.window, Qt::Key_Delete);
    gallery.save(test, u"navidrome-delete"_s);
}

} // namespace

void navidromeStates(const Gallery &gallery)
{
    formStates(gallery);
    pageStates(gallery);
}

} // namespace cadorel::gallery
