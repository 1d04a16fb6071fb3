// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LyricsOffsetViewModel.h"
#include "ViewModels/NowPlayingViewModel.h"
#include "ViewModels/OutputDevicesViewModel.h"
#include "ViewModels/ScreenModels.h"
#include "ViewModels/SleepTimerViewModel.h"
#include "Views/GalleryPlayer.h"

namespace cadorel::gallery {

namespace {

void escape(const TestWindow &test)
{
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
}

/// One picture for each screenful of the sheet that scrolls.
void saveScrolling(const Gallery &gallery, const TestWindow &test, const QString &scroller,
                   const QString &state)
{
    gallery.save(test, state);
    QQuickItem *view = test.item(scroller);
    const double last = view->property("contentHeight").toDouble() - view->height();
    for (int page = 1; view->property("contentY").toDouble() < last; ++page) {
        view->setProperty("contentY", std::min(last, page * view->height()));
        gallery.save(test, u"%1-%2"_s.arg(state).arg(page));
    }
}

void timeStates(const Gallery &gallery, TestWindow &test)
{
    NowPlayingViewModel &screen = *test.screens->nowPlaying();
    screen.setProperty("showSleepTimer", true);
    gallery.save(test, u"sheet-sleep"_s);
    screen.sleep()->select(45);
    gallery.save(test, u"sheet-sleep-chosen"_s);
    screen.sleep()->beginCustom();
    screen.sleep()->setCustomHours(1);
    screen.sleep()->setCustomMinutes(25);
    gallery.save(test, u"sheet-sleep-time"_s);
    screen.sleep()->confirmCustom();
    gallery.save(test, u"sheet-sleep-custom"_s);
    escape(test);
    gallery.save(test, u"player-sleep-set"_s);

    screen.setProperty("showLyricsOffset", true);
    gallery.save(test, u"sheet-offset"_s);
    screen.offset()->adjust(-1500);
    gallery.save(test, u"sheet-offset-moved"_s);
    escape(test);
}

void deviceStates(const Gallery &gallery, TestWindow &test)
{
    using Kind = OutputDevice::Kind;
    test.screens->nowPlaying()->setProperty("showMoreOptions", true);
    gallery.save(test, u"sheet-more"_s);
    OutputDevicesViewModel &devices = *test.screens->devices();
    devices.open();
    gallery.save(test, u"sheet-devices-none"_s);
    const OutputDevice speakers{u"a"_s, u"内置音频 模拟立体声"_s, Kind::speaker, true, true};
    const OutputDevice headset{u"b"_s, u"一副名字特别特别长的蓝牙耳机，长到在手机的宽度上放不下"_s,
                               Kind::headphones};
    const OutputDevice screen{u"c"_s, u"HDMI / DisplayPort 2"_s};
    test.outputDevices->setDevices({speakers, headset, screen});
    gallery.save(test, u"sheet-devices"_s);
    devices.choose(2);
    test.outputDevices->setDevices({speakers, headset});
    gallery.save(test, u"sheet-devices-lost"_s);
    escape(test);
    escape(test);
    gallery.save(test, u"player-device-lost"_s);
    devices.dismissNotice();
}

} // namespace

void sheetStates(const Gallery &gallery)
{
    TestWindow test;
    gallery.show(test);
    openPlayer(test);
    playWithLyrics(test, madeQueue());
    timeStates(gallery, test);
    deviceStates(gallery, test);
    test.screens->nowPlaying()->setProperty("showNowPlayingSettings", true);
    settle();
    saveScrolling(gallery, test, u"sheetScroller"_s, u"sheet-appearance"_s);
}

} // namespace cadorel::gallery
